#include "app/mainwindow.h"

#include "app/appsettings.h"
#include "app/shared/sharedfonts.h"
#include "resources/resources.h"
#include "support/simulatedplayer.h"

#include <QTest>
#include <limits>

class TestOperationTexts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void numberedText_data();
    void numberedText();
    void numberOutsideTheTableGivesQuestionMarks_data();
    void numberOutsideTheTableGivesQuestionMarks();
};

void TestOperationTexts::initTestCase()
{
    loadResources();
    registerEmbeddedFonts();
}

void TestOperationTexts::init()
{
    SimulatedPlayer::disconnect();
    appSettings().setValue(QStringLiteral("Application/Language"), QStringLiteral("lang_it"));
}

void TestOperationTexts::numberedText_data()
{
    const QString connectAgain = QStringLiteral("Spegnere Corvin4 e connetterlo alla porta USB del PC.\n"
                                                "Quindi accendere Corvin4 e\nquando appare la schermata di connessione "
                                                "sul display di Corvin,\ncliccare ancora su START");
    const QString switchOff = QStringLiteral("\nSpegnere il Corvin e scollegare dal PC e riaccendere Corvin.\n"
                                             "Se viene chiesto di riavviare, spegnere e accendere\n"
                                             "finchè non appare la lista delle canzoni.");
    const QStringList texts = {
        QStringLiteral("Azzeramento HD Corvin4"),
        QStringLiteral("ATTENZIONE!\nOgni contenuto presente nell' HD verrà cancellato!\nContinuare?"),
        QStringLiteral("Cerco se Corvin4 è connesso via USB..."),
        QStringLiteral("Scarico l' ultima release dal sito Q-Arte..."),
        QStringLiteral("Copia dei files dell' aggiornamento..."),
        QStringLiteral("Copia di backup dei files sul PC..."),
        QStringLiteral("Creazione della copia del sistema operativo..."),
        QStringLiteral("Sto formattando Corvin..."),
        QStringLiteral("Trasferimento del sistema operativo..."),
        QStringLiteral("Ripristino copia di backup sul Corvin..."),
        QStringLiteral("Lettura del contenuto di Corvin..."),
        QStringLiteral("File di sistema danneggiati o mancanti"),
        QStringLiteral("ATTENZIONE: file di sistema danneggiati o mancanti, tentare il ripristino?"),
        QStringLiteral("Corvin4 non è stato trovato"),
        connectAgain,
        QStringLiteral("Errore di formattazione"),
        QStringLiteral("C'è stato un errore durante la formattazione di Corvin4.\n") + connectAgain,
        QStringLiteral("Errore durante il BackUp"),
        QStringLiteral("C'è stato durante il salvataggio delle basi.\nOperazione annullata"),
        QStringLiteral("Errore durante il Restore"),
        QStringLiteral("C'è stato durante il ripristino delle basi.\nOperazione annullata"),
        QStringLiteral("Fine operazioni"),
        QStringLiteral("Installazione terminata.") + switchOff,
        QStringLiteral("Download Error "),
        QStringLiteral("C'è stato un errore durante il download dell' aggiornamento di Corvin\nRiprovare più tardi"),
        QStringLiteral("Fine operazioni"),
        QStringLiteral("Aggiornamento scaricato.") + switchOff,
    };
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");
    for (int i = 0; i < texts.size(); ++i)
        QTest::addRow("%d", i) << i << texts.at(i);
    QCOMPARE(texts.size(), 27);
}

void TestOperationTexts::numberedText()
{
    QFETCH(int, code);
    MainWindow window;
    QTEST(window.langDbInfo(static_cast<LANGUAGE_STRING_CODE>(code)), "text");
}

void TestOperationTexts::numberOutsideTheTableGivesQuestionMarks_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("one below") << -1;
    QTest::newRow("one above") << 27;
    QTest::newRow("least") << std::numeric_limits<int>::min();
    QTest::newRow("greatest") << std::numeric_limits<int>::max();
}

void TestOperationTexts::numberOutsideTheTableGivesQuestionMarks()
{
    QFETCH(int, code);
    MainWindow window;
    QCOMPARE(window.langDbInfo(static_cast<LANGUAGE_STRING_CODE>(code)), QStringLiteral("???"));
}

QTEST_MAIN(TestOperationTexts)
#include "tst_operationtexts.moc"
