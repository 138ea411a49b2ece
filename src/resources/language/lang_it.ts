<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it_IT" sourcelanguage="it_IT">
<context>
    <name>Avanzate</name>
    <message>
        <source>AGGIORNA / RIPRISTINA IL SISTEMA OPERATIVO</source>
        <translation>AGGIORNA / RIPRISTINA IL SISTEMA OPERATIVO</translation>
    </message>
    <message>
        <source>AGGIORNA IL CORVIN CON L&apos; ULTIMA RELEASE DISPONIBILE</source>
        <translation>AGGIORNA IL CORVIN CON L&apos; ULTIMA RELEASE DISPONIBILE</translation>
    </message>
    <message>
        <source>CREA UNA COPIA DI SICUREZZA DELLE TUE BASI</source>
        <translation>CREA UNA COPIA DI SICUREZZA DELLE TUE BASI</translation>
    </message>
    <message>
        <source>RIPRISTINA LA COPIA DI SICUREZZA SUL CORVIN</source>
        <translation>RIPRISTINA LA COPIA DI SICUREZZA SUL CORVIN</translation>
    </message>
    <message>
        <source>REINSTALLA IL SISTEMA OPERATIVO</source>
        <translation>REINSTALLA IL SISTEMA OPERATIVO</translation>
    </message>
    <message>
        <source>REINSTALLA IL SISTEMA OPERATIVO E CANCELLA LE BASI</source>
        <translation>REINSTALLA IL SISTEMA OPERATIVO E CANCELLA LE BASI</translation>
    </message>
    <message>
        <source>REINSTALLA IL SISTEMA OPERATIVO E RIPRISTINA LE BASI</source>
        <translation>REINSTALLA IL SISTEMA OPERATIVO E RIPRISTINA LE BASI</translation>
    </message>
    <message>
        <source>INDIETRO</source>
        <translation>INDIETRO</translation>
    </message>
    <message>
        <source>Corvin4 non collegato</source>
        <translation>Corvin4 non collegato</translation>
    </message>
    <message>
        <source>Ricollega Corvin4 alla porta USB</source>
        <translation>Ricollega Corvin4 alla porta USB</translation>
    </message>
    <message>
        <source>Scarica la versione più recente. Le basi restano dove sono.</source>
        <translation>Scarica la versione più recente. Le basi restano dove sono.</translation>
    </message>
    <message>
        <source>Copia tutte le basi in una cartella del PC.</source>
        <translation>Copia tutte le basi in una cartella del PC.</translation>
    </message>
    <message>
        <source>Riporta su Corvin le basi salvate sul PC.</source>
        <translation>Riporta su Corvin le basi salvate sul PC.</translation>
    </message>
    <message>
        <source>Installa di nuovo il sistema. Le basi restano dove sono.</source>
        <translation>Installa di nuovo il sistema. Le basi restano dove sono.</translation>
    </message>
    <message>
        <source>Cancella tutto il disco, comprese le basi.</source>
        <translation>Cancella tutto il disco, comprese le basi.</translation>
    </message>
    <message>
        <source>Salva le basi sul PC, cancella il disco, riporta le basi.</source>
        <translation>Salva le basi sul PC, cancella il disco, riporta le basi.</translation>
    </message>
</context>
<context>
    <name>Check</name>
    <message>
        <source>AVANTI</source>
        <translation>AVANTI</translation>
    </message>
    <message>
        <source>CONTROLLO INTEGRITA&apos; SOFTWARE ...</source>
        <translation>CONTROLLO INTEGRITA&apos; SOFTWARE ...</translation>
    </message>
    <message>
        <source>File di sistema mancanti</source>
        <translation>File di sistema mancanti</translation>
    </message>
    <message>
        <source>ATTENZIONE: file di sistema danneggiati o mancanti,

tentare il ripristino ?</source>
        <translation>ATTENZIONE: file di sistema danneggiati o mancanti,

