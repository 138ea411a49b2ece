#include "songfactory/songfactory.h"
#include "songfiles/lzhuff.h"
#include "songfiles/metasong.h"
#include "songtest.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

/// Songs as programs written elsewhere see them: those the factory makes, and those saved here. The programs come from
/// the packages midicsv, python3-mido, python3-mutagen, id3v2, mpg123 and ffmpeg.
class TestSongsOthersRead : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void midicsvListsWhatTheFactoryMade();
    void savedMidiKeepsItsNotes_data();
    void savedMidiKeepsItsNotes();
    void savedMidiSpeaksOfItselfToMido_data();
    void savedMidiSpeaksOfItselfToMido();
    void savedMfxHoldsASoundMidiFile_data();
    void savedMfxHoldsASoundMidiFile();
    void factoryTagsAreReadByMutagen_data();
    void factoryTagsAreReadByMutagen();
    void savedTagsAreReadByMutagen_data();
    void savedTagsAreReadByMutagen();
    void savedTagsAreListedById3v2();
    void savedMp3PlaysAsLongAsBefore_data();
    void savedMp3PlaysAsLongAsBefore();

private:
    QString path(const QString &name) const { return m_dir->filePath(name); }
    /// Loads bytes as a song, sets a record by hand and saves it; the path of what was saved.
    QString saved(const QString &name, const QByteArray &bytes, const SongInfo &change);

    QScopedPointer<QTemporaryDir> m_dir;
};

namespace {

// Not any python3 of the user's own, which may lack the packages.
const QString kPython = QStringLiteral("/usr/bin/python3");

/// Standard output of a program; empty, with a failed check, when it does not end well.
QByteArray output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        qWarning() << program << arguments << process.errorString() << process.readAllStandardError();
        return QByteArray();
    }
    return process.readAllStandardOutput();
}

QJsonObject json(const QString &script, const QString &file)
{
    return QJsonDocument::fromJson(output(kPython, {QStringLiteral("-c"), script, file})).object();
}

/// Title, copyright, key, markers, note count and playing time of a MIDI file, and the maker's own events by tag.
QJsonObject mido(const QString &file)
{
    return json(QStringLiteral(R"(
import json, mido, sys
song = mido.MidiFile(sys.argv[1])
out = {'type': song.type, 'tracks': len(song.tracks), 'notes': 0, 'own': []}
ticks = max(sum(m.time for m in t) for t in song.tracks)
tempo = [m.tempo for t in song.tracks for m in t if m.type == 'set_tempo'][0]
out['length'] = mido.tick2second(ticks, song.ticks_per_beat, tempo)
for message in (m for t in song.tracks for m in t):
    if message.type == 'track_name': out['title'] = message.name
    if message.type == 'copyright': out['copyright'] = message.text
    if message.type == 'key_signature': out['key'] = message.key
    if message.type == 'note_on': out['notes'] += 1
    if message.type == 'unknown_meta' and message.type_byte == 0x4B:
        out['own'].append([message.data[0], bytes(message.data[1:]).decode('latin-1')])
print(json.dumps(out))
)"),
                file);
}

/// Version, size, texts by frame identifier, unknown frames, and playing time in seconds of an MP3 file.
QJsonObject mutagen(const QString &file)
{
    return json(QStringLiteral(R"(
import json, sys, mutagen.id3, mutagen.mp3
tag = mutagen.id3.ID3(sys.argv[1])
out = {'version': list(tag.version), 'size': tag.size, 'frames': {}}
for key, frame in tag.items():
    out['frames'][key] = [str(t) for t in getattr(frame, 'text', [])]
out['unknown'] = [bytes(u).hex() for u in tag.unknown_frames]
out['playing'] = mutagen.mp3.MP3(sys.argv[1]).info.length
print(json.dumps(out))
)"),
                file);
}

QString frameText(const QJsonObject &tag, const char *id)
{
    return tag.value(QLatin1String("frames")).toObject().value(QLatin1String(id)).toArray().at(0).toString();
}

