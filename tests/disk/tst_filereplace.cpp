#include "disk/filecopy.h"

#include "disk/datafolder.h"
#include "filecopytest.h"

#include "support/exfatvolume.h"
#include "support/limits.h"

/// A file that takes the place of another: the old one stays or comes back when it cannot.
class TestFileReplace : public QObject
{
    Q_OBJECT

private slots:
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
};

QTEST_GUILESS_MAIN(TestFileReplace)
#include "tst_filereplace.moc"
