#include "filelistcopy.h"

#include "jobnotices.h"

#include "disk/filecopy.h"

#include <QDir>
#include <QFileInfo>
#include <QRegExp>

namespace {

/// The folders that lead to @p destination, outermost first, as the walk that makes them names them.
QStringList foldersOf(const QString &destination)
{
    // Deliberate: a backslash splits only with a blank behind it; a path written with backslashes stays one part.
    static const QRegExp kSeparators(QStringLiteral("(\\\\ |\\/)"));
    QStringList parts = destination.split(kSeparators, Qt::KeepEmptyParts);
    parts.removeLast();
    QStringList folders;
    QString folder;
    for (const QString &part : qAsConst(parts)) {
        folder += part + QDir::separator();
        folders.append(folder);
    }
    return folders;
}

/// Deliberate: STOP is looked at between files, so that a file that has been begun is finished.
bool keepWindowAlive()
{
    QCoreApplication::processEvents();
    return true;
}

} // namespace

FileListCopy::FileListCopy(JobView &view, const QStringList &sources, const QString &destinationRoot,
                           const QString &sourceRoot, const Player &player)
    : m_view(view), m_sources(sources), m_destinationRoot(destinationRoot), m_sourceRoot(sourceRoot), m_player(player)
{
}

JobEnd FileListCopy::run()
{
    return runSteps("FileListCopy", m_view,
                    {{"prepareBar", &FileListCopy::prepareBar},
                     {"copyFiles", &FileListCopy::copyFiles},
                     {"resetBar", &FileListCopy::resetBar}},
                    Stop::IsLeftToTheSteps);
}

JobEnd FileListCopy::prepareBar()
{
    m_view.setBarFormat(QStringLiteral("%v"));
    m_view.setBarRange(0, m_sources.size());
    m_view.setBarValue(0);
    m_view.paintBar();
    return {};
}

JobEnd FileListCopy::copyFiles()
{
    for (int i = 0; i < m_sources.size(); ++i) {
        if (isPlayerGone())
            return {JobEnd::Failed, kPlayerGone};
        const QString destination = destinationOf(m_sources.at(i));
        if (!makeFolders(destination)) {
            if (isPlayerGone())
                return {JobEnd::Failed, kPlayerGone};
            m_view.tell(errorNotice());
            return {JobEnd::Failed, kMakingFolders};
        }
        const FileOutcome outcome = copyOne(m_sources.at(i), destination);
        if (outcome == FileOutcome::GiveUp)
            return {JobEnd::Failed};
        if (outcome == FileOutcome::PlayerGone)
            return {JobEnd::Failed, kPlayerGone};
        m_lastCopied = outcome == FileOutcome::Copied;
        m_view.setBarValue(i + 1);
        m_view.paintBar();
        QCoreApplication::processEvents();
        if (m_view.isStopped())
            return {JobEnd::Stopped};
    }
    return {};
}

/// Where @p source goes. On a system that tells case apart the player's own folders are not made a second time.
QString FileListCopy::destinationOf(const QString &source)
{
    QString destination = m_destinationRoot + source.mid(m_sourceRoot.size());
    if (!m_player.isFound() || !destination.startsWith(m_player.root()))
        return destination;
    QString below = m_player.relativePath(destination);
    // Both roots may have brought a slash.
    while (below.startsWith(QLatin1Char('/')))
        below.remove(0, 1);
    const bool isPlaylist = below.startsWith(PlayerNames::kPlaylists + QLatin1Char('/'), Qt::CaseInsensitive);
    const QString own = isPlaylist ? below.left(PlayerNames::kPlaylists.size()) : below.section(QLatin1Char('/'), 0, 0);
    if (own == below || (!isPlaylist && !Player::isOwnFolder(own)))
        return destination;
    QString &folder = m_ownFolders[own.toLower()];
    if (folder.isEmpty())
        folder = m_player.path(own);
    return folder + below.mid(own.size());
}