SongInfo change()
{
    SongInfo info = SongTest::fullInfo();
    info.title = QStringLiteral("Azzurro");
    info.artist = QStringLiteral("Adriano");
    info.genre = QStringLiteral("Pop");
    info.author = QStringLiteral("Paolo");
    info.length = 90;
    info.userBpm = 77;
    info.key = QStringLiteral("F#-");
    return info;
}

/// The lines of midicsv that are notes.
QList<QByteArray> notes(const QString &file)
{
    QList<QByteArray> found;
    for (const QByteArray &line : output(QStringLiteral("midicsv"), {file}).split('\n')) {
        if (line.contains("Note_o"))
            found.append(line);
    }
    return found;
}

} // namespace

void TestSongsOthersRead::initTestCase()
{
    for (const char *program : {"midicsv", "id3v2", "mpg123", "ffprobe"}) {
        if (QStandardPaths::findExecutable(QLatin1String(program)).isEmpty())
            QSKIP(qPrintable(QStringLiteral("SKIPPED WHOLE: %1 is not installed").arg(QLatin1String(program))));
    }
    QProcess python;
    python.start(kPython, {QStringLiteral("-c"), QStringLiteral("import mido, mutagen")});
    if (!python.waitForFinished() || python.exitCode() != 0)
        QSKIP("SKIPPED WHOLE: python3-mido or python3-mutagen is not installed");
}

void TestSongsOthersRead::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
}

QString TestSongsOthersRead::saved(const QString &name, const QByteArray &bytes, const SongInfo &info)
{
    const QString file = path(name);
    MetaSong song;
    if (!SongTest::write(file, bytes) || !song.importFile(file))
        return QString();
    song.setSongInfo(info, true);
    return song.saveToFile(file) ? file : QString();
}

void TestSongsOthersRead::midicsvListsWhatTheFactoryMade()
{
    QVERIFY(SongTest::write(path(QStringLiteral("a.mid")), SongFactory::midi(SongTest::fullInfo(), 1)));
    const QList<QByteArray> lines = output(QStringLiteral("midicsv"), {path(QStringLiteral("a.mid"))}).split('\n');
    for (const char *line : {"0, 0, Header, 1, 2, 96", "1, 0, Title_t, \"Volare\"", "1, 0, Copyright_t, \"(c) Q-ARTE\"",
                             "1, 0, Key_signature, -2, \"major\"", "1, 0, Tempo, 468750", "2, 1536, End_track"})
        QVERIFY2(lines.contains(line), line);

    QVERIFY(SongTest::write(
        path(QStringLiteral("a.kar")),
        SongFactory::karaoke({QStringLiteral("@TVolare")}, {QStringLiteral("Vo"), QStringLiteral("la")})));
    const QList<QByteArray> words = output(QStringLiteral("midicsv"), {path(QStringLiteral("a.kar"))}).split('\n');
    for (const char *line : {"2, 0, Title_t, \"Words\"", "2, 0, Text_t, \"@TVolare\"", "2, 192, Text_t, \"la\""})
        QVERIFY2(words.contains(line), line);
}

void TestSongsOthersRead::savedMidiKeepsItsNotes_data()
{
    QTest::addColumn<int>("headerFormat");
    QTest::newRow("format 0") << 0;
    QTest::newRow("format 1") << 1;
}

void TestSongsOthersRead::savedMidiKeepsItsNotes()
{
    QFETCH(int, headerFormat);
    const QByteArray bytes = SongFactory::midi(SongTest::fullInfo(), headerFormat);
    QVERIFY(SongTest::write(path(QStringLiteral("before.mid")), bytes));
    const QList<QByteArray> before = notes(path(QStringLiteral("before.mid")));
    QCOMPARE(before.size(), 32);
    QCOMPARE(notes(saved(QStringLiteral("a.mid"), bytes, change())), before);
}

void TestSongsOthersRead::savedMidiSpeaksOfItselfToMido_data()
{
    savedMidiKeepsItsNotes_data();
}

