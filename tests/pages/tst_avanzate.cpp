#include "pages/avanzate.h"

#include "menupagetest.h"
#include "support/pictures.h"

namespace {
const QString kStart = "Avanzate : START "_s;
const QString kEnd = "Avanzate : END "_s;
} // namespace

class TestAvanzate : public MenuPageTest
{
    Q_OBJECT

    PagePointer newPage(QWidget *parent) const override { return std::make_unique<Avanzate>(parent); }
    QList<Button> buttons() const override
    {
        const QString selected = Styles::kPage + "\nselection-color: rgb(255, 255, 255);"_s;
        return {{"update", "pushBtnUpdate", "AGGIORNA IL CORVIN CON L' ULTIMA RELEASE DISPONIBILE"_s, selected},
                {"backup", "pushBtnBackup", "CREA UNA COPIA DI SICUREZZA DELLE TUE BASI"_s},
                {"restore", "pushBtnRestore", "RIPRISTINA LA COPIA DI SICUREZZA SUL CORVIN"_s},
                {"reinstall", "pushBtnInstall", "REINSTALLA IL SISTEMA OPERATIVO"_s},
                {"clean", "pushBtnInstallAndClean", "REINSTALLA IL SISTEMA OPERATIVO E CANCELLA LE BASI"_s},
                {"keep", "pushBtnInstallAndRestore", "REINSTALLA IL SISTEMA OPERATIVO E RIPRISTINA LE BASI"_s},
                {"back", "pushBtnBack", "INDIETRO"_s, Styles::kContainer, false}};
    }
    void addLanguages() const override
    {
        const QByteArray back("pushBtnBack");
        row("it", "it"_s, "AGGIORNA / RIPRISTINA IL SISTEMA OPERATIVO"_s, back, "INDIETRO"_s);
        row("en", "en"_s, "UPDATE / RESTORE THE OPERATING SYSTEM"_s, back, "BACK"_s);
        row("de", "de"_s, "BETRIEBSSYSTEM AKTUALISIEREN / WIEDERHERSTELLEN"_s, back, "ZURÜCK"_s);
    }

private slots:
    void operationRunsBetweenItsTwoLogLinesWithBackDisabled_data()
    {
        columns<QByteArray, QString>("pressed", "operation");
        row("update", QByteArray("pushBtnUpdate"), "updateCorvinWithLastRelease"_s);
        row("backup", QByteArray("pushBtnBackup"), "makeSecurityCopyOfSongs"_s);
        row("restore", QByteArray("pushBtnRestore"), "restoreSecurityCopyOfSongs"_s);
        row("reinstall", QByteArray("pushBtnInstall"), "reinstallOpSysOnly"_s);
        row("reinstall and clean", QByteArray("pushBtnInstallAndClean"), "reinstallOpSysAndCleanSongs"_s);
        row("reinstall and restore", QByteArray("pushBtnInstallAndRestore"), "reinstallOpSysAndRestoreSongs"_s);
    }
    void operationRunsBetweenItsTwoLogLinesWithBackDisabled()
    {
        QFETCH(QByteArray, pressed);
        QFETCH(QString, operation);
        const SimulatedPlayer player;
        const BoxAnswerer boxes;
        Avanzate page;
        SignalRecorder recorder(page);
        const QPushButton *back = button(page, "pushBtnBack");
        for (const auto signal : {&Avanzate::updateCorvinWithLastRelease, &Avanzate::makeSecurityCopyOfSongs,
                                  &Avanzate::restoreSecurityCopyOfSongs, &Avanzate::reinstallOpSysOnly,
                                  &Avanzate::reinstallOpSysAndCleanSongs, &Avanzate::reinstallOpSysAndRestoreSongs})
            connect(&page, signal, back, [back] { qInfo("INDIETRO %s", back->isEnabled() ? "enabled" : "disabled"); });
        click(page, pressed.constData());
        const QStringList expected = {"log "_s + kStart + operation, operation, "log INDIETRO disabled"_s,
                                      "log "_s + kEnd + operation};
        QCOMPARE(ownLines(recorder), expected);
        QVERIFY(back->isEnabled());
        QVERIFY(recorder.log().contains(QtInfoMsg, kStart + operation));
        QVERIFY(recorder.log().contains(QtInfoMsg, kEnd + operation));
    }

    void backStaysDisabledWhileAProcedureProcessesEvents()
    {
        const SimulatedPlayer player;
        const PagePointer page = shownPage();
        SignalRecorder recorder(*page);
        QPushButton *back = button(*page, "pushBtnBack");
        const auto procedure = [back] {
            for (int round = 0; round < 3; ++round) {
                QCoreApplication::processEvents();
                QTest::mouseClick(back, Qt::LeftButton);
            }
        };
        connect(qobject_cast<Avanzate *>(page.get()), &Avanzate::makeSecurityCopyOfSongs, this, procedure);
        click(*page, "pushBtnBackup");
        QCOMPARE(recorder.count("makeSecurityCopyOfSongs"_s), 1);
        QCOMPARE(recorder.count("backFromAvanzateToFirstMenu"_s), 0);
        QVERIFY(back->isEnabled());
    }

    void backIsGivenBackWhenThePlayerWasPulledMeanwhile()
    {
        const SimulatedPlayer player;
        const Avanzate page;
        connect(&page, &Avanzate::reinstallOpSysOnly, this, [] { SimulatedPlayer::disconnect(); });
        const LogCapture log;
        click(page, "pushBtnInstall");
        QVERIFY(button(page, "pushBtnBack")->isEnabled());
        QCOMPARE(log.texts().last(), kEnd + "reinstallOpSysOnly"_s);
    }

    void backNeedsNoPlayer()
    {
        SimulatedPlayer::disconnect();
        const BoxAnswerer boxes;
        Avanzate page;
        SignalRecorder recorder(page);
        click(page, "pushBtnBack");
        QCOMPARE(ownLines(recorder), QStringList("backFromAvanzateToFirstMenu"_s));
    }

    void disabledBackTurnsGrey()
    {
        const PagePointer page = shownPage();
        QPushButton *back = button(*page, "pushBtnBack");
        const QColor amber(249, 191, 0);
        const QColor grey(200, 200, 200);
        QVERIFY(countPixels(*back, amber) > 0);
        QCOMPARE(countPixels(*back, grey), 0);
        back->setEnabled(false);
        QCOMPARE(countPixels(*back, amber), 0);
        QVERIFY(countPixels(*back, grey) > 0);
    }
};

PAGE_TEST_MAIN(TestAvanzate)
#include "tst_avanzate.moc"
