#include "italianwindow.h"
#include "support/boxtexts.h"
#include "support/languages.h"
#include "support/same.h"

#include <limits>

class TestOperationTexts : public QObject
{
    Q_OBJECT

    static QString textOfNumber(int number) {
        MainWindow window;
        return window.langDbInfo(static_cast<LANGUAGE_STRING_CODE>(number));
    }

private slots:
    void initTestCase() { startInItalian(); }

    void numberedText() {
        const QStringList texts = {
            "Azzeramento HD Corvin4"_s,
            "ATTENZIONE!\nOgni contenuto presente nell' HD verrà cancellato!\nContinuare?"_s,
            "Cerco se Corvin4 è connesso via USB..."_s,
            "Scarico l' ultima release dal sito Q-Arte..."_s,
            "Copia dei files dell' aggiornamento..."_s,
            "Copia di backup dei files sul PC..."_s,
            "Creazione della copia del sistema operativo..."_s,
            "Sto formattando Corvin..."_s,
            "Trasferimento del sistema operativo..."_s,
            "Ripristino copia di backup sul Corvin..."_s,
            "Lettura del contenuto di Corvin..."_s,
            "File di sistema danneggiati o mancanti"_s,
            "ATTENZIONE: file di sistema danneggiati o mancanti, tentare il ripristino?"_s,
            "Corvin4 non è stato trovato"_s,
            Texts::kConnectAgain,
            "Errore di formattazione"_s,
            "C'è stato un errore durante la formattazione di Corvin4.\n"_s + Texts::kConnectAgain,
            "Errore durante il BackUp"_s,
            "C'è stato durante il salvataggio delle basi.\nOperazione annullata"_s,
            "Errore durante il Restore"_s,
            "C'è stato durante il ripristino delle basi.\nOperazione annullata"_s,
            "Fine operazioni"_s,
            "Installazione terminata."_s + Texts::kSwitchOff,
            "Download Error "_s,
            "C'è stato un errore durante il download dell' aggiornamento di Corvin\nRiprovare più tardi"_s,
            "Fine operazioni"_s,
            "Aggiornamento scaricato."_s + Texts::kSwitchOff,
        };
        QCOMPARE(texts.size(), 27);
        for (int i = 0; i < texts.size(); ++i)
            same(qPrintable(QString::number(i)), textOfNumber(i), texts.at(i));
    }

    // The six jobs speak through these texts: left out of the translation, a job would be Italian in every language.
    void everyTextIsTranslatedAsTheWindows() {
        for (int i = -1; i <= 27; ++i) {
            const QString text = textOfNumber(i);
            const MarkedTexts marked("MainWindow");
            same(qPrintable(QString::number(i)), textOfNumber(i), "[%1]"_s.arg(text));
        }
    }

    void numberOutsideTheTableGivesQuestionMarks() {
        for (const int number : {-1, 27, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
            same(qPrintable(QString::number(number)), textOfNumber(number), "???"_s);
    }
};

PAGE_TEST_MAIN(TestOperationTexts)
#include "tst_operationtexts.moc"
