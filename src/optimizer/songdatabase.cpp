// Chapter of Ottimizza: the step that writes what has changed on the disk since the player's last database export.
#include "fastdb.h"
#include "longlists.h"
#include "longname.h"
#include "moveentry.h"
#include "ottimizzarun.h"
#include "sqlline.h"

#include "app/shared/questionbox.h"
#include "disk/breath.h"
#include "disk/tree.h"

#include <QCoreApplication>
#include <QDebug>
#include <QTextStream>

namespace {

constexpr qint64 kReadBlock = 1 << 20;
/// Far more than a million songs need: what is larger is damaged, and would not fit into memory.
constexpr qint64 kMostDatabaseBytes = 512 * kReadBlock;

/// The whole file, read in blocks with the window alive. Nothing when it cannot be opened, cannot be read to its end or
/// is no export of songs: with half of it, the songs of the other half would be inserted a second time.
QByteArray readFile(const QString &path)
{
    QFile file(path);
    QByteArray content;
    // A pipe would be waited for until somebody writes to it.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly) || file.size() > kMostDatabaseBytes)
        return content;
    const auto size = static_cast<int>(file.size());
    content.reserve(size);
    for (QByteArray block = file.read(kReadBlock); !block.isEmpty(); block = file.read(kReadBlock)) {
        content.append(block);
        QCoreApplication::processEvents();
    }
    return content.size() < size ? QByteArray() : content;
}

bool needsOtherName(const QString &path)
{
    return isPathTooLong(path) || withoutMidiSuffixEnd(path) != path;
}

/// Deliberate: the song is known under the new path from here on, whether the file could be renamed or not.
QString withPlayerSuffix(const QString &path)
{
    QString renamed = withoutMidiSuffixEnd(path);
    if (renamed == path)
        return path;
    qInfo() << "Rinomino file .midi in .mid :" << path;
    if (!moveEntry(path, renamed))
        qInfo() << "Impossibile rinominare!";
    return renamed;
}

void renameCompanions(const QString &oldSong, const QString &newSong)
{
    for (const QLatin1String companion : {QLatin1String(".cdg"), QLatin1String(".dat"), QLatin1String(".bak")}) {
        const QString path = pathWithoutSuffix(oldSong) + companion;
        if (QFile::exists(path))
            moveEntry(path, pathWithoutSuffix(newSong) + companion);
    }
}

/// The same for a path that is too long.
QString withPlayerLength(const QString &path)
{
    if (!isPathTooLong(path))
        return path;
    qInfo() << "FilePath troppo lungo :" << path;
    const std::optional<QString> shortened = shortenedPath(path);
    if (!shortened) {
        qWarning() << "FilePath NON rinominato !";
        return path;
    }
    qInfo() << "FilePath rinominato in :" << *shortened;
    if (!moveEntry(path, *shortened))
        qInfo() << "FilePath, impossibile rinominare!";
    renameCompanions(path, *shortened);
    return *shortened;
}

} // namespace

void Ottimizza::createDiffDatabaseImportFile()
{
    // Deliberate: a stop pressed before this step is forgotten.
    abortRequested = m_closing;
    const Player player = Player::find();
    // The run's own player would get no import file, and another's disk would be worked on unasked.
    if (m_running && player.root() != run().player.root()) {
        failCode = DeviceNotFound;
        return;
    }
    rootPath = player.root();
    if (!m_running)
        m_run = std::make_unique<Run>(rootPath);
    // Paths made from an empty root would lie in the PC's own root or current folder.
    if (rootPath.isEmpty() || !run().player.isThere()) {
        failCode = DeviceNotFound;
        return;
    }
    if (abortRequested)
        return;
    emit setProgressBarVisible(true);
    emit setProgressBarMinVal(0);
    emit setProgressBarMaxVal(kBusyBar);
    emit updateProgressBarVal(0);
    qInfo() << "createDiffDatabaseImportFile : START";
    emit updateLabelAction(tr("Caricamento dati in corso..."));

    QStringList dbSongs = readDatabaseSongs();
    qDebug() << "fast db file found: " << dbSongs.size();
    std::optional<QStringList> diskSongs = collectDiskSongs();
    // A disk that is gone has no export and no songs.
    if (!diskSongs || !isPlayerThere()) {
        emit setProgressBarVisible(false);
        return;
    }
    qDebug() << "dir file found: " << diskSongs->size();
    writeImportFile(dbSongs, *diskSongs);
    letGo(dbSongs);
    letGo(*diskSongs);
}

QStringList Ottimizza::readDatabaseSongs() const
{
    QStringList songs;
    const Player player(rootPath);
    Breath breath;
    FastDbReader reader(readFile(player.path(PlayerNames::kDatabaseExport)), player);
    while (const std::optional<QString> path = reader.next()) {
        songs.append(*path);
        breath.take();
    }
    return songs;
}

