#include "opentransfer.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"
#include "transfertest.h"

namespace {

const QString kCopying = "label Copia di %1 file su Corvin4 in corso ..."_s;

} // namespace

/// Drops, as a person makes them.
class TestTransferCopy : public QObject
{
    Q_OBJECT

private slots:
    void droppedFilesAndFoldersArriveAndAreShown() {
        OpenForPlayer open;
        QVERIFY(open.row("My Songs"_s).isValid());
        open.pc.addFile("album/one.mid"_s, "1");
        open.pc.addFile("album/disc 2/two.mid"_s, "22");
        open.pc.addFile("loose.mp3"_s, "333");
        const QMap<QString, QByteArray> songs = contentBelow(open.pc.path());
        QCOMPARE(songs.values(), (QByteArrayList{"22", "1", "333"}));
        open.drop({open.pc.path("album"_s), open.pc.path("loose.mp3"_s)});
        QCOMPARE(contentBelow(open.player.root()), songs);
        QCOMPARE(contentBelow(open.pc.path()), songs);
        QTRY_COMPARE(open.names(), (QStringList{"album"_s, "My Songs"_s, "loose.mp3"_s}));
        QVERIFY(open.tree()->isExpanded(open.top()));
        QTRY_COMPARE(open.tree()->model()->rowCount(open.top()), 2);
    }

    void dropTellsItsStepsInOrderAndLeavesTheStyleAsItWas() {
        OpenForPlayer open;
        const QString style = child<QLabel>(open.page, "dropArea")->styleSheet();
        open.dropNew(words("album/one.mid loose.mid"), words("album loose.mid"));
        QCOMPARE(open.told(),
                 (QStringList{"min 0"_s, "max 0"_s, "value 0"_s, "visible 1"_s, "label "_s + kCounting,
                              "log Transfer : Start trasferimento in  \"%1\""_s.arg(open.player.root()),
                              "log Transfer : N. Files   2"_s, "max 2"_s, "format %v"_s, kCopying.arg(2), "increase"_s,
                              "increase"_s, "log Transfer : Fine Copia"_s, kEnd, "stop 0"_s}));
        QVERIFY(open.recorder.log().contains(QtInfoMsg, "Transfer : Fine Copia"_s));
        QVERIFY(!open.page.busy);
        QCOMPARE(child<QLabel>(open.page, "dropArea")->styleSheet(), style);
    }

    void dropOnAFolderRowGoesIntoThatFolder() {
        OpenForPlayer open;
        open.dropAt(open.overRow("My Songs"_s), {open.pc.addFile("a.mid"_s)});
        QCOMPARE(open.player.files(), QStringList{"My Songs/a.mid"_s});
        QCOMPARE(open.page.currentFolder, open.player.path("My Songs"_s));
        QCOMPARE(open.page.dropTarget, QString());
        QCOMPARE(textOf(open.page, "labelFolder"), "My Songs"_s);
        QTRY_COMPARE(open.names(), words("Rock a.mid"));
        QCOMPARE(open.tree()->currentIndex().data().toString(), "My Songs"_s);
        QVERIFY(!open.table()->selectionModel()->hasSelection());
    }

    void dropGoesIntoTheFolderChosenInTheTreeAlsoOverAFileRow() {
        OpenForPlayer open({"My Songs/there.mid"_s});
        const QAbstractItemModel *model = open.tree()->model();
        QTRY_COMPARE(model->rowCount(open.top()), 1);
        open.page.on_treeView_clicked(model->index(0, 0, open.top()));
        open.dropNew(words("a.mid"));
        open.dropAt(open.overRow("there.mid"_s), {open.pc.addFile("b.mid"_s)});
        QCOMPARE(open.player.files(), (QStringList{"My Songs/a.mid"_s, "My Songs/b.mid"_s, "My Songs/there.mid"_s}));
        QCOMPARE(open.page.currentFolder, open.player.path("My Songs"_s));
    }

    void namesOfAllKindsArrive_data() {
        columns<QString>("name");
        row("blanks", "  la mia  canzone .mid"_s);
        row("accents", "Perché è così – Größe.mid"_s);
        row("percent signs", "100%25 %1 50%.mid"_s);
#ifdef Q_OS_UNIX
        row("hash and question marks", "song #1?.mid"_s);
        row("quotes", "l'amore \"vero\".mid"_s);
#endif
        row("outside the basic plane", "🎤 karaoke.mid"_s);
        row("no extension", "README"_s);
    }

    void namesOfAllKindsArrive() {
        QFETCH(QString, name);
        OpenForPlayer open;
        open.pc.addFile("folder/"_s + name, "in a folder");
        open.dropNew({name}, {name, "folder"_s});
        QCOMPARE(open.player.content(name), QByteArray("pc"));
        QCOMPARE(open.player.content("folder/"_s + name), QByteArray("in a folder"));
    }

    void countedAndTriedFilesMayDiffer_data() {
        columns<QStringList, QStringList, int>("files", "dropped", "tries");
        row("folder may end with a slash", words("album/a.mid"), words("album/"), 1);
        row("hidden files are left out", words("album/.hidden album/a.mid"), words("album"), 1);
        row("missing file is no file but a try of its own", words("album/a.mid"), words("missing.mid album"), 2);
    }

