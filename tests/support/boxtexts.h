#pragma once

#include "testing.h"

// The texts of the boxes and their buttons, letter for letter as the user reads them: tests take them from here, never
// from the product.

/// Buttons.
namespace Buttons {
inline const QString kOk = "OK"_s;
inline const QString kYes = "Yes"_s;
inline const QString kNo = "No"_s;
inline const QString kSi = "Si"_s;
inline const QString kSiTutti = "Si,Tutti"_s;
inline const QString kNoTutti = "No,Tutti"_s;
} // namespace Buttons

/// Titles.
namespace Titles {
inline const QString kStop = "Interrompi Operazione"_s;
inline const QString kNotClosed = "Trasferimento non completato"_s;
inline const QString kNotAllCopied = "Trasferimento non completato"_s;
inline const QString kNotConnected = "Corvin4 non collegato"_s;
inline const QString kSystemMissing = "File di sistema mancanti"_s;
inline const QString kError = "ERRORE"_s;
inline const QString kDone = "Fatto"_s;
inline const QString kDeviceNotFound = "Corvin4 non è stato trovato"_s;
inline const QString kErase = "Azzeramento HD Corvin4"_s;
inline const QString kEraseDrive = "Cancellazione Drive"_s;
inline const QString kFormatError = "Errore di formattazione"_s;
inline const QString kBackupNotEmpty = "Trovati alcuni files"_s;
inline const QString kManyFiles = "BackUp"_s;
inline const QString kBackupError = "Errore durante il BackUp"_s;
inline const QString kRestoreError = "Errore durante il Restore"_s;
inline const QString kCopyExists = "File Esistente"_s;
inline const QString kCopyFailed = "Errore sulla copia"_s;
inline const QString kFinished = "Fine operazioni"_s;
inline const QString kDownloadError1 = "Download Error , Cod 1"_s;
inline const QString kDownloadError2 = "Download Error , Cod 2"_s;
inline const QString kDownloadError3 = "Download Error , Cod 3"_s;
inline const QString kTransferExists = "File esistente"_s;
inline const QString kDelete = "Cancella file"_s;
inline const QString kNoDatabase = "Errore"_s;
} // namespace Titles

/// Texts.
namespace Texts {
inline const QString kStop = "Vuoi interrompere le operazioni in corso ?"_s;
inline const QString kNotClosed =
    "Prima di poter chiudere il programma,\nconcludi le operazioni di ottimizzazione cliccando sul tasto \"FINE\"."_s;
inline const QString kNotAllCopied = "Copiati %1 file su %2."_s;
inline const QString kReconnect = "Ricollega Corvin4 alla porta USB"_s;
inline const QString kSystemMissing =
    "ATTENZIONE: file di sistema danneggiati o mancanti,\n\ntentare il ripristino ?"_s;
inline const QString kConnectAgain =
    "Spegnere Corvin4 e connetterlo alla porta USB del PC.\nQuindi accendere Corvin4 e\n"
    "quando appare la schermata di connessione sul display di Corvin,\ncliccare ancora su START"_s;
inline const QString kErase = "ATTENZIONE!\nOgni contenuto presente nell' HD verrà cancellato!\nContinuare?"_s;
inline const QString kFormatError = "C'è stato un errore durante la formattazione di Corvin4.\n"_s + kConnectAgain;
inline const QString kBackupNotEmpty =
    "ATTENZIONE! Il contenuto della cartella di destinazione verrà cancellato.\n\nVuoi continuare ?"_s;
inline const QString kBackupError = "C'è stato durante il salvataggio delle basi.\nOperazione annullata"_s;
inline const QString kRestoreError = "C'è stato durante il ripristino delle basi.\nOperazione annullata"_s;
inline const QString kSwitchOff =
    "\nSpegnere il Corvin e scollegare dal PC e riaccendere Corvin.\n"
    "Se viene chiesto di riavviare, spegnere e accendere\nfinchè non appare la lista delle canzoni."_s;
inline const QString kInstalled = "Installazione terminata."_s + kSwitchOff;
inline const QString kUpdated = "Aggiornamento scaricato."_s + kSwitchOff;
inline const QString kDownloadError =
    "C'è stato un errore durante il download dell' aggiornamento di Corvin\nRiprovare più tardi"_s;
inline const QString kReinstallAgain =
    "Procedura terminata in modo inaspettato.\nProvare a reinstallare il sistema operativo."_s;
inline const QString kDelete = "Cancellare gli elementi selezionati ?"_s;
inline const QString kNoDatabase = "Database non creato"_s;
} // namespace Texts

/// What the status line says, in the order of a procedure.
namespace Status {
inline const QString kLooking = "Cerco se Corvin4 è connesso via USB..."_s;
inline const QString kDownloading = "Scarico l' ultima release dal sito Q-Arte..."_s;
inline const QString kUnpacking = "Creazione della copia del sistema operativo..."_s;
inline const QString kCopyingUpdate = "Copia dei files dell' aggiornamento..."_s;
inline const QString kReading = "Lettura del contenuto di Corvin..."_s;
inline const QString kBackingUp = "Copia di backup dei files sul PC..."_s;
inline const QString kFormatting = "Sto formattando Corvin..."_s;
inline const QString kTransferring = "Trasferimento del sistema operativo..."_s;
inline const QString kRestoring = "Ripristino copia di backup sul Corvin..."_s;
} // namespace Status
