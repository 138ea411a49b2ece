#include "opentransfer.h"
#include "support/languages.h"
#include "transfertest.h"

/// How the transfer page is left and entered again, and what it does while it is busy, without a player, and when the
/// language changes.
class TestTransferFlow : public QObject
{
    Q_OBJECT

private slots:
    void backLeavesAndDeletesTheModels() {
        OpenForPlayer open(kSongs);
        const QPointer<QAbstractItemModel> folders = open.tree()->model();
        const QPointer<QAbstractItemModel> entries = open.table()->model();
        QVERIFY(folders && entries);
        click(open.page, "pushBtnBack");
        QCOMPARE(open.recorder.count("backFromTransferToFirstMenu"_s), 1);
        QVERIFY(!folders && !entries);
        QVERIFY(!open.tree()->model() && !open.table()->model());
    }

    void finishIsDisabledBeforeThePageIsLeft() {
        OpenForPlayer open(kSongs);
        button(open.page, "pushBtnForward")->setEnabled(true);
        QVERIFY(open.page.isFinishPending());
        const QPointer<QAbstractItemModel> entries = open.table()->model();
        bool wasLeftClean = false;
        connect(&open.page, &Transfer::backFromTransferToOttimizza, this,
                [&] { wasLeftClean = !open.page.isFinishPending() && !entries; });
        click(open.page, "pushBtnForward");
        QCOMPARE(open.told(), words("backFromTransferToOttimizza startOttimizzaProcedure"));
        QVERIFY(wasLeftClean);
    }

    void slotsReturnWhileBusy() {
        OpenForPlayer open(kSongs);
        open.select({"a loose.mid"_s});
        button(open.page, "pushBtnForward")->setEnabled(true);
        open.page.prepare(open.player.root());
        open.page.busy = true;
        open.recorder.clear();
        open.page.on_pButPc_clicked();
        open.page.on_treeView_clicked(open.top());
        open.enter("My Songs"_s);
        open.page.on_actionDeleteSelectedItems_triggered();
        open.page.on_pushBtnBack_clicked();
        open.page.on_pushBtnForward_clicked();
        QCOMPARE(open.told(), QStringList());
        QVERIFY(!child<QWidget>(open.page, "dropArea")->isVisible());
        QCOMPARE(open.page.currentFolder, open.player.root());
        QVERIFY(open.player.exists("a loose.mid"_s));
        QVERIFY(open.table()->model());
        QVERIFY(open.page.isFinishPending());
        open.page.busy = false;
    }

    void enteredAgainThePageIsNew() {
        OpenForPlayer open(kSongs);
        open.enter("My Songs"_s);
        open.page.on_pushBtnBack_clicked();
        open.player.addFile("new.mid"_s);
        open.page.prepare(open.player.root());
        QCOMPARE(open.page.currentFolder, open.player.root());
        QVERIFY(!child<QWidget>(open.page, "dropArea")->isVisible());
        QVERIFY(child<QWidget>(open.page, "istruzioniTransfer")->isVisible());
        open.page.on_pButPc_clicked();
        QCOMPARE(textOf(open.page, "labelFolder"), QString());
        QVERIFY(open.row("new.mid"_s).isValid());
    }

    void pageWithoutAPlayerShowsNothing() {
        SimulatedPlayer::disconnect();
        OpenTransfer open{QString()};
        QCOMPARE(open.tree()->model()->rowCount(), 0);
        QCOMPARE(open.table()->model()->rowCount(), 0);
        open.page.on_tableView_doubleClicked(QModelIndex());
        open.page.on_pushBtnBack_clicked();
    }

    void languageChangeKeepsTheFolderLabel() {
        OpenForPlayer open(kSongs);
        open.enter("My Songs"_s);
        {
            const MarkedTexts marked;
            QCoreApplication::processEvents();
            QCOMPARE(textOf(open.page, "pushBtnForward"), "[FINE]"_s);
            QCOMPARE(child<QAction>(open.page, "actionDeleteSelectedItems")->toolTip(),
                     "[Elimina i file e cartelle selezionate]"_s);
            QVERIFY(textOf(open.page, "labelText1").startsWith(QLatin1Char('[')));
            QCOMPARE(textOf(open.page, "labelFolder"), "My Songs"_s);
            QVERIFY(open.row("b.mid"_s).isValid());
            QCOMPARE(open.tree()->currentIndex().data().toString(), "My Songs"_s);
        }
        QCoreApplication::processEvents();
        QCOMPARE(textOf(open.page, "pushBtnForward"), "FINE"_s);
    }

    void languageChangeWhileBusyKeepsTheModels() {
        OpenForPlayer open(kSongs);
        const QPointer<QAbstractItemModel> entries = open.table()->model();
        open.page.busy = true;
        QEvent change(QEvent::LanguageChange);
        QCoreApplication::sendEvent(&open.page, &change);
        QVERIFY(entries);
        open.page.busy = false;
        QCoreApplication::sendEvent(&open.page, &change);
        QVERIFY(!entries);
        QVERIFY(open.table()->model());
    }
};

PAGE_TEST_MAIN(TestTransferFlow)
#include "tst_transferflow.moc"
