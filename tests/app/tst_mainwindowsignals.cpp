#include "italianwindow.h"
#include "support/logcapture.h"

// Every signal of every page has its effect in the window: each is emitted by name on the real page.

/// The main window with its parts; the pages bear the names of their classes.
struct Window : MainWindow
{
    QProgressBar *const bar = child<QProgressBar>(*this, "progressBar");
    QLabel *const action = child<QLabel>(*this, "labelAction");
    QPushButton *const stop = button(*this, "pushButtonStop");

    QWidget *page(const QString &name) const { return child<QWidget>(*this, name.toLatin1().constData()); }
    /// The names of the pages that are not hidden, sorted.
    QStringList shownPages() const {
        QStringList names;
        const auto pages =
            child<QFrame>(*this, "framePage")->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
        for (const QWidget *one : pages)
            if (!one->isHidden())
                names.append(one->objectName());
        names.sort();
        return names;
    }
    void emitOn(const QString &name, const QByteArray &signal, const QVariant &argument = {}) const {
        const QGenericArgument given(argument.typeName(), argument.constData());
        if (!QMetaObject::invokeMethod(page(name), signal.constData(), given))
            failTest(name + " has no such signal "_s + QLatin1String(signal));
    }
};

class TestMainWindowSignals : public QObject
{
    Q_OBJECT

    const QStringList pages = words("Check Ottimizza Transfer");

private slots:
    void initTestCase() { startInItalian(); }

    void pageChange_data() {
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
    void pageChange() {
        QFETCH(QString, page);
        QFETCH(QByteArray, signal);
        QFETCH(QVariant, argument);
        QFETCH(QStringList, before);
        QFETCH(QString, after);
        const Window window;
        for (const QString &name : qAsConst(before))
            window.page(name)->show();
        before.sort();
        QCOMPARE(window.shownPages(), before);
        window.emitOn(page, signal, argument);
        QCOMPARE(window.shownPages(), QStringList(after));
    }

    void progress_data() {
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
    void progress() {
        QFETCH(QString, page);
        QFETCH(QByteArray, signal);
        QFETCH(QVariant, argument);
        QFETCH(QByteArray, property);
        const Window window;
        const auto *shown = child<QWidget>(window, signal == "updateLabelAction" ? "labelAction" : "progressBar");
        QVERIFY(shown->property(property.constData()) != argument);
        window.emitOn(page, signal, argument);
        QCOMPARE(shown->property(property.constData()), argument);
    }

    void increaseAddsOne() {
        const Window window;
        for (const int before : {41, 100}) {
            window.emitOn("Transfer"_s, "updateProgressBarVal", before);
            window.emitOn("Transfer"_s, "increaseProgressBarVal");
            QCOMPARE(window.bar->value(), before == 41 ? 42 : 100);
        }
    }

    void barIsPaintedAgainAfterManyIncreases() {
        const Window window;
        for (int i = 0; i < 30; ++i)
            window.emitOn("Transfer"_s, "increaseProgressBarVal");
        QCOMPARE(window.bar->value(), 30);
        QTRY_VERIFY(window.bar->updatesEnabled());
    }

    void showingTheBarResetsAndShowsAllThree_data() {
        columns<QString, bool>("page", "visible");
        for (const QString &page : pages)
            for (const bool visible : {true, false})
                QTest::addRow("%s %d", qPrintable(page), int(visible)) << page << visible;
    }
    void showingTheBarResetsAndShowsAllThree() {
        QFETCH(QString, page);
        QFETCH(bool, visible);
        const Window window;
        const QList<QWidget *> all = {window.bar, window.action, window.stop};
        for (QWidget *widget : all)
            widget->setVisible(!visible);
        window.bar->setValue(42);
        window.bar->setFormat("%v"_s);
        window.action->setText("x"_s);
        window.emitOn(page, "setProgressBarVisible", visible);
        for (const QWidget *widget : all)
            QCOMPARE(!widget->isHidden(), visible);
        QCOMPARE(window.bar->value(), 0);
        QCOMPARE(window.bar->format(), "%p%"_s);
        QCOMPARE(window.action->text(), QString());
    }

    void stopIsShownAlone() {
        for (const QString &page : words("Check Transfer")) {
            Window window;
            window.emitOn(page, "setPushButtonStopVisible", true);
            QVERIFY2(!window.stop->isHidden() && window.bar->isHidden(), qPrintable(page));
            window.on_setProgressBarVisible(true);
            window.emitOn(page, "setPushButtonStopVisible", false);
            QVERIFY2(window.stop->isHidden() && !window.bar->isHidden(), qPrintable(page));
        }
    }

    void statusTextIsLoggedThoughTheBarClearsIt() {
        const Window window;
        const LogCapture log;
        window.emitOn("Ottimizza"_s, "updateLabelAction", "Città"_s);
        QVERIFY(log.contains(QtInfoMsg, "MainWindow::on_updateLabelAction : \"Città\""_s));
        window.emitOn("Check"_s, "updateLabelAction", "CONTROLLO"_s);
        window.emitOn("Check"_s, "setProgressBarVisible", true);
        QVERIFY(log.contains(QtInfoMsg, "MainWindow::on_updateLabelAction : \"CONTROLLO\""_s));
        QCOMPARE(window.action->text(), QString());
    }

    void startOfTheOptimisationWithoutAPlayerEndsOnTheResultPage() {
        const Window window;
        window.page("Transfer"_s)->show();
        window.emitOn("Transfer"_s, "backFromTransferToOttimizza");
        window.emitOn("Transfer"_s, "startOttimizzaProcedure");
        QCOMPARE(window.shownPages(), QStringList("EndOttimizza"_s));
    }
};

PAGE_TEST_MAIN(TestMainWindowSignals)
#include "tst_mainwindowsignals.moc"