/// Makes the folders that lead to @p destination. Returns false at the first that cannot be made.
bool FileListCopy::makeFolders(const QString &destination) const
{
    const QStringList folders = foldersOf(destination);
    const QDir here{QString()};
    // From the inside out: one look is enough for every file but the first of its folder, and the first names of a
    // network path, which are no folders, are never asked for.
    int made = folders.size();
    while (made > 0 && !here.exists(folders.at(made - 1)))
        --made;
    for (; made < folders.size(); ++made) {
        // Where the player was, a folder would be one of the PC's own.
        if (isPlayerGone() || !here.mkdir(folders.at(made)))
            return false;
    }
    return true;
}

JobEnd FileListCopy::resetBar()
{
    m_view.setBarRange(0, m_sources.size());
    m_view.setBarValue(0);
    m_view.setBarFormat(QStringLiteral("%p%"));
    // Deliberate: the outcome is the last file's. One that failed on the way was already answered for by the user.
    return {m_lastCopied ? JobEnd::Done : JobEnd::Failed};
}

FileListCopy::FileOutcome FileListCopy::copyOne(const QString &source, const QString &destination)
{
    CopyResult result = copyFile(source, destination, keepWindowAlive);
    if (result == CopyResult::DestinationExists) {
        // A file that would replace itself would be gone before it is read.
        if (QFileInfo(source) == QFileInfo(destination))
            return FileOutcome::Copied;
        if (!m_replaceAll && !mayReplace(destination))
            return FileOutcome::Copied;
        // The question may have stood for long.
        if (isPlayerGone())
            return FileOutcome::PlayerGone;
        QString former;
        result = replaceFile(source, destination, keepWindowAlive, [&former](const QString &kept) { former = kept; });
        if (!former.isEmpty())
            m_view.tell({Notice::Critical, tr("Errore sulla copia"), QDir::cleanPath(destination), formerIsAt(former)});
    }
    if (result == CopyResult::Copied)
        return FileOutcome::Copied;
    if (isPlayerGone())
        return FileOutcome::PlayerGone;
    // Folders stand in the list too, and are made for what is in them.
    m_filesAreMissing = m_filesAreMissing || !QFileInfo(source).isDir();
    return m_ignoreAllErrors || mayGoOnWithout(destination) ? FileOutcome::NotCopied : FileOutcome::GiveUp;
}

QString FileListCopy::formerIsAt(const QString &path)
{
    return tr("La versione precedente è conservata sul PC:\n%1").arg(QDir::toNativeSeparators(path));
}

/// Asks whether the file at @p destination is to be replaced.
bool FileListCopy::mayReplace(const QString &destination)
{
    const JobAnswer answer =
        m_view.ask({tr("File Esistente"),
                    tr("Il File\n") + QDir::cleanPath(destination) + tr("\nEsiste già. Vuoi sostituirlo?"),
                    {{JobAnswer::Yes, tr("Si")}, {JobAnswer::No, tr("No")}, {JobAnswer::YesToAll, tr("Si,Tutti")}},
                    JobAnswer::Yes,
                    JobAnswer::No,
                    true});
    m_replaceAll = answer == JobAnswer::YesToAll;
    return answer == JobAnswer::Yes || answer == JobAnswer::YesToAll;
}

/// Asks whether to go on although the file at @p destination was not copied.
bool FileListCopy::mayGoOnWithout(const QString &destination)
{
    // Deliberate: "yes to all" is the Cancel button, so that closing the box means it too; and the text lacks its "N".
    const JobAnswer answer = m_view.ask(
        {tr("Errore sulla copia"),
         tr("Il File\n") + QDir::cleanPath(destination) + tr("\non è stato copiato. Vuoi continuare a copiare?"),
         {{JobAnswer::Yes, tr("Si")}, {JobAnswer::No, tr("No")}, {JobAnswer::Cancel, tr("Si,Tutti")}},
         JobAnswer::Yes,
         JobAnswer::Cancel,
         true});
    m_ignoreAllErrors = answer == JobAnswer::Cancel;
    return answer != JobAnswer::No;
}
