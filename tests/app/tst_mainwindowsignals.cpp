#include "italianwindow.h"
#include "support/logcapture.h"

// Every signal of every page has its effect in the window: each is emitted by name on the real page.

namespace {

QList<QWidget *> pagesOf(const MainWindow &window)
{
    return child<QFrame>(window, "framePage")->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
}

QString nameOf(const QWidget *page)
{
    return QLatin1String(page->metaObject()->className());
}

QWidget *pageNamed(const MainWindow &window, const QString &name)
{
    const QList<QWidget *> pages = pagesOf(window);
    const auto page = std::find_if(pages.begin(), pages.end(), [&name](QWidget *one) { return nameOf(one) == name; });
    if (page == pages.end())
        qFatal("There is no page %s", qPrintable(name));
    return *page;
}

/// Class names of the pages that are not hidden, sorted.
QStringList shownPages(const MainWindow &window)
{
    QStringList names;
    const QList<QWidget *> pages = pagesOf(window);
    for (const QWidget *page : pages) {
        if (!page->isHidden())
            names.append(nameOf(page));
    }
    names.sort();
    return names;
}

void emitOn(const MainWindow &window, const QString &page, const QByteArray &signal, const QVariant &argument = {})
{
    const QGenericArgument given(argument.typeName(), argument.constData());
    if (!QMetaObject::invokeMethod(pageNamed(window, page), signal.constData(), given))
        failTest(page + " has no such signal "_s + QLatin1String(signal));
}

} // namespace

class TestMainWindowSignals : public QObject
{
    Q_OBJECT

    const QStringList pages = words("Check Ottimizza Transfer");

private slots:
    void initTestCase() { startInItalian(); }

    void pageChange_data()
    {
        columns<QString, QByteArray, QVariant, QStringList, QString>("page", "signal", "argument", "before", "after");
        const auto change = [](const char *page, const char *signal, const char *after, const char *others = "",
                               const QVariant &argument = {}) {
            const QString from = QLatin1String(page);
            QTest::addRow("%s %s", page, signal) << from << QByteArray(signal) << argument
                                                 << words(others) + QStringList(from) << QString::fromLatin1(after);
        };
        change("Check", "checkDone", "FirstMenu");
        change("FirstMenu", "gotoTransfer", "Transfer");
        change("FirstMenu", "gotoOptimizer", "Ottimizza");
        change("FirstMenu", "gotoAvanzate", "Avanzate");
        change("Ottimizza", "backFromOttimizzaToFirstMenu", "FirstMenu", "Transfer");
        change("Ottimizza", "backFromOttimizzaToEndOttimizza", "EndOttimizza", "Transfer FirstMenu", 0);
        change("Avanzate", "backFromAvanzateToFirstMenu", "FirstMenu");
        change("Transfer", "backFromTransferToFirstMenu", "FirstMenu");
        change("Transfer", "backFromTransferToOttimizza", "Ottimizza");
        change("EndOttimizza", "backFromEndOttimizzaToFirstMenu", "FirstMenu");
    }
    void pageChange()
    {
        QFETCH(QString, page);
        QFETCH(QByteArray, signal);
        QFETCH(QVariant, argument);
        QFETCH(QStringList, before);
        QFETCH(QString, after);
        const MainWindow window;
        for (const QString &name : qAsConst(before))
            pageNamed(window, name)->show();
        before.sort();
        QCOMPARE(shownPages(window), before);
        emitOn(window, page, signal, argument);
        QCOMPARE(shownPages(window), QStringList(after));
    }

    void progress_data()
    {
        columns<QString, QByteArray, QVariant, QByteArray>("page", "signal", "argument", "property");
        for (const QString &page : pages) {
            const auto drive = [&page](const char *signal, const QVariant &argument, const char *property) {
                QTest::addRow("%s %s", qPrintable(page), signal)
                    << page << QByteArray(signal) << argument << QByteArray(property);
            };
            drive("setProgressBarMinVal", -7, "minimum");
            drive("setProgressBarMaxVal", 1234, "maximum");
            drive("updateProgressBarVal", 42, "value");
            drive("updateLabelAction", "Sto copiando..."_s, "text");
            if (page != "Check"_s)
                drive("setProgressBarFormat", "%v / %m"_s, "format");
        }
    }
    void progress()
    {
        QFETCH(QString, page);
        QFETCH(QByteArray, signal);
        QFETCH(QVariant, argument);
        QFETCH(QByteArray, property);
        const MainWindow window;
        const auto *shown = child<QWidget>(window, signal == "updateLabelAction" ? "labelAction" : "progressBar");
        QVERIFY(shown->property(property.constData()) != argument);
        emitOn(window, page, signal, argument);
        QCOMPARE(shown->property(property.constData()), argument);
    }

