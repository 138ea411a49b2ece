#include "pages/check.h"

#include "app/shared/styles.h"
#include "pagesupport.h"
#include "support/boxanswerer.h"
#include "support/simulatedplayer.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QTimer>
#include <QtTest>
#include <functional>

using namespace PageSupport;

namespace {

const QString kQuestion = QStringLiteral("File di sistema mancanti");
const QString kStatus = QStringLiteral("CONTROLLO INTEGRITA' SOFTWARE ...");

/// Writes down every signal of the page with its value, in order.
class Recorder
{
public:
    explicit Recorder(const Check &page)
    {
        const auto note = [this](const QString &text) {
            emitted.append(text);
            if (whenEmitted)
                whenEmitted(text);
        };
        const auto noteBool = [note](const QString &name) {
            return
                [note, name](bool value) { note(name + (value ? QStringLiteral(" true") : QStringLiteral(" false"))); };
        };
        const auto noteInt = [note](const QString &name) {
            return [note, name](int value) { note(name + QLatin1Char(' ') + QString::number(value)); };
        };
        QObject::connect(&page, &Check::setProgressBarVisible, &m_receiver, noteBool(QStringLiteral("visible")));
        QObject::connect(&page, &Check::setPushButtonStopVisible, &m_receiver, noteBool(QStringLiteral("stop")));
        QObject::connect(&page, &Check::setProgressBarMinVal, &m_receiver, noteInt(QStringLiteral("min")));
        QObject::connect(&page, &Check::setProgressBarMaxVal, &m_receiver, noteInt(QStringLiteral("max")));
        QObject::connect(&page, &Check::updateProgressBarVal, &m_receiver, noteInt(QStringLiteral("value")));
        QObject::connect(&page, &Check::updateLabelAction, &m_receiver,
                         [note](const QString &text) { note(QStringLiteral("label ") + text); });
        QObject::connect(&page, &Check::reinstallOpSysOnly, &m_receiver, [note] { note(QStringLiteral("reinstall")); });
        QObject::connect(&page, &Check::checkDone, &m_receiver, [note] { note(QStringLiteral("done")); });
    }
    QStringList emitted;
    std::function<void(const QString &)> whenEmitted;

private:
    QObject m_receiver;
};

/// All that a check emits up to the look at the files.
QStringList sweep()
{
    QStringList signalsOfTheSweep = {QStringLiteral("label ") + kStatus, QStringLiteral("min 0"),
                                     QStringLiteral("max 100"),          QStringLiteral("value 0"),
                                     QStringLiteral("visible true"),     QStringLiteral("stop false")};
    for (int value = 0; value <= 100; ++value)
        signalsOfTheSweep.append(QStringLiteral("value %1").arg(value));
    signalsOfTheSweep.append(QStringLiteral("visible false"));
    return signalsOfTheSweep;
}

QString titleOf(const Check &page)
{
    return child<QLabel>(page, "label_titolo")->text();
}

QString descriptionOf(const Check &page)
{
    return child<QLabel>(page, "label_descr")->text();
}

bool showsPicture(const Check &page)
{
    return !child<QLabel>(page, "label_descr")->pixmap(Qt::ReturnByValue).isNull();
}

} // namespace

class TestCheck : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { setUp(); }
    void cleanup() { SimulatedPlayer::disconnect(); }

    void pageIsHiddenAndDark();
    void intactPlayerWaitsForAvanti();
    void avantiIsWhatEndsTheCheckOfAnIntactPlayer();
    void pageShowsOnlyItsTitleDuringTheSweep();
    void sweepIsAPauseOfAboutASecondWithTheEventLoopRunning();
    void missingFilesLeadToTheQuestion_data();
    void missingFilesLeadToTheQuestion();
    void noEndsTheCheckWithoutReinstallation_data();
    void noEndsTheCheckWithoutReinstallation();
    void yesReinstallsBeforeTheCheckEnds();
    void playerPulledDuringTheSweepLeadsToTheQuestion();
    void missingRootLeadsToTheQuestion();
    void secondCheckStartsFromTheBeginning();
    void textsOfTheMomentFollowTheLanguage();
    void textsFitInEveryLanguage_data();
    void textsFitInEveryLanguage();
};

