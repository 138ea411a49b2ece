#include "songtest.h"

using namespace SongFactory;

/// Songs as programs written elsewhere see them: those the factory makes, and those saved here. The programs come from
/// the packages midicsv, python3-mido, python3-mutagen, id3v2, mpg123 and ffmpeg.
class TestSongsOthersRead : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() {
        for (const QString &program : words("midicsv id3v2 mpg123 ffprobe")) {
            if (QStandardPaths::findExecutable(program).isEmpty())
                QSKIP(qPrintable("SKIPPED WHOLE: %1 is not installed"_s.arg(program)));
        }
        QProcess python;
        python.start(kPython, {"-c"_s, "import mido, mutagen"_s});
        if (!python.waitForFinished() || python.exitCode() != 0)
            QSKIP("SKIPPED WHOLE: python3-mido or python3-mutagen is not installed");
    }

    void midicsvListsWhatIsInASong_data() {
        columns<QByteArray, QByteArrayList>("bytes", "lines");
        row("made by the factory", midi(fullInfo(), 1),
            QByteArrayList({"0, 0, Header, 1, 2, 96", "1, 0, Title_t, \"Volare\"", "1, 0, Copyright_t, \"(c) Q-ARTE\"",
                            "1, 0, Key_signature, -2, \"major\"", "1, 0, Tempo, 468750", "2, 1536, End_track"}));
        row("karaoke made by the factory", karaoke({"@TVolare"_s}, words("Vo la")),
            QByteArrayList({"2, 0, Title_t, \"Words\"", "2, 0, Text_t, \"@TVolare\"", "2, 192, Text_t, \"la\""}));
        // The maker's own events: type 0x4B, then size and bytes.
        row("saved", saved("a.mid"_s, midi(fullInfo(), 1)),
            QByteArrayList({"1, 0, Title_t, \"Azzurro\"", "1, 0, Key_signature, 3, \"minor\"",
                            "1, 0, Unknown_meta_event, 75, 8, 2, 65, 100, 114, 105, 97, 110, 111",
                            "1, 0, Unknown_meta_event, 75, 3, 4, 57, 48",
                            "1, 0, Unknown_meta_event, 75, 8, 6, 0, 1, 73, 110, 116, 114, 111"}));
    }
    void midicsvListsWhatIsInASong() {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArrayList, lines);
        const QByteArrayList listed = midicsv(bytes);
        for (const QByteArray &line : qAsConst(lines))
            QVERIFY2(listed.contains(line), line.constData());
    }

    void savedMidiKeepsItsNotesAndSpeaksOfItselfToMido() {
        for (const int format : {0, 1}) {
            const QByteArray bytes = midi(fullInfo(), format);
            const QByteArray after = saved("a.mid"_s, bytes);
            QCOMPARE(notesOf(bytes).size(), 32);
            QCOMPARE(notesOf(after), notesOf(bytes));
            // 16 beats at the tempo of the notes, 128 a minute
            QCOMPARE(mido(after), "copyright (c) Q-ARTE; key F#m; notes 16; own 1 Pop; own 2 Adriano; own 3 Paolo; "
                                  "own 4 90; own 5 77; own 6 \0\1Intro; own 6 \1,Ritornello; seconds 7.500; "
                                  "title Azzurro; type %1"_s.arg(format));
        }
    }

    void savedMfxHoldsASoundMidiFile() {
        for (const int version : {3, 4, 5}) {
            QByteArray stream = streamOf(saved("a.mfx"_s, mfx(version, fullInfo(), 100)));
            stream.remove(stream.indexOf("MTrk") + 8, version == 4 ? 3 : 0); // its extra bytes
            QCOMPARE(notesOf(stream).size(), 800);
            QVERIFY2(mido(stream).contains("; key F#m; notes 400; "_s), qPrintable("MF%1"_s.arg(version)));
        }
    }

    void factoryTagsAreReadByMutagen() {
        SongInfo info = fullInfo();
        info.title = "Perché no "_s + QString(130, QChar(u'é'));
        const QString expected = "version 2.%1; TIT2 %2; TPE1 Domenico; TCON Canzone; TCOM Modugno; TKEY Bb; "
                                 "TLEN 215000; TBPM 128; "_s;
        for (const int version : {2, 3, 4}) {
            for (int encoding = 0; encoding <= (version == 4 ? 3 : 1); ++encoding) {
                const QString told = mutagen(mp3(version, info, encoding));
                QVERIFY2(told.startsWith(expected.arg(version).arg(info.title)), qPrintable(told));
            }
        }
    }

    void savedTagsAreReadByMutagen_data() {
        columns<QByteArray, int>("bytes", "version");
        row("no tag", mp3(0, fullInfo()), 3);
        row("2.3", mp3(3, fullInfo(), 1), 3);
        row("2.4", mp3(4, fullInfo(), 3), 4);
        row("padding", id3v2Tag(3, fullInfo(), 1, 500) + silentMp3Frames(40), 3);
    }
    void savedTagsAreReadByMutagen() {
        QFETCH(QByteArray, bytes);
        QFETCH(int, version);
        const QByteArray song = saved("a.mp3"_s, bytes);
        // The tag's size leads exactly to the audio: 40 frames of 417 bytes, 16000 bytes a second.
        QVERIFY(song.endsWith(silentMp3Frames(40)));
        const QString expected = "version 2.%1; TIT2 Azzurro; TPE1 Adriano; TCON Pop; TCOM Paolo; TKEY F#-; "
                                 "TLEN 90000; TBPM 77; unknown MEDT; size %2; playing 1.0425"_s;
        QCOMPARE(mutagen(song), expected.arg(version).arg(song.size() - 40 * 417));
    }

    void savedTagsAreListedById3v2() {
        const QByteArray listed = outputFor("id3v2"_s, {"-R"_s}, saved("a.mp3"_s, mp3(3, fullInfo())));
        for (const char *line :
             {"TIT2: Azzurro", "TPE1: Adriano", "TCON: Pop", "TCOM: Paolo", "TLEN: 90000", "TBPM: 77"})
            QVERIFY2(listed.contains(line), listed.constData());
    }

    void savedMp3PlaysAsLongAsBefore_data() { savedTagsAreReadByMutagen_data(); }
    void savedMp3PlaysAsLongAsBefore() {
        QFETCH(QByteArray, bytes);
        const QByteArray song = saved("a.mp3"_s, bytes);
        const QByteArray frames = outputFor(
            "ffprobe"_s,
            words("-v error -count_packets -show_entries stream=codec_name,sample_rate,nb_read_packets -of csv=p=0"),
            song);
        QCOMPARE(frames.trimmed(), "mp3,44100,40"_b);
        // Decoded: 1152 samples of two bytes a frame, all of them silence.
        QCOMPARE(outputFor("mpg123"_s, words("-q --no-gapless -s"), song), QByteArray(40 * 1152 * 2, '\0'));
    }

