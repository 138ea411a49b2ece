#include "disk/filecopy.h"

#include "disk/datafolder.h"

#include "support/exfatvolume.h"
#include "support/files.h"
#include "support/limits.h"
#include "support/platform.h"
#include "support/testing.h"

namespace {

constexpr int kBlock = 1024 * 1024;
const QString kUnreadable = "/proc/self/mem"_s; // a regular file whose first byte cannot be read

using Files = QMap<QString, QByteArray>;

QByteArray pattern(int size) {
    QByteArray bytes(size, Qt::Uninitialized);
    for (int i = 0; i < size; ++i)
        bytes[i] = char((i * 31 + i / 251) & 0xff);
    return bytes;
}

/// A folder with these files.
struct Folder : PcFolder
{
    explicit Folder(const Files &files) {
        for (auto file = files.cbegin(); file != files.cend(); ++file)
            addFile(file.key(), file.value());
    }
    Files now() const { return contentBelow(path()); }
};

} // namespace

Q_DECLARE_METATYPE(CopyResult)

class TestFileCopy : public QObject
{
    Q_OBJECT

private slots:
    void contentArrivesWhatever_data() {
        columns<int, int>("size", "rounds");
        row("empty", 0, 0);
        row("1 byte", 1, 0);
        row("a block less 1", kBlock - 1, 0);
        row("a block", kBlock, 0);
        row("a block and 1", kBlock + 1, 1);
        row("two blocks", 2 * kBlock, 1);
        row("three blocks", 3 * kBlock, 2);
        row("three blocks and 7", 3 * kBlock + 7, 3);
    }

    void contentArrivesWhatever() {
        QFETCH(int, size);
        QFETCH(int, rounds);
        const QByteArray content = pattern(size);
        const Folder folder({{"source"_s, content}});
        QCOMPARE(copyFile(folder.path("source"_s), folder.path("copy"_s)), CopyResult::Copied);
        int seen = 0; // events are processed between blocks only
        QCOMPARE(copyFile(folder.path("source"_s), folder.path("copy 2"_s), [&seen] { return ++seen > 0; }),
                 CopyResult::Copied);
        QCOMPARE(seen, rounds);
        QCOMPARE(folder.now(), (Files{{"source"_s, content}, {"copy"_s, content}, {"copy 2"_s, content}}));
    }

    void permissionsAreCopied() {
        const Folder folder({{"source"_s, "x"}});
        const QFile::Permissions wanted = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
        QVERIFY(QFile::setPermissions(folder.path("source"_s), wanted));
        QCOMPARE(copyFile(folder.path("source"_s), folder.path("copy"_s)), CopyResult::Copied);
        QCOMPARE(QFile::permissions(folder.path("copy"_s)), QFile::permissions(folder.path("source"_s)));
    }

    void refusalChangesNothing_data() {
        columns<bool, QString, QString, CopyResult>("replace", "source", "destination", "result");
        row("existing file", false, "source"_s, "old"_s, CopyResult::DestinationExists);
        row("existing folder", false, "source"_s, "folder"_s, CopyResult::DestinationExists);
        row("existing file before an unreadable source", false, "none"_s, "old"_s, CopyResult::DestinationExists);
        row("missing folder cannot take a file", false, "source"_s, "none/copy"_s, CopyResult::NotCreated);
        row("source is missing", false, "none"_s, "copy"_s, CopyResult::SourceUnreadable);
        row("source is a folder", false, "folder"_s, "copy"_s, CopyResult::SourceUnreadable);
        row("missing source keeps the old file", true, "none"_s, "old"_s, CopyResult::SourceUnreadable);
        row("folder is never replaced", true, "source"_s, "folder"_s, CopyResult::DestinationExists);
#ifdef Q_OS_UNIX
        row("source is a dangling link", false, "dangling"_s, "copy"_s, CopyResult::SourceUnreadable);
        row("source is a pipe nobody writes to", false, "pipe"_s, "copy"_s, CopyResult::SourceUnreadable);
        row("source opens, but does not read", false, kUnreadable, "copy"_s, CopyResult::SourceUnreadable);
        row("unreadable source keeps the old file", true, kUnreadable, "old"_s, CopyResult::SourceUnreadable);
        row("file is never replaced by itself", true, "old"_s, "old"_s, CopyResult::DestinationExists);
        row("file is never replaced by a link to it", true, "link"_s, "old"_s, CopyResult::DestinationExists);
#endif
    }

