#include "optimizer/titlereader.h"

#include "songfactory/songfactory.h"
#include "songfiles/id3tag.h"
#include "support/platform.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QStringList kSuffixes = {QStringLiteral("mp3"), QStringLiteral("midi"), QStringLiteral("mid"),
                               QStringLiteral("mf3"), QStringLiteral("mf4"),  QStringLiteral("mf5"),
                               QStringLiteral("kar"), QStringLiteral("xmp3"), QStringLiteral("xmid")};
constexpr int kMp3 = 0;
constexpr int kMid = 2;
constexpr int kMf3 = 3;

const QString kBase = QStringLiteral("file.name");
const QString kTitle = QStringLiteral("Perch\u00E9 no");

constexpr int kMidiLimit = 4096;
constexpr int kTagLimit = 1000000;

QByteArray meta(char type, const QByteArray &content)
{
    QByteArray event("\0\xFF", 2);
    event.append(type);
    if (content.size() > 127)
        event.append(static_cast<char>(0x80 | (content.size() >> 7)));
    event.append(static_cast<char>(content.size() & 0x7F));
    return event + content;
}

QByteArray trackName(const QByteArray &name)
{
    return meta(3, name);
}

QByteArray textEvent(const QByteArray &text)
{
    return meta(1, text);
}

/// A MIDI file of one track with these events.
QByteArray midi(const QByteArray &events)
{
    return QByteArray("MThd\0\0\0\6\0\0\0\1\0\x60MTrk\0\0\1\0", 22) + events;
}

QByteArray id3(const QByteArray &frames)
{
    return SongFactory::id3v2TagAround(3, frames);
}

QByteArray titleFrame(const QString &title, int encoding = 0)
{
    return SongFactory::id3v2TextFrame(3, QByteArrayLiteral("TIT2"), title, encoding);
}

QByteArray frame(const char *id, const QByteArray &payload)
{
    QByteArray size;
    for (int shift = 21; shift >= 0; shift -= 7)
        size.append(static_cast<char>((payload.size() >> shift) & 0x7F));
    return QByteArray(id) + size + QByteArray(2, '\0') + payload;
}

SongInfo titled(const QString &title)
{
    SongInfo info;
    info.title = title;
    return info;
}

/// What the whole tag says of an MP3 song with this content.
QString titleOfWholeTag(const QByteArray &content)
{
    Id3Tag tag;
    const QString title = tag.load(content.left(kTagLimit)) ? tag.title() : QString();
    return title.isEmpty() ? kBase : title;
}

/// Bytes that this process has read from files so far, -1 where the system does not count them.
qint64 bytesReadSoFar()
{
    QFile counters(QStringLiteral("/proc/self/io"));
    if (!counters.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray first = counters.readLine();
    return first.startsWith("rchar: ") ? first.mid(7).trimmed().toLongLong() : -1;
}

} // namespace

class TestTitleReader : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void everyFormatHasItsTitle_data();
    void everyFormatHasItsTitle();
    void songWithoutATitleIsCalledByItsFile_data();
    void songWithoutATitleIsCalledByItsFile();
    void fileThatCannotBeOpenedIsCalledByItsName();
    void unknownFormatIsCalledByItsName_data();
    void unknownFormatIsCalledByItsName();

    void mfxTitleIsRead_data();
    void mfxTitleIsRead();
    void midiTitleIsRead_data();
    void midiTitleIsRead();
    void midiTitleAroundTheReadLimit_data();
    void midiTitleAroundTheReadLimit();
    void karaokeSongOfTheFactoryHasItsTitle();
    void mp3TitleIsRead_data();
    void mp3TitleIsRead();
    void mp3TitleAnywhereInTheTagIsThatOfTheWholeTag();
    void mp3TagSizesGiveTheTitleOfTheWholeTag_data();
    void mp3TagSizesGiveTheTitleOfTheWholeTag();

    void noMoreIsReadThanNeeded_data();
    void noMoreIsReadThanNeeded();
    void everyPrefixIsRead_data();
    void everyPrefixIsRead();
    void everyFlippedBitIsRead_data();
    void everyFlippedBitIsRead();

private:
    QString titleOf(int formatIndex, const QByteArray &content);
    QString path(int formatIndex) const;

    QScopedPointer<QTemporaryDir> m_dir;
};

