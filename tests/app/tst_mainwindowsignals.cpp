#include "app/mainwindow.h"

#include "app/shared/sharedfonts.h"
#include "resources/resources.h"
#include "support/logcapture.h"
#include "support/simulatedplayer.h"

#include <QFrame>
#include <QLabel>
#include <QProgressBar>
#include <QTest>

// Every signal of every page has its effect in the window: each is emitted by name on the real page.

namespace {

QWidget *pageOf(const MainWindow &window, const QString &className)
{
    const auto *frame = window.findChild<QFrame *>(QStringLiteral("framePage"));
    const QObjectList children = frame->children();
    for (QObject *object : children) {
        if (object->isWidgetType() && QLatin1String(object->metaObject()->className()) == className)
            return static_cast<QWidget *>(object);
    }
    return nullptr;
}

/// Class names of the pages that are not hidden, sorted.
QStringList shownPages(const MainWindow &window)
{
    QStringList names;
    const auto *frame = window.findChild<QFrame *>(QStringLiteral("framePage"));
    const QObjectList children = frame->children();
    for (const QObject *object : children) {
        if (object->isWidgetType() && !static_cast<const QWidget *>(object)->isHidden())
            names.append(QLatin1String(object->metaObject()->className()));
    }
    names.sort();
    return names;
}

bool emitSignal(QObject *page, const QByteArray &name, const QVariant &argument)
{
    switch (argument.userType()) {
    case QMetaType::Bool:
        return QMetaObject::invokeMethod(page, name.constData(), Q_ARG(bool, argument.toBool()));
    case QMetaType::Int:
        return QMetaObject::invokeMethod(page, name.constData(), Q_ARG(int, argument.toInt()));
    case QMetaType::QString:
        return QMetaObject::invokeMethod(page, name.constData(), Q_ARG(QString, argument.toString()));
    default:
        return QMetaObject::invokeMethod(page, name.constData());
    }
}

} // namespace

class TestMainWindowSignals : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void pageChange_data();
    void pageChange();
    void progress_data();
    void progress();
    void increaseAddsOne();
    void barIsPaintedAgainAfterManyIncreases();
    void showingTheBarResetsAndShowsAllThree_data();
    void showingTheBarResetsAndShowsAllThree();
    void stopIsShownAlone_data();
    void stopIsShownAlone();
    void statusTextIsLogged();
    void statusTextBeforeTheBarIsLoggedThoughItIsCleared();
    void startOfTheOptimisationWithoutAPlayerEndsOnTheResultPage();
};

void TestMainWindowSignals::initTestCase()
{
    loadResources();
    registerEmbeddedFonts();
}

void TestMainWindowSignals::init()
{
    SimulatedPlayer::disconnect();
}

void TestMainWindowSignals::pageChange_data()
{
    const QString check = QStringLiteral("Check");
    const QString menu = QStringLiteral("FirstMenu");
    const QString advanced = QStringLiteral("Avanzate");
    const QString optimiser = QStringLiteral("Ottimizza");
    const QString result = QStringLiteral("EndOttimizza");
    const QString transfer = QStringLiteral("Transfer");
    const QVariant none;
    QTest::addColumn<QString>("page");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QVariant>("argument");
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QStringList>("after");
    const auto row = [](const QString &page, const char *signal, const QVariant &argument, const QStringList &before,
                        const QStringList &after) {
        QTest::addRow("%s %s", qPrintable(page), signal) << page << QByteArray(signal) << argument << before << after;
    };
    row(check, "checkDone", none, {check}, {menu});
    row(menu, "gotoTransfer", none, {menu}, {transfer});
    row(menu, "gotoOptimizer", none, {menu}, {optimiser});
    row(menu, "gotoAvanzate", none, {menu}, {advanced});
    row(optimiser, "backFromOttimizzaToFirstMenu", none, {optimiser, transfer}, {menu});
    row(optimiser, "backFromOttimizzaToEndOttimizza", 0, {optimiser, transfer, menu}, {result});
    row(advanced, "backFromAvanzateToFirstMenu", none, {advanced}, {menu});
    row(transfer, "backFromTransferToFirstMenu", none, {transfer}, {menu});
    row(transfer, "backFromTransferToOttimizza", none, {transfer}, {optimiser});
    row(result, "backFromEndOttimizzaToFirstMenu", none, {result}, {menu});
}