tentare il ripristino ?</translation>
    </message>
    <message>
        <source>CHECK UP IN CORSO</source>
        <translation>CHECK UP IN CORSO</translation>
    </message>
    <message>
        <source>CONTROLLO SOFTWARE COMPLETATO</source>
        <translation>CONTROLLO SOFTWARE COMPLETATO</translation>
    </message>
    <message>
        <source>Problema rilevato durante il controllo del sistema operativo !!!</source>
        <translation>Problema rilevato durante il controllo del sistema operativo !!!</translation>
    </message>
    <message>
        <source>RIPRISTINO DEI FILE DEL SISTEMA OPERATIVO</source>
        <translation>RIPRISTINO DEI FILE DEL SISTEMA OPERATIVO</translation>
    </message>
    <message>
        <source>ATTENZIONE :

NON Spegnere/Riavviare Corvin4 e NON scollegare il cavo USB.

L&apos;operazione potrebbe richiedere qualche minuto.</source>
        <translation>ATTENZIONE :

NON Spegnere/Riavviare Corvin4 e NON scollegare il cavo USB.

L&apos;operazione potrebbe richiedere qualche minuto.</translation>
    </message>
</context>
<context>
    <name>Connect</name>
    <message>
        <source>Corvin4 NON collegato.</source>
        <translation>Corvin4 NON collegato.</translation>
    </message>
    <message>
        <source>Collega Corvin4 al PC tramite il cavo USB.
Accendi Corvin4.</source>
        <translation>Collega Corvin4 al PC tramite il cavo USB.
Accendi Corvin4.</translation>
    </message>
</context>
<context>
    <name>EndOttimizza</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Ottimizzazione completata con successo</source>
        <translation>Ottimizzazione completata con successo</translation>
    </message>
    <message>
        <source>Scollegare il Corvin4 dalla porta USB
Spegnerlo e riaccenderlo per completare la procedura</source>
        <translation>Scollegare il Corvin4 dalla porta USB
Spegnerlo e riaccenderlo per completare la procedura</translation>
    </message>
    <message>
        <source>Ottimizzazione non completata correttamente</source>
        <translation>Ottimizzazione non completata correttamente</translation>
    </message>
    <message>
        <source>I file rimossi dal Corvin4 sono conservati in:</source>
        <translation>I file rimossi dal Corvin4 sono conservati in:</translation>
    </message>
</context>
<context>
    <name>FirstMenu</name>
    <message>
        <source>GESTIONE E MANUTENZIONE DEL TUO CORVIN4</source>
        <translation>GESTIONE E MANUTENZIONE DEL TUO CORVIN4</translation>
    </message>
    <message>
        <source>TRASFERISCI LE BASI DAL PC A CORVIN4</source>
        <translation>TRASFERISCI LE BASI DAL PC A CORVIN4</translation>
    </message>
    <message>
        <source>OTTIMIZZA L&apos;ARCHVIO DELLE BASI DI CORVIN4</source>
        <translation>OTTIMIZZA L&apos;ARCHVIO DELLE BASI DI CORVIN4</translation>
    </message>
    <message>
        <source>AGGIORNA / RIPRISTINA IL SISTEMA OPERATIVO</source>
        <translation>AGGIORNA / RIPRISTINA IL SISTEMA OPERATIVO</translation>
    </message>
    <message>
        <source>Corvin4 non collegato</source>
        <translation>Corvin4 non collegato</translation>
    </message>
    <message>
        <source>Ricollega Corvin4 alla porta USB</source>
        <translation>Ricollega Corvin4 alla porta USB</translation>
    </message>
    <message>
        <source>Copia sul player le canzoni che hai sul PC.</source>
        <translation>Copia sul player le canzoni che hai sul PC.</translation>
    </message>
    <message>
        <source>Mette in ordine le canzoni e le rende facili da trovare.</source>
        <translation>Mette in ordine le canzoni e le rende facili da trovare.</translation>
    </message>
    <message>
        <source>Aggiornamento, copie di sicurezza, reinstallazione.</source>
        <translation>Aggiornamento, copie di sicurezza, reinstallazione.</translation>
    </message>
</context>
<context>
    <name>Guide</name>
    <message>
        <source>Guida</source>
        <translation>Guida</translation>
    </message>
    <message>
        <source>La guida non si trova su questo PC.</source>
        <translation>La guida non si trova su questo PC.</translation>
    </message>