/// Nothing after a stop, and when the player has gone.
std::optional<QStringList> Ottimizza::collectDiskSongs()
{
    const std::optional<QStringList> paths = listSongFiles();
    if (!paths)
        return std::nullopt;
    QStringList songs;
    Breath breath;
    for (const QString &path : *paths) {
        if (abortRequested)
            return std::nullopt;
        if (isOutsideDatabase(path))
            continue;
        if (needsOtherName(path) && !isPlayerThere())
            return std::nullopt;
        songs.append(withPlayerLength(withPlayerSuffix(path)));
        breath.take();
    }
    return songs;
}

/// Nothing after a stop. The list is whole before the first file is renamed: a walk over a folder that changes may give
/// a file twice.
std::optional<QStringList> Ottimizza::listSongFiles() const
{
    QStringList paths;
    const Walk walk = {rootPath, QDir::Files | QDir::NoSymLinks, {}, true, kListingRound};
    const bool finished = walkTree(walk, [this, &paths](const QFileInfo &file) {
        if (matchesSongFilter(file.fileName()))
            paths.append(file.filePath());
        return !abortRequested;
    });
    return finished ? std::make_optional(paths) : std::nullopt;
}

/// Deliberate: beginnings of names, without a closing slash. The database leaves out a folder "SystemOld" as well.
bool Ottimizza::isOutsideDatabase(const QString &path) const
{
    const QStringRef below = path.midRef(rootPath.size());
    return below.startsWith(QLatin1String("BRIDGE"), Qt::CaseInsensitive) ||
           below.startsWith(QLatin1String("EFFECTS"), Qt::CaseInsensitive) ||
           below.startsWith(QLatin1String("System"), Qt::CaseInsensitive);
}

void Ottimizza::writeImportFile(const QStringList &dbSongs, const QStringList &diskSongs)
{
    const QString path = rootPath + PlayerNames::kImportFile;
    QFile::remove(path);
    // The player takes a file of another case for the same one: none may stay beside the new one.
    QFile::remove(run().player.path(PlayerNames::kImportFile));
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::Truncate)) {
        reportImportFileNotCreated();
        return;
    }
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    if (dbSongs.isEmpty())
        stream << "DELETE FROM songs\nDELETE FROM artists\nDELETE FROM genres\n";
    const bool finished = writeStatements(stream, dbSongs, diskSongs);
    stream.flush();
    const bool written = stream.status() == QTextStream::Ok && file.flush();
    const bool empty = file.size() == 0;
    file.close();
    // Deliberate: a stop leaves the file as far as it got, in whole lines.
    if ((!finished && written) || !isPlayerThere()) {
        emit setProgressBarVisible(false);
        return;
    }
    if (abortRequested || empty || !written)
        QFile::remove(path);
    // Half a file would leave the player with half a database.
    if (!written)
        reportImportFileNotCreated();
    qInfo() << "createDiffDatabaseImportFile : END";
    emit setProgressBarVisible(false);
}

/// Returns false after a stop, and when the player has gone.
bool Ottimizza::writeStatements(QTextStream &stream, const QStringList &dbSongs, const QStringList &diskSongs)
{
    emit updateLabelAction(tr("Creazione database in corso..."));
    emit updateProgressBarVal(0);
    emit setProgressBarMaxVal(dbSongs.size() + diskSongs.size());
    int counter = 0;
    Breath breath;
    const Player player(rootPath);
    {
        PathSet known = setOf(dbSongs);
        for (const QString &path : diskSongs) {
            if (abortRequested || (!known.contains(path) && !writeInsert(stream, path)))
                return false;
            emit updateProgressBarVal(++counter);
            breath.take();
        }
        letGo(known);
    }
    if (dbSongs.isEmpty())
        return true;
    PathSet present = setOf(diskSongs);
    for (const QString &path : dbSongs) {
        if (abortRequested)
            return false;
        if (!present.contains(path))
            stream << deleteLine(path, player);
        emit updateProgressBarVal(++counter);
        breath.take();
    }
    letGo(present);
    return true;
}

/// Returns false when the player has gone: what a song is cannot be told then.
bool Ottimizza::writeInsert(QTextStream &stream, const QString &path)
{
    const SongLine line = insertLineForSong(path, run().player);
    if (line.result == ImportResult::Imported) {
        stream << line.text;
        return true;
    }
    if (!isPlayerThere())
        return false;
    if (line.result == ImportResult::TooLarge) {
        qInfo() << "File troppo grande, escluso dal database :" << path;
        return true;
    }
    qInfo() << "File non valido, rimuovo :" << path;
    if (line.result != ImportResult::NotASong || !removeInvalidSong(path))
        qInfo() << "File non valido, impossibile rimuovere!";
    return true;
}

/// Deliberate: a song that was read and is none is deleted, once a copy of it lies on the PC.
bool Ottimizza::removeInvalidSong(const QString &path)
{
    return keepOnPc(path, true) && isPlayerThere() && QFile::remove(path);
}

void Ottimizza::reportImportFileNotCreated()
{
    failCode = ImportFileNotCreated;
    tellUser(this, QMessageBox::Critical, tr("Errore"), tr("Database non creato"));
}