void TestCheck::pageIsHiddenAndDark()
{
    QWidget window;
    Check page(&window);
    window.show();
    QVERIFY(page.isHidden());
    QCOMPARE(page.styleSheet(), QString(Styles::kPage));
    QCOMPARE(child<QPushButton>(page, "pushButton")->text(), QStringLiteral("AVANTI"));
    QCOMPARE(child<QPushButton>(page, "pushButton")->cursor().shape(), Qt::PointingHandCursor);
    page.resize(kPageWidth, kPageHeight);
    page.show();
    QCOMPARE(page.grab().toImage().pixelColor(2, 2), QColor(51, 51, 51));
}

void TestCheck::intactPlayerWaitsForAvanti()
{
    SimulatedPlayer player;
    player.addSystemFiles();
    const BoxAnswerer boxes;
    Check page;
    page.show();
    const Recorder recorder(page);
    page.runCheck(player.root());
    QCOMPARE(recorder.emitted, sweep());
    QCOMPARE(titleOf(page), QStringLiteral("CONTROLLO SOFTWARE COMPLETATO"));
    QVERIFY(showsPicture(page));
    QVERIFY(child<QLabel>(page, "label_titolo")->isVisible());
    QVERIFY(child<QLabel>(page, "label_descr")->isVisible());
    QVERIFY(child<QPushButton>(page, "pushButton")->isVisible());
}

void TestCheck::avantiIsWhatEndsTheCheckOfAnIntactPlayer()
{
    SimulatedPlayer player;
    player.addSystemFiles();
    Check page;
    page.show();
    const Recorder recorder(page);
    page.runCheck(player.root());
    click(page, "pushButton");
    QCOMPARE(recorder.emitted, sweep() + (QStringList{QStringLiteral("visible false"), QStringLiteral("done")}));
    QVERIFY(page.isVisible());
}

void TestCheck::pageShowsOnlyItsTitleDuringTheSweep()
{
    SimulatedPlayer player;
    player.addSystemFiles();
    Check page;
    page.show();
    Recorder recorder(page);
    int looked = 0;
    recorder.whenEmitted = [&](const QString &what) {
        if (!what.startsWith(QStringLiteral("value")))
            return;
        ++looked;
        QCOMPARE(titleOf(page), QStringLiteral("CHECK UP IN CORSO"));
        QVERIFY(child<QLabel>(page, "label_titolo")->isVisible());
        QVERIFY(child<QLabel>(page, "label_descr")->isHidden());
        QVERIFY(child<QPushButton>(page, "pushButton")->isHidden());
    };
    page.runCheck(player.root());
    QCOMPARE(looked, 102);
}

void TestCheck::sweepIsAPauseOfAboutASecondWithTheEventLoopRunning()
{
    SimulatedPlayer player;
    player.addSystemFiles();
    Check page;
    QTimer timer;
    int ticks = 0;
    connect(&timer, &QTimer::timeout, this, [&ticks] { ++ticks; });
    timer.start(20);
    QElapsedTimer elapsed;
    elapsed.start();
    page.runCheck(player.root());
    // 101 waits of 10 ms; no upper limit, a busy machine takes longer.
    QVERIFY(elapsed.elapsed() >= 1010);
    QVERIFY(ticks >= 10);
}

void TestCheck::missingFilesLeadToTheQuestion_data()
{
    QTest::addColumn<QStringList>("missing");
    const QString script = QStringLiteral("AUTOEXEC.BAT");
    const QString program = QStringLiteral("System/Corvin/Corvin.exe");
    const QString interface = QStringLiteral("System/GuiProc/GuiProc.exe");
    QTest::newRow("the start-up script alone") << QStringList{script};
    QTest::newRow("the main program alone") << QStringList{program};
    QTest::newRow("the interface process alone") << QStringList{interface};
    QTest::newRow("all three") << QStringList{script, program, interface};
}