</context>
<context>
    <name>IstruzioniTransfer</name>
    <message>
        <source>Scegli nel riquadro la cartella di Corvin4 in cui copiare le basi.</source>
        <translation>Scegli nel riquadro la cartella di Corvin4 in cui copiare le basi.</translation>
    </message>
    <message>
        <source>Trascina nell&apos;area tratteggiata i file e le cartelle dal PC.</source>
        <translation>Trascina nell&apos;area tratteggiata i file e le cartelle dal PC.</translation>
    </message>
    <message>
        <source>Al termine clicca su &quot;FINE&quot;: l&apos;archivio di Corvin4 viene ottimizzato.</source>
        <translation>Al termine clicca su &quot;FINE&quot;: l&apos;archivio di Corvin4 viene ottimizzato.</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Corvin4 Manager</source>
        <translation>Corvin4 Manager</translation>
    </message>
    <message>
        <source>STOP</source>
        <translation>STOP</translation>
    </message>
    <message>
        <source>Release 3.0</source>
        <translation>Release 3.0</translation>
    </message>
    <message>
        <source>About</source>
        <translation>About</translation>
    </message>
    <message>
        <source>Trasferimento non completato</source>
        <translation>Trasferimento non completato</translation>
    </message>
    <message>
        <source>Prima di poter chiudere il programma,
concludi le operazioni di ottimizzazione cliccando sul tasto &quot;FINE&quot;.</source>
        <translation>Prima di poter chiudere il programma,
concludi le operazioni di ottimizzazione cliccando sul tasto &quot;FINE&quot;.</translation>
    </message>
    <message>
        <source>Azzeramento HD Corvin4</source>
        <translation>Azzeramento HD Corvin4</translation>
    </message>
    <message>
        <source>ATTENZIONE!
Ogni contenuto presente nell&apos; HD verrà cancellato!
Continuare?</source>
        <translation>ATTENZIONE!
Ogni contenuto presente nell&apos; HD verrà cancellato!
Continuare?</translation>
    </message>
    <message>
        <source>Cerco se Corvin4 è connesso via USB...</source>
        <translation>Cerco se Corvin4 è connesso via USB...</translation>
    </message>
    <message>
        <source>Scarico l&apos; ultima release dal sito Q-Arte...</source>
        <translation>Scarico l&apos; ultima release dal sito Q-Arte...</translation>
    </message>
    <message>
        <source>Copia dei files dell&apos; aggiornamento...</source>
        <translation>Copia dei files dell&apos; aggiornamento...</translation>
    </message>
    <message>
        <source>Copia di backup dei files sul PC...</source>
        <translation>Copia di backup dei files sul PC...</translation>
    </message>
    <message>
        <source>Creazione della copia del sistema operativo...</source>
        <translation>Creazione della copia del sistema operativo...</translation>
    </message>
    <message>
        <source>Sto formattando Corvin...</source>
        <translation>Sto formattando Corvin...</translation>
    </message>
    <message>
        <source>Trasferimento del sistema operativo...</source>
        <translation>Trasferimento del sistema operativo...</translation>
    </message>
    <message>
        <source>Ripristino copia di backup sul Corvin...</source>
        <translation>Ripristino copia di backup sul Corvin...</translation>
    </message>
    <message>
        <source>Lettura del contenuto di Corvin...</source>
        <translation>Lettura del contenuto di Corvin...</translation>
    </message>
    <message>
        <source>File di sistema danneggiati o mancanti</source>
        <translation>File di sistema danneggiati o mancanti</translation>
    </message>
    <message>
        <source>ATTENZIONE: file di sistema danneggiati o mancanti, tentare il ripristino?</source>
        <translation>ATTENZIONE: file di sistema danneggiati o mancanti, tentare il ripristino?</translation>
    </message>
    <message>
        <source>Corvin4 non è stato trovato</source>
        <translation>Corvin4 non è stato trovato</translation>
    </message>
    <message>
        <source>Spegnere Corvin4 e connetterlo alla porta USB del PC.
