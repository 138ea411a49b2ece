#include "extraction.h"

#include "archivetool.h"

#include "disk/waitms.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

Extraction::Extraction(JobView &view, const QString &archive)
    : m_view(view), m_archive(archive), m_folder(QFileInfo(archive).absolutePath())
{
}

JobEnd Extraction::run()
{
    return runSteps("Extraction", m_view, {{"runTool", &Extraction::runTool}, {"removeRest", &Extraction::removeRest}},
                    Stop::IsLeftToTheSteps);
}

JobEnd Extraction::runTool()
{
    const QString program = archiveTool(QCoreApplication::applicationDirPath());
    const QStringList arguments = {m_archive, QStringLiteral("-o"), m_folder, QStringLiteral("-no-directory")};

    QProcess tool;
    bool ended = false;
    QObject::connect(&tool, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), [&ended] { ended = true; });
    tool.setWorkingDirectory(QFileInfo(program).absolutePath());
    tool.setProcessChannelMode(QProcess::MergedChannels);
    // A tool that asks (for a password, or whether to overwrite) must not wait for an answer that never comes.
    tool.setStandardInputFile(QProcess::nullDevice());
    tool.start(program, arguments);
    const bool started = tool.waitForStarted(-1);
    waitMs(kLookMs);
    m_view.setBarRange(0, 0);
    m_view.setBarValue(0);
    while (started && !ended) {
        if (m_view.isStopped())
            tool.kill();
        m_view.paintBar();
        waitMs(kLookMs);
    }
    qDebug() << "unpackArchive :" << program << arguments.join(QStringLiteral(", ")) << tool.exitCode()
             << QString::fromUtf8(tool.readAll());
    // Deliberate: the exit code does not count here. Whoever is about to touch the player asks for it.
    m_allUnpacked = ended && tool.exitStatus() == QProcess::NormalExit && tool.exitCode() == 0;
    return {started ? JobEnd::Done : JobEnd::Failed};
}

JobEnd Extraction::removeRest()
{
    QFile::remove(m_archive);
    removeUnpackedLinks(m_folder);
    return {};
}