void TestMainWindowSignals::pageChange()
{
    QFETCH(QString, page);
    QFETCH(QByteArray, signal);
    QFETCH(QVariant, argument);
    QFETCH(QStringList, before);
    const MainWindow window;
    for (const QString &name : qAsConst(before))
        pageOf(window, name)->show();
    before.sort();
    QCOMPARE(shownPages(window), before);
    QVERIFY(emitSignal(pageOf(window, page), signal, argument));
    QTEST(shownPages(window), "after");
}

void TestMainWindowSignals::progress_data()
{
    const QString bar = QStringLiteral("progressBar");
    QTest::addColumn<QString>("page");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QVariant>("argument");
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QByteArray>("property");
    const QStringList pages = {QStringLiteral("Check"), QStringLiteral("Ottimizza"), QStringLiteral("Transfer")};
    for (const QString &page : pages) {
        const auto row = [&page](const char *signal, const QVariant &argument, const QString &widget,
                                 const char *property) {
            QTest::addRow("%s %s", qPrintable(page), signal)
                << page << QByteArray(signal) << argument << widget << QByteArray(property);
        };
        row("setProgressBarMinVal", -7, bar, "minimum");
        row("setProgressBarMaxVal", 1234, bar, "maximum");
        row("updateProgressBarVal", 42, bar, "value");
        row("updateLabelAction", QStringLiteral("Sto copiando..."), QStringLiteral("labelAction"), "text");
        if (page != QLatin1String("Check"))
            row("setProgressBarFormat", QStringLiteral("%v / %m"), bar, "format");
    }
}

void TestMainWindowSignals::progress()
{
    QFETCH(QString, page);
    QFETCH(QByteArray, signal);
    QFETCH(QVariant, argument);
    QFETCH(QString, widget);
    QFETCH(QByteArray, property);
    const MainWindow window;
    const auto *shown = window.findChild<QWidget *>(widget);
    QVERIFY(shown);
    QVERIFY(shown->property(property.constData()) != argument);
    QVERIFY(emitSignal(pageOf(window, page), signal, argument));
    QCOMPARE(shown->property(property.constData()), argument);
}

void TestMainWindowSignals::increaseAddsOne()
{
    const MainWindow window;
    const auto *bar = window.findChild<QProgressBar *>(QStringLiteral("progressBar"));
    QWidget *transfer = pageOf(window, QStringLiteral("Transfer"));
    QVERIFY(emitSignal(transfer, "updateProgressBarVal", 41));
    QVERIFY(emitSignal(transfer, "increaseProgressBarVal", QVariant()));
    QCOMPARE(bar->value(), 42);
    QVERIFY(emitSignal(transfer, "updateProgressBarVal", 100));
    QVERIFY(emitSignal(transfer, "increaseProgressBarVal", QVariant()));
    QCOMPARE(bar->value(), 100);
}

void TestMainWindowSignals::barIsPaintedAgainAfterManyIncreases()
{
    const MainWindow window;
    const auto *bar = window.findChild<QProgressBar *>(QStringLiteral("progressBar"));
    QWidget *transfer = pageOf(window, QStringLiteral("Transfer"));
    for (int i = 0; i < 30; ++i)
        QVERIFY(emitSignal(transfer, "increaseProgressBarVal", QVariant()));
    QCOMPARE(bar->value(), 30);
    QTRY_VERIFY(bar->updatesEnabled());
}

void TestMainWindowSignals::showingTheBarResetsAndShowsAllThree_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<bool>("visible");
    const QStringList pages = {QStringLiteral("Check"), QStringLiteral("Ottimizza"), QStringLiteral("Transfer")};
    for (const QString &page : pages) {
        QTest::addRow("%s shows", qPrintable(page)) << page << true;
        QTest::addRow("%s hides", qPrintable(page)) << page << false;
    }
}