void TestCheck::missingFilesLeadToTheQuestion()
{
    QFETCH(QStringList, missing);
    SimulatedPlayer player;
    player.addSystemFiles();
    for (const QString &file : qAsConst(missing))
        QVERIFY(QFile::remove(player.path(file)));
    const QStringList before = player.files();
    BoxAnswerer boxes;
    boxes.answer(kQuestion, QStringLiteral("No"));
    Check page;
    page.show();
    boxes.whenShown([&page](QMessageBox *) {
        QCOMPARE(titleOf(page), QStringLiteral("CONTROLLO SOFTWARE COMPLETATO"));
        QCOMPARE(descriptionOf(page),
                 QStringLiteral("Problema rilevato durante il controllo del sistema operativo !!!"));
        QVERIFY(child<QLabel>(page, "label_descr")->isVisible());
        QVERIFY(child<QPushButton>(page, "pushButton")->isHidden());
    });
    page.runCheck(player.root());
    QCOMPARE(boxes.seen().size(), 1);
    const BoxAnswerer::Seen &box = boxes.seen().first();
    QCOMPARE(box.text,
             QStringLiteral("ATTENZIONE: file di sistema danneggiati o mancanti,\n\ntentare il ripristino ?"));
    QStringList buttons = box.buttons;
    buttons.sort();
    QCOMPARE(buttons, (QStringList{QStringLiteral("No"), QStringLiteral("Yes")}));
    QCOMPARE(box.icon, QMessageBox::Question);
    QVERIFY(box.hadParent);
    QCOMPARE(player.files(), before);
}

void TestCheck::noEndsTheCheckWithoutReinstallation_data()
{
    QTest::addColumn<int>("means");
    QTest::newRow("the button") << 0;
    QTest::newRow("Escape") << 1;
    QTest::newRow("the box's close button") << 2;
}

void TestCheck::noEndsTheCheckWithoutReinstallation()
{
    QFETCH(int, means);
    const SimulatedPlayer player;
    BoxAnswerer boxes;
    if (means == 0)
        boxes.answer(kQuestion, QStringLiteral("No"));
    else if (means == 1)
        boxes.answerByKey(kQuestion, Qt::Key_Escape);
    else
        boxes.answerByClosing(kQuestion);
    Check page;
    page.show();
    const Recorder recorder(page);
    page.runCheck(player.root());
    QCOMPARE(recorder.emitted, sweep() + (QStringList{QStringLiteral("visible false"), QStringLiteral("done")}));
    QVERIFY(child<QPushButton>(page, "pushButton")->isHidden());
    QCOMPARE(descriptionOf(page), QStringLiteral("Problema rilevato durante il controllo del sistema operativo !!!"));
}

void TestCheck::yesReinstallsBeforeTheCheckEnds()
{
    const SimulatedPlayer player;
    BoxAnswerer boxes;
    boxes.answer(kQuestion, QStringLiteral("Yes"));
    Check page;
    page.show();
    Recorder recorder(page);
    int reinstalled = 0;
    recorder.whenEmitted = [&](const QString &what) {
        if (what != QLatin1String("reinstall"))
            return;
        ++reinstalled;
        QCOMPARE(titleOf(page), QStringLiteral("RIPRISTINO DEI FILE DEL SISTEMA OPERATIVO"));
        QCOMPARE(descriptionOf(page), QStringLiteral("ATTENZIONE :\n\nNON Spegnere/Riavviare Corvin4 e NON scollegare "
                                                     "il cavo USB.\n\nL'operazione potrebbe richiedere qualche "
                                                     "minuto."));
        QVERIFY(child<QLabel>(page, "label_descr")->isVisible());
        QVERIFY(child<QPushButton>(page, "pushButton")->isHidden());
    };
    page.runCheck(player.root());
    QCOMPARE(reinstalled, 1);
    // The outcome of the reinstallation does not matter: the files are still missing.
    QCOMPARE(recorder.emitted, sweep() + (QStringList{QStringLiteral("reinstall"), QStringLiteral("visible false"),
                                                      QStringLiteral("done")}));
    QVERIFY(child<QPushButton>(page, "pushButton")->isHidden());
}

