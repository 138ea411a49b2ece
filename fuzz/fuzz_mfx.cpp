#include "songfiles/metasong.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

namespace {

void dropMessage(QtMsgType /*type*/, const QMessageLogContext & /*context*/, const QString & /*text*/) {}

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

/// Takes any bytes as a song file, MFx most of all, the whole way: import, reading, changing, saving. What could be
/// saved must be a song again.
extern "C" int LLVMFuzzerTestOneInput(const quint8 *data, std::size_t size)
{
    static const QTemporaryDir dir;
    qInstallMessageHandler(dropMessage);
    const QString path = dir.filePath(QStringLiteral("song.mp3"));
    QFile::remove(path);
    if (!write(path, QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size))))
        return 0;
    MetaSong song;
    if (!song.importFile(path))
        return 0;
    SongInfo info;
    song.getSongInfo(info);
    info.title.truncate(20);
    song.setSongInfo(info, size % 2 == 0);
    song.addMarker(info.genre, 1);
    MetaSong again;
    if (song.saveToFile(path) && !again.importFile(path))
        std::abort();
    return 0;
}
