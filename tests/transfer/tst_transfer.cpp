#include "opentransfer.h"
#include "support/formsheets.h"
#include "support/languages.h"
#include "support/methods.h"
#include "transfertest.h"

namespace {

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

} // namespace

/// The transfer page apart from its folders, drags, copies and deletions: texts, buttons, languages and focus.
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

    void buttonsAndLabelsLookLikeThoseOfTheForms() {
        const Transfer page;
        for (const char *name : {"pButPc", "pushBtnBack", "pushBtnForward"}) {
            QCOMPARE(button(page, name)->styleSheet(), FormSheets::kContainer);
            QCOMPARE(button(page, name)->cursor().shape(), Qt::PointingHandCursor);
        }
        QCOMPARE(child<QWidget>(page, "toolButtonDelete")->cursor().shape(), Qt::PointingHandCursor);
        for (const char *name : {"labelInstruction", "labelFolder"})
            QCOMPARE(child<QLabel>(page, name)->styleSheet(), FormSheets::kTransparentLabel);
        const QPixmap player = child<QLabel>(page, "labelPlayer")->pixmap(Qt::ReturnByValue);
        QVERIFY(!player.isNull());
        QCOMPARE(player.toImage(), QIcon(":/imgs/corvin88x60.png"_s).pixmap(player.size()).toImage());
    }

    void signalsAndSlotsComeInTheirOrder() {
        QCOMPARE(methodsOf<Transfer>(QMetaMethod::Signal),
                 words("setProgressBarVisible(bool) setProgressBarMinVal(int) setProgressBarMaxVal(int) "
                       "setProgressBarFormat(QString) updateProgressBarVal(int) increaseProgressBarVal() "
                       "updateLabelAction(QString) setPushButtonStopVisible(bool) backFromTransferToFirstMenu() "
                       "backFromTransferToOttimizza() startOttimizzaProcedure()"));
        QCOMPARE(methodsOf<Transfer>(QMetaMethod::Slot),
                 words("on_pButPc_clicked() on_treeView_clicked(QModelIndex) on_tableView_doubleClicked(QModelIndex) "
                       "on_actionDeleteSelectedItems_triggered() on_pushBtnBack_clicked() on_pushBtnForward_clicked() "
                       "on_stopActionPressed()"));
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
