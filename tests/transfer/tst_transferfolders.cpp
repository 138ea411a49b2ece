#include "opentransfer.h"
#include "transfertest.h"

namespace {

void clickOn(const QAbstractItemView &view, const QModelIndex &index, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QTest::mouseClick(view.viewport(), Qt::LeftButton, keys, view.visualRect(index).center());
}

void doubleClickOn(const QAbstractItemView &view, const QModelIndex &index) {
    clickOn(view, index);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, view.visualRect(index).center());
}

} // namespace

/// What tree and table of the transfer page show, and how a folder is chosen in them.
class TestTransferFolders : public QObject
{
    Q_OBJECT

private slots:
    void treeHasThePlayerAsItsOnlyTopAndFoldersOnly() {
        const OpenForPlayer open(kSongs);
        const QAbstractItemModel *model = open.tree()->model();
        QCOMPARE(model->rowCount(), 1);
        QVERIFY(open.top().data().toString().contains("CORVIN4"_s));
        QTRY_COMPARE(model->rowCount(open.top()), 2);
        QCOMPARE(model->index(0, 0, open.top()).data().toString(), "My Songs"_s);
        QCOMPARE(model->index(1, 0, open.top()).data().toString(), "Videos"_s);
        QVERIFY(open.tree()->isColumnHidden(1));
    }

    void ownFoldersAreHiddenOnlyDirectlyUnderTheRoot() {
        OpenForPlayer open(kSongs + QStringList{"System/Playlist/p.pls"_s, "CorvinUpdate/"_s, "My Songs/System/"_s,
                                                "My Songs/CorvinUpdate/"_s});
        QVERIFY(open.row("My Songs"_s).isValid());
        QVERIFY(!open.names().contains("System"_s));
        QVERIFY(!open.names().contains("CorvinUpdate"_s));
        QTRY_COMPARE(open.tree()->model()->rowCount(open.top()), 2); // My Songs, Videos
        open.enter("My Songs"_s);
        QVERIFY(open.row("System"_s).isValid());
        QVERIFY(open.row("CorvinUpdate"_s).isValid());
    }

    void folderSpelledUnlikeAnOwnOneIsShown() {
        const OpenForPlayer open(kSongs + words("system/"));
        QVERIFY(open.row("system"_s).isValid());
        QTRY_COMPARE(open.tree()->model()->rowCount(open.top()), 3); // My Songs, Videos, system
    }

    void playerWithALowerCaseLabelIsNotShown() {
        const OpenForPlayer open(words("song.mid"), "corvin4"_s);
        QCOMPARE(open.tree()->model()->rowCount(), 0);
        QCOMPARE(open.names(), QStringList());
    }

    void tableShowsFourColumnsFoldersFirstAndNewSongs() {
        OpenForPlayer open(kSongs);
        QTRY_COMPARE(open.names(), (QStringList{"My Songs"_s, "Videos"_s, "a loose.mid"_s}));
        QCOMPARE(open.table()->model()->columnCount(open.table()->rootIndex()), 4);
        for (int column = 0; column < 4; ++column)
            QVERIFY(!open.table()->isColumnHidden(column));
        for (int column : {1, 3})
            QVERIFY(!open.row("a loose.mid"_s).siblingAtColumn(column).data().toString().isEmpty());
        open.player.addFile("new.mid"_s);
        QVERIFY(open.row("new.mid"_s).isValid());
    }

    void namesHaveTheRoomAndNarrowTablesFewerColumns() {
        const OpenForPlayer open(kSongs);
        QVERIFY(open.row("a loose.mid"_s).isValid());
        const QHeaderView *header = open.table()->horizontalHeader();
        for (const int other : {1, 2, 3})
            QVERIFY(header->sectionSize(0) > header->sectionSize(other));
        QTableView *table = open.table();
        const auto shown = [table](int width) {
            table->setFixedWidth(width);
            QCoreApplication::processEvents();
            QString columns;
            for (int column = 0; column < 4; ++column)
                columns += table->isColumnHidden(column) ? QString() : QString::number(column);
            return columns;
        };
        const QStringList steps = {shown(900), shown(520), shown(400), shown(240), shown(900)};
        QCOMPARE(steps.first(), "0123"_s);
        QCOMPARE(steps.last(), "0123"_s);
        QCOMPARE(steps.at(1), "013"_s);
        QCOMPARE(steps.at(2), "01"_s);
        QCOMPARE(steps.at(3), "0"_s);
    }

    void severalRowsCanBeSelected() {
        const OpenForPlayer open(kSongs);
        clickOn(*open.table(), open.row("My Songs"_s));
        clickOn(*open.table(), open.row("a loose.mid"_s), Qt::ControlModifier);
        QCOMPARE(open.table()->selectionModel()->selectedRows().size(), 2);
    }

    void clickInTheTreeMakesTheFolderCurrent() {
        const OpenForPlayer open(kSongs);
        const QAbstractItemModel *model = open.tree()->model();
        QTRY_COMPARE(model->rowCount(open.top()), 2);
        const QModelIndex songs = model->index(0, 0, open.top());
        QTRY_VERIFY(!open.tree()->visualRect(songs).isEmpty());
        clickOn(*open.tree(), songs);
        QCOMPARE(open.page.currentFolder, open.player.path("My Songs"_s));
        QCOMPARE(textOf(open.page, "labelFolder"), "My Songs"_s);
        QTRY_COMPARE(open.names(), words("Rock b.mid"));
        clickOn(*open.tree(), open.top()); // the player: back to the root
        QCOMPARE(open.page.currentFolder, open.player.root());
        QCOMPARE(textOf(open.page, "labelFolder"), QString());
        QVERIFY(open.row("a loose.mid"_s).isValid());
    }

    void anotherFolderClearsTheSelection() {
        OpenForPlayer open(kSongs);
        open.select({"a loose.mid"_s});
        open.page.on_treeView_clicked(open.top()); // the current folder already
        QVERIFY(open.table()->selectionModel()->hasSelection());
        open.enter("My Songs"_s);
        QVERIFY(!open.table()->selectionModel()->hasSelection());
    }

    void doubleClickEntersAFolderAndNoFile() {
        OpenForPlayer open(kSongs);
        QTRY_COMPARE(open.names().size(), 3);
        QTRY_COMPARE(open.names().first(), "My Songs"_s);
        doubleClickOn(*open.table(), open.row("a loose.mid"_s));
        open.page.on_tableView_doubleClicked(QModelIndex());
        open.page.on_treeView_clicked(QModelIndex());
        QCOMPARE(open.page.currentFolder, open.player.root());
        doubleClickOn(*open.table(), open.row("My Songs"_s));
        QCOMPARE(open.page.currentFolder, open.player.path("My Songs"_s));
        doubleClickOn(*open.table(), open.row("Rock"_s).siblingAtColumn(3));
        QCOMPARE(open.page.currentFolder, open.player.path("My Songs/Rock"_s));
        QCOMPARE(textOf(open.page, "labelFolder"), "My Songs/Rock"_s);
        QCOMPARE(open.tree()->currentIndex().data().toString(), "Rock"_s);
    }
};

PAGE_TEST_MAIN(TestTransferFolders)
#include "tst_transferfolders.moc"
