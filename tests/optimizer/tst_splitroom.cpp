#include "optimizer/splitroom.h"

#include "optimizer/moveentry.h"
#include "support/files.h"
#include "support/given.h"
#include "support/limits.h"

/// What is reckoned before a folder is set aside, and how its content changes places.
class TestSplitRoom : public QObject
{
    Q_OBJECT

    static SplitRoom roomFor(int songs, int companions, int nameLength) {
        SplitRoom room;
        for (int i = 0; i < songs; ++i)
            room.addSong(QString(nameLength, QLatin1Char('s')));
        for (int i = 0; i < companions; ++i)
            room.addFile(QString(nameLength, QLatin1Char('c')));
        return room;
    }
    static QStringList listed(const QString &folder) {
        QStringList files;
        const QMap<QString, QByteArray> found = contentBelow(folder);
        for (auto file = found.begin(); file != found.end(); ++file)
            files.append(file.key() + "="_s + QString::fromUtf8(file.value()));
        return files;
    }
    static void put(const QString &folder, const QStringList &files) {
        QDir().mkpath(folder);
        for (const QString &file : files)
            putFile(folder + "/"_s + file.section(QLatin1Char('='), 0, 0), file.section(QLatin1Char('='), 1).toUtf8());
    }

private slots:
    void foldersAreOneForEachInitialAndOneForEachFullOne_data() {
        columns<int, int, int, int>("songs", "companions", "initials", "folders");
        row("none", 0, 0, 37, 0);
        row("fewer songs than initials", 3, 0, 37, 3);
        row("899 of one initial", 899, 0, 1, 1);
        row("900 of one initial", 900, 0, 1, 2);
        row("companions count", 450, 450, 1, 2);
        row("1056 songs", 1056, 0, 37, 38);
    }
    void foldersAreOneForEachInitialAndOneForEachFullOne() {
        const SplitRoom room = roomFor(given<int>("songs"), given<int>("companions"), 8);
        QCOMPARE(room.mostFolders(given<int>("initials"), 900), given<int>("folders"));
    }

    void bytesAreClustersOfFoldersAndNames_data() {
        columns<int, int, int, qint64>("files", "nameLength", "folders", "clusters");
        // With room for a number a name of 5 is 13 characters: 3 entries of 32 bytes.
        row("nothing but the folder and one to spare", 0, 5, 0, qint64(2));
        row("a cluster of names begins", 1, 5, 1, qint64(1 + 1 + 2));
        row("42 names fit into a cluster", 42, 5, 1, qint64(1 + 1 + 2));
        row("43 do not", 43, 5, 1, qint64(1 + 2 + 2));
        row("a character more is an entry more", 32, 6, 1, qint64(1 + 1 + 2));
        row("one of those more", 33, 6, 1, qint64(1 + 2 + 2));
    }
    void bytesAreClustersOfFoldersAndNames() {
        const SplitRoom room = roomFor(given<int>("files"), 0, given<int>("nameLength"));
        QCOMPARE(room.bytesNeeded(given<int>("folders"), 4096), given<qint64>("clusters") * 4096);
    }

    void entryNeverTakesThePlaceOfAnother() {
        const PcFolder folder;
        put(folder.path(), words("a=1 b=2 sub/c=3"));
        QVERIFY(!moveEntry(folder.path("a"_s), folder.path("b"_s)));
        QVERIFY(!moveEntry(folder.path("a"_s), folder.path("sub"_s)));
        QVERIFY(!moveEntry(folder.path("missing"_s), folder.path("d"_s)));
        QCOMPARE(listed(folder.path()), words("a=1 b=2 sub/c=3"));
        QVERIFY(moveEntry(folder.path("sub"_s), folder.path("other"_s)));
        QCOMPARE(listed(folder.path()), words("a=1 b=2 other/c=3"));
    }

    void folderHasItsContentBackWhateverItHoldsByThen_data() {
        columns<QStringList, QStringList, QStringList>("aside", "folder", "after");
        const QStringList none;
        row("an empty folder is in the way", words("a=1 .b=2 c/d=3"), none, words(".b=2 a=1 c/d=3"));
        row("files", words("a.mid=1"), words("b.mid=2"), words("a.mid=1 b.mid=2"));
        row("taken names", words("a.mid=1 a.cdg=2 b=3 c/x=4"), words("a.cdg=5 b=6 c=7"),
            words("a(1).cdg=2 a(1).mid=1 a.cdg=5 b(1)=3 b=6 c(1)/x=4 c=7"));
        row("nothing left aside", none, words("a=1"), words("a=1"));
    }
    void folderHasItsContentBackWhateverItHoldsByThen() {
        const PcFolder pc;
        put(pc.path("X.old"_s), given<QStringList>("aside"));
        put(pc.path("X"_s), given<QStringList>("folder"));
        QVERIFY(putBack(pc.path("X.old"_s), pc.path("X"_s)));
        QVERIFY(!QFileInfo::exists(pc.path("X.old"_s)));
        QStringList after = listed(pc.path("X"_s));
        QStringList expected = given<QStringList>("after");
        after.sort();
        expected.sort();
        QCOMPARE(after, expected);
    }

#ifdef Q_OS_UNIX
    // As when another program holds a folder: what it does not hold must not stay under the wrong name for that.
    void whatCannotComeBackStaysAsideAlone() {
        if (::geteuid() != 0)
            QSKIP("Only root can give a folder to somebody else");
        const PcFolder pc;
        const QFile::Permissions readable = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup | QFile::ExeGroup;
        put(pc.path("X.old"_s), words("a.mid=1 b/c=2"));
        put(pc.path("X"_s), words("d.mid=3"));
        // Nobody may give X.old another name, and a folder that may not be written to gets no other parent.
        for (const char *folder : {"X", "X.old", "X.old/b"})
            QCOMPARE(::chown(qPrintable(pc.path(QLatin1String(folder))), NoRoot::kNobody, NoRoot::kNobody), 0);
        QVERIFY(QFile::setPermissions(pc.path("X.old/b"_s), readable));
        QVERIFY(QFile::setPermissions(pc.path(), readable | QFile::WriteOwner));
        bool whole = true;
        {
            const NoRoot noRoot;
            whole = putBack(pc.path("X.old"_s), pc.path("X"_s));
        }
        QVERIFY(!whole);
        QCOMPARE(listed(pc.path("X"_s)), words("a.mid=1 d.mid=3"));
        QCOMPARE(listed(pc.path("X.old"_s)), words("b/c=2"));
    }
#endif
};

QTEST_GUILESS_MAIN(TestSplitRoom)
#include "tst_splitroom.moc"