void TestTitleReader::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
}

QString TestTitleReader::path(int formatIndex) const
{
    return m_dir->filePath(kBase + QLatin1Char('.') + kSuffixes.value(formatIndex, QStringLiteral("txt")));
}

QString TestTitleReader::titleOf(int formatIndex, const QByteArray &content)
{
    QFile file(path(formatIndex));
    // A new file each time: some disks write out at once what replaces the content of an old one.
    file.remove();
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        return QStringLiteral("(cannot be written)");
    file.close();
    return readSongTitle(formatIndex, QFileInfo(path(formatIndex)));
}

void TestTitleReader::everyFormatHasItsTitle_data()
{
    QTest::addColumn<int>("formatIndex");
    QTest::addColumn<QByteArray>("song");
    const SongInfo info = titled(kTitle);
    const QByteArray songs[] = {SongFactory::mp3(3, info), SongFactory::midi(info, 1),   SongFactory::midi(info, 0),
                                SongFactory::mfx(3, info), SongFactory::mfx(4, info),    SongFactory::mfx(5, info),
                                SongFactory::midi(info),   SongFactory::mp3(4, info, 3), SongFactory::midi(info, 1)};
    for (int index = 0; index < kSuffixes.size(); ++index)
        QTest::newRow(qPrintable(kSuffixes.at(index))) << index << songs[index];
}

void TestTitleReader::everyFormatHasItsTitle()
{
    QFETCH(int, formatIndex);
    QFETCH(QByteArray, song);
    QCOMPARE(titleOf(formatIndex, song), kTitle);
}

void TestTitleReader::songWithoutATitleIsCalledByItsFile_data()
{
    QTest::addColumn<int>("formatIndex");
    QTest::addColumn<QByteArray>("song");
    const auto row = [](const char *name, int formatIndex, const QByteArray &song) {
        QTest::newRow(name) << formatIndex << song;
    };
    row("MP3 without a tag", kMp3, SongFactory::mp3(0, SongInfo()));
    row("MP3 with an empty tag", kMp3, SongFactory::mp3(3, SongInfo()));
    row("MP3 with a title of blanks", kMp3, SongFactory::mp3(3, titled(QStringLiteral("  "))));
    row("MP3 with a tag of version 2", kMp3, SongFactory::mp3(2, titled(kTitle)));
    row("MIDI without a title", kMid, SongFactory::midi(SongInfo()));
    row("MIDI with a title of blanks", kMid, SongFactory::midi(titled(QStringLiteral("  "))));
    row("MFx without a title", kMf3, SongFactory::mfx(3, SongInfo()));
    row("MFx with a title of blanks", kMf3, SongFactory::mfx(3, titled(QStringLiteral("  "))));
    for (int index = 0; index < kSuffixes.size(); ++index) {
        QTest::newRow(qPrintable(QStringLiteral("empty ") + kSuffixes.at(index))) << index << QByteArray();
        QTest::newRow(qPrintable(QStringLiteral("text in ") + kSuffixes.at(index)))
            << index << QByteArray("TIT2 no song");
    }
}

void TestTitleReader::songWithoutATitleIsCalledByItsFile()
{
    QFETCH(int, formatIndex);
    QFETCH(QByteArray, song);
    QCOMPARE(titleOf(formatIndex, song), kBase);
}

void TestTitleReader::fileThatCannotBeOpenedIsCalledByItsName()
{
    for (int index = 0; index < kSuffixes.size(); ++index) {
        QCOMPARE(readSongTitle(index, QFileInfo(path(index))), kBase);
        QCOMPARE(readSongTitle(index, QFileInfo(m_dir->path())), QFileInfo(m_dir->path()).completeBaseName());
    }
}

void TestTitleReader::unknownFormatIsCalledByItsName_data()
{
    QTest::addColumn<int>("formatIndex");
    QTest::newRow("below") << -1;
    QTest::newRow("above") << 9;
    QTest::newRow("far above") << 1000000;
}

void TestTitleReader::unknownFormatIsCalledByItsName()
{
    QFETCH(int, formatIndex);
    QCOMPARE(titleOf(formatIndex, SongFactory::midi(titled(kTitle))), kBase);
}