    void refusalChangesNothing() {
        QFETCH(bool, replace);
        QFETCH(QString, source);
        QFETCH(QString, destination);
        QFETCH(CopyResult, result);
        Folder folder({{"source"_s, "new"}, {"old"_s, "old"}});
        folder.addFolder("folder"_s);
#ifdef Q_OS_UNIX
        QVERIFY(QFile::link(folder.path("nothing"_s), folder.path("dangling"_s)));
        QVERIFY(QFile::link(folder.path("old"_s), folder.path("link"_s)));
        QVERIFY(runProgram("mkfifo"_s, {folder.path("pipe"_s)}));
#endif
        const QStringList before = entriesBelow(folder.path());
        const QString from = source == kUnreadable ? source : folder.path(source);
        QCOMPARE((replace ? replaceFile(from, folder.path(destination)) : copyFile(from, folder.path(destination))),
                 result);
        QCOMPARE(entriesBelow(folder.path()), before);
        QCOMPARE(folder.content("source"_s), QByteArray("new"));
        QCOMPARE(folder.content("old"_s), QByteArray("old"));
    }

    void fullDiskLeavesNothingHalfWritten() {
#ifdef Q_OS_UNIX
        const Folder folder({{ "source"_s, pattern(3 * kBlock) }});
        std::optional<FullDisk> full(rlim_t(2) * kBlock);
        const CopyResult result = copyFile(folder.path("source"_s), folder.path("copy"_s));
        full.reset();
        QCOMPARE(result, CopyResult::NotWritten);
        QCOMPARE(folder.files(), words("source"));
#else
        QSKIP("No limit on the size of a file here");
#endif
    }

    void replacedFileHasTheNewContentAndNoOtherFileIsLeft_data() {
        columns<QString, QByteArray, bool>("name", "content", "readOnly");
        row("small", "old"_s, QByteArray("new"), false);
        row("several blocks", "old"_s, pattern(2 * kBlock), false);
        row("longest name", QString(251, QLatin1Char('n')) + ".mid"_s, QByteArray("new"), false);
        row("read-only file", "old"_s, QByteArray("new"), true);
        row("name of a copy that was left over", "corvin4-copy0.tmp"_s, QByteArray("new"), false);
    }

    void replacedFileHasTheNewContentAndNoOtherFileIsLeft() {
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        QFETCH(bool, readOnly);
        const Folder folder({{"source"_s, content}, {name, "old"}, {"beside"_s, "beside"}});
        if (readOnly)
            QVERIFY(QFile::setPermissions(folder.path(name), QFile::ReadOwner | QFile::ReadUser));
        QCOMPARE(replaceFile(folder.path("source"_s), folder.path(name)), CopyResult::Copied);
        QCOMPARE(folder.now(), (Files{{"source"_s, content}, {name, content}, {"beside"_s, "beside"}}));
    }

    void copyThatAKilledRunLeftIsCleanedAway() {
        const Folder folder({{"source"_s, "new"}, {"old"_s, "old"}, {"corvin4-copy0.tmp"_s, "half"}});
        QVERIFY(QFile::setPermissions(folder.path("corvin4-copy0.tmp"_s), QFile::ReadOwner | QFile::ReadUser));
        QCOMPARE(replaceFile(folder.path("source"_s), folder.path("old"_s)), CopyResult::Copied);
        QCOMPARE(folder.now(), (Files{{"source"_s, "new"}, {"old"_s, "new"}}));
        // What is to be copied may bear that name itself, and what stands there may be a folder.
        const Folder left({{"corvin4-copy0.tmp"_s, "new"}, {"corvin4-copy1.tmp/x"_s, "x"}, {"old"_s, "old"}});
        QCOMPARE(replaceFile(left.path("corvin4-copy0.tmp"_s), left.path("old"_s)), CopyResult::Copied);
        QCOMPARE(left.now(), (Files{{"corvin4-copy0.tmp"_s, "new"}, {"corvin4-copy1.tmp/x"_s, "x"}, {"old"_s, "new"}}));
    }

