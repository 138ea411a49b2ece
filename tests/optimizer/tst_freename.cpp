#include "optimizer/freename.h"

#include "support/files.h"
#include "support/given.h"

class TestFreeName : public QObject
{
    Q_OBJECT

    static QString freeSong(const QString &folder, const QString &name) {
        return freeSplitBase(folder, name.section(QLatin1Char('.'), 0, -2), name.section(QLatin1Char('.'), -1));
    }
    static QString freeOldFolder(const QString &folder, const QString &name) {
        return freeOldFolderName(folder + "/"_s + name);
    }
    /// Runs a row of the table: what @p search finds for its name in a folder with its taken names.
    static void finds(QString (*search)(const QString &folder, const QString &name)) {
        QFETCH(QStringList, taken);
        PcFolder files;
        PcFolder folders; // a folder takes a name as well as a file does
        for (const QString &name : qAsConst(taken)) {
            files.addFile(name);
            folders.addFolder(name);
        }
        for (const PcFolder *folder : {&files, &folders})
            QCOMPARE(search(folder->path(), given<QString>("name")), folder->path(given<QString>("target")));
    }
    static QStringList hundred(const QString &first, const QString &others) {
        QStringList names(first);
        for (int i = 1; i <= 100; ++i)
            names.append(others.arg(i));
        return names;
    }

private slots:
    void rootFileGetsFreeName_data() {
        columns<QStringList, QString, QString>("taken", "name", "target");
        row("free", QStringList(), "a.mid"_s, "a.mid"_s);
        row("taken", words("a.mid"), "a.mid"_s, "a_1.mid"_s);
        row("taken with 1", words("a.mid a_1.mid"), "a.mid"_s, "a_2.mid"_s);
        row("taken with 100 numbers", hundred("a.mid"_s, "a_%1.mid"_s), "a.mid"_s, "a_101.mid"_s);
        row("gap is used", words("a.mid a_2.mid"), "a.mid"_s, "a_1.mid"_s);
        row("number alone is taken", words("a_1.mid"), "a.mid"_s, "a.mid"_s);
        row("other suffix does not matter", words("a.mp3"), "a.mid"_s, "a.mid"_s);
        row("several dots: the last parts", words("a.b.mid"), "a.b.mid"_s, "a.b_1.mid"_s);
        row("no suffix, free", QStringList(), "readme"_s, "readme"_s);
        row("no suffix gets a dot", words("readme"), "readme"_s, "readme_1."_s);
        row("no suffix, dot taken", words("readme readme_1."), "readme"_s, "readme_2."_s);
        row("percent signs", words("100%1.mid"), "100%1.mid"_s, "100%1_1.mid"_s);
#ifdef Q_OS_UNIX
        row("blanks and quotes", QStringList("it's \"a\".mid"_s), "it's \"a\".mid"_s, "it's \"a\"_1.mid"_s);
#endif
        row("nothing before the dot", words(".mid"), ".mid"_s, "_1.mid"_s);
    }
    void rootFileGetsFreeName() {
        finds(freeRootFileTarget);
    }

    void imageOrVideoGetsFreeName_data() {
        columns<QStringList, QString, QString>("taken", "name", "target");
        row("free", QStringList(), "cover.jpg"_s, "cover.jpg"_s);
        row("taken", words("cover.jpg"), "cover.jpg"_s, "cover_1.jpg"_s);
        row("taken with 1", words("cover.jpg cover_1.jpg"), "cover.jpg"_s, "cover_2.jpg"_s);
        row("taken with 100 numbers", hundred("a.jpg"_s, "a_%1.jpg"_s), "a.jpg"_s, "a_101.jpg"_s);
        row("several dots: the first parts", words("photo.2019.jpg"), "photo.2019.jpg"_s, "photo_1.2019.jpg"_s);
        row("percent signs", words("%1.%2.avi"), "%1.%2.avi"_s, "%1_1.%2.avi"_s);
    }
    void imageOrVideoGetsFreeName() {
        finds(freeMediaTarget);
    }

    void songGetsFreeBase_data() {
        columns<QStringList, QString, QString>("taken", "name", "target");
        row("free", QStringList(), "Song.mid"_s, "Song"_s);
        row("taken", words("Song.mid"), "Song.mid"_s, "Song(1)"_s);
        row("taken with 1", words("Song.mid Song(1).mid"), "Song.mid"_s, "Song(2)"_s);
        row("taken with 100 numbers", hundred("a.mid"_s, "a(%1).mid"_s), "a.mid"_s, "a(101)"_s);
        row("companion alone does not take it", words("Song.dat"), "Song.mid"_s, "Song"_s);
        row("base with dots", words("a.b.mp3"), "a.b.mp3"_s, "a.b(1)"_s);
        row("base with a number", words("Song(1).mid"), "Song(1).mid"_s, "Song(1)(1)"_s);
        row("percent signs", words("%1.mid"), "%1.mid"_s, "%1(1)"_s);
    }
    void songGetsFreeBase() {
        finds(freeSong);
    }

    void oldFolderGetsFreeName_data() {
        columns<QStringList, QString, QString>("taken", "name", "target");
        row("free", QStringList(), "X"_s, "X.old"_s);
        row("one taken", words("X.old"), "X"_s, "X.old1"_s);
        row("two taken", words("X.old X.old1"), "X"_s, "X.old12"_s);
        row("three taken", words("X.old X.old1 X.old12"), "X"_s, "X.old123"_s);
        row("a number that is not tried", words("X.old X.old2"), "X"_s, "X.old1"_s);
        row("only a later one taken", words("X.old1"), "X"_s, "X.old"_s);
    }
    void oldFolderGetsFreeName() {
        finds(freeOldFolder);
    }

    void missingFolderHasEveryNameFree() {
        const PcFolder folder;
        const QString missing = folder.path("missing"_s);
        QCOMPARE(freeRootFileTarget(missing, "a.mid"_s), missing + "/a.mid"_s);
        QCOMPARE(freeMediaTarget(missing, "a.jpg"_s), missing + "/a.jpg"_s);
        QCOMPARE(freeSong(missing, "a.mid"_s), missing + "/a"_s);
    }

    void nameTooLongForTheDiskEndsTheSearch() {
        constexpr int kLongestName = 255;
        PcFolder folder;
        const QString longest = QString(kLongestName - 4, QLatin1Char('a')) + ".mid"_s;
        folder.addFile(longest);
        QVERIFY(freeRootFileTarget(folder.path(), longest).endsWith("a_1.mid"_s));
        const QString folderName(kLongestName - 4, QLatin1Char('b'));
        folder.addFolder(folderName + ".old"_s);
        QVERIFY(freeOldFolder(folder.path(), folderName).endsWith("b.old1"_s));
    }
};

QTEST_GUILESS_MAIN(TestFreeName)
#include "tst_freename.moc"