Quindi accendere Corvin4 e
quando appare la schermata di connessione sul display di Corvin,
cliccare ancora su START</source>
        <translation>Spegnere Corvin4 e connetterlo alla porta USB del PC.
Quindi accendere Corvin4 e
quando appare la schermata di connessione sul display di Corvin,
cliccare ancora su START</translation>
    </message>
    <message>
        <source>Errore di formattazione</source>
        <translation>Errore di formattazione</translation>
    </message>
    <message>
        <source>C&apos;è stato un errore durante la formattazione di Corvin4.
Spegnere Corvin4 e connetterlo alla porta USB del PC.
Quindi accendere Corvin4 e
quando appare la schermata di connessione sul display di Corvin,
cliccare ancora su START</source>
        <translation>C&apos;è stato un errore durante la formattazione di Corvin4.
Spegnere Corvin4 e connetterlo alla porta USB del PC.
Quindi accendere Corvin4 e
quando appare la schermata di connessione sul display di Corvin,
cliccare ancora su START</translation>
    </message>
    <message>
        <source>Errore durante il BackUp</source>
        <translation>Errore durante il BackUp</translation>
    </message>
    <message>
        <source>C&apos;è stato durante il salvataggio delle basi.
Operazione annullata</source>
        <translation>C&apos;è stato durante il salvataggio delle basi.
Operazione annullata</translation>
    </message>
    <message>
        <source>Errore durante il Restore</source>
        <translation>Errore durante il Restore</translation>
    </message>
    <message>
        <source>C&apos;è stato durante il ripristino delle basi.
Operazione annullata</source>
        <translation>C&apos;è stato durante il ripristino delle basi.
Operazione annullata</translation>
    </message>
    <message>
        <source>Fine operazioni</source>
        <translation>Fine operazioni</translation>
    </message>
    <message>
        <source>Installazione terminata.
Spegnere il Corvin e scollegare dal PC e riaccendere Corvin.
Se viene chiesto di riavviare, spegnere e accendere
finchè non appare la lista delle canzoni.</source>
        <translation>Installazione terminata.
Spegnere il Corvin e scollegare dal PC e riaccendere Corvin.
Se viene chiesto di riavviare, spegnere e accendere
finchè non appare la lista delle canzoni.</translation>
    </message>
    <message>
        <source>Download Error </source>
        <translation>Download Error </translation>
    </message>
    <message>
        <source>C&apos;è stato un errore durante il download dell&apos; aggiornamento di Corvin
Riprovare più tardi</source>
        <translation>C&apos;è stato un errore durante il download dell&apos; aggiornamento di Corvin
Riprovare più tardi</translation>
    </message>
    <message>
        <source>Aggiornamento scaricato.
Spegnere il Corvin e scollegare dal PC e riaccendere Corvin.
Se viene chiesto di riavviare, spegnere e accendere
finchè non appare la lista delle canzoni.</source>
        <translation>Aggiornamento scaricato.
Spegnere il Corvin e scollegare dal PC e riaccendere Corvin.
Se viene chiesto di riavviare, spegnere e accendere
finchè non appare la lista delle canzoni.</translation>
    </message>
    <message>
        <source>???</source>
        <translation>???</translation>
    </message>
    <message>
        <source>Interrompi Operazione</source>
        <translation>Interrompi Operazione</translation>
    </message>
    <message>
        <source>Vuoi interrompere le operazioni in corso ?</source>
        <translation>Vuoi interrompere le operazioni in corso ?</translation>
    </message>
    <message>
        <source>Si</source>
        <translation>Si</translation>
    </message>
    <message>
        <source>No</source>
        <translation>No</translation>
    </message>
    <message>
        <source>Cancellazione Drive</source>
        <translation>Cancellazione Drive</translation>
    </message>
    <message>
        <source>ATTENZIONE: Il drive </source>
        <translation>ATTENZIONE: Il drive </translation>
    </message>
    <message>
        <source> verrà cancellato.
Vuoi continuare?</source>
        <translation> verrà cancellato.
Vuoi continuare?</translation>
    </message>
    <message>
        <source>File Esistente</source>
        <translation>File Esistente</translation>
    </message>
    <message>
        <source>Il File