    void oldFileStaysWhenTheDiskTakesLessThanWasCounted_data() {
        columns<QString>("sourcesDisk");
        row("source on the same disk", QDir::tempPath());
        row("source on another disk", "/dev/shm"_s);
    }
    void oldFileStaysWhenTheDiskTakesLessThanWasCounted() {
#ifdef Q_OS_UNIX
        QFETCH(QString, sourcesDisk);
        const Folder folder({{ "old"_s, "old" }});
        const QTemporaryDir other(sourcesDisk + "/XXXXXX"_s);
        if (!other.isValid())
            QSKIP("No such disk here");
        const QString source = putFile(other.filePath("source"_s), pattern(3 * kBlock));
        std::optional<FullDisk> full(rlim_t(2) * kBlock);
        const CopyResult result = replaceFile(source, folder.path("old"_s));
        full.reset();
        QCOMPARE(result, CopyResult::NotWritten);
        QCOMPARE(folder.now(), (Files{{ "old"_s, "old" }}));
#else
        QSKIP("No limit on the size of a file here");
#endif
    }

    void oldFileGoesFirstOnlyWhereItsRoomIsEnough_data() {
        columns<int, int, int, bool>("freeClusters", "oldBytes", "moreThanRoom", "replaced");
        row("full, the same clusters", 0, 1, 0, true);
        row("full, a byte more than its cluster", 0, 1, 1, false);
        row("full, several clusters", 0, 5 * kBlock, 0, true);
        row("some room, all of it and the old one's", 3, kBlock, 0, true);
        row("some room, a byte too much", 3, kBlock, 1, false);
    }
    void oldFileGoesFirstOnlyWhereItsRoomIsEnough() {
        QFETCH(int, freeClusters);
        QFETCH(int, oldBytes);
        QFETCH(int, moreThanRoom);
        QFETCH(bool, replaced);
        QString why;
        if (!ExFatVolume::isPossible(&why))
            QSKIP(qPrintable(why));
        const ExFatVolume volume(8, "FULL"_s);
        QVERIFY2(volume.isMounted(), qPrintable(volume.error()));
        const int cluster = QStorageInfo(volume.root()).blockSize();
        const QByteArray old(oldBytes, 'o');
        putFile(volume.path("Songs/old.mid"_s), old);
        const qint64 filler = QStorageInfo(volume.root()).bytesAvailable() - qint64(freeClusters) * cluster;
        putFile(volume.path("filler.mid"_s), QByteArray(int(filler), 'f'));
        QCOMPARE(QStorageInfo(volume.root()).bytesAvailable(), qint64(freeClusters) * cluster);

        PcFolder pc;
        const int room = (freeClusters + (oldBytes + cluster - 1) / cluster) * cluster;
        const QByteArray content = pattern(room + moreThanRoom);
        const CopyResult result = replaceFile(pc.addFile("new.mid"_s, content), volume.path("Songs/old.mid"_s));
        QCOMPARE(result, replaced ? CopyResult::Copied : CopyResult::NotWritten);
        QCOMPARE(filesBelow(volume.path("Songs"_s)), words("old.mid"));
        QCOMPARE(contentOf(volume.path("Songs/old.mid"_s)), replaced ? content : old);
        QCOMPARE(contentOf(volume.path("filler.mid"_s)).size(), int(filler));
    }

    void halfAFileNeverBearsTheName() {
        PcFolder pc;
        const QByteArray content = pattern(4 * kBlock);
        const QString source = pc.addFile("pc/song.mid"_s, content);
        pc.addFile("player/corvin4-copy0.tmp"_s, "half of another");
        const QString target = pc.path("player/song.mid"_s);
        int blocks = 0;
        const CopyResult result = copyFile(source, target, [&] {
            ++blocks;
            return !QFile::exists(target);
        });
        QCOMPARE(result, CopyResult::Copied);
        QVERIFY(blocks > 1);
        QCOMPARE(contentBelow(pc.path("player"_s)), (Files{{"song.mid"_s, content}}));
    }

