#include "splitnote.h"

#include "device/devicelocator.h"
#include "disk/datafolder.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStorageInfo>

namespace {

constexpr int kLines = 3;

QString noteFolder()
{
    return dataFolder() + QLatin1String("/splitting");
}

/// A label is the same for every player, and a drive letter or mount point changes. Players of one model are of one
/// size: the serial number, where the system tells it, keeps them apart.
QByteArray markOf(const Player &player)
{
    return QByteArray::number(QStorageInfo(player.root()).bytesTotal()) + ' ' +
           DeviceLocator().volumeSerial(player.root()).toUtf8();
}

QString notePath(const Player &player, const QString &folder)
{
    const QByteArray text = markOf(player) + '\n' + player.relativePath(folder).toUtf8();
    const QByteArray name = QCryptographicHash::hash(text, QCryptographicHash::Sha1).toHex();
    return noteFolder() + QLatin1Char('/') + QString::fromLatin1(name) + QLatin1String(".txt");
}

/// Whether @p relative names something below the root, and no other folder on the way.
bool staysBelow(const QString &relative)
{
    return !relative.isEmpty() && QDir::isRelativePath(relative) && QDir::cleanPath(relative) == relative &&
           relative != QLatin1String("..") && !relative.startsWith(QLatin1String("../"));
}

} // namespace

bool writeSplitNote(const Player &player, const SplitFolder &split)
{
    QDir().mkpath(noteFolder());
    QSaveFile note(notePath(player, split.folder));
    const QByteArray text = markOf(player) + '\n' + player.relativePath(split.folder).toUtf8() + '\n' +
                            player.relativePath(split.aside).toUtf8() + '\n';
    return note.open(QIODevice::WriteOnly) && note.write(text) == text.size() && note.commit();
}

void removeSplitNote(const Player &player, const QString &folder)
{
    QFile::remove(notePath(player, folder));
}

QList<SplitFolder> splitNotes(const Player &player)
{
    constexpr qint64 kMostNoteBytes = 65536;
    QList<SplitFolder> splits;
    const QDir notes(noteFolder());
    const QStringList names = notes.entryList({QStringLiteral("*.txt")}, QDir::Files, QDir::Name);
    const QString mark = names.isEmpty() ? QString() : QString::fromLatin1(markOf(player));
    for (const QString &name : names) {
        QFile note(notes.filePath(name));
        if (!note.open(QIODevice::ReadOnly))
            continue;
        const QStringList lines = QString::fromUtf8(note.read(kMostNoteBytes)).split(QLatin1Char('\n'));
        if (lines.size() <= kLines || lines.at(0) != mark || !staysBelow(lines.at(1)) || !staysBelow(lines.at(2)))
            continue;
        splits.append({player.root() + lines.at(1), player.root() + lines.at(2)});
    }
    return splits;
}
