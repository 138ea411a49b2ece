#include "systemtransfer.h"

#include "filelistcopy.h"
#include "systemattributes.h"
#include "unpackedfolder.h"

#include "device/devicecase.h"
#include "disk/tree.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

bool writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush();
}

} // namespace

SystemTransfer::SystemTransfer(JobView &view, const Player &player, const QString &unpackedFolder)
    : m_view(view), m_player(player), m_unpackedFolder(unpackedFolder)
{
}

JobEnd SystemTransfer::run()
{
    return runSteps("SystemTransfer", m_view,
                    {{"removeOldSystem", &SystemTransfer::removeOldSystem},
                     {"copyNewSystem", &SystemTransfer::copyNewSystem},
                     {"hideSystem", &SystemTransfer::hideSystem}},
                    Stop::IsLeftToTheSteps);
}

JobEnd SystemTransfer::removeOldSystem()
{
    QStringList folders;
    for (const QLatin1String name : {PlayerNames::kSystem, PlayerNames::kBridges, PlayerNames::kEffects})
        folders += entriesNamed(m_player.root(), name);
    QStringList old;
    for (const QString &folder : qAsConst(folders))
        old += listTree({folder});
    for (const QString &folder : qAsConst(folders)) {
        // The path of a player that was pulled meanwhile may by now be a folder of the PC.
        if (!m_player.isThere())
            return {JobEnd::Failed};
        if (!removeTree(folder)) {
            m_begun = m_begun ||
                      !std::all_of(old.begin(), old.end(), [](const QString &path) { return QFileInfo::exists(path); });
            return {JobEnd::Failed};
        }
        m_begun = true;
    }
    if (!m_player.isThere())
        return {JobEnd::Failed};
    m_begun = true;
    const QStringList startScripts = entriesNamed(m_player.root(), PlayerNames::kStartScript);
    for (const QString &file : startScripts)
        removeFile(file);
    return {};
}

JobEnd SystemTransfer::copyNewSystem()
{
    const QStringList files = systemEntries(m_unpackedFolder);
    // The root ends in a slash, so the one between the unpacked folder and its content is cut off too.
    const JobEnd end =
        FileListCopy(m_view, files, m_player.root(), m_unpackedFolder + QLatin1Char('/'), m_player).run();
    m_whole = m_player.isThere() && areWholeAt(m_player.root().chopped(1), files, m_unpackedFolder);
    // A player that was pulled has words of its own too, whatever the copy made of it.
    return end.failedAt(kMakingFolders) || !m_player.isThere() ? JobEnd() : end;
}

JobEnd SystemTransfer::hideSystem()
{
    if (!m_player.isThere())
        return {};
    const QString batch = m_unpackedFolder + QStringLiteral("/MATTRB.BAT");
    const bool run = writeFile(batch, attributeBatch(m_player)) && runAttributeBatch(batch, m_player);
    return {run ? JobEnd::Done : JobEnd::Failed};
}