void TestCheck::playerPulledDuringTheSweepLeadsToTheQuestion()
{
    SimulatedPlayer player;
    player.addSystemFiles();
    BoxAnswerer boxes;
    boxes.answer(kQuestion, QStringLiteral("No"));
    Check page;
    Recorder recorder(page);
    recorder.whenEmitted = [&player](const QString &what) {
        if (what == QLatin1String("value 50")) {
            QVERIFY(QFile::remove(player.path(QStringLiteral("AUTOEXEC.BAT"))));
            QVERIFY(QDir(player.path(QStringLiteral("System"))).removeRecursively());
        }
    };
    page.runCheck(player.root());
    QCOMPARE(recorder.emitted.last(), QStringLiteral("done"));
}

void TestCheck::missingRootLeadsToTheQuestion()
{
    BoxAnswerer boxes;
    boxes.answer(kQuestion, QStringLiteral("No"));
    Check page;
    page.runCheck(QStringLiteral("/no/such/folder/"));
    QCOMPARE(boxes.pending(), 0);
}

void TestCheck::secondCheckStartsFromTheBeginning()
{
    SimulatedPlayer player;
    player.addSystemFiles();
    Check page;
    page.show();
    page.runCheck(player.root());
    Recorder recorder(page);
    bool looked = false;
    recorder.whenEmitted = [&](const QString &what) {
        if (what != QLatin1String("value 1"))
            return;
        looked = true;
        QVERIFY(!showsPicture(page));
        QVERIFY(child<QPushButton>(page, "pushButton")->isHidden());
    };
    page.runCheck(player.root());
    QVERIFY(looked);
    QVERIFY(showsPicture(page));
}

void TestCheck::textsOfTheMomentFollowTheLanguage()
{
    SimulatedPlayer player;
    player.addSystemFiles();
    Check page;
    page.show();
    {
        const Language english(QStringLiteral("en"));
        QCOMPARE(titleOf(page), QStringLiteral("CHECK-UP IN PROGRESS"));
        page.runCheck(player.root());
        QCOMPARE(titleOf(page), QStringLiteral("SOFTWARE CHECK COMPLETED"));
    }
    QCOMPARE(titleOf(page), QStringLiteral("CONTROLLO SOFTWARE COMPLETATO"));
    QVERIFY(showsPicture(page));
    QVERIFY(child<QPushButton>(page, "pushButton")->isVisible());
    QVERIFY(QFile::remove(player.path(QStringLiteral("AUTOEXEC.BAT"))));

    BoxAnswerer boxes;
    boxes.answer(QStringLiteral("Fehlende Systemdateien"), QStringLiteral("Ja"));
    Recorder recorder(page);
    bool looked = false;
    recorder.whenEmitted = [&](const QString &what) {
        if (what != QLatin1String("reinstall"))
            return;
        QCOMPARE(titleOf(page), QStringLiteral("BETRIEBSSYSTEMDATEIEN WERDEN WIEDERHERGESTELLT"));
        const Language english(QStringLiteral("en"));
        QCOMPARE(titleOf(page), QStringLiteral("RESTORING THE OPERATING SYSTEM FILES"));
        QVERIFY(descriptionOf(page).startsWith(QStringLiteral("WARNING:")));
        looked = true;
    };
    const Language german(QStringLiteral("de"));
    page.runCheck(player.root());
    QVERIFY(looked);
}

void TestCheck::textsFitInEveryLanguage_data()
{
    QTest::addColumn<QString>("code");
    QTest::newRow("it") << QStringLiteral("it");
    QTest::newRow("en") << QStringLiteral("en");
    QTest::newRow("de") << QStringLiteral("de");
}

void TestCheck::textsFitInEveryLanguage()
{
    QFETCH(QString, code);
    SimulatedPlayer player;
    player.addSystemFiles();
    Check page;
    page.resize(kPageWidth, kPageHeight);
    page.show();
    const Language language(code);
    page.runCheck(player.root());
    QCoreApplication::processEvents();
    QVERIFY(allButtonsShowTheirWholeText(page));
    const auto *title = child<QLabel>(page, "label_titolo");
    QVERIFY(title->height() >= title->heightForWidth(title->width()));
}

QTEST_MAIN(TestCheck)
#include "tst_check.moc"