    void oldFileThatCannotComeBackIsNamed() {
        QString why;
        if (!ExFatVolume::isPossible(&why))
            QSKIP(qPrintable(why));
        const ExFatVolume volume(8, "FULL"_s);
        QVERIFY2(volume.isMounted(), qPrintable(volume.error()));
        const QByteArray old = pattern(3 * kBlock);
        const QString target = volume.path("old.mid"_s);
        putFile(target, old);
        const auto fillUp = [&volume](const QString &name) {
            putFile(volume.path(name), QByteArray(int(QStorageInfo(volume.root()).bytesAvailable()), 'f'));
        };
        fillUp("filler.mid"_s);
        PcFolder pc;
        const QString source = pc.addFile("new.mid"_s, QByteArray(3 * kBlock, 'n'));
        bool taken = false;
        QStringList kept;
        const CopyResult result = replaceFile(
            source, target,
            [&] {
                // Somebody else takes the room as soon as it is free.
                if (!taken && QFileInfo(target).size() < old.size()) {
                    taken = true;
                    fillUp("other.mid"_s);
                }
                return true;
            },
            [&kept](const QString &path) { kept.append(path); });
        QVERIFY(taken);
        QCOMPARE(result, CopyResult::NotWritten);
        QCOMPARE(kept.size(), 1);
        QCOMPARE(QFileInfo(kept.first()).fileName(), "old.mid"_s);
        QVERIFY(kept.first().startsWith(dataFolder()));
        QCOMPARE(contentOf(kept.first()), old);
        QVERIFY(!QFile::exists(target));
    }

    void fileOfThePcBelowAPulledVolumeIsLeftAlone() {
        QString why;
        if (!ExFatVolume::isPossible(&why))
            QSKIP(qPrintable(why));
        PcFolder pc;
        const QString source = pc.addFile("source"_s, pattern(3 * kBlock));
        for (const bool replacing : {false, true}) {
            ExFatVolume volume(8, "PULLED"_s);
            QVERIFY2(volume.isMounted(), qPrintable(volume.error()));
            const QString target = volume.path("song.mid"_s);
            if (replacing)
                putFile(target, "on the player");
            bool pulled = false;
            const auto pull = [&] {
                pulled = pulled || volume.pull();
                putFile(target, "the PC's");
                return false;
            };
            QCOMPARE((replacing ? replaceFile(source, target, pull) : copyFile(source, target, pull)),
                     CopyResult::Stopped);
            QVERIFY(pulled);
            QCOMPARE(contentBelow(volume.root()), (Files{{"song.mid"_s, "the PC's"}}));
            QVERIFY(QFile::remove(target));
        }
    }

    void sameFileIsKnownThroughLinks() {
        SKIP_ON_WINDOWS("links are files of another kind here");
        const Folder folder({{"file"_s, "x"}, {"other"_s, "x"}});
        const QString file = folder.path("file"_s);
        QVERIFY(QFile::link(file, folder.path("link"_s)));
        QVERIFY(isSameFile(file, file));
        QVERIFY(isSameFile(folder.path("link"_s), file));
        QVERIFY(isSameFile(folder.path("./file"_s), file));
        QVERIFY(!isSameFile(file, folder.path("other"_s)));
        QVERIFY(!isSameFile(folder.path("missing"_s), folder.path("missing"_s)));
    }

    void stopBetweenBlocksLeavesNothingAndKeepsTheOldFile() {
        const PcFolder folder;
        const QByteArray large(3 * 1048576, 'n');
        putFile(folder.path("source"_s), large);
        const QString old = putFile(folder.path("old"_s), "old");
        int rounds = 0;
        const auto stopAtTheSecond = [&rounds] { return ++rounds % 2 != 0; };
        QCOMPARE(copyFile(folder.path("source"_s), folder.path("copy"_s), stopAtTheSecond), CopyResult::Stopped);
        QCOMPARE(replaceFile(folder.path("source"_s), old, stopAtTheSecond), CopyResult::Stopped);
        QCOMPARE(rounds, 4);
        QCOMPARE(folder.files(), words("old source"));
        QCOMPARE(contentOf(old), QByteArray("old"));
    }

    void copyHasTheDateThatTheSystemsOwnCopiesHave() {
        const PcFolder folder;
        const QDateTime date(QDate(2001, 2, 3), QTime(4, 5, 6));
        QFile source(putFile(folder.path("source"_s), "x"));
        QVERIFY(source.open(QIODevice::ReadWrite) && source.setFileTime(date, QFileDevice::FileModificationTime));
        source.close();
        QCOMPARE(copyFile(source.fileName(), folder.path("copy"_s)), CopyResult::Copied);
        QVERIFY(QFile::copy(source.fileName(), folder.path("systems"_s)));
        const QDateTime systems = QFileInfo(folder.path("systems"_s)).lastModified();
        const qint64 apart = QFileInfo(folder.path("copy"_s)).lastModified().secsTo(systems);
        QVERIFY2(qAbs(apart) <= 2, qPrintable(QString::number(apart)));
    }
};

QTEST_GUILESS_MAIN(TestFileCopy)
#include "tst_filecopy.moc"