void TestSongsOthersRead::savedMidiSpeaksOfItselfToMido()
{
    QFETCH(int, headerFormat);
    const QString file =
        saved(QStringLiteral("a.mid"), SongFactory::midi(SongTest::fullInfo(), headerFormat), change());
    const QJsonObject song = mido(file);
    QCOMPARE(song.value(QLatin1String("type")).toInt(), headerFormat);
    QCOMPARE(song.value(QLatin1String("title")).toString(), QStringLiteral("Azzurro"));
    QCOMPARE(song.value(QLatin1String("copyright")).toString(), QStringLiteral("(c) Q-ARTE"));
    QCOMPARE(song.value(QLatin1String("key")).toString(), QStringLiteral("F#m"));
    QCOMPARE(song.value(QLatin1String("notes")).toInt(), 16);
    // 16 beats at the tempo of the notes, 128 a minute
    QCOMPARE(qRound(song.value(QLatin1String("length")).toDouble() * 1000), 7500);
    QMap<int, QStringList> own;
    for (const QJsonValue event : song.value(QLatin1String("own")).toArray())
        own[event.toArray().at(0).toInt()].append(event.toArray().at(1).toString());
    QCOMPARE(own.value(1), QStringList(QStringLiteral("Pop")));
    QCOMPARE(own.value(2), QStringList(QStringLiteral("Adriano")));
    QCOMPARE(own.value(3), QStringList(QStringLiteral("Paolo")));
    QCOMPARE(own.value(4), QStringList(QStringLiteral("90")));
    QCOMPARE(own.value(5), QStringList(QStringLiteral("77")));
    QCOMPARE(own.value(6).size(), 2);
}

void TestSongsOthersRead::savedMfxHoldsASoundMidiFile_data()
{
    QTest::addColumn<int>("version");
    QTest::newRow("MF3") << 3;
    QTest::newRow("MF4") << 4;
    QTest::newRow("MF5") << 5;
}

void TestSongsOthersRead::savedMfxHoldsASoundMidiFile()
{
    QFETCH(int, version);
    const QString file = saved(QStringLiteral("a.mfx"), SongFactory::mfx(version, SongTest::fullInfo(), 100), change());
    QByteArray stream;
    LzHuff codec;
    QVERIFY(codec.expand(SongTest::read(file).mid(version == 5 ? 1024 : 512), stream));
    if (version == 4)
        stream.remove(stream.indexOf("MTrk") + 8, 3);
    QVERIFY(SongTest::write(path(QStringLiteral("stream.mid")), stream));
    QCOMPARE(notes(path(QStringLiteral("stream.mid"))).size(), 800);
    const QJsonObject song = mido(path(QStringLiteral("stream.mid")));
    QCOMPARE(song.value(QLatin1String("key")).toString(), QStringLiteral("F#m"));
    QCOMPARE(song.value(QLatin1String("notes")).toInt(), 400);
}

void TestSongsOthersRead::factoryTagsAreReadByMutagen_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<int>("encoding");
    QTest::newRow("2.2 Latin-1") << 2 << 0;
    QTest::newRow("2.2 UTF-16") << 2 << 1;
    QTest::newRow("2.3 Latin-1") << 3 << 0;
    QTest::newRow("2.3 UTF-16") << 3 << 1;
    QTest::newRow("2.4 Latin-1") << 4 << 0;
    QTest::newRow("2.4 UTF-16") << 4 << 1;
    QTest::newRow("2.4 UTF-16 big-endian") << 4 << 2;
    QTest::newRow("2.4 UTF-8") << 4 << 3;
}

void TestSongsOthersRead::factoryTagsAreReadByMutagen()
{
    QFETCH(int, version);
    QFETCH(int, encoding);
    SongInfo info = SongTest::fullInfo();
    info.title = QStringLiteral("Perché no ") + QString(130, QChar(u'é'));
    QVERIFY(SongTest::write(path(QStringLiteral("a.mp3")), SongFactory::mp3(version, info, encoding)));
    const QJsonObject tag = mutagen(path(QStringLiteral("a.mp3")));
    QCOMPARE(tag.value(QLatin1String("version")).toArray().at(1).toInt(), version);
    QCOMPARE(frameText(tag, "TIT2"), info.title);
    QCOMPARE(frameText(tag, "TPE1"), info.artist);
    QCOMPARE(frameText(tag, "TLEN"), QStringLiteral("215000"));
}

