#include "pages/firstmenu.h"

#include "menupagetest.h"

class TestFirstMenu : public MenuPageTest
{
    Q_OBJECT

    PagePointer newPage(QWidget *parent) const override { return std::make_unique<FirstMenu>(parent); }
    QList<Button> buttons() const override
    {
        return {{"transfer", "pushBtnTransfer", "TRASFERISCI LE BASI DAL PC A CORVIN4"_s},
                {"optimizer", "pushBtnOptimize", "OTTIMIZZA L'ARCHVIO DELLE BASI DI CORVIN4"_s},
                {"maintenance", "pushBtnUpRes", "AGGIORNA / RIPRISTINA IL SISTEMA OPERATIVO"_s}};
    }
    void addLanguages() const override
    {
        const QByteArray first("pushBtnTransfer");
        row("it", "it"_s, "GESTIONE E MANUTENZIONE DEL TUO CORVIN4"_s, first, "TRASFERISCI LE BASI DAL PC A CORVIN4"_s);
        row("en", "en"_s, "MANAGEMENT AND MAINTENANCE OF YOUR CORVIN4"_s, first,
            "TRANSFER SONGS FROM THE PC TO CORVIN4"_s);
        row("de", "de"_s, "VERWALTUNG UND WARTUNG IHRES CORVIN4"_s, first, "SONGS VOM PC AUF CORVIN4 ÜBERTRAGEN"_s);
    }

private slots:
    void titleIsCentred()
    {
        const FirstMenu page;
        QVERIFY(child<QLabel>(page, "labelDescr")->alignment().testFlag(Qt::AlignHCenter));
    }

    void buttonsStandInTheMiddleAtTheirFullWidth_data() { addButtonsThatNeedThePlayer(); }
    void buttonsStandInTheMiddleAtTheirFullWidth()
    {
        QFETCH(QByteArray, button);
        const PagePointer page = shownPage();
        const auto *shown = child<QPushButton>(*page, button.constData());
        QCOMPARE(shown->minimumHeight(), 50);
        QCOMPARE(shown->maximumWidth(), 560);
        QCOMPARE(shown->width(), 560);
        QCOMPARE(shown->mapTo(page.get(), QPoint(0, 0)).x(), (kPageSize.width() - 560) / 2);
    }

    void buttonEmitsItsSignalWhileThePlayerIsThere_data()
    {
        columns<QByteArray, QString>("button", "signal");
        row("transfer", QByteArray("pushBtnTransfer"), "gotoTransfer"_s);
        row("optimizer", QByteArray("pushBtnOptimize"), "gotoOptimizer"_s);
        row("maintenance", QByteArray("pushBtnUpRes"), "gotoAvanzate"_s);
    }
    void buttonEmitsItsSignalWhileThePlayerIsThere()
    {
        QFETCH(QByteArray, button);
        QFETCH(QString, signal);
        const SimulatedPlayer player;
        const BoxAnswerer boxes;
        FirstMenu page;
        SignalRecorder recorder(page);
        click(page, button.constData());
        QCOMPARE(ownLines(recorder), QStringList(signal));
    }

    void playerThatIsPluggedInAgainIsFound()
    {
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