void TestTitleReader::mfxTitleIsRead_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<int>("fileSize");
    QTest::addColumn<QString>("title");
    const auto row = [](const char *name, const QByteArray &field, int fileSize, const QString &title) {
        QTest::newRow(name) << field << fileSize << title;
    };
    const QByteArray full(32, 'a');
    row("plain", "Azzurro", 600, QStringLiteral("Azzurro"));
    row("whole field", full, 600, QString::fromLatin1(full));
    row("field without its end", full + "bc", 600, QString::fromLatin1(full));
    row("white space at both ends", " \tAzzurro \n", 600, QStringLiteral("Azzurro"));
    row("accents", "Perch\xE9", 600, QStringLiteral("Perch\u00E9"));
    row("ends at a zero byte", QByteArray("Ab\0cd", 5), 600, QStringLiteral("Ab"));
    row("zero byte first", QByteArray("\0cd", 3), 600, kBase);
    row("dash is a title", "-", 600, QStringLiteral("-"));
    row("511 bytes", "Azzurro", 511, kBase);
    row("512 bytes", "Azzurro", 512, QStringLiteral("Azzurro"));
    row("513 bytes", "Azzurro", 513, QStringLiteral("Azzurro"));
    row("1024 bytes", "Azzurro", 1024, QStringLiteral("Azzurro"));
}

void TestTitleReader::mfxTitleIsRead()
{
    QFETCH(QByteArray, field);
    QFETCH(int, fileSize);
    QByteArray song = QByteArrayLiteral("_MF3").leftJustified(1024, '\0');
    song.replace(122, field.size(), field);
    QTEST(titleOf(kMf3, song.left(fileSize)), "title");
}

void TestTitleReader::midiTitleIsRead_data()
{
    QTest::addColumn<QByteArray>("song");
    QTest::addColumn<QString>("title");
    const auto row = [](const char *name, const QByteArray &events, const QString &title) {
        QTest::newRow(name) << midi(events) << title;
    };
    row("track name", trackName("Azzurro"), QStringLiteral("Azzurro"));
    row("track name of one byte", trackName("A"), QStringLiteral("A"));
    row("track name of 127 bytes", trackName(QByteArray(127, 'a')), QString(127, QLatin1Char('a')));
    row("track name of 128 bytes", trackName(QByteArray(128, 'a')), QString(128, QLatin1Char('a')));
    row("track name of 300 bytes", trackName(QByteArray(300, 'a')), QString(300, QLatin1Char('a')));
    row("white space at both ends", trackName(" Azzurro\r\n"), QStringLiteral("Azzurro"));
    row("accents", trackName("Perch\xE9"), QStringLiteral("Perch\u00E9"));
    row("ends at a zero byte", trackName(QByteArray("Ab\0cd", 5)), QStringLiteral("Ab"));
    row("first of two track names", trackName("Azzurro") + trackName("Piano"), QStringLiteral("Azzurro"));
    row("track name in a later place", meta(0x51, "abc") + textEvent("by me") + trackName("Azzurro"),
        QStringLiteral("Azzurro"));
    row("empty first track name: the others are instruments", trackName("") + trackName("Piano"), kBase);
    row("blank first track name", trackName("  ") + trackName("Piano"), kBase);

    row("karaoke title", textEvent("@TAzzurro"), QStringLiteral("Azzurro"));
    row("karaoke title with blanks", textEvent("@T Azzurro "), QStringLiteral("Azzurro"));
    row("first of two karaoke titles", textEvent("@TAzzurro") + textEvent("@TCelentano"), QStringLiteral("Azzurro"));
    row("empty karaoke title is none", textEvent("@T") + textEvent("@TAzzurro"), QStringLiteral("Azzurro"));
    row("empty karaoke title, track name", textEvent("@T") + trackName("Azzurro"), QStringLiteral("Azzurro"));
    row("karaoke title wins behind a track name", trackName("Soft karaoke") + textEvent("@TAzzurro"),
        QStringLiteral("Azzurro"));
    row("karaoke title wins before a track name", textEvent("@TAzzurro") + trackName("Words"),
        QStringLiteral("Azzurro"));
    row("karaoke title behind an empty track name", trackName("") + textEvent("@TAzzurro"), QStringLiteral("Azzurro"));
    row("karaoke title of 127 bytes", textEvent("@T" + QByteArray(127, 'a')), QString(127, QLatin1Char('a')));
    row("karaoke title of 128 bytes", textEvent("@T" + QByteArray(128, 'a')), QString(128, QLatin1Char('a')));
    row("karaoke title of 129 bytes", textEvent("@T" + QByteArray(129, 'a')), QString(128, QLatin1Char('a')));
    row("karaoke title of 256 bytes", textEvent("@T" + QByteArray(256, 'a')), QString(128, QLatin1Char('a')));
    row("other text is no title", textEvent("Azzurro"), kBase);
    row("small t is no title", textEvent("@tAzzurro"), kBase);
    row("mark alone", textEvent("@"), kBase);
    row("mark inside a text", textEvent("x@TAzzurro"), kBase);
    row("empty text", textEvent("") + "@T", kBase);
    row("other karaoke texts", textEvent("@KMIDI KARAOKE FILE") + textEvent("@LENGL") + textEvent("@TAzzurro"),
        QStringLiteral("Azzurro"));
    row("copyright and markers are no titles", meta(2, "me") + meta(6, "Intro"), kBase);

    row("length past the end",
        QByteArray("\0\xFF\x03\x7F"
                   "Azzurro",
                   11),
        QStringLiteral("Azzurro"));
    row("longest length",
        QByteArray("\0\xFF\x03\xFF\xFF\xFF\x7F"
                   "Azzurro",
                   14),
        QStringLiteral("Azzurro"));
    row("length that never ends",
        QByteArray("\0\xFF\x03\xFF\xFF\xFF\xFF"
                   "Azzurro",
                   14),
        QStringLiteral("Azzurro"));
    row("no length", QByteArray("\0\xFF\x03", 3), kBase);
    row("half a length", QByteArray("\0\xFF\x03\x81", 4), kBase);
    row("no type", QByteArray("\0\xFF", 2), kBase);
    row("FF behind FF",
        QByteArray("\0\xFF\xFF\x03\x02"
                   "Az",
                   7),
        QStringLiteral("Az"));
    row("nothing but FF", QByteArray(5000, '\xFF'), kBase);
    row("no events", QByteArray(), kBase);
}

