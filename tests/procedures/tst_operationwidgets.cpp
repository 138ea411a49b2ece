#include "systemfixture.h"

#include "app/mainwindow.h"
#include "app/shared/sharedfonts.h"
#include "pages/avanzate.h"
#include "resources/resources.h"
#include "support/boxanswerer.h"
#include "support/logcapture.h"
#include "support/simulatedplayer.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

namespace {

const QString kNotFound = QStringLiteral("Corvin4 non è stato trovato");
const QString kHowToConnect = QStringLiteral("Spegnere Corvin4 e connetterlo alla porta USB del PC.\n"
                                             "Quindi accendere Corvin4 e\n"
                                             "quando appare la schermata di connessione sul display di Corvin,\n"
                                             "cliccare ancora su START");

} // namespace

class TestOperationWidgets : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void missingPlayerIsToldAndEverythingIsHiddenAgain_data();
    void missingPlayerIsToldAndEverythingIsHiddenAgain();
    void runningProcedureShowsItsWidgets();
    void startForgetsWhatTheLastProcedureLeft();
    void secondProcedureCannotBeStartedInside();
};

void TestOperationWidgets::initTestCase()
{
    loadResources();
    registerEmbeddedFonts();
}

void TestOperationWidgets::missingPlayerIsToldAndEverythingIsHiddenAgain_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::newRow("backup") << QByteArray("makeSecurityCopyOfSongs");
    QTest::newRow("restore") << QByteArray("restoreSecurityCopyOfSongs");
}

void TestOperationWidgets::missingPlayerIsToldAndEverythingIsHiddenAgain()
{
    QFETCH(QByteArray, slot);
    SimulatedPlayer::disconnect();
    ProcedureWindow procedure;
    BoxAnswerer boxes;
    LogCapture log;
    boxes.answer(kNotFound, QStringLiteral("OK"));
    procedure.run(slot.constData());
    QCOMPARE(boxes.seen().size(), 1);
    QCOMPARE(boxes.seen().first().text, kHowToConnect);
    QCOMPARE(boxes.seen().first().icon, QMessageBox::Information);
    QCOMPARE(
        log.textsStartingWith(QStringLiteral("MainWindow")),
        QStringList{QStringLiteral("MainWindow::on_updateLabelAction : \"Cerco se Corvin4 è connesso via USB...\"")});
    QVERIFY(procedure.bar()->isHidden());
    QVERIFY(procedure.stop()->isHidden());
    QVERIFY(procedure.label()->isHidden());
    QCOMPARE(procedure.status(), QString());
    QCOMPARE(procedure.bar()->value(), 0);
    QCOMPARE(procedure.bar()->maximum(), 100);
    QCOMPARE(procedure.bar()->format(), QStringLiteral("%p%"));
}

void TestOperationWidgets::runningProcedureShowsItsWidgets()
{
    SimulatedPlayer::disconnect();
    ProcedureWindow procedure;
    procedure.bar()->setRange(0, 0);
    procedure.bar()->setFormat(QStringLiteral("%v"));
    BoxAnswerer boxes;
    boxes.answer(kNotFound, QStringLiteral("OK"));
    bool looked = false;
    boxes.whenShown([&](QMessageBox *) {
        looked = true;
        QVERIFY(!procedure.bar()->isHidden());
        QVERIFY(!procedure.stop()->isHidden());
        QVERIFY(!procedure.label()->isHidden());
        QCOMPARE(procedure.status(), QStringLiteral("Cerco se Corvin4 è connesso via USB..."));
        QCOMPARE(procedure.bar()->minimum(), 0);
        QCOMPARE(procedure.bar()->maximum(), 100);
        QCOMPARE(procedure.bar()->value(), 0);
        QCOMPARE(procedure.bar()->format(), QStringLiteral("%p%"));
    });
    procedure.run("makeSecurityCopyOfSongs");
    QVERIFY(looked);
}

void TestOperationWidgets::startForgetsWhatTheLastProcedureLeft()
{
    SimulatedPlayer::disconnect();
    ProcedureWindow procedure;
    procedure->abortRequested = true;
    procedure->procedureOk = false;
    BoxAnswerer boxes;
    boxes.answer(kNotFound, QStringLiteral("OK"));
    procedure.run("restoreSecurityCopyOfSongs");
    QVERIFY(!procedure->abortRequested);
    QVERIFY(procedure->procedureOk);
}

void TestOperationWidgets::secondProcedureCannotBeStartedInside()
{
    const SimulatedPlayer player;
    ProcedureWindow procedure;
    auto *page = procedure->findChild<Avanzate *>();
    FolderDialogAnswerer dialogs{QString()};
    bool enabled = true;
    dialogs.whenShown = [&](QFileDialog *) { enabled = page->isEnabled(); };
    procedure.run("makeSecurityCopyOfSongs");
    QCOMPARE(dialogs.captions().size(), 1);
    QVERIFY(!enabled);
    QVERIFY(page->isEnabled());
}

QTEST_MAIN(TestOperationWidgets)
#include "tst_operationwidgets.moc"
