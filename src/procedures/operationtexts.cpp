#include "operationtexts.h"

#include <QCoreApplication>

#include <array>
#include <iterator>

namespace {

// The place in the table is the number of the text.
constexpr std::array kTexts = {
    QT_TRANSLATE_NOOP("MainWindow", "Azzeramento HD Corvin4"),
    QT_TRANSLATE_NOOP("MainWindow", "ATTENZIONE!\nOgni contenuto presente nell' HD verrà cancellato!\nContinuare?"),
    QT_TRANSLATE_NOOP("MainWindow", "Cerco se Corvin4 è connesso via USB..."),
    QT_TRANSLATE_NOOP("MainWindow", "Scarico l' ultima release dal sito Q-Arte..."),
    QT_TRANSLATE_NOOP("MainWindow", "Copia dei files dell' aggiornamento..."),
    QT_TRANSLATE_NOOP("MainWindow", "Copia di backup dei files sul PC..."),
    QT_TRANSLATE_NOOP("MainWindow", "Creazione della copia del sistema operativo..."),
    QT_TRANSLATE_NOOP("MainWindow", "Sto formattando Corvin..."),
    QT_TRANSLATE_NOOP("MainWindow", "Trasferimento del sistema operativo..."),
    QT_TRANSLATE_NOOP("MainWindow", "Ripristino copia di backup sul Corvin..."),
    QT_TRANSLATE_NOOP("MainWindow", "Lettura del contenuto di Corvin..."),
    QT_TRANSLATE_NOOP("MainWindow", "File di sistema danneggiati o mancanti"),
    QT_TRANSLATE_NOOP("MainWindow", "ATTENZIONE: file di sistema danneggiati o mancanti, tentare il ripristino?"),
    QT_TRANSLATE_NOOP("MainWindow", "Corvin4 non è stato trovato"),
    QT_TRANSLATE_NOOP("MainWindow", "Spegnere Corvin4 e connetterlo alla porta USB del PC.\n"
                                    "Quindi accendere Corvin4 e\n"
                                    "quando appare la schermata di connessione sul display di Corvin,\n"
                                    "cliccare ancora su START"),
    QT_TRANSLATE_NOOP("MainWindow", "Errore di formattazione"),
    QT_TRANSLATE_NOOP("MainWindow", "C'è stato un errore durante la formattazione di Corvin4.\n"
                                    "Spegnere Corvin4 e connetterlo alla porta USB del PC.\n"
                                    "Quindi accendere Corvin4 e\n"
                                    "quando appare la schermata di connessione sul display di Corvin,\n"
                                    "cliccare ancora su START"),
    QT_TRANSLATE_NOOP("MainWindow", "Errore durante il BackUp"),
    // Deliberate: this text and the one after the next lack a word; the users know them so.
    QT_TRANSLATE_NOOP("MainWindow", "C'è stato durante il salvataggio delle basi.\nOperazione annullata"),
    QT_TRANSLATE_NOOP("MainWindow", "Errore durante il Restore"),
    QT_TRANSLATE_NOOP("MainWindow", "C'è stato durante il ripristino delle basi.\nOperazione annullata"),
    QT_TRANSLATE_NOOP("MainWindow", "Fine operazioni"),
    QT_TRANSLATE_NOOP("MainWindow", "Installazione terminata.\n"
                                    "Spegnere il Corvin e scollegare dal PC e riaccendere Corvin.\n"
                                    "Se viene chiesto di riavviare, spegnere e accendere\n"
                                    "finchè non appare la lista delle canzoni."),
    // The trailing blank separates the code that is appended to it.
    QT_TRANSLATE_NOOP("MainWindow", "Download Error "),
    QT_TRANSLATE_NOOP("MainWindow", "C'è stato un errore durante il download dell' aggiornamento di Corvin\n"
                                    "Riprovare più tardi"),
    // Deliberate: the same text twice, one number for each of the two operations that end so.
    QT_TRANSLATE_NOOP("MainWindow", "Fine operazioni"),
    QT_TRANSLATE_NOOP("MainWindow", "Aggiornamento scaricato.\n"
                                    "Spegnere il Corvin e scollegare dal PC e riaccendere Corvin.\n"
                                    "Se viene chiesto di riavviare, spegnere e accendere\n"
                                    "finchè non appare la lista delle canzoni."),
};
static_assert(std::size(kTexts) == TEXT_UPDATED + 1, "one text for each number");

} // namespace

QString operationText(LANGUAGE_STRING_CODE code)
{
    const int number = code;
    const bool known = number >= 0 && number < static_cast<int>(kTexts.size());
    const char *const unknown = QT_TRANSLATE_NOOP("MainWindow", "???");
    return QCoreApplication::translate("MainWindow", known ? kTexts.at(static_cast<std::size_t>(number)) : unknown);
}