    void countedAndTriedFilesMayDiffer() {
        QFETCH(QStringList, files);
        QFETCH(QStringList, dropped);
        QFETCH(int, tries);
        OpenForPlayer open;
        BoxAnswerer boxes;
        if (dropped.contains("missing.mid"_s))
            boxes.answer(Titles::kNotAllCopied, Buttons::kOk);
        open.dropNew(files, dropped);
        QVERIFY(open.hasTold(kCopying.arg(1)));
        QCOMPARE(open.recorder.count("increase"_s), tries);
        const QString missing = "!QFile::copy - src : \"%1\""_s.arg(open.pc.path("missing.mid"_s));
        QCOMPARE(open.recorder.log().contains(QtDebugMsg, missing), dropped.contains("missing.mid"_s));
        QCOMPARE(open.player.files(), words("album/a.mid"));
    }

    void emptyFolderCountsNothingAndIsMade() {
        OpenForPlayer open;
        open.drop({open.pc.addFolder("empty"_s)});
        QVERIFY(QFileInfo(open.player.path("empty"_s)).isDir());
        QVERIFY(open.hasTold(kCopying.arg(0)));
        QCOMPARE(open.recorder.of("max"_s), words("0 1"));
        QCOMPARE(open.recorder.count("increase"_s), 0);
        QVERIFY(open.page.isFinishPending());
    }

    void dropWithoutLocalFilesOnlyEntersTheFolderUnderTheCursor() {
        OpenForPlayer open;
        Drag drag(open.page, {QUrl("https://example.org/song.mid"_s)});
        QVERIFY(drag.enter(open.overDropArea()));
        QVERIFY(drag.drop(open.overDropArea()));
        QCOMPARE(open.page.currentFolder, open.player.root());
        const QPoint row = open.overRow("My Songs"_s);
        QVERIFY(drag.enter(row) && drag.move(row) && drag.drop(row));
        QCOMPARE(open.page.currentFolder, open.player.path("My Songs"_s));
        Drag text(open.page, {});
        QVERIFY(text.enter(open.overDropArea()));
        text.drop(open.overDropArea());
        QCOMPARE(open.told(), QStringList());
        QVERIFY(!open.page.busy);
        QCOMPARE(open.blocked(), 0);
        QVERIFY(!open.page.isFinishPending());
    }

    void subFoldersComeBeforeFiles() {
        OpenForPlayer open;
        QList<QStringList> atEachFile;
        open.atEachStep([&] { atEachFile.append(open.player.files()); });
        open.dropNew(words("album/a.mid album/z/z.mid"), words("album"));
        QCOMPARE(atEachFile, (QList<QStringList>{{}, {"album/z/z.mid"_s}}));
    }

    void countOfAPath_data() {
        columns<QString, int>("path", "files");
        row("missing", "nothing"_s, 0);
        row("file", "tree/a.mid"_s, 1);
#ifdef Q_OS_UNIX
        row("link to a file", "link"_s, 1);
#endif
        row("empty folder", "tree/empty"_s, 0);
        row("tree without its links and hidden files", "tree"_s, 3);
    }

    void countOfAPath() {
        QFETCH(QString, path);
        QFETCH(int, files);
        OpenForPlayer open;
        PcFolder &pc = open.pc;
        for (const QString &file : words("tree/a.mid tree/b/b.mid tree/b/c/c.mid tree/.hidden"))
            pc.addFile(file);
        pc.addFolder("tree/empty"_s);
#ifdef Q_OS_UNIX // elsewhere a link is a file
        QVERIFY(QFile::link(pc.path("tree/a.mid"_s), pc.path("link"_s)));
        QVERIFY(QFile::link(pc.path("tree/a.mid"_s), pc.path("tree/link to a file"_s)));
        QVERIFY(QFile::link(pc.path("tree/b"_s), pc.path("tree/link to a folder"_s)));
#endif
        QCOMPARE(open.page.countFiles(pc.path(path)), files);
    }

    void linksInAFolderAreCopiedThoughNotCounted() {
        SKIP_ON_WINDOWS("links are files of another kind here");
        OpenForPlayer open;
        const QString target = open.pc.addFile("elsewhere/linked.mid"_s, "linked");
        open.pc.addFolder("album"_s);
        QVERIFY(QFile::link(target, open.pc.path("album/two.mid"_s)));
        QVERIFY(QFile::link(open.pc.path("elsewhere"_s), open.pc.path("album/more"_s)));
        open.dropNew(words("album/one.mid"), words("album"));
        QVERIFY(open.hasTold(kCopying.arg(1)));
        QCOMPARE(open.recorder.count("increase"_s), 3);
        QCOMPARE(open.player.content("album/two.mid"_s), QByteArray("linked"));
        QCOMPARE(open.player.content("album/more/linked.mid"_s), QByteArray("linked"));
        QVERIFY(!QFileInfo(open.player.path("album/two.mid"_s)).isSymLink());
    }
};

PAGE_TEST_MAIN(TestTransferCopy)
#include "tst_transfercopy.moc"
