#include "pages/avanzate.h"

#include "app/shared/styles.h"
#include "pagesupport.h"
#include "support/boxanswerer.h"
#include "support/logcapture.h"
#include "support/simulatedplayer.h"

#include <QLabel>
#include <QtTest>

using namespace PageSupport;

namespace {

const QString kStart = QStringLiteral("Avanzate : START ");
const QString kEnd = QStringLiteral("Avanzate : END ");

/// Writes down every signal of the page, together with whether INDIETRO could be pressed at that moment.
class Recorder
{
public:
    explicit Recorder(const Avanzate &page) : m_back(child<QPushButton>(page, "pushBtnBack"))
    {
        record(page, &Avanzate::updateCorvinWithLastRelease, QStringLiteral("updateCorvinWithLastRelease"));
        record(page, &Avanzate::makeSecurityCopyOfSongs, QStringLiteral("makeSecurityCopyOfSongs"));
        record(page, &Avanzate::restoreSecurityCopyOfSongs, QStringLiteral("restoreSecurityCopyOfSongs"));
        record(page, &Avanzate::reinstallOpSysOnly, QStringLiteral("reinstallOpSysOnly"));
        record(page, &Avanzate::reinstallOpSysAndCleanSongs, QStringLiteral("reinstallOpSysAndCleanSongs"));
        record(page, &Avanzate::reinstallOpSysAndRestoreSongs, QStringLiteral("reinstallOpSysAndRestoreSongs"));
        record(page, &Avanzate::backFromAvanzateToFirstMenu, QStringLiteral("backFromAvanzateToFirstMenu"));
    }
    QStringList emitted;
    QList<bool> backWasEnabled;

private:
    void record(const Avanzate &page, void (Avanzate::*signal)(), const QString &name)
    {
        QObject::connect(&page, signal, &m_receiver, [this, name] {
            emitted.append(name);
            backWasEnabled.append(m_back->isEnabled());
        });
    }
    QObject m_receiver;
    QPushButton *m_back;
};

} // namespace

class TestAvanzate : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { setUp(); }
    void pageIsHiddenWhenConstructed();
    void textsAndLookAreThoseOfTheForm_data();
    void textsAndLookAreThoseOfTheForm();
    void titleIsBlackTextOnTheWindow();
    void operationRunsBetweenItsTwoLogLinesWithBackDisabled_data() { addOperations(); }
    void operationRunsBetweenItsTwoLogLinesWithBackDisabled();
    void operationWithoutThePlayerShowsTheMessageAndLogsNothing_data() { addOperations(); }
    void operationWithoutThePlayerShowsTheMessageAndLogsNothing();
    void backStaysDisabledWhileAProcedureProcessesEvents();
    void backIsGivenBackWhenThePlayerWasPulledMeanwhile();
    void backNeedsNoPlayer();
    void disabledBackTurnsGrey();
    void messageSpeaksTheLanguageOfTheProgram();
    void textsFollowTheLanguageAndFit_data();
    void textsFollowTheLanguageAndFit();

private:
    static void addOperations();
};

void TestAvanzate::addOperations()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("operation");
    QTest::newRow("update") << QByteArray("pushBtnUpdate") << QStringLiteral("updateCorvinWithLastRelease");
    QTest::newRow("backup") << QByteArray("pushBtnBackup") << QStringLiteral("makeSecurityCopyOfSongs");
    QTest::newRow("restore") << QByteArray("pushBtnRestore") << QStringLiteral("restoreSecurityCopyOfSongs");
    QTest::newRow("reinstall") << QByteArray("pushBtnInstall") << QStringLiteral("reinstallOpSysOnly");
    QTest::newRow("reinstall and clean") << QByteArray("pushBtnInstallAndClean")
                                         << QStringLiteral("reinstallOpSysAndCleanSongs");
    QTest::newRow("reinstall and restore")
        << QByteArray("pushBtnInstallAndRestore") << QStringLiteral("reinstallOpSysAndRestoreSongs");
}

void TestAvanzate::pageIsHiddenWhenConstructed()
{
    QWidget window;
    Avanzate page(&window);
    window.show();
    QVERIFY(page.isHidden());
}