void TestSongsOthersRead::savedTagsAreReadByMutagen_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("version");
    const SongInfo info = SongTest::fullInfo();
    QTest::newRow("no tag") << SongFactory::mp3(0, info) << 3;
    QTest::newRow("2.3") << SongFactory::mp3(3, info, 1) << 3;
    QTest::newRow("2.4") << SongFactory::mp3(4, info, 3) << 4;
    QTest::newRow("padding") << SongFactory::id3v2Tag(3, info, 1, 500) + SongFactory::silentMp3Frames(40) << 3;
}

void TestSongsOthersRead::savedTagsAreReadByMutagen()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, version);
    const QString file = saved(QStringLiteral("a.mp3"), bytes, change());
    const QJsonObject tag = mutagen(file);
    QCOMPARE(tag.value(QLatin1String("version")).toArray().at(1).toInt(), version);
    QCOMPARE(frameText(tag, "TIT2"), QStringLiteral("Azzurro"));
    QCOMPARE(frameText(tag, "TPE1"), QStringLiteral("Adriano"));
    QCOMPARE(frameText(tag, "TCON"), QStringLiteral("Pop"));
    QCOMPARE(frameText(tag, "TCOM"), QStringLiteral("Paolo"));
    QCOMPARE(frameText(tag, "TKEY"), QStringLiteral("F#-"));
    QCOMPARE(frameText(tag, "TLEN"), QStringLiteral("90000"));
    QCOMPARE(frameText(tag, "TBPM"), QStringLiteral("77"));
    const QJsonArray unknown = tag.value(QLatin1String("unknown")).toArray();
    QCOMPARE(unknown.size(), 1); // MEDT
    QVERIFY(unknown.at(0).toString().startsWith(QString::fromLatin1(QByteArray("MEDT").toHex())));
    // The tag's size leads exactly to the audio.
    QVERIFY(SongTest::read(file).mid(tag.value(QLatin1String("size")).toInt()) == SongFactory::silentMp3Frames(40));
    // 40 frames of 417 bytes, 16000 bytes a second
    QCOMPARE(tag.value(QLatin1String("playing")).toDouble(), 40 * 417 / 16000.0);
}

void TestSongsOthersRead::savedTagsAreListedById3v2()
{
    const QString file = saved(QStringLiteral("a.mp3"), SongFactory::mp3(3, SongTest::fullInfo()), change());
    const QByteArray listed = output(QStringLiteral("id3v2"), {QStringLiteral("-R"), file});
    for (const char *line : {"TIT2: Azzurro", "TPE1: Adriano", "TCON: Pop", "TCOM: Paolo", "TLEN: 90000", "TBPM: 77"})
        QVERIFY2(listed.contains(line), listed.constData());
}

void TestSongsOthersRead::savedMp3PlaysAsLongAsBefore_data()
{
    savedTagsAreReadByMutagen_data();
}

void TestSongsOthersRead::savedMp3PlaysAsLongAsBefore()
{
    QFETCH(QByteArray, bytes);
    const QString file = saved(QStringLiteral("a.mp3"), bytes, change());
    const QByteArray frames =
        output(QStringLiteral("ffprobe"),
               {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-count_packets"),
                QStringLiteral("-show_entries"), QStringLiteral("stream=codec_name,sample_rate,nb_read_packets"),
                QStringLiteral("-of"), QStringLiteral("csv=p=0"), file});
    QCOMPARE(frames.trimmed(), QByteArray("mp3,44100,40"));
    // Decoded: 1152 samples of two bytes a frame, all of them silence.
    const QByteArray samples = output(
        QStringLiteral("mpg123"), {QStringLiteral("-q"), QStringLiteral("--no-gapless"), QStringLiteral("-s"), file});
    QCOMPARE(samples, QByteArray(40 * 1152 * 2, '\0'));
}

QTEST_GUILESS_MAIN(TestSongsOthersRead)
#include "tst_songsothersread.moc"