void TestTitleReader::midiTitleIsRead()
{
    QFETCH(QByteArray, song);
    QTEST(titleOf(kMid, song), "title");
}

void TestTitleReader::midiTitleAroundTheReadLimit_data()
{
    QTest::addColumn<QByteArray>("event");
    QTest::addColumn<int>("bytesInside");
    QTest::addColumn<QString>("title");
    const QByteArray name = trackName("Azzurro");
    const QByteArray text = textEvent("@TAzzurro");
    const auto row = [](const char *title, const QByteArray &event, int bytesInside, const QString &expected) {
        QTest::newRow(title) << event << bytesInside << expected;
    };
    row("name wholly inside", name, name.size(), QStringLiteral("Azzurro"));
    row("name cut by one byte", name, name.size() - 1, QStringLiteral("Azzurr"));
    row("name cut to one byte", name, 5, QStringLiteral("A"));
    row("name cut behind its length", name, 4, kBase);
    row("name cut before its length", name, 3, kBase);
    row("name cut before its type", name, 2, kBase);
    row("name outside", name, 0, kBase);
    row("text wholly inside", text, text.size(), QStringLiteral("Azzurro"));
    row("text cut by one byte", text, text.size() - 1, QStringLiteral("Azzurr"));
    row("text cut behind its mark", text, 6, kBase);
    row("text cut inside its mark", text, 5, kBase);
    row("text outside", text, 0, kBase);
}

void TestTitleReader::midiTitleAroundTheReadLimit()
{
    QFETCH(QByteArray, event);
    QFETCH(int, bytesInside);
    const QByteArray front = midi(QByteArray());
    const QByteArray song = front + QByteArray(kMidiLimit - front.size() - bytesInside, '\0') + event;
    QTEST(titleOf(kMid, song), "title");
}