void TestAvanzate::textsAndLookAreThoseOfTheForm_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("style");
    const QString plain = Styles::kPage;
    QTest::newRow("update") << QByteArray("pushBtnUpdate")
                            << QStringLiteral("AGGIORNA IL CORVIN CON L' ULTIMA RELEASE DISPONIBILE")
                            << plain + QStringLiteral("\nselection-color: rgb(255, 255, 255);");
    QTest::newRow("backup") << QByteArray("pushBtnBackup")
                            << QStringLiteral("CREA UNA COPIA DI SICUREZZA DELLE TUE BASI") << plain;
    QTest::newRow("restore") << QByteArray("pushBtnRestore")
                             << QStringLiteral("RIPRISTINA LA COPIA DI SICUREZZA SUL CORVIN") << plain;
    QTest::newRow("reinstall") << QByteArray("pushBtnInstall") << QStringLiteral("REINSTALLA IL SISTEMA OPERATIVO")
                               << plain;
    QTest::newRow("reinstall and clean") << QByteArray("pushBtnInstallAndClean")
                                         << QStringLiteral("REINSTALLA IL SISTEMA OPERATIVO E CANCELLA LE BASI")
                                         << plain;
    QTest::newRow("reinstall and restore")
        << QByteArray("pushBtnInstallAndRestore")
        << QStringLiteral("REINSTALLA IL SISTEMA OPERATIVO E RIPRISTINA LE BASI") << plain;
    QTest::newRow("back") << QByteArray("pushBtnBack") << QStringLiteral("INDIETRO") << QString(Styles::kContainer);
}

void TestAvanzate::textsAndLookAreThoseOfTheForm()
{
    QFETCH(QByteArray, name);
    const Avanzate page;
    const auto *button = child<QPushButton>(page, name.constData());
    QTEST(button->text(), "text");
    QTEST(button->styleSheet(), "style");
    QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
    QVERIFY(hasFont(*button, sharedFonts().fontTitle18));
    QVERIFY(button->isEnabled());
}

void TestAvanzate::titleIsBlackTextOnTheWindow()
{
    const Avanzate page;
    const auto *title = child<QLabel>(page, "labelDescr");
    QCOMPARE(title->text(), QStringLiteral("AGGIORNA / RIPRISTINA IL SISTEMA OPERATIVO"));
    QCOMPARE(title->styleSheet(), QString(Styles::kTransparentLabel));
    QVERIFY(hasFont(*title, sharedFonts().fontTitle18));
}

void TestAvanzate::operationRunsBetweenItsTwoLogLinesWithBackDisabled()
{
    QFETCH(QByteArray, button);
    QFETCH(QString, operation);
    const SimulatedPlayer player;
    const BoxAnswerer boxes;
    const Avanzate page;
    const Recorder recorder(page);
    const LogCapture log;
    // What the procedure logs stands between the two lines.
    const auto procedure = [] { qInfo("procedure"); };
    QObject receiver;
    for (const auto signal : {&Avanzate::updateCorvinWithLastRelease, &Avanzate::makeSecurityCopyOfSongs,
                              &Avanzate::restoreSecurityCopyOfSongs, &Avanzate::reinstallOpSysOnly,
                              &Avanzate::reinstallOpSysAndCleanSongs, &Avanzate::reinstallOpSysAndRestoreSongs})
        connect(&page, signal, &receiver, procedure);

    click(page, button.constData());
    QCOMPARE(recorder.emitted, QStringList{operation});
    QCOMPARE(recorder.backWasEnabled, QList<bool>{false});
    QVERIFY(child<QPushButton>(page, "pushBtnBack")->isEnabled());
    QCOMPARE(log.texts(), (QStringList{kStart + operation, QStringLiteral("procedure"), kEnd + operation}));
    QVERIFY(log.contains(QtInfoMsg, kStart + operation));
    QVERIFY(log.contains(QtInfoMsg, kEnd + operation));
}

void TestAvanzate::operationWithoutThePlayerShowsTheMessageAndLogsNothing()
{
    QFETCH(QByteArray, button);
    SimulatedPlayer::disconnect();
    BoxAnswerer boxes;
    boxes.answer(QStringLiteral("Corvin4 non collegato"), QStringLiteral("OK"));
    Avanzate page;
    page.show();
    const Recorder recorder(page);
    const LogCapture log;
    boxes.whenShown([&page](QMessageBox *) { QVERIFY(child<QPushButton>(page, "pushBtnBack")->isEnabled()); });
    click(page, button.constData());
    QCOMPARE(boxes.seen().size(), 1);
    QCOMPARE(boxes.seen().first().text, QStringLiteral("Ricollega Corvin4 alla porta USB"));
    QCOMPARE(boxes.seen().first().buttons, QStringList{QStringLiteral("OK")});
    QCOMPARE(boxes.seen().first().icon, QMessageBox::Information);
    QVERIFY(recorder.emitted.isEmpty());
    QVERIFY(log.textsStartingWith(QStringLiteral("Avanzate")).isEmpty());
    QVERIFY(page.isVisible());
    QVERIFY(child<QPushButton>(page, "pushBtnBack")->isEnabled());
}