</source>
        <translation>Il File
</translation>
    </message>
    <message>
        <source>
Esiste già. Vuoi sostituirlo?</source>
        <translation>
Esiste già. Vuoi sostituirlo?</translation>
    </message>
    <message>
        <source>Si,Tutti</source>
        <translation>Si,Tutti</translation>
    </message>
    <message>
        <source>La versione precedente è conservata sul PC:
%1</source>
        <translation>La versione precedente è conservata sul PC:
%1</translation>
    </message>
    <message>
        <source>Errore sulla copia</source>
        <translation>Errore sulla copia</translation>
    </message>
    <message>
        <source>
on è stato copiato. Vuoi continuare a copiare?</source>
        <translation>
on è stato copiato. Vuoi continuare a copiare?</translation>
    </message>
    <message>
        <source>ERRORE</source>
        <translation>ERRORE</translation>
    </message>
    <message>
        <source>Scegli una cartella per il salvataggio dei files</source>
        <translation>Scegli una cartella per il salvataggio dei files</translation>
    </message>
    <message>
        <source>Procedura terminata in modo inaspettato.
Provare a reinstallare il sistema operativo.</source>
        <translation>Procedura terminata in modo inaspettato.
Provare a reinstallare il sistema operativo.</translation>
    </message>
    <message>
        <source>La copia di sicurezza delle basi si trova in:
%1</source>
        <translation>La copia di sicurezza delle basi si trova in:
%1</translation>
    </message>
    <message>
        <source>Scegli cartella da cui prendere i files salvati</source>
        <translation>Scegli cartella da cui prendere i files salvati</translation>
    </message>
    <message>
        <source>Fatto</source>
        <translation>Fatto</translation>
    </message>
    <message>
        <source>Trovati alcuni files</source>
        <translation>Trovati alcuni files</translation>
    </message>
    <message>
        <source>ATTENZIONE! Il contenuto della cartella di destinazione verrà cancellato.

Vuoi continuare ?</source>
        <translation>ATTENZIONE! Il contenuto della cartella di destinazione verrà cancellato.

Vuoi continuare ?</translation>
    </message>
    <message>
        <source>BackUp</source>
        <translation>BackUp</translation>
    </message>
    <message>
        <source>Saranno copiati %1 files

Vuoi continuare ?</source>
        <translation>Saranno copiati %1 files

Vuoi continuare ?</translation>
    </message>
    <message>
        <source>, Cod %1</source>
        <translation>, Cod %1</translation>
    </message>
    <message>
        <source>Non è stato possibile salvare le playlist sul PC.
Il sistema operativo di Corvin non è stato modificato.</source>
        <translation>Non è stato possibile salvare le playlist sul PC.
Il sistema operativo di Corvin non è stato modificato.</translation>
    </message>
    <message>
        <source>Provare a reinstallare il sistema operativo.</source>
        <translation>Provare a reinstallare il sistema operativo.</translation>
    </message>
    <message>
        <source>Le playlist che erano su Corvin si trovano in:
%1</source>
        <translation>Le playlist che erano su Corvin si trovano in:
%1</translation>
    </message>
    <message>
        <source>%1 (copia precedente)</source>
        <translation>%1 (copia precedente)</translation>
    </message>
    <message>
        <source>La cartella è un intero disco. Scegliere o creare una cartella al suo interno.</source>
        <translation>La cartella è un intero disco. Scegliere o creare una cartella al suo interno.</translation>
    </message>
    <message>
        <source>La cartella si trova sul disco di Corvin4. Scegliere una cartella del PC.</source>
        <translation>La cartella si trova sul disco di Corvin4. Scegliere una cartella del PC.</translation>
    </message>
    <message>
        <source>La cartella è del sistema, dell&apos; utente o del programma e non può essere svuotata.
Scegliere o creare una cartella al suo interno.</source>
        <translation>La cartella è del sistema, dell&apos; utente o del programma e non può essere svuotata.