private:
    // Not any python3 of the user's own, which may lack the packages.
    const QString kPython = "/usr/bin/python3"_s;

    /// What a song is once another record was set by hand and it was saved.
    static QByteArray saved(const QString &name, const QByteArray &bytes) {
        SongOnDisk file(name, bytes);
        file.song.setSongInfo(otherInfo(), true);
        return file.save() ? file.content() : QByteArray();
    }

    /// What a program says of a file with this content; the test fails when it does not end well or complains.
    static QByteArray outputFor(const QString &program, const QStringList &arguments, const QByteArray &bytes) {
        PcFolder folder;
        QProcess process;
        process.start(program, arguments + QStringList(folder.addFile("song"_s, bytes)));
        const bool ended = process.waitForFinished() && process.exitStatus() == QProcess::NormalExit;
        const QByteArray complaint = process.readAllStandardError();
        if (!ended || process.exitCode() != 0 || !complaint.isEmpty())
            failTest(program + process.errorString() + QString::fromUtf8(complaint));
        return process.readAllStandardOutput();
    }

    static QByteArrayList midicsv(const QByteArray &bytes) { return outputFor("midicsv"_s, {}, bytes).split('\n'); }

    /// The lines of midicsv that are notes.
    static QByteArrayList notesOf(const QByteArray &bytes) {
        QByteArrayList lines = midicsv(bytes);
        const auto isNoNote = [](const QByteArray &line) { return !line.contains("Note_o"); };
        lines.erase(std::remove_if(lines.begin(), lines.end(), isNoNote), lines.end());
        return lines;
    }

    /// The lines that a script in Python leaves in its list "out" about the file sys.argv[1].
    QString python(const QString &script, const QByteArray &bytes) const {
        const QString whole = "import sys, mido, mutagen.id3, mutagen.mp3\n"_s + script + "print('; '.join(out))"_s;
        const QByteArray told = outputFor(kPython, {"-X"_s, "utf8"_s, "-c"_s, whole}, bytes);
        return QString::fromUtf8(told.constData(), told.size()).trimmed(); // zero bytes inside are kept
    }

    /// Type, title, copyright, key, number of notes and playing time of a MIDI file, and the maker's own events.
    QString mido(const QByteArray &bytes) const {
        return python(R"(
song = mido.MidiFile(sys.argv[1])
events = [m for t in song.tracks for m in t]
ticks = max(sum(m.time for m in t) for t in song.tracks)
tempo = [m.tempo for m in events if m.type == 'set_tempo'][0]
out = ['type %d' % song.type, 'notes %d' % sum(m.type == 'note_on' for m in events),
       'seconds %.3f' % mido.tick2second(ticks, song.ticks_per_beat, tempo)]
for m in events:
    if m.type == 'track_name': out.append('title ' + m.name)
    if m.type == 'copyright': out.append('copyright ' + m.text)
    if m.type == 'key_signature': out.append('key ' + m.key)
    if m.type == 'unknown_meta' and m.type_byte == 0x4B:
        out.append('own %d %s' % (m.data[0], bytes(m.data[1:]).decode('latin-1')))
out.sort()
)"_s,
                      bytes);
    }

    /// Version, texts, unknown frames, size, and playing time in seconds of an MP3 file.
    QString mutagen(const QByteArray &bytes) const {
        return python(R"(
tag = mutagen.id3.ID3(sys.argv[1])
out = ['version %d.%d' % tag.version[:2]]
out += [key + ' ' + tag[key].text[0] for key in 'TIT2 TPE1 TCON TCOM TKEY TLEN TBPM'.split()]
out += ['unknown ' + bytes(frame[:4]).decode() for frame in tag.unknown_frames]
out += ['size %d' % tag.size, 'playing %r' % mutagen.mp3.MP3(sys.argv[1]).info.length]
)"_s,
                      bytes);
    }
};

QTEST_GUILESS_MAIN(TestSongsOthersRead)
#include "tst_songsothersread.moc"