void TestAvanzate::backStaysDisabledWhileAProcedureProcessesEvents()
{
    const SimulatedPlayer player;
    Avanzate page;
    page.show();
    const Recorder recorder(page);
    auto *back = child<QPushButton>(page, "pushBtnBack");
    connect(&page, &Avanzate::makeSecurityCopyOfSongs, this, [back] {
        for (int round = 0; round < 3; ++round) {
            QCoreApplication::processEvents();
            QTest::mouseClick(back, Qt::LeftButton);
        }
    });
    click(page, "pushBtnBackup");
    QCOMPARE(recorder.emitted, QStringList{QStringLiteral("makeSecurityCopyOfSongs")});
    QVERIFY(back->isEnabled());
}

void TestAvanzate::backIsGivenBackWhenThePlayerWasPulledMeanwhile()
{
    const SimulatedPlayer player;
    const Avanzate page;
    connect(&page, &Avanzate::reinstallOpSysOnly, this, [] { SimulatedPlayer::disconnect(); });
    const LogCapture log;
    click(page, "pushBtnInstall");
    QVERIFY(child<QPushButton>(page, "pushBtnBack")->isEnabled());
    QCOMPARE(log.texts().last(), QStringLiteral("Avanzate : END reinstallOpSysOnly"));
}

void TestAvanzate::backNeedsNoPlayer()
{
    SimulatedPlayer::disconnect();
    const BoxAnswerer boxes;
    const Avanzate page;
    const Recorder recorder(page);
    const LogCapture log;
    click(page, "pushBtnBack");
    QCOMPARE(recorder.emitted, QStringList{QStringLiteral("backFromAvanzateToFirstMenu")});
    QVERIFY(log.textsStartingWith(QStringLiteral("Avanzate")).isEmpty());
}

void TestAvanzate::disabledBackTurnsGrey()
{
    Avanzate page;
    page.resize(kPageWidth, kPageHeight);
    page.show();
    auto *back = child<QPushButton>(page, "pushBtnBack");
    const auto shows = [back](const QColor &colour) {
        const QImage image = back->grab().toImage();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y) == colour)
                    return true;
            }
        }
        return false;
    };
    const QColor amber(249, 191, 0);
    const QColor grey(200, 200, 200);
    QVERIFY(shows(amber));
    QVERIFY(!shows(grey));
    back->setEnabled(false);
    QVERIFY(!shows(amber));
    QVERIFY(shows(grey));
}

void TestAvanzate::messageSpeaksTheLanguageOfTheProgram()
{
    SimulatedPlayer::disconnect();
    BoxAnswerer boxes;
    const Avanzate page;
    const Language english(QStringLiteral("en"));
    boxes.answer(QStringLiteral("Corvin4 not connected"), QStringLiteral("OK"));
    click(page, "pushBtnUpdate");
    QCOMPARE(boxes.seen().first().text, QStringLiteral("Reconnect Corvin4 to the USB port"));
}

void TestAvanzate::textsFollowTheLanguageAndFit_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("back");
    QTest::newRow("it") << QStringLiteral("it") << QStringLiteral("AGGIORNA / RIPRISTINA IL SISTEMA OPERATIVO")
                        << QStringLiteral("INDIETRO");
    QTest::newRow("en") << QStringLiteral("en") << QStringLiteral("UPDATE / RESTORE THE OPERATING SYSTEM")
                        << QStringLiteral("BACK");
    QTest::newRow("de") << QStringLiteral("de") << QStringLiteral("BETRIEBSSYSTEM AKTUALISIEREN / WIEDERHERSTELLEN")
                        << QStringLiteral("ZURÜCK");
}

void TestAvanzate::textsFollowTheLanguageAndFit()
{
    QFETCH(QString, code);
    Avanzate page;
    page.resize(kPageWidth, kPageHeight);
    page.show();
    const Language language(code);
    QVERIFY(page.isVisible());
    QTEST(child<QLabel>(page, "labelDescr")->text(), "title");
    QTEST(child<QPushButton>(page, "pushBtnBack")->text(), "back");
    QVERIFY(allButtonsShowTheirWholeText(page));
    QVERIFY(page.minimumSizeHint().width() < kSmallScreenWidth);
}

QTEST_MAIN(TestAvanzate)
#include "tst_avanzate.moc"
