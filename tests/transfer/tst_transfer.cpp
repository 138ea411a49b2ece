#include "opentransfer.h"
#include "support/languages.h"

namespace {

const QStringList kSongs = {"My Songs/Rock/a.mid"_s, "My Songs/b.mid"_s, "a loose.mid"_s, "Videos/"_s};

/// Which widgets of the page are visible.
QStringList visible(const Transfer &page) {
    QStringList found;
    for (const QString &name : words("istruzioniTransfer labelInstruction pButPc pushBtnBack pushBtnForward dropArea "
                                     "treeView tableView labelFolder toolButtonDelete")) {
        if (child<QWidget>(page, qPrintable(name))->isVisible())
            found.append(name);
    }
    return found;
}

void clickOn(const QAbstractItemView &view, const QModelIndex &index, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QTest::mouseClick(view.viewport(), Qt::LeftButton, keys, view.visualRect(index).center());
}

void doubleClickOn(const QAbstractItemView &view, const QModelIndex &index) {
    clickOn(view, index);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, view.visualRect(index).center());
}

} // namespace

/// The transfer page apart from drags, copies and deletions: what it shows, and how a folder is chosen.
class TestTransfer : public QObject
{
    Q_OBJECT

private slots:
    void startsHiddenWithFinishDisabled() {
        QWidget parent;
        const Transfer page(&parent);
        QVERIFY(page.isHidden());
        QVERIFY(!page.isFinishPending());
        QVERIFY(!button(page, "pushBtnForward")->isEnabled());
        QVERIFY(button(page, "pushBtnBack")->isEnabled());
        QVERIFY(!page.busy && !page.aborted);
        QCOMPARE(page.overwriteAnswer, 0);
    }

    void textsAreAsAgreed_data() {
        columns<QString>("text");
        row("labelFolder", "SELEZIONA LA CARTELLA DI DESTINAZIONE SUL CORVIN4"_s);
        row("pButPc", "ESPLORA\nPC"_s);
        row("pushBtnBack", "INDIETRO"_s);
        row("pushBtnForward", "FINE"_s);
        row("dropArea", "Trascina Qui File e Cartelle\nPer copiarli nel Corvin4"_s);
        row("labelInstruction", "Clicca su \"ESPLORA PC\" ... e"_s);
    }

    void textsAreAsAgreed() {
        QFETCH(QString, text);
        const Transfer page;
        QCOMPARE(textOf(page, QTest::currentDataTag()), text);
    }

