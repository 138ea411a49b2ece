#include "songfiles/rawmidifile.h"

#include <QtGlobal>

namespace {

void dropMessage(QtMsgType /*type*/, const QMessageLogContext & /*context*/, const QString & /*text*/) {}

void useReaders(const RawMidiFile &file, QString &text, QList<SongMarker> &markers)
{
    file.extractKey(text);
    text += file.title() + file.genre() + file.artist() + file.author();
    text += QString::number(qint64(file.length()) + file.bpm() + (file.isQArte() ? 1 : 0));
    file.markers(markers, true);
    file.markers(markers, false);
}

void useWriters(RawMidiFile &file, const QString &text, const QList<SongMarker> &markers)
{
    file.setTitle(text);
    file.setMarkers(markers);
    file.setGenre(text);
    file.setArtist(text);
    file.setAuthor(text);
    file.setLength(file.length());
    file.setBpm(file.bpm());
    file.setKey(text.right(2));
    file.setKey(QStringLiteral("C"));
}

} // namespace

/// Reads and edits any bytes that pass for a MIDI file, twice: the second time what the first has written.
extern "C" int LLVMFuzzerTestOneInput(const quint8 *data, std::size_t size)
{
    qInstallMessageHandler(dropMessage);
    RawMidiFile file;
    if (!file.load(QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size))))
        return 0;
    for (int round = 0; round < 2; ++round) {
        QString text;
        QList<SongMarker> markers;
        useReaders(file, text, markers);
        useWriters(file, text, markers);
    }
    return 0;
}