Scegliere o creare una cartella al suo interno.</translation>
    </message>
    <message>
        <source>La cartella non può essere svuotata: è protetta, oppure un altro programma la sta usando.</source>
        <translation>La cartella non può essere svuotata: è protetta, oppure un altro programma la sta usando.</translation>
    </message>
    <message>
        <source>Avanzamento</source>
        <translation>Avanzamento</translation>
    </message>
    <message>
        <source>Lingua</source>
        <translation>Lingua</translation>
    </message>
</context>
<context>
    <name>Ottimizza</name>
    <message>
        <source>Ottimizza</source>
        <translation>Ottimizza</translation>
    </message>
    <message>
        <source>Seleziona le operazioni che desideri effettuare:</source>
        <translation>Seleziona le operazioni che desideri effettuare:</translation>
    </message>
    <message>
        <source>Ottimizzazione completa</source>
        <translation>Ottimizzazione completa</translation>
    </message>
    <message>
        <source>Esegue tutte le operazioni sotto elencate.</source>
        <translation>Esegue tutte le operazioni sotto elencate.</translation>
    </message>
    <message>
        <source>Cancella file non supportati</source>
        <translation>Cancella file non supportati</translation>
    </message>
    <message>
        <source>Cancella tutti i file non supportati dalla memoria di Corvin4, i formati supportati sono: jpg,png,bmp,mp3,mid,kar,mf3,mf4,mf5.</source>
        <translation>Cancella tutti i file non supportati dalla memoria di Corvin4, i formati supportati sono: jpg,png,bmp,mp3,mid,kar,mf3,mf4,mf5.</translation>
    </message>
    <message>
        <source>Sposta immagini e video</source>
        <translation>Sposta immagini e video</translation>
    </message>
    <message>
        <source>Sposta tutti i video e le immagini presenti nella memoria di Corvin4, nelle cartelle &quot;Videos&quot; e &quot;Images&quot;.</source>
        <translation>Sposta tutti i video e le immagini presenti nella memoria di Corvin4, nelle cartelle &quot;Videos&quot; e &quot;Images&quot;.</translation>
    </message>
    <message>
        <source>Suddividi le basi in cartelle</source>
        <translation>Suddividi le basi in cartelle</translation>
    </message>
    <message>
        <source>Le cartelle contenenti più di 1000 basi verranno suddivise in cartelle ordinate secondo il titolo delle canzoni.</source>
        <translation>Le cartelle contenenti più di 1000 basi verranno suddivise in cartelle ordinate secondo il titolo delle canzoni.</translation>
    </message>
    <message>
        <source>Crea database</source>
        <translation>Crea database</translation>
    </message>
    <message>
        <source>Crea il database delle canzoni prelevando le informazioni dai file, migliora i risultati delle ricerche</source>
        <translation>Crea il database delle canzoni prelevando le informazioni dai file, migliora i risultati delle ricerche</translation>
    </message>
    <message>
        <source>INDIETRO</source>
        <translation>INDIETRO</translation>
    </message>
    <message>
        <source>OTTIMIZZA</source>
        <translation>OTTIMIZZA</translation>
    </message>
    <message>
        <source>Scansione cartelle in corso...</source>
        <translation>Scansione cartelle in corso...</translation>
    </message>
    <message>
        <source>Caricamento risorse...</source>
        <translation>Caricamento risorse...</translation>
    </message>
    <message>
        <source>Operazione completata</source>
        <translation>Operazione completata</translation>
    </message>
    <message>
        <source>Ottimizzazione cartelle </source>
        <translation>Ottimizzazione cartelle </translation>
    </message>
    <message>
        <source>Ricerca dei titoli nei brani</source>
        <translation>Ricerca dei titoli nei brani</translation>
    </message>
    <message>
        <source>Organizzazione in sottocartelle</source>
        <translation>Organizzazione in sottocartelle</translation>
    </message>
    <message>
        <source>Spostamento immagini...</source>
        <translation>Spostamento immagini...</translation>
    </message>
    <message>
        <source>Spostamento video...</source>
        <translation>Spostamento video...</translation>
    </message>
    <message>
        <source>Caricamento dati in corso...</source>
        <translation>Caricamento dati in corso...</translation>
    </message>
    <message>
        <source>Creazione database in corso...</source>
        <translation>Creazione database in corso...</translation>
    </message>
    <message>
        <source>Errore</source>
        <translation>Errore</translation>
    </message>
    <message>
        <source>Database non creato</source>
        <translation>Database non creato</translation>
    </message>
    <message>
        <source>Cancellazione file non supportati...</source>
        <translation>Cancellazione file non supportati...</translation>
    </message>