void TestTitleReader::karaokeSongOfTheFactoryHasItsTitle()
{
    const QStringList texts = {QStringLiteral("@KMIDI KARAOKE FILE"), QStringLiteral("@LITAL"),
                               QStringLiteral("@TAzzurro"), QStringLiteral("@TCelentano")};
    const QStringList lyrics = {QStringLiteral("\\Cer"), QStringLiteral("co"), QStringLiteral("@T never")};
    QCOMPARE(titleOf(6, SongFactory::karaoke(texts, lyrics)), QStringLiteral("Azzurro"));
}

void TestTitleReader::mp3TitleIsRead_data()
{
    QTest::addColumn<QByteArray>("song");
    QTest::addColumn<QString>("title");
    const auto row = [](const char *name, const QByteArray &song, const QString &title) {
        QTest::newRow(name) << song << title;
    };
    const QString wide = QStringLiteral("\u4F60 Perch\u00E9 \U0001F3B5");
    row("Latin-1", id3(titleFrame(kTitle, 0)), kTitle);
    row("UTF-16 with byte-order mark", id3(titleFrame(wide, 1)), wide);
    row("UTF-8", id3(titleFrame(wide, 3)), wide);
    row("UTF-16 without a mark is read in the other order", id3(titleFrame(QStringLiteral("A"), 2)),
        QStringLiteral("\u4100"));
    row("unknown encoding", id3(titleFrame(kTitle, 9)), kBase);
    row("white space at both ends", id3(titleFrame(QStringLiteral(" a ")) + "x"), QStringLiteral("a"));
    row("behind other frames", id3(frame("TPE1", "\0me") + titleFrame(kTitle)), kTitle);
    row("behind padding", id3(QByteArray(5000, '\0') + titleFrame(kTitle)), kTitle);
    row("behind a large picture", id3(frame("APIC", QByteArray(300000, 'p')) + titleFrame(kTitle)), kTitle);
    row("identifier inside another frame",
        id3(frame("TPE1", QByteArray("\0TIT2\0\0\0\2\0\0\0Z", 13)) + titleFrame(kTitle)), QStringLiteral("Z"));
    row("first of two", id3(titleFrame(kTitle) + titleFrame(QStringLiteral("second"))), kTitle);
    row("empty frame", id3(frame("TIT2", QByteArray())), kBase);
    row("encoding byte alone", id3(frame("TIT2", QByteArray(1, '\0'))), kBase);
    row("frame longer than the tag", id3(QByteArray("TIT2\x7F\x7F\x7F\x7F\0\0\0Az", 13)), QStringLiteral("Az"));
    row("identifier at the tag's end", id3(QByteArray("TIT2")), kBase);
    row("half an identifier at the tag's end", id3(QByteArray("TIT")) + titleFrame(kTitle), kBase);
    row("title behind the tag", id3(QByteArray(20, '\0')) + titleFrame(kTitle), kBase);
    row("no tag but a frame", QByteArray(10, '\xFF') + titleFrame(kTitle), kBase);
    row("nine bytes", QByteArray("ID3\3\0\0\0\0\0", 9), kBase);
    row("ten bytes", QByteArray("ID3\3\0\0\0\0\0\0", 10), kBase);
}

void TestTitleReader::mp3TitleIsRead()
{
    QFETCH(QByteArray, song);
    QFETCH(QString, title);
    QCOMPARE(titleOf(kMp3, song), title);
    QCOMPARE(titleOfWholeTag(song), title);
}

// The tag is read a piece at a time: the frame may lie across any border between two pieces.
void TestTitleReader::mp3TitleAnywhereInTheTagIsThatOfTheWholeTag()
{
    for (const int border : {10, 4096 + 10, 4096 + 65536 + 10, 4096 + 2 * 65536 + 10}) {
        for (int offset = border - 30; offset <= border + 2; ++offset) {
            if (offset < Id3Tag::kHeaderSize)
                continue;
            const QByteArray song =
                id3(QByteArray(offset - Id3Tag::kHeaderSize, '\0') + titleFrame(kTitle) + QByteArray(100, '\0'));
            QCOMPARE(titleOf(kMp3, song), kTitle);
        }
    }
}

