#include "disk/filecopy.h"

#include "filecopytest.h"

#include "support/exfatvolume.h"
#include "support/limits.h"
#include "support/platform.h"

namespace {

const QString kUnreadable = "/proc/self/mem"_s; // a regular file whose first byte cannot be read

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