</context>
<context>
    <name>QuestionBox</name>
    <message>
        <source>Corvin4 Manager</source>
        <translation>Corvin4 Manager</translation>
    </message>
    <message>
        <source>Un&apos;altra finestra del programma sta lavorando.
Attendere che abbia finito.</source>
        <translation>Un&apos;altra finestra del programma sta lavorando.
Attendere che abbia finito.</translation>
    </message>
</context>
<context>
    <name>Transfer</name>
    <message>
        <source>ESPLORA
PC</source>
        <translation>ESPLORA
PC</translation>
    </message>
    <message>
        <source>INDIETRO</source>
        <translation>INDIETRO</translation>
    </message>
    <message>
        <source>FINE</source>
        <translation>FINE</translation>
    </message>
    <message>
        <source>Elimina i file e cartelle selezionate</source>
        <translation>Elimina i file e cartelle selezionate</translation>
    </message>
    <message>
        <source>Clicca su &quot;ESPLORA PC&quot; ... e</source>
        <translation>Clicca su &quot;ESPLORA PC&quot; ... e</translation>
    </message>
    <message>
        <source>Trascina Qui File e Cartelle
Per copiarli nel Corvin4</source>
        <translation>Trascina Qui File e Cartelle
Per copiarli nel Corvin4</translation>
    </message>
    <message>
        <source>SELEZIONA LA CARTELLA DI DESTINAZIONE SUL CORVIN4</source>
        <translation>SELEZIONA LA CARTELLA DI DESTINAZIONE SUL CORVIN4</translation>
    </message>
    <message>
        <source>Conteggio numero file da trasferire ...</source>
        <translation>Conteggio numero file da trasferire ...</translation>
    </message>
    <message>
        <source>Copia di %1 file su Corvin4 in corso ...</source>
        <translation>Copia di %1 file su Corvin4 in corso ...</translation>
    </message>
    <message>
        <source>File esistente</source>
        <translation>File esistente</translation>
    </message>
    <message>
        <source>Il File </source>
        <translation>Il File </translation>
    </message>
    <message>
        <source>

E&apos; già esistente. Sovrascrivo ?</source>
        <translation>

E&apos; già esistente. Sovrascrivo ?</translation>
    </message>
    <message>
        <source>Si</source>
        <translation>Si</translation>
    </message>
    <message>
        <source>Si,Tutti</source>
        <translation>Si,Tutti</translation>
    </message>
    <message>
        <source>No</source>
        <translation>No</translation>
    </message>
    <message>
        <source>No,Tutti</source>
        <translation>No,Tutti</translation>
    </message>
    <message>
        <source>Cancella file</source>
        <translation>Cancella file</translation>
    </message>
    <message>
        <source>Cancellare gli elementi selezionati ?</source>
        <translation>Cancellare gli elementi selezionati ?</translation>
    </message>
    <message>
        <source>Cancellazione in corso ...</source>
        <translation>Cancellazione in corso ...</translation>
    </message>
    <message>
        <source>Se hai terminato clicca su FINE</source>
        <translation>Se hai terminato clicca su FINE</translation>
    </message>
    <message>
        <source>Trasferimento non completato</source>
        <translation>Trasferimento non completato</translation>
    </message>
    <message>
        <source>La versione precedente è conservata sul PC:
%1</source>
        <translation>La versione precedente è conservata sul PC:
%1</translation>
    </message>
    <message>
        <source>Copiati %1 file su %2.</source>
        <translation>Copiati %1 file su %2.</translation>
    </message>
    <message>
        <source>Cartelle di Corvin4</source>
        <translation>Cartelle di Corvin4</translation>
    </message>
    <message>
        <source>Contenuto della cartella</source>
        <translation>Contenuto della cartella</translation>
    </message>
</context>
</TS>