void TestTitleReader::mp3TagSizesGiveTheTitleOfTheWholeTag_data()
{
    QTest::addColumn<QByteArray>("song");
    const QByteArray frame = titleFrame(kTitle);
    const auto withSize = [](const QByteArray &frames, std::initializer_list<int> size) {
        QByteArray song = id3(frames);
        int at = 6;
        for (const int byte : size)
            song[at++] = static_cast<char>(byte);
        return song;
    };
    QTest::newRow("size byte 80 hex") << withSize(frame + QByteArray(400, '\0'), {0, 0, 0, 0x80});
    QTest::newRow("size bytes 80 hex twice") << withSize(frame + QByteArray(400, '\0'), {0, 0, 0x80, 0x80});
    QTest::newRow("size byte 80 hex, too short") << withSize(frame, {0, 0x80, 0, 0});
    QTest::newRow("size byte 81 hex") << withSize(frame + QByteArray(400, '\0'), {0, 0, 0, 0x81});
    QTest::newRow("size byte FF") << withSize(frame + QByteArray(400, '\0'), {0xFF, 0, 0, 0x20});
    QTest::newRow("largest size") << withSize(frame, {0x7F, 0x7F, 0x7F, 0x7F});
    QTest::newRow("largest size with 80 hex") << withSize(frame, {0x80, 0x80, 0x80, 0x80});
    for (int missing = 0; missing <= 24; ++missing) {
        QByteArray song = id3(frame + QByteArray(20, '\0'));
        song.chop(missing);
        QTest::newRow(qPrintable(QStringLiteral("%1 bytes missing").arg(missing))) << song;
    }
    for (const int size : {kTagLimit - 11, kTagLimit - 10, kTagLimit - 9, kTagLimit, kTagLimit + 1}) {
        const QByteArray early = id3(frame + QByteArray(size - frame.size(), '\0'));
        QTest::newRow(qPrintable(QStringLiteral("tag of %1 bytes, title first").arg(size))) << early;
        const QByteArray late = id3(QByteArray(size - frame.size(), '\0') + frame);
        QTest::newRow(qPrintable(QStringLiteral("tag of %1 bytes, title last").arg(size))) << late;
        for (const int missing : {1, 9, 10, 11}) {
            const QString name = QStringLiteral("tag of %1 bytes, %2 missing").arg(size).arg(missing);
            QTest::newRow(qPrintable(name)) << early.left(early.size() - missing);
        }
    }
}

void TestTitleReader::mp3TagSizesGiveTheTitleOfTheWholeTag()
{
    QFETCH(QByteArray, song);
    QCOMPARE(titleOf(kMp3, song), titleOfWholeTag(song));
    const QByteArray longer = song + QByteArray(1000, '\xFF');
    QCOMPARE(titleOf(kMp3, longer), titleOfWholeTag(longer));
}

void TestTitleReader::noMoreIsReadThanNeeded_data()
{
    QTest::addColumn<int>("formatIndex");
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("mostBytes");
    const SongInfo info = titled(kTitle);
    const QByteArray picture = frame("APIC", QByteArray(900000, 'p'));
    QTest::newRow("mf3") << 3 << SongFactory::mfx(3, info) << kTitle << 512;
    QTest::newRow("mf5") << 5 << SongFactory::mfx(5, info) << kTitle << 512;
    QTest::newRow("mid") << 2 << SongFactory::midi(info) << kTitle << 4096;
    QTest::newRow("mid without a title") << 2 << SongFactory::midi(SongInfo()) << kBase << 4096;
    QTest::newRow("mp3") << 0 << SongFactory::id3v2Tag(3, info) << kTitle << 4106;
    QTest::newRow("mp3 without a tag") << 0 << SongFactory::mp3(0, info) << kBase << 10;
    QTest::newRow("mp3 with a picture behind the title") << 0 << id3(titleFrame(kTitle) + picture) << kTitle << 4106;
    QTest::newRow("mp3 with a picture and no title") << 0 << id3(picture) << kBase << 900030;
    QTest::newRow("mp3 whose title claims all") << 0 << id3("TIT2\x7F\x7F\x7F\x7F" + picture) << QString() << kTagLimit;
}

