#include "pages/avanzate.h"

#include "menupagetest.h"
#include "support/pictures.h"

const QString kStart = "Avanzate : START "_s;
const QString kEnd = "Avanzate : END "_s;

class TestAvanzate : public MenuPageTest
{
    Q_OBJECT

    PagePointer newPage(QWidget *parent) const override { return std::make_unique<Avanzate>(parent); }
    QList<Button> buttons() const override {
        const QString selected = FormSheets::kPage + "\nselection-color: rgb(255, 255, 255);"_s;
        return {
            {"update", "pushBtnUpdate", "AGGIORNA IL CORVIN CON L' ULTIMA RELEASE DISPONIBILE"_s,
             "updateCorvinWithLastRelease"_s, selected},
            {"backup", "pushBtnBackup", "CREA UNA COPIA DI SICUREZZA DELLE TUE BASI"_s, "makeSecurityCopyOfSongs"_s},
            {"restore", "pushBtnRestore", "RIPRISTINA LA COPIA DI SICUREZZA SUL CORVIN"_s,
             "restoreSecurityCopyOfSongs"_s},
            {"reinstall", "pushBtnInstall", "REINSTALLA IL SISTEMA OPERATIVO"_s, "reinstallOpSysOnly"_s},
            {"reinstall and clean", "pushBtnInstallAndClean", "REINSTALLA IL SISTEMA OPERATIVO E CANCELLA LE BASI"_s,
             "reinstallOpSysAndCleanSongs"_s},
            {"reinstall and restore", "pushBtnInstallAndRestore",
             "REINSTALLA IL SISTEMA OPERATIVO E RIPRISTINA LE BASI"_s, "reinstallOpSysAndRestoreSongs"_s},
            {"back", "pushBtnBack", "INDIETRO"_s, "backFromAvanzateToFirstMenu"_s, FormSheets::kContainer, false}};
    }
    QStringList textsIn(const QString &language) const override {
        if (language == "it"_s)
            return {"AGGIORNA / RIPRISTINA IL SISTEMA OPERATIVO"_s, "INDIETRO"_s};
        if (language == "en"_s)
            return {"UPDATE / RESTORE THE OPERATING SYSTEM"_s, "BACK"_s};
        return {"BETRIEBSSYSTEM AKTUALISIEREN / WIEDERHERSTELLEN"_s, "ZURÜCK"_s};
    }

private slots:
    void operationRunsBetweenItsTwoLogLinesWithBackDisabled_data() { addButtonsThatNeedThePlayer(); }
    void operationRunsBetweenItsTwoLogLinesWithBackDisabled() {
        QFETCH(QByteArray, button);
        QFETCH(QString, signal);
        const SimulatedPlayer player;
        const BoxAnswerer boxes;
        Avanzate page;
        SignalRecorder recorder(page);
        const auto *back = child<QPushButton>(page, "pushBtnBack");
        for (const auto operation : {&Avanzate::updateCorvinWithLastRelease, &Avanzate::makeSecurityCopyOfSongs,
                                     &Avanzate::restoreSecurityCopyOfSongs, &Avanzate::reinstallOpSysOnly,
                                     &Avanzate::reinstallOpSysAndCleanSongs, &Avanzate::reinstallOpSysAndRestoreSongs})
            connect(&page, operation, back,
                    [back] { qInfo("INDIETRO %s", back->isEnabled() ? "enabled" : "disabled"); });
        click(page, button.constData());
        QCOMPARE(ownLines(recorder), QStringList({"log "_s + kStart + signal, signal, "log INDIETRO disabled"_s,
                                                  "log "_s + kEnd + signal}));
        QVERIFY(back->isEnabled());
        QVERIFY(recorder.log().contains(QtInfoMsg, kStart + signal));
        QVERIFY(recorder.log().contains(QtInfoMsg, kEnd + signal));
    }

    void backStaysDisabledWhileAProcedureProcessesEvents() {
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

    void backIsGivenBackWhenThePlayerWasPulledMeanwhile() {
        const SimulatedPlayer player;
        const Avanzate page;
        connect(&page, &Avanzate::reinstallOpSysOnly, this, [] { SimulatedPlayer::disconnect(); });
        const LogCapture log;
        click(page, "pushBtnInstall");
        QVERIFY(button(page, "pushBtnBack")->isEnabled());
        QCOMPARE(log.texts().last(), kEnd + "reinstallOpSysOnly"_s);
    }

    void backNeedsNoPlayer() {
        SimulatedPlayer::disconnect();
        const BoxAnswerer boxes;
        Avanzate page;
        SignalRecorder recorder(page);
        click(page, "pushBtnBack");
        QCOMPARE(ownLines(recorder), QStringList("backFromAvanzateToFirstMenu"_s));
    }

    void disabledBackTurnsGrey() {
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