void TestMainWindowSignals::showingTheBarResetsAndShowsAllThree()
{
    QFETCH(QString, page);
    QFETCH(bool, visible);
    MainWindow window;
    auto *bar = window.findChild<QProgressBar *>(QStringLiteral("progressBar"));
    auto *action = window.findChild<QLabel *>(QStringLiteral("labelAction"));
    auto *stop = window.findChild<QWidget *>(QStringLiteral("pushButtonStop"));
    for (QWidget *widget : QList<QWidget *>{bar, action, stop})
        widget->setVisible(!visible);
    bar->setValue(42);
    bar->setFormat(QStringLiteral("%v"));
    action->setText(QStringLiteral("x"));
    QVERIFY(emitSignal(pageOf(window, page), "setProgressBarVisible", visible));
    for (const QWidget *widget : QList<QWidget *>{bar, action, stop})
        QCOMPARE(!widget->isHidden(), visible);
    QCOMPARE(bar->value(), 0);
    QCOMPARE(bar->format(), QStringLiteral("%p%"));
    QCOMPARE(action->text(), QString());
}

void TestMainWindowSignals::stopIsShownAlone_data()
{
    QTest::addColumn<QString>("page");
    QTest::newRow("Check") << QStringLiteral("Check");
    QTest::newRow("Transfer") << QStringLiteral("Transfer");
}

void TestMainWindowSignals::stopIsShownAlone()
{
    QFETCH(QString, page);
    MainWindow window;
    const auto *stop = window.findChild<QWidget *>(QStringLiteral("pushButtonStop"));
    const auto *bar = window.findChild<QWidget *>(QStringLiteral("progressBar"));
    QVERIFY(emitSignal(pageOf(window, page), "setPushButtonStopVisible", true));
    QVERIFY(!stop->isHidden());
    QVERIFY(bar->isHidden());
    window.on_setProgressBarVisible(true);
    QVERIFY(emitSignal(pageOf(window, page), "setPushButtonStopVisible", false));
    QVERIFY(stop->isHidden());
    QVERIFY(!bar->isHidden());
}

void TestMainWindowSignals::statusTextIsLogged()
{
    const MainWindow window;
    LogCapture log;
    QVERIFY(emitSignal(pageOf(window, QStringLiteral("Ottimizza")), "updateLabelAction", QStringLiteral("Città")));
    QVERIFY(log.contains(QtInfoMsg, QStringLiteral("MainWindow::on_updateLabelAction : \"Città\"")));
}

void TestMainWindowSignals::statusTextBeforeTheBarIsLoggedThoughItIsCleared()
{
    const MainWindow window;
    QWidget *check = pageOf(window, QStringLiteral("Check"));
    LogCapture log;
    QVERIFY(emitSignal(check, "updateLabelAction", QStringLiteral("CONTROLLO")));
    QVERIFY(emitSignal(check, "setProgressBarVisible", true));
    QVERIFY(log.contains(QtInfoMsg, QStringLiteral("MainWindow::on_updateLabelAction : \"CONTROLLO\"")));
    QCOMPARE(window.findChild<QLabel *>(QStringLiteral("labelAction"))->text(), QString());
}

void TestMainWindowSignals::startOfTheOptimisationWithoutAPlayerEndsOnTheResultPage()
{
    const MainWindow window;
    QWidget *transfer = pageOf(window, QStringLiteral("Transfer"));
    transfer->show();
    QVERIFY(emitSignal(transfer, "backFromTransferToOttimizza", QVariant()));
    QVERIFY(emitSignal(transfer, "startOttimizzaProcedure", QVariant()));
    QCOMPARE(shownPages(window), QStringList{QStringLiteral("EndOttimizza")});
}

QTEST_MAIN(TestMainWindowSignals)
#include "tst_mainwindowsignals.moc"