void TestTitleReader::noMoreIsReadThanNeeded()
{
    SKIP_ON_WINDOWS("what the process reads is counted by Linux");
    constexpr qint64 kSongSize = 60000000;
    constexpr qint64 kCountersSize = 1000; // reading the counters counts too
    QFETCH(int, formatIndex);
    QFETCH(QByteArray, start);
    QFETCH(QString, title);
    QFETCH(int, mostBytes);
    QFile song(path(formatIndex));
    QVERIFY(song.open(QIODevice::WriteOnly));
    QCOMPARE(song.write(start), qint64(start.size()));
    QVERIFY(song.resize(kSongSize));
    song.close();

    const QFileInfo info(path(formatIndex));
    const qint64 before = bytesReadSoFar();
    if (before < 0)
        QSKIP("This system does not count the bytes a process reads.");
    const QString found = readSongTitle(formatIndex, info);
    const qint64 read = bytesReadSoFar() - before;
    if (!title.isEmpty())
        QCOMPARE(found, title);
    QVERIFY2(read <= mostBytes + kCountersSize, qPrintable(QString::number(read)));
}

void TestTitleReader::everyPrefixIsRead_data()
{
    QTest::addColumn<int>("formatIndex");
    QTest::addColumn<QByteArray>("song");
    const SongInfo info = titled(QStringLiteral("Azzurro"));
    QTest::newRow("mp3, Latin-1") << kMp3 << SongFactory::id3v2Tag(3, info, 0, 30);
    QTest::newRow("mp3, UTF-16") << kMp3 << SongFactory::id3v2Tag(3, info, 1, 30);
    QTest::newRow("mp3, UTF-8") << kMp3 << SongFactory::id3v2Tag(4, info, 3, 30);
    QTest::newRow("mid") << kMid << SongFactory::midi(info, 0, SongFactory::Markers::WithBars, 1);
    QTest::newRow("kar") << 6 << SongFactory::karaoke({QStringLiteral("@LITAL"), QStringLiteral("@TAzzurro")}, {});
    QTest::newRow("mf3") << kMf3 << SongFactory::mfx(3, info, 1);
}

void TestTitleReader::everyPrefixIsRead()
{
    constexpr int kMilliseconds = 60000;
    QFETCH(int, formatIndex);
    QFETCH(QByteArray, song);
    const QString whole = QStringLiteral("Azzurro");
    QElapsedTimer time;
    time.start();
    for (int length = 0; length <= song.size(); ++length) {
        const QString title = titleOf(formatIndex, song.left(length));
        // A cut title, the name of the second track of a karaoke song, or none.
        QVERIFY2(title == kBase || whole.startsWith(title) || QStringLiteral("Words").startsWith(title),
                 qPrintable(QStringLiteral("%1 of %2: %3").arg(length).arg(song.size()).arg(title)));
        if (formatIndex == kMp3)
            QCOMPARE(title, titleOfWholeTag(song.left(length)));
    }
    QCOMPARE(titleOf(formatIndex, song), whole);
    QVERIFY(time.elapsed() < kMilliseconds);
}

void TestTitleReader::everyFlippedBitIsRead_data()
{
    everyPrefixIsRead_data();
}

void TestTitleReader::everyFlippedBitIsRead()
{
    constexpr int kMilliseconds = 60000;
    constexpr int kInterestingBytes = 520; // the header block of an MFx song and a little of its stream
    QFETCH(int, formatIndex);
    QFETCH(QByteArray, song);
    QElapsedTimer time;
    time.start();
    for (int byte = 0; byte < qMin(song.size(), kInterestingBytes); ++byte) {
        for (int bit = 0; bit < 8; ++bit) {
            QByteArray flipped = song;
            flipped[byte] = static_cast<char>(flipped.at(byte) ^ (1 << bit));
            const QString title = titleOf(formatIndex, flipped);
            QVERIFY(!title.isEmpty() && title.size() <= kMidiLimit);
            QCOMPARE(title, title.trimmed());
            if (formatIndex == kMp3)
                QCOMPARE(title, titleOfWholeTag(flipped));
            if (formatIndex == kMf3 && (byte < 122 || byte >= 154))
                QCOMPARE(title, QStringLiteral("Azzurro"));
        }
    }
    QVERIFY(time.elapsed() < kMilliseconds);
}

QTEST_GUILESS_MAIN(TestTitleReader)
#include "tst_titlereader.moc"
