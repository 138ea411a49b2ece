// The texts of a tag are read without its pictures, and are those of the whole tag.
#include "songtest.h"
#include "support/files.h"
#include "support/given.h"

using namespace SongFactory;

namespace {

constexpr int kPlainSize = 8; ///< bits of a size byte
constexpr int kShortSize = 7;

QByteArray sizeBytes(int size, int count, int bits) {
    QByteArray bytes;
    for (int i = count - 1; i >= 0; --i)
        bytes.append(char((size >> (i * bits)) & ((1 << bits) - 1)));
    return bytes;
}

/// A frame as a version of the tag has it, with a size of so many bits a byte.
QByteArray sizedFrame(int version, const QByteArray &id, const QByteArray &payload, int bits) {
    if (version == 2)
        return id.left(3) + sizeBytes(payload.size(), 3, kPlainSize) + payload;
    return id + sizeBytes(payload.size(), 4, bits) + QByteArray(2, '\0') + payload;
}

QByteArray tagOf(int version, const QByteArray &frames, quint8 flags = 0) {
    return "ID3" + QByteArray(1, char(version)) + QByteArray(1, '\0') + QByteArray(1, char(flags)) +
           sizeBytes(frames.size(), 4, kShortSize) + frames;
}

/// Bytes as in a picture: any, but none that begin a frame.
QByteArray picture(int size) {
    QByteArray bytes(size, Qt::Uninitialized);
    quint32 state = 12345;
    for (char &byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = char(0x80 | (state >> 24));
    }
    for (int i = 500; i < size; i += 3000)
        bytes[i] = '\0';
    return bytes;
}

QByteArray textFrame(const char *id, const char *text) {
    return QByteArray(id) + sizeBytes(int(qstrlen(text)) + 1, 4, kShortSize) + QByteArray(3, '\0') + text;
}

} // namespace

class TestId3Texts : public QObject
{
    Q_OBJECT

private slots:
    void textsAreThoseOfTheWholeTag_data() {
        columns<int, int, int>("version", "bits", "size");
        for (const int version : {2, 3, 4}) {
            for (const int bits : {kPlainSize, kShortSize}) {
                for (const int size : {500, 1024, 1025, 5000, 28768, 60000, 70000, 1000000})
                    row(qPrintable("2.%1, %2 bits, %3 bytes"_s.arg(version).arg(bits).arg(size)), version, bits, size);
            }
        }
    }
    void textsAreThoseOfTheWholeTag() {
        QFETCH(int, version);
        QFETCH(int, bits);
        QFETCH(int, size);
        const QByteArray cover = sizedFrame(version, "APIC", picture(size), bits);
        const QByteArray title = textFrame("TIT2", "the title");
        const QByteArray others = textFrame("TPE1", "the artist") + textFrame("TCON", "Pop");
        const QByteArray late = textFrame("TKEY", "Am");
        for (const int padding : {0, 3, 10, 5000, 40000}) {
            const QByteArray zeros(padding, '\0');
            const QList<QByteArray> orders = {
                title + others + cover + zeros,        cover + title + others + zeros,
                cover + cover + title + cover + zeros, title + cover + others + zeros + late,
                cover + zeros + title + others,        cover + zeros};
            for (const QByteArray &frames : orders)
                compareBoth(tagOf(version, frames));
        }
    }

    void oddTagsAreReadWhole_data() {
        columns<QByteArray>("tag");
        const QByteArray title = textFrame("TIT2", "the title");
        const QByteArray cover = sizedFrame(3, "APIC", picture(60000), kPlainSize);
        row("all bytes shifted", tagOf(3, cover + title, 0x80));
        row("something before the frames", tagOf(3, QByteArray(6, '\x01') + cover + title, 0x40));
        row("a version to come", tagOf(5, cover + title));
        row("no frames at all", tagOf(3, picture(20000) + title));
        row("a frame that claims more than the tag", tagOf(3, "APIC" + QByteArray(4, '\x7F') + picture(20000) + title));
        row("a picture of no known size", tagOf(3, "APIC" + sizeBytes(7000, 4, 8) + picture(20000) + title));
        row("a name in small letters", tagOf(4, "apic" + picture(20000) + title));
        row("a text longer than the tag", tagOf(3, "TXXX" + QByteArray(4, '\x7F') + picture(20000) + title));
        row("a text of which the size is negative", tagOf(3, "TXXX" + QByteArray(4, '\xFF') + picture(20000) + title));
    }
    void oddTagsAreReadWhole() { compareBoth(given<QByteArray>("tag")); }

