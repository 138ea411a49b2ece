#include "app/mainwindow.h"

#include "app/appsettings.h"
#include "app/shared/sharedfonts.h"
#include "optimizer/ottimizza.h"
#include "resources/resources.h"
#include "support/boxanswerer.h"
#include "support/logcapture.h"
#include "support/simulatedplayer.h"
#include "transfer/transfer.h"
#include "windowparts.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace WindowParts;

namespace {

const QString kStopTitle = QStringLiteral("Interrompi Operazione");
const QString kNotClosedTitle = QStringLiteral("Trasferimento non completato");

} // namespace

class TestStopAndClose : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void stopSetsTheFlagAndTellsThePages();
    void stopBoxIsAsAgreed();
    void enterInTheStopBoxStops();
    void stopAnsweredWithNoChangesNothing();
    void escapeFromTheStopBoxChangesNothing();
    void closingTheStopBoxChangesNothing();
    void closingIsRefusedWhileFinishIsPending();
    void closingTakesPlaceOnceFinishIsDone();
};

void TestStopAndClose::initTestCase()
{
    loadResources();
    registerEmbeddedFonts();
}

void TestStopAndClose::init()
{
    SimulatedPlayer::disconnect();
    appSettings().setValue(QStringLiteral("Application/Language"), QStringLiteral("lang_it"));
}

void TestStopAndClose::stopSetsTheFlagAndTellsThePages()
{
    MainWindow window;
    QSignalSpy stopped(&window, &MainWindow::stopActionPressed);
    BoxAnswerer answerer;
    answerer.answer(kStopTitle, QStringLiteral("Si"));
    LogCapture log;
    child<QPushButton>(window, "pushButtonStop")->click();
    QVERIFY(window.abortRequested);
    QCOMPARE(stopped.size(), 1);
    QVERIFY(page<Ottimizza>(window)->abortRequested);
    QVERIFY(page<Transfer>(window)->aborted);
    QVERIFY(log.contains(QtInfoMsg, QStringLiteral("MainWindow::on_pushButtonStop_clicked : !!! ABORT PRESSED !!!")));
}

void TestStopAndClose::stopBoxIsAsAgreed()
{
    MainWindow window;
    BoxAnswerer answerer;
    answerer.answer(kStopTitle, QStringLiteral("No"));
    window.on_pushButtonStop_clicked();
    const BoxAnswerer::Seen seen = answerer.seen().first();
    QCOMPARE(seen.text, QStringLiteral("Vuoi interrompere le operazioni in corso ?"));
    QStringList buttons = seen.buttons;
    buttons.sort();
    QCOMPARE(buttons, QStringList({QStringLiteral("No"), QStringLiteral("Si")}));
    QCOMPARE(seen.defaultButton, QStringLiteral("Si"));
    QVERIFY(seen.hadParent);
}

void TestStopAndClose::enterInTheStopBoxStops()
{
    MainWindow window;
    BoxAnswerer answerer;
    answerer.answerByKey(kStopTitle, Qt::Key_Return);
    window.on_pushButtonStop_clicked();
    QVERIFY(window.abortRequested);
}

void TestStopAndClose::stopAnsweredWithNoChangesNothing()
{
    MainWindow window;
    QSignalSpy stopped(&window, &MainWindow::stopActionPressed);
    BoxAnswerer answerer;
    answerer.answer(kStopTitle, QStringLiteral("No"));
    LogCapture log;
    child<QPushButton>(window, "pushButtonStop")->click();
    QVERIFY(!window.abortRequested);
    QCOMPARE(stopped.size(), 0);
    QVERIFY(!page<Ottimizza>(window)->abortRequested);
    QVERIFY(!page<Transfer>(window)->aborted);
    QVERIFY(log.textsStartingWith(QStringLiteral("MainWindow::on_pushButtonStop_clicked")).isEmpty());
}

void TestStopAndClose::escapeFromTheStopBoxChangesNothing()
{
    MainWindow window;
    BoxAnswerer answerer;
    answerer.answerByKey(kStopTitle, Qt::Key_Escape);
    window.on_pushButtonStop_clicked();
    QVERIFY(!window.abortRequested);
}

void TestStopAndClose::closingTheStopBoxChangesNothing()
{
    MainWindow window;
    BoxAnswerer answerer;
    answerer.answerByClosing(kStopTitle);
    window.on_pushButtonStop_clicked();
    QVERIFY(!window.abortRequested);
}

void TestStopAndClose::closingIsRefusedWhileFinishIsPending()
{
    MainWindow window;
    window.show();
    auto *finish = child<QPushButton>(window, "pushBtnForward");
    finish->setEnabled(true);
    BoxAnswerer answerer;
    answerer.answer(kNotClosedTitle, QStringLiteral("OK"));
    QVERIFY(!window.close());
    QVERIFY(window.isVisible());
    const BoxAnswerer::Seen seen = answerer.seen().first();
    QCOMPARE(seen.text,
             QStringLiteral("Prima di poter chiudere il programma,\nconcludi le operazioni di ottimizzazione "
                            "cliccando sul tasto \"FINE\"."));
    QCOMPARE(seen.buttons, QStringList{QStringLiteral("OK")});
    QCOMPARE(seen.icon, QMessageBox::Information);
}

void TestStopAndClose::closingTakesPlaceOnceFinishIsDone()
{
    MainWindow window;
    window.show();
    auto *finish = child<QPushButton>(window, "pushBtnForward");
    QVERIFY(!finish->isEnabled());
    finish->setEnabled(true);
    finish->setEnabled(false);
    // Any box would fail here.
    const BoxAnswerer answerer;
    QVERIFY(window.close());
    QVERIFY(!window.isVisible());
}

QTEST_MAIN(TestStopAndClose)
#include "tst_stopandclose.moc"
