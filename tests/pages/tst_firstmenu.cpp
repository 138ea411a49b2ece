#include "pages/firstmenu.h"

#include "menupagetest.h"

class TestFirstMenu : public MenuPageTest
{
    Q_OBJECT

    PagePointer newPage(QWidget *parent) const override { return std::make_unique<FirstMenu>(parent); }
    QList<Button> buttons() const override {
        return {{"maintenance", "pushBtnUpRes", "AGGIORNA / RIPRISTINA IL SISTEMA OPERATIVO"_s, "gotoAvanzate"_s},
                {"optimizer", "pushBtnOptimize", "OTTIMIZZA L'ARCHVIO DELLE BASI DI CORVIN4"_s, "gotoOptimizer"_s},
                {"transfer", "pushBtnTransfer", "TRASFERISCI LE BASI DAL PC A CORVIN4"_s, "gotoTransfer"_s}};
    }
    QStringList textsIn(const QString &language) const override {
        if (language == "it"_s)
            return {"GESTIONE E MANUTENZIONE DEL TUO CORVIN4"_s, "TRASFERISCI LE BASI DAL PC A CORVIN4"_s};
        if (language == "en"_s)
            return {"MANAGE AND MAINTAIN YOUR CORVIN4"_s, "TRANSFER SONGS FROM THE PC TO CORVIN4"_s};
        return {"VERWALTUNG UND WARTUNG IHRES CORVIN4"_s, "SONGS VOM PC AUF CORVIN4 ÜBERTRAGEN"_s};
    }

private slots:
    void titleIsCentred() {
        const FirstMenu page;
        QVERIFY(child<QLabel>(page, "labelDescr")->alignment().testFlag(Qt::AlignHCenter));
    }

    void buttonsStandInTheMiddleAtTheirFullWidth_data() { addButtonsThatNeedThePlayer(); }
    void buttonsStandInTheMiddleAtTheirFullWidth() {
        QFETCH(QByteArray, button);
        const PagePointer page = shownPage();
        const auto *shown = child<QPushButton>(*page, button.constData());
        QCOMPARE(shown->minimumHeight(), 50);
        QCOMPARE(shown->maximumWidth(), 560);
        QCOMPARE(shown->width(), 560);
        QCOMPARE(shown->mapTo(page.get(), QPoint(0, 0)).x(), (kPageSize.width() - 560) / 2);
    }

    void buttonEmitsItsSignalWhileThePlayerIsThere_data() { addButtonsThatNeedThePlayer(); }
    void buttonEmitsItsSignalWhileThePlayerIsThere() {
        QFETCH(QByteArray, button);
        QFETCH(QString, signal);
        const SimulatedPlayer player;
        const BoxAnswerer boxes;
        FirstMenu page;
        SignalRecorder recorder(page);
        click(page, button.constData());
        QCOMPARE(ownLines(recorder), QStringList(signal));
    }

    void playerThatIsPluggedInAgainIsFound() {
        SimulatedPlayer player;
        BoxAnswerer boxes;
        const FirstMenu page;
        const QSignalSpy transfer(&page, &FirstMenu::gotoTransfer);
        click(page, "pushBtnTransfer");
        QCOMPARE(transfer.count(), 1);
        SimulatedPlayer::disconnect();
        boxes.answer(Titles::kNotConnected, Buttons::kOk);
        click(page, "pushBtnTransfer");
        QCOMPARE(transfer.count(), 1);
        player.connect();
        click(page, "pushBtnTransfer");
        QCOMPARE(transfer.count(), 2);
    }
};

PAGE_TEST_MAIN(TestFirstMenu)
#include "tst_firstmenu.moc"