    void pictureCostsNothing() {
        const QByteArray cover = sizedFrame(3, "APIC", picture(300000), kPlainSize);
        const QByteArray texts = textFrame("TIT2", "the title") + textFrame("TCOP", "somebody");
        QFile file(putFile(m_folder.path("song.mp3"_s), tagOf(3, cover + cover + texts) + QByteArray(9000, 'a')));
        QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
        Id3Tag tag;
        QVERIFY(tag.loadTexts(file, file.read(Id3Tag::kFirstRead)));
        QVERIFY(!tag.isWhole());
        QVERIFY2(tag.bytes().size() < 2000, qPrintable(QString::number(tag.bytes().size())));
        QCOMPARE(tag.title(), "the title"_s);
        QCOMPARE(tag.audioOffset(), qint64(10 + 2 * cover.size() + texts.size()));
    }

    void songIsChangedWithItsPicture() {
        const QByteArray cover = sizedFrame(3, "APIC", picture(60000), kPlainSize);
        const QByteArray audio = silentMp3Frames(3);
        const QString path = putFile(m_folder.path("song.mp3"_s), tagOf(3, cover + textFrame("TIT2", "old")) + audio);
        MetaSong song;
        QVERIFY(song.importFile(path));
        SongInfo info;
        song.getSongInfo(info);
        QCOMPARE(info.title, "old"_s);
        info.title = "new"_s;
        song.setSongInfo(info, true);
        QVERIFY(song.saveToFile(path));
        const QByteArray saved = contentOf(path);
        QVERIFY(saved.contains(cover));
        QVERIFY(saved.endsWith(audio));
        QVERIFY(song.importFile(path));
        song.getSongInfo(info);
        QCOMPARE(info.title, "new"_s);
    }

    void songWhoseTagIsGoneIsNeitherChangedNorSaved() {
        const QByteArray cover = sizedFrame(3, "APIC", picture(60000), kPlainSize);
        const QString path = putFile(m_folder.path("song.mp3"_s), tagOf(3, cover) + silentMp3Frames(3));
        MetaSong song;
        QVERIFY(song.importFile(path));
        putFile(path, "something else");
        SongInfo info;
        info.title = "new"_s;
        song.setSongInfo(info, true);
        QVERIFY(!song.saveToFile(path));
        QCOMPARE(contentOf(path), QByteArray("something else"));
    }

private:
    static QString textsOf(const Id3Tag &tag) {
        return QStringList{tag.title(), tag.artist(), tag.genre(), tag.author(), tag.key()}.join(QLatin1Char('|'));
    }
    /// The texts read from a file are those of the whole tag.
    void compareBoth(const QByteArray &bytes) {
        const QString path = putFile(m_folder.path("song.mp3"_s), bytes + QByteArray(20000, '\xFF'));
        Id3Tag whole;
        const bool taken = whole.load(bytes);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
        Id3Tag tag;
        QCOMPARE(tag.loadTexts(file, file.read(Id3Tag::kFirstRead)), taken);
        QCOMPARE(textsOf(tag), textsOf(whole));
        QCOMPARE(tag.audioOffset(), whole.audioOffset());
        QVERIFY(!tag.isWhole() || tag.bytes() == whole.bytes());
    }

    PcFolder m_folder;
};

QTEST_GUILESS_MAIN(TestId3Texts)
#include "tst_id3texts.moc"