    void signalsAndSlotsComeInTheirOrder() {
        QStringList signalNames;
        QStringList slotNames;
        const QMetaObject &meta = Transfer::staticMetaObject;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            const QMetaMethod method = meta.method(i);
            (method.methodType() == QMetaMethod::Signal ? signalNames : slotNames)
                .append(QString::fromLatin1(method.methodSignature()));
        }
        QCOMPARE(signalNames,
                 words("setProgressBarVisible(bool) setProgressBarMinVal(int) setProgressBarMaxVal(int) "
                       "setProgressBarFormat(QString) updateProgressBarVal(int) increaseProgressBarVal() "
                       "updateLabelAction(QString) setPushButtonStopVisible(bool) backFromTransferToFirstMenu() "
                       "backFromTransferToOttimizza() startOttimizzaProcedure()"));
        QCOMPARE(slotNames, words("on_pButPc_clicked() on_treeView_clicked(QModelIndex) "
                                  "on_tableView_doubleClicked(QModelIndex) on_actionDeleteSelectedItems_triggered() "
                                  "on_pushBtnBack_clicked() on_pushBtnForward_clicked() on_stopActionPressed()"));
    }

    void enteredPageShowsTheInstructionsAloneAndIsInTheRoot() {
        const PlayerWith with(kSongs);
        Transfer page;
        page.prepare(with.player.root());
        page.show();
        QVERIFY(child<QWidget>(page, "istruzioniTransfer")->inherits("IstruzioniTransfer"));
        QCOMPARE(visible(page), words("istruzioniTransfer labelInstruction pButPc pushBtnBack pushBtnForward"));
        QCOMPARE(page.deviceRoot, with.player.root());
        QCOMPARE(page.currentFolder, with.player.root());
        QCOMPARE(page.dropTarget, QString());
    }

    void pcButtonOpensTheHomeFolder() {
        const OpenForPlayer open(kSongs);
        QCOMPARE(open.opening, QStringList{"log Transfer : Enter"_s});
        QTRY_COMPARE(open.fileManager.opened(),
                     QDir::toNativeSeparators(QStandardPaths::writableLocation(QStandardPaths::HomeLocation)));
    }

    void missingFileManagerIsOnlyALogLine() {
        ProgramFolder programs;
        programs.hideOthers();
        for (const QString &name : kFileManagers)
            programs.addBroken(name);
        const PlayerWith with(kSongs);
        Transfer page;
        page.prepare(with.player.root());
        page.show();
        SignalRecorder recorder(page);
        page.on_pButPc_clicked();
        QCOMPARE(recorder.logged().filter("Transfer"_s),
                 (QStringList{"Transfer : Nessun file manager"_s, "Transfer : Enter"_s}));
        QCOMPARE(recorder.lines().size(), recorder.logged().size()); // no signal
        QVERIFY(child<QWidget>(page, "dropArea")->isVisible());
    }

    void pcButtonShowsTheTransferWidgets() {
        const OpenForPlayer open(kSongs);
        QCOMPARE(child<QStackedWidget>(open.page, "stackedWidget")->currentIndex(), 0);
        QCOMPARE(visible(open.page), words("pButPc pushBtnBack pushBtnForward dropArea treeView tableView labelFolder "
                                           "toolButtonDelete"));
        QCOMPARE(textOf(open.page, "labelFolder"), QString());
        QVERIFY(open.tree()->isExpanded(open.top()));
        // The hidden instructions take no room from the table.
        QTRY_VERIFY(child<QLabel>(open.page, "dropArea")->width() < child<QWidget>(open.page, "widgetDevice")->width());
        const int width = open.page.minimumSizeHint().width();
        QVERIFY2(width <= 1000, qPrintable(QString::number(width)));
    }

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

    void datesAndSizesSpeakTheLanguageOfThePage_data() {
        columns<QLocale, QString, QString>("locale", "size", "date");
        row("it", QLocale("it_IT"_s), "39 byte"_s, "02/11/26 09:05"_s);
        row("de", QLocale("de_DE"_s), "39 Bytes"_s, "02.11.26 09:05"_s);
        row("en", QLocale("en_GB"_s), "39 bytes"_s, "02/11/2026 09:05"_s);
    }
    void datesAndSizesSpeakTheLanguageOfThePage() {
        QFETCH(QLocale, locale);
        OpenForPlayer open(kSongs);
        putFile(open.player.path("sized.mid"_s), QByteArray(39, 'x'));
        QFile file(open.player.path("sized.mid"_s));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime(QDate(2026, 11, 2), QTime(9, 5, 3)), QFileDevice::FileModificationTime));
        file.close();
        open.page.setLocale(locale);
        QEvent change(QEvent::LanguageChange);
        QCoreApplication::sendEvent(&open.page, &change);
        const auto text = [&open](int column) {
            return open.row("sized.mid"_s).siblingAtColumn(column).data().toString();
        };
        QFETCH(QString, size);
        QFETCH(QString, date);
        QTRY_COMPARE(text(1), size);
        QTRY_COMPARE(text(3), date);
        QCOMPARE(open.row("My Songs"_s).siblingAtColumn(1).data().toString(), QString());
    }

    void pageFitsALowAndNarrowWindow_data() {
        columns<QString>("code");
        for (const char *code : {"it", "en", "de"})
            row(code, QString::fromLatin1(code));
    }
    void pageFitsALowAndNarrowWindow() {
        QFETCH(QString, code);
        OpenForPlayer open(kSongs);
        const Language language(code);
        // What a screen of 800 by 600 leaves to the page while the status line and the bar are shown.
        const QSize room(716, 404);
        for (const bool browsing : {true, false}) {
            if (!browsing)
                open.page.prepare(open.player.root());
            open.page.resize(room);
            QCoreApplication::processEvents();
            QVERIFY(open.page.minimumSizeHint().width() <= room.width());
            const int height = open.page.heightForWidth(room.width());
            QVERIFY2(height <= room.height(), qPrintable("%1 %2"_s.arg(browsing).arg(height)));
            QVERIFY(allButtonsShowTheirWholeText(open.page));
        }
    }

    void focusGoesFromThePcToTheFoldersToFinish() {
        OpenForPlayer open(kSongs);
        QVERIFY(QTest::qWaitForWindowActive(&open.page));
        QCOMPARE(QApplication::focusWidget(), open.tree());
        open.dropNew({"neu.mid"_s});
        QCOMPARE(QApplication::focusWidget(), button(open.page, "pushBtnForward"));
        open.page.hide();
        open.page.show();
        QCOMPARE(open.page.focusWidget(), button(open.page, "pButPc"));
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

    void deleteActionIsReachableByButtonAndKey() {
        OpenForPlayer open(kSongs);
        auto *action = child<QAction>(open.page, "actionDeleteSelectedItems");
        QCOMPARE(action->toolTip(), "Elimina i file e cartelle selezionate"_s);
        QVERIFY(!action->icon().isNull());
        QCOMPARE(action->icon().pixmap(32, 32).toImage(), QIcon(":/imgs/chiudi.png"_s).pixmap(32, 32).toImage());
        QCOMPARE(child<QToolButton>(open.page, "toolButtonDelete")->defaultAction(), action);
        QVERIFY(!action->isEnabled()); // nothing is selected
        open.select({"a loose.mid"_s});
        QVERIFY(action->isEnabled());
        QCOMPARE(action->shortcut(), QKeySequence(Qt::Key_Delete));
        QVERIFY(open.page.actions().contains(action));
    }
};

PAGE_TEST_MAIN(TestTransfer)
#include "tst_transfer.moc"
