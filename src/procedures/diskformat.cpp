#include "diskformat.h"

#include "jobnotices.h"
#include "operationtexts.h"

#include "device/player.h"
#include "disk/waitms.h"

#include <QDebug>
#include <QProcess>

namespace {

constexpr int kStartTimeoutMs = 30000;
constexpr int kLookIntervalMs = 500;
constexpr int kSettleMs = 1000;
constexpr int kMaximumAfterFormat = 10;

/// Runs the format command on @p drive ("E:"); the window stands still meanwhile. Returns whether it ran to its end.
bool runFormat(const QString &drive)
{
    const QString program = QStringLiteral("cmd.exe");
    const QStringList arguments = {QStringLiteral("/C"),
                                   QStringLiteral("format"),
                                   drive,
                                   QStringLiteral("/FS:exFAT"),
                                   QStringLiteral("/V:") + PlayerNames::kLabel,
                                   QStringLiteral("/Q"),
                                   QStringLiteral("/X"),
                                   QStringLiteral("/Y")};
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments, QIODevice::ReadWrite);
    // Deliberate: what the command says and its exit code do not count, only that it ran to its end.
    const bool ran = process.waitForStarted(kStartTimeoutMs) && process.waitForFinished(-1);
    qDebug() << program << arguments.join(QStringLiteral(", ")) << QString::fromLocal8Bit(process.readAll());
    return ran;
}

} // namespace

DiskFormat::DiskFormat(JobView &view, const QString &drive) : m_view(view), m_drive(drive) {}

JobEnd DiskFormat::run()
{
    // Deliberate: STOP does not count here. A disk being formatted is not to be left alone.
    return runSteps("DiskFormat", m_view,
                    {{"confirm", &DiskFormat::confirm},
                     {"erase", &DiskFormat::erase},
                     {"waitForPlayer", &DiskFormat::waitForPlayer},
                     {"judge", &DiskFormat::judge}},
                    Stop::IsLeftToTheSteps);
}

JobEnd DiskFormat::confirm()
{
    JobQuestion question = siOrNo(tr("Cancellazione Drive"),
                                  tr("ATTENZIONE: Il drive ") + m_drive + tr(" verrà cancellato.\nVuoi continuare?"));
    question.standsAlone = true;
    return {m_view.ask(question) == JobAnswer::Yes ? JobEnd::Done : JobEnd::Refused};
}

JobEnd DiskFormat::erase()
{
    qInfo() << "FormatCorvinDisk : Inizio";
    m_view.showStatus(operationText(TEXT_FORMATTING));
    m_view.setBarRange(0, 0);
    m_view.setBarValue(0);
    m_ranToItsEnd = runFormat(m_drive.chopped(qMin(1, m_drive.size())));
    return {};
}

/// Deliberate: without limit.
JobEnd DiskFormat::waitForPlayer()
{
    waitMs(kLookIntervalMs);
    while (!Player::find().isFound()) {
        QCoreApplication::processEvents();
        waitMs(kLookIntervalMs);
    }
    waitMs(kSettleMs);
    m_view.setBarRange(0, kMaximumAfterFormat);
    qInfo() << "FormatCorvinDisk : Fine";
    return {};
}

JobEnd DiskFormat::judge()
{
    return {m_ranToItsEnd ? JobEnd::Done : JobEnd::Failed};
}
