#include "systemfixture.h"

#include "pages/avanzate.h"

class TestOperationWidgets : public QObject
{
    Q_OBJECT

private slots:
    void procedureShowsItsWidgetsAndForgetsTheLastOne_data() {
        columns<QByteArray>("slot");
        for (const char *slot : {Slots::kUpdate, Slots::kBackUp, Slots::kRestore, Slots::kReinstall})
            row(slot, QByteArray(slot));
    }
    void procedureShowsItsWidgetsAndForgetsTheLastOne() {
        QFETCH(QByteArray, slot);
        Maintenance m;
        SimulatedPlayer::disconnect();
        m.window->abortRequested = true;
        m.window->procedureOk = false;
        QProgressBar *bar = m.window.bar();
        bar->setRange(0, 0);
        bar->setFormat("%v"_s);
        m.boxes.whenShown([&](QMessageBox *) {
            QVERIFY(!bar->isHidden());
            QVERIFY(!m.window.stop()->isHidden());
            QVERIFY(!m.window.label()->isHidden());
            QCOMPARE(m.window.status(), Status::kLooking);
            QCOMPARE(bar->minimum(), 0);
            QCOMPARE(bar->maximum(), 100);
            QCOMPARE(bar->value(), 0);
            QCOMPARE(bar->format(), "%p%"_s);
        });
        const LogCapture log;
        m.run(slot.constData(), {Titles::kDeviceNotFound});
        QCOMPARE(statusTexts(log), QStringList{Status::kLooking});
        QCOMPARE(log.textsStartingWith("MainWindow"_s).size(), 1);
        QVERIFY(!m.window->abortRequested);
        QVERIFY(m.window->procedureOk);
        QVERIFY(m.server.requests().isEmpty());
    }

    void secondProcedureCannotBeStartedInside() {
        const Maintenance m;
        const auto *page = pageOf<Avanzate>(*m.window.window);
        FolderDialogAnswerer dialogs{QString()};
        bool enabled = true;
        const LogCapture log;
        dialogs.whenShown = [&](QFileDialog *) {
            enabled = page->isEnabled();
            for (const char *slot : {Slots::kUpdate, Slots::kBackUp, Slots::kRestore, Slots::kReinstall,
                                     Slots::kReinstallClean, Slots::kReinstallRestoring})
                m.window.run(slot);
        };
        m.window.run(Slots::kBackUp);
        QCOMPARE(dialogs.captions().size(), 1);
        QCOMPARE(statusTexts(log), QStringList{Status::kLooking});
        QVERIFY(m.boxes.seen().isEmpty() && m.server.requests().isEmpty());
        QVERIFY(!enabled);
        QVERIFY(page->isEnabled());
    }
};

PAGE_TEST_MAIN(TestOperationWidgets)
#include "tst_operationwidgets.moc"