    void increaseAddsOne()
    {
        const MainWindow window;
        const auto *bar = child<QProgressBar>(window, "progressBar");
        emitOn(window, "Transfer"_s, "updateProgressBarVal", 41);
        emitOn(window, "Transfer"_s, "increaseProgressBarVal");
        QCOMPARE(bar->value(), 42);
        emitOn(window, "Transfer"_s, "updateProgressBarVal", 100);
        emitOn(window, "Transfer"_s, "increaseProgressBarVal");
        QCOMPARE(bar->value(), 100);
    }

    void barIsPaintedAgainAfterManyIncreases()
    {
        const MainWindow window;
        const auto *bar = child<QProgressBar>(window, "progressBar");
        for (int i = 0; i < 30; ++i)
            emitOn(window, "Transfer"_s, "increaseProgressBarVal");
        QCOMPARE(bar->value(), 30);
        QTRY_VERIFY(bar->updatesEnabled());
    }

    void showingTheBarResetsAndShowsAllThree_data()
    {
        columns<QString, bool>("page", "visible");
        for (const QString &page : pages) {
            row(qPrintable(page + " shows"_s), page, true);
            row(qPrintable(page + " hides"_s), page, false);
        }
    }
    void showingTheBarResetsAndShowsAllThree()
    {
        QFETCH(QString, page);
        QFETCH(bool, visible);
        const MainWindow window;
        auto *bar = child<QProgressBar>(window, "progressBar");
        auto *action = child<QLabel>(window, "labelAction");
        const QList<QWidget *> all = {bar, action, button(window, "pushButtonStop")};
        for (QWidget *widget : all)
            widget->setVisible(!visible);
        bar->setValue(42);
        bar->setFormat("%v"_s);
        action->setText("x"_s);
        emitOn(window, page, "setProgressBarVisible", visible);
        for (const QWidget *widget : all)
            QCOMPARE(!widget->isHidden(), visible);
        QCOMPARE(bar->value(), 0);
        QCOMPARE(bar->format(), "%p%"_s);
        QCOMPARE(action->text(), QString());
    }

    void stopIsShownAlone_data()
    {
        columns<QString>("page");
        row("Check", "Check"_s);
        row("Transfer", "Transfer"_s);
    }
    void stopIsShownAlone()
    {
        QFETCH(QString, page);
        MainWindow window;
        const auto *stop = button(window, "pushButtonStop");
        const auto *bar = child<QProgressBar>(window, "progressBar");
        emitOn(window, page, "setPushButtonStopVisible", true);
        QVERIFY(!stop->isHidden());
        QVERIFY(bar->isHidden());
        window.on_setProgressBarVisible(true);
        emitOn(window, page, "setPushButtonStopVisible", false);
        QVERIFY(stop->isHidden());
        QVERIFY(!bar->isHidden());
    }

    void statusTextIsLogged()
    {
        const MainWindow window;
        const LogCapture log;
        emitOn(window, "Ottimizza"_s, "updateLabelAction", "Città"_s);
        QVERIFY(log.contains(QtInfoMsg, "MainWindow::on_updateLabelAction : \"Città\""_s));
    }

    void statusTextBeforeTheBarIsLoggedThoughItIsCleared()
    {
        const MainWindow window;
        const LogCapture log;
        emitOn(window, "Check"_s, "updateLabelAction", "CONTROLLO"_s);
        emitOn(window, "Check"_s, "setProgressBarVisible", true);
        QVERIFY(log.contains(QtInfoMsg, "MainWindow::on_updateLabelAction : \"CONTROLLO\""_s));
        QCOMPARE(textOf(window, "labelAction"), QString());
    }

    void startOfTheOptimisationWithoutAPlayerEndsOnTheResultPage()
    {
        const MainWindow window;
        pageNamed(window, "Transfer"_s)->show();
        emitOn(window, "Transfer"_s, "backFromTransferToOttimizza");
        emitOn(window, "Transfer"_s, "startOttimizzaProcedure");
        QCOMPARE(shownPages(window), QStringList("EndOttimizza"_s));
    }
};

PAGE_TEST_MAIN(TestMainWindowSignals)
#include "tst_mainwindowsignals.moc"
