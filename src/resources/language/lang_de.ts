<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="it_IT">
<context>
    <name>Avanzate</name>
    <message>
        <source>AGGIORNA / RIPRISTINA IL SISTEMA OPERATIVO</source>
        <translation>BETRIEBSSYSTEM AKTUALISIEREN / WIEDERHERSTELLEN</translation>
    </message>
    <message>
        <source>AGGIORNA IL CORVIN CON L&apos; ULTIMA RELEASE DISPONIBILE</source>
        <translation>CORVIN AUF DIE NEUESTE VERSION AKTUALISIEREN</translation>
    </message>
    <message>
        <source>CREA UNA COPIA DI SICUREZZA DELLE TUE BASI</source>
        <translation>SICHERUNGSKOPIE IHRER SONGS ERSTELLEN</translation>
    </message>
    <message>
        <source>RIPRISTINA LA COPIA DI SICUREZZA SUL CORVIN</source>
        <translation>SICHERUNGSKOPIE AUF CORVIN WIEDERHERSTELLEN</translation>
    </message>
    <message>
        <source>REINSTALLA IL SISTEMA OPERATIVO</source>
        <translation>BETRIEBSSYSTEM NEU INSTALLIEREN</translation>
    </message>
    <message>
        <source>REINSTALLA IL SISTEMA OPERATIVO E CANCELLA LE BASI</source>
        <translation>BETRIEBSSYSTEM NEU INSTALLIEREN UND SONGS LÖSCHEN</translation>
    </message>
    <message>
        <source>REINSTALLA IL SISTEMA OPERATIVO E RIPRISTINA LE BASI</source>
        <translation>BETRIEBSSYSTEM NEU INSTALLIEREN, SONGS WIEDERHERSTELLEN</translation>
    </message>
    <message>
        <source>INDIETRO</source>
        <translation>ZURÜCK</translation>
    </message>
    <message>
        <source>Corvin4 non collegato</source>
        <translation>Corvin4 nicht verbunden</translation>
    </message>
    <message>
        <source>Ricollega Corvin4 alla porta USB</source>
        <translation>Schließen Sie Corvin4 wieder an den USB-Anschluss an.</translation>
    </message>
    <message>
        <source>Scarica la versione più recente. Le basi restano dove sono.</source>
        <translation>Lädt die neueste Version herunter. Die Songs bleiben erhalten.</translation>
    </message>
    <message>
        <source>Copia tutte le basi in una cartella del PC.</source>
        <translation>Kopiert alle Songs in einen Ordner auf dem PC.</translation>
    </message>
    <message>
        <source>Riporta su Corvin le basi salvate sul PC.</source>
        <translation>Bringt die auf dem PC gesicherten Songs auf Corvin zurück.</translation>
    </message>
    <message>
        <source>Installa di nuovo il sistema. Le basi restano dove sono.</source>
        <translation>Installiert das System neu. Die Songs bleiben erhalten.</translation>
    </message>
    <message>
        <source>Cancella tutto il disco, comprese le basi.</source>
        <translation>Löscht die ganze Festplatte samt Songs.</translation>
    </message>
    <message>
        <source>Salva le basi sul PC, cancella il disco, riporta le basi.</source>
        <translation>Sichert die Songs, löscht die Platte, stellt die Songs wieder her.</translation>
    </message>
</context>
<context>
    <name>Check</name>
    <message>
        <source>AVANTI</source>
        <translation>WEITER</translation>
    </message>
    <message>
        <source>CONTROLLO INTEGRITA&apos; SOFTWARE ...</source>
        <translation>SOFTWAREINTEGRITÄT WIRD GEPRÜFT ...</translation>
    </message>
    <message>
        <source>File di sistema mancanti</source>
        <translation>Fehlende Systemdateien</translation>
    </message>
    <message>
        <source>ATTENZIONE: file di sistema danneggiati o mancanti,

tentare il ripristino ?</source>
        <translation>ACHTUNG: Systemdateien sind beschädigt oder fehlen.

Wiederherstellung versuchen?</translation>
    </message>
    <message>
        <source>CHECK UP IN CORSO</source>
        <translation>PRÜFUNG LÄUFT</translation>
    </message>
    <message>
        <source>CONTROLLO SOFTWARE COMPLETATO</source>
        <translation>SOFTWAREPRÜFUNG ABGESCHLOSSEN</translation>
    </message>
    <message>
        <source>Problema rilevato durante il controllo del sistema operativo !!!</source>
        <translation>Bei der Prüfung des Betriebssystems wurde ein Problem festgestellt!!!</translation>
    </message>
    <message>
        <source>RIPRISTINO DEI FILE DEL SISTEMA OPERATIVO</source>
        <translation>BETRIEBSSYSTEMDATEIEN WERDEN WIEDERHERGESTELLT</translation>
    </message>
    <message>
        <source>ATTENZIONE :

NON Spegnere/Riavviare Corvin4 e NON scollegare il cavo USB.

L&apos;operazione potrebbe richiedere qualche minuto.</source>
        <translation>ACHTUNG:

Corvin4 NICHT ausschalten oder neu starten und das USB-Kabel NICHT abziehen.

Der Vorgang kann einige Minuten dauern.</translation>
    </message>
</context>
<context>
    <name>Connect</name>
    <message>
        <source>Corvin4 NON collegato.</source>
        <translation>Corvin4 NICHT verbunden.</translation>
    </message>
    <message>
        <source>Collega Corvin4 al PC tramite il cavo USB.
Accendi Corvin4.</source>
        <translation>Verbinden Sie Corvin4 über das USB-Kabel mit dem PC.
Schalten Sie Corvin4 ein.</translation>
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
        <translation>Optimierung erfolgreich abgeschlossen</translation>
    </message>
    <message>
        <source>Scollegare il Corvin4 dalla porta USB
Spegnerlo e riaccenderlo per completare la procedura</source>
        <translation>Trennen Sie Corvin4 vom USB-Anschluss und
schalten Sie ihn aus und wieder ein, um den Vorgang abzuschließen.</translation>
    </message>
    <message>
        <source>Ottimizzazione non completata correttamente</source>
        <translation>Optimierung nicht ordnungsgemäß abgeschlossen</translation>
    </message>
    <message>
        <source>I file rimossi dal Corvin4 sono conservati in:</source>
        <translation>Die von Corvin4 entfernten Dateien liegen in:</translation>
    </message>
</context>
<context>
    <name>FirstMenu</name>
    <message>
        <source>GESTIONE E MANUTENZIONE DEL TUO CORVIN4</source>
        <translation>VERWALTUNG UND WARTUNG IHRES CORVIN4</translation>
    </message>
    <message>
        <source>TRASFERISCI LE BASI DAL PC A CORVIN4</source>
        <translation>SONGS VOM PC AUF CORVIN4 ÜBERTRAGEN</translation>
    </message>
    <message>
        <source>OTTIMIZZA L&apos;ARCHVIO DELLE BASI DI CORVIN4</source>
        <translation>SONGARCHIV VON CORVIN4 OPTIMIEREN</translation>
    </message>
    <message>
        <source>AGGIORNA / RIPRISTINA IL SISTEMA OPERATIVO</source>
        <translation>BETRIEBSSYSTEM AKTUALISIEREN / WIEDERHERSTELLEN</translation>
    </message>
    <message>
        <source>Corvin4 non collegato</source>
        <translation>Corvin4 nicht verbunden</translation>
    </message>
    <message>
        <source>Ricollega Corvin4 alla porta USB</source>
        <translation>Schließen Sie Corvin4 wieder an den USB-Anschluss an.</translation>
    </message>
    <message>
        <source>Copia sul player le canzoni che hai sul PC.</source>
        <translation>Kopiert die Songs von Ihrem PC auf den Player.</translation>
    </message>
    <message>
        <source>Mette in ordine le canzoni e le rende facili da trovare.</source>
        <translation>Ordnet die Songs, damit sie leicht zu finden sind.</translation>
    </message>
    <message>
        <source>Aggiornamento, copie di sicurezza, reinstallazione.</source>
        <translation>Update, Sicherungskopien, Neuinstallation.</translation>
    </message>
</context>
<context>
    <name>Guide</name>
    <message>
        <source>Guida</source>
        <translation>Anleitung</translation>
    </message>
    <message>
        <source>La guida non si trova su questo PC.</source>
        <translation>Die Anleitung befindet sich nicht auf diesem PC.</translation>
    </message>
</context>
<context>
    <name>IstruzioniTransfer</name>
    <message>
        <source>Scegli nel riquadro la cartella di Corvin4 in cui copiare le basi.</source>
        <translation>Wählen Sie in der Liste den Ordner von Corvin4, der die Songs aufnehmen soll.</translation>
    </message>
    <message>
        <source>Trascina nell&apos;area tratteggiata i file e le cartelle dal PC.</source>
        <translation>Ziehen Sie Dateien und Ordner vom PC in den gestrichelten Bereich.</translation>
    </message>
    <message>
        <source>Al termine clicca su &quot;FINE&quot;: l&apos;archivio di Corvin4 viene ottimizzato.</source>
        <translation>Klicken Sie zum Schluss auf „FERTIG“: Das Songarchiv von Corvin4 wird optimiert.</translation>
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
        <translation>Info</translation>
    </message>
    <message>
        <source>Trasferimento non completato</source>
        <translation>Übertragung nicht abgeschlossen</translation>
    </message>
    <message>
        <source>Prima di poter chiudere il programma,
concludi le operazioni di ottimizzazione cliccando sul tasto &quot;FINE&quot;.</source>
        <translation>Bevor Sie das Programm schließen können,
muss die Optimierung mit „FERTIG“ abgeschlossen werden.</translation>
    </message>
    <message>
        <source>Azzeramento HD Corvin4</source>
        <translation>Corvin4-Festplatte löschen</translation>
    </message>
    <message>
        <source>ATTENZIONE!
Ogni contenuto presente nell&apos; HD verrà cancellato!
Continuare?</source>
        <translation>ACHTUNG!
Alle Inhalte der Festplatte von Corvin4 werden gelöscht!
Fortfahren?</translation>
    </message>
    <message>
        <source>Cerco se Corvin4 è connesso via USB...</source>
        <translation>Es wird geprüft, ob Corvin4 über USB verbunden ist...</translation>
    </message>
    <message>
        <source>Scarico l&apos; ultima release dal sito Q-Arte...</source>
        <translation>Die neueste Version wird von der Q-Arte-Website heruntergeladen...</translation>
    </message>
    <message>
        <source>Copia dei files dell&apos; aggiornamento...</source>
        <translation>Die Update-Dateien werden kopiert...</translation>
    </message>
    <message>
        <source>Copia di backup dei files sul PC...</source>
        <translation>Die Dateien werden auf dem PC gesichert...</translation>
    </message>
    <message>
        <source>Creazione della copia del sistema operativo...</source>
        <translation>Die Kopie des Betriebssystems wird erstellt...</translation>
    </message>
    <message>
        <source>Sto formattando Corvin...</source>
        <translation>Corvin wird formatiert...</translation>
    </message>
    <message>
        <source>Trasferimento del sistema operativo...</source>
        <translation>Das Betriebssystem wird übertragen...</translation>
    </message>
    <message>
        <source>Ripristino copia di backup sul Corvin...</source>
        <translation>Die Sicherungskopie wird auf Corvin wiederhergestellt...</translation>
    </message>
    <message>
        <source>Lettura del contenuto di Corvin...</source>
        <translation>Der Inhalt von Corvin wird gelesen...</translation>
    </message>
    <message>
        <source>File di sistema danneggiati o mancanti</source>
        <translation>Systemdateien beschädigt oder nicht vorhanden</translation>
    </message>
    <message>
        <source>ATTENZIONE: file di sistema danneggiati o mancanti, tentare il ripristino?</source>
        <translation>ACHTUNG: Systemdateien sind beschädigt oder fehlen. Wiederherstellung versuchen?</translation>
    </message>
    <message>
        <source>Corvin4 non è stato trovato</source>
        <translation>Corvin4 wurde nicht gefunden</translation>
    </message>
    <message>
        <source>Spegnere Corvin4 e connetterlo alla porta USB del PC.
Quindi accendere Corvin4 e
quando appare la schermata di connessione sul display di Corvin,
cliccare ancora su START</source>
        <translation>Schalten Sie Corvin4 aus, verbinden Sie ihn per USB mit dem PC
und schalten Sie ihn wieder ein.
Sobald auf seinem Display der Verbindungsbildschirm erscheint,
versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>Errore di formattazione</source>
        <translation>Formatierungsfehler</translation>
    </message>
    <message>
        <source>C&apos;è stato un errore durante la formattazione di Corvin4.
Spegnere Corvin4 e connetterlo alla porta USB del PC.
Quindi accendere Corvin4 e
quando appare la schermata di connessione sul display di Corvin,
cliccare ancora su START</source>
        <translation>Beim Formatieren von Corvin4 ist ein Fehler aufgetreten.
Schalten Sie Corvin4 aus, verbinden Sie ihn per USB mit dem PC
und schalten Sie ihn wieder ein.
Sobald auf seinem Display der Verbindungsbildschirm erscheint,
versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>Errore durante il BackUp</source>
        <translation>Fehler bei der Sicherung</translation>
    </message>
    <message>
        <source>C&apos;è stato durante il salvataggio delle basi.
Operazione annullata</source>
        <translation>Beim Sichern der Songs ist ein Fehler aufgetreten.
Der Vorgang wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Errore durante il Restore</source>
        <translation>Fehler bei der Wiederherstellung</translation>
    </message>
    <message>
        <source>C&apos;è stato durante il ripristino delle basi.
Operazione annullata</source>
        <translation>Beim Wiederherstellen der Songs ist ein Fehler aufgetreten.
Der Vorgang wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Fine operazioni</source>
        <translation>Vorgang abgeschlossen</translation>
    </message>
    <message>
        <source>Installazione terminata.
Spegnere il Corvin e scollegare dal PC e riaccendere Corvin.
Se viene chiesto di riavviare, spegnere e accendere
finchè non appare la lista delle canzoni.</source>
        <translation>Installation abgeschlossen.
Schalten Sie Corvin aus, trennen Sie ihn vom PC
und schalten Sie ihn wieder ein.
Falls ein Neustart verlangt wird, schalten Sie Corvin so lange
aus und ein, bis die Liste der Songs erscheint.</translation>
    </message>
    <message>
        <source>Download Error </source>
        <translation>Download-Fehler </translation>
    </message>
    <message>
        <source>C&apos;è stato un errore durante il download dell&apos; aggiornamento di Corvin
Riprovare più tardi</source>
        <translation>Beim Herunterladen des Corvin-Updates ist ein Fehler aufgetreten.
Bitte versuchen Sie es später erneut.</translation>
    </message>
    <message>
        <source>Aggiornamento scaricato.
Spegnere il Corvin e scollegare dal PC e riaccendere Corvin.
Se viene chiesto di riavviare, spegnere e accendere
finchè non appare la lista delle canzoni.</source>
        <translation>Update heruntergeladen.
Schalten Sie Corvin aus, trennen Sie ihn vom PC
und schalten Sie ihn wieder ein.
Falls ein Neustart verlangt wird, schalten Sie Corvin so lange
aus und ein, bis die Liste der Songs erscheint.</translation>
    </message>
    <message>
        <source>???</source>
        <translation>???</translation>
    </message>
    <message>
        <source>Interrompi Operazione</source>
        <translation>Vorgang abbrechen</translation>
    </message>
    <message>
        <source>Vuoi interrompere le operazioni in corso ?</source>
        <translation>Möchten Sie die laufenden Vorgänge abbrechen?</translation>
    </message>
    <message>
        <source>Si</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>Cancellazione Drive</source>
        <translation>Laufwerk löschen</translation>
    </message>
    <message>
        <source>ATTENZIONE: Il drive </source>
        <translation>ACHTUNG: Der Inhalt des Laufwerks </translation>
    </message>
    <message>
        <source> verrà cancellato.
Vuoi continuare?</source>
        <translation> wird gelöscht.
Möchten Sie fortfahren?</translation>
    </message>
    <message>
        <source>File Esistente</source>
        <translation>Datei bereits vorhanden</translation>
    </message>
    <message>
        <source>Il File
</source>
        <translation>Die Datei
</translation>
    </message>
    <message>
        <source>
Esiste già. Vuoi sostituirlo?</source>
        <translation>
ist bereits vorhanden. Möchten Sie sie ersetzen?</translation>
    </message>
    <message>
        <source>Si,Tutti</source>
        <translation>Ja, alle</translation>
    </message>
    <message>
        <source>La versione precedente è conservata sul PC:
%1</source>
        <translation>Die vorherige Version liegt auf dem PC:
%1</translation>
    </message>
    <message>
        <source>Errore sulla copia</source>
        <translation>Fehler beim Kopieren</translation>
    </message>
    <message>
        <source>
on è stato copiato. Vuoi continuare a copiare?</source>
        <translation>
wurde nicht kopiert. Möchten Sie mit dem Kopieren fortfahren?</translation>
    </message>
    <message>
        <source>ERRORE</source>
        <translation>FEHLER</translation>
    </message>
    <message>
        <source>Scegli una cartella per il salvataggio dei files</source>
        <translation>Wählen Sie einen Ordner zum Speichern der Dateien</translation>
    </message>
    <message>
        <source>Procedura terminata in modo inaspettato.
Provare a reinstallare il sistema operativo.</source>
        <translation>Der Vorgang wurde unerwartet beendet.
Versuchen Sie, das Betriebssystem neu zu installieren.</translation>
    </message>
    <message>
        <source>La copia di sicurezza delle basi si trova in:
%1</source>
        <translation>Die Sicherungskopie Ihrer Songs befindet sich in:
%1</translation>
    </message>
    <message>
        <source>Scegli cartella da cui prendere i files salvati</source>
        <translation>Wählen Sie den Ordner mit den gesicherten Dateien</translation>
    </message>
    <message>
        <source>Fatto</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Trovati alcuni files</source>
        <translation>Dateien gefunden</translation>
    </message>
    <message>
        <source>ATTENZIONE! Il contenuto della cartella di destinazione verrà cancellato.

Vuoi continuare ?</source>
        <translation>ACHTUNG! Der Inhalt des Zielordners wird gelöscht.

Möchten Sie fortfahren?</translation>
    </message>
    <message>
        <source>BackUp</source>
        <translation>Sicherung</translation>
    </message>
    <message>
        <source>Saranno copiati %1 files

Vuoi continuare ?</source>
        <translation>%1 Dateien werden kopiert.

Möchten Sie fortfahren?</translation>
    </message>
    <message>
        <source>, Cod %1</source>
        <translation>, Code %1</translation>
    </message>
    <message>
        <source>Non è stato possibile salvare le playlist sul PC.
Il sistema operativo di Corvin non è stato modificato.</source>
        <translation>Die Playlists konnten nicht auf dem PC gesichert werden.
Das Betriebssystem von Corvin wurde nicht verändert.</translation>
    </message>
    <message>
        <source>Provare a reinstallare il sistema operativo.</source>
        <translation>Versuchen Sie, das Betriebssystem neu zu installieren.</translation>
    </message>
    <message>
        <source>Le playlist che erano su Corvin si trovano in:
%1</source>
        <translation>Die Playlists, die auf Corvin waren, liegen in:
%1</translation>
    </message>
    <message>
        <source>%1 (copia precedente)</source>
        <translation>%1 (vorherige Kopie)</translation>
    </message>
    <message>
        <source>La cartella è un intero disco. Scegliere o creare una cartella al suo interno.</source>
        <translation>Der Ordner ist ein ganzer Datenträger. Wählen oder erstellen Sie einen Ordner darin.</translation>
    </message>
    <message>
        <source>La cartella si trova sul disco di Corvin4. Scegliere una cartella del PC.</source>
        <translation>Der Ordner liegt auf der Festplatte von Corvin4. Wählen Sie einen Ordner auf dem PC.</translation>
    </message>
    <message>
        <source>La cartella è del sistema, dell&apos; utente o del programma e non può essere svuotata.
Scegliere o creare una cartella al suo interno.</source>
        <translation>Der Ordner gehört dem System, dem Benutzer oder dem Programm und kann nicht geleert werden.
Wählen oder erstellen Sie einen Ordner darin.</translation>
    </message>
    <message>
        <source>La cartella non può essere svuotata: è protetta, oppure un altro programma la sta usando.</source>
        <translation>Der Ordner kann nicht geleert werden: Er ist geschützt oder wird von einem anderen Programm benutzt.</translation>
    </message>
    <message>
        <source>Avanzamento</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Lingua</source>
        <translation>Sprache</translation>
    </message>
</context>
<context>
    <name>Ottimizza</name>
    <message>
        <source>Ottimizza</source>
        <translation>Optimieren</translation>
    </message>
    <message>
        <source>Seleziona le operazioni che desideri effettuare:</source>
        <translation>Wählen Sie die gewünschten Vorgänge aus:</translation>
    </message>
    <message>
        <source>Ottimizzazione completa</source>
        <translation>Vollständige Optimierung</translation>
    </message>
    <message>
        <source>Esegue tutte le operazioni sotto elencate.</source>
        <translation>Führt alle unten aufgeführten Vorgänge aus.</translation>
    </message>
    <message>
        <source>Cancella file non supportati</source>
        <translation>Nicht unterstützte Dateien löschen</translation>
    </message>
    <message>
        <source>Cancella tutti i file non supportati dalla memoria di Corvin4, i formati supportati sono: jpg,png,bmp,mp3,mid,kar,mf3,mf4,mf5.</source>
        <translation>Löscht alle nicht unterstützten Dateien von der Festplatte von Corvin4. Unterstützte Formate: jpg, png, bmp, mp3, mid, kar, mf3, mf4, mf5.</translation>
    </message>
    <message>
        <source>Sposta immagini e video</source>
        <translation>Bilder und Videos verschieben</translation>
    </message>
    <message>
        <source>Sposta tutti i video e le immagini presenti nella memoria di Corvin4, nelle cartelle &quot;Videos&quot; e &quot;Images&quot;.</source>
        <translation>Verschiebt alle Videos und Bilder auf der Festplatte von Corvin4 in die Ordner „Videos“ und „Images“.</translation>
    </message>
    <message>
        <source>Suddividi le basi in cartelle</source>
        <translation>Songs auf Ordner aufteilen</translation>
    </message>
    <message>
        <source>Le cartelle contenenti più di 1000 basi verranno suddivise in cartelle ordinate secondo il titolo delle canzoni.</source>
        <translation>Songs aus Ordnern mit mehr als 1000 Songs werden nach Titeln auf mehrere Ordner verteilt.</translation>
    </message>
    <message>
        <source>Crea database</source>
        <translation>Datenbank erstellen</translation>
    </message>
    <message>
        <source>Crea il database delle canzoni prelevando le informazioni dai file, migliora i risultati delle ricerche</source>
        <translation>Erstellt die Songdatenbank aus den Informationen in den Dateien und verbessert die Suchergebnisse.</translation>
    </message>
    <message>
        <source>INDIETRO</source>
        <translation>ZURÜCK</translation>
    </message>
    <message>
        <source>OTTIMIZZA</source>
        <translation>OPTIMIEREN</translation>
    </message>
    <message>
        <source>Scansione cartelle in corso...</source>
        <translation>Ordner werden durchsucht...</translation>
    </message>
    <message>
        <source>Caricamento risorse...</source>
        <translation>Ressourcen werden geladen...</translation>
    </message>
    <message>
        <source>Operazione completata</source>
        <translation>Vorgang abgeschlossen</translation>
    </message>
    <message>
        <source>Ottimizzazione cartelle </source>
        <translation>Ordner werden optimiert </translation>
    </message>
    <message>
        <source>Ricerca dei titoli nei brani</source>
        <translation>Titel in den Songs werden gesucht</translation>
    </message>
    <message>
        <source>Organizzazione in sottocartelle</source>
        <translation>Unterordner werden angelegt</translation>
    </message>
    <message>
        <source>Spostamento immagini...</source>
        <translation>Bilder werden verschoben...</translation>
    </message>
    <message>
        <source>Spostamento video...</source>
        <translation>Videos werden verschoben...</translation>
    </message>
    <message>
        <source>Caricamento dati in corso...</source>
        <translation>Daten werden geladen...</translation>
    </message>
    <message>
        <source>Creazione database in corso...</source>
        <translation>Datenbank wird erstellt...</translation>
    </message>
    <message>
        <source>Errore</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Database non creato</source>
        <translation>Datenbank nicht erstellt</translation>
    </message>
    <message>
        <source>Cancellazione file non supportati...</source>
        <translation>Nicht unterstützte Dateien werden gelöscht...</translation>
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
        <translation>In einem anderen Fenster läuft gerade ein Vorgang.
Bitte warten Sie, bis er fertig ist.</translation>
    </message>
</context>
<context>
    <name>Transfer</name>
    <message>
        <source>ESPLORA
PC</source>
        <translation>PC
DURCHSUCHEN</translation>
    </message>
    <message>
        <source>INDIETRO</source>
        <translation>ZURÜCK</translation>
    </message>
    <message>
        <source>FINE</source>
        <translation>FERTIG</translation>
    </message>
    <message>
        <source>Elimina i file e cartelle selezionate</source>
        <translation>Ausgewählte Dateien und Ordner löschen</translation>
    </message>
    <message>
        <source>Clicca su &quot;ESPLORA PC&quot; ... e</source>
        <translation>Klicken Sie auf „PC DURCHSUCHEN“, dann:</translation>
    </message>
    <message>
        <source>Trascina Qui File e Cartelle
Per copiarli nel Corvin4</source>
        <translation>Dateien und Ordner
hierher ziehen, um sie
auf Corvin4 zu kopieren</translation>
    </message>
    <message>
        <source>SELEZIONA LA CARTELLA DI DESTINAZIONE SUL CORVIN4</source>
        <translation>WÄHLEN SIE DEN ZIELORDNER AUF CORVIN4</translation>
    </message>
    <message>
        <source>Conteggio numero file da trasferire ...</source>
        <translation>Die zu übertragenden Dateien werden gezählt...</translation>
    </message>
    <message>
        <source>Copia di %1 file su Corvin4 in corso ...</source>
        <translation>%1 Dateien werden auf Corvin4 kopiert...</translation>
    </message>
    <message>
        <source>File esistente</source>
        <translation>Datei bereits vorhanden</translation>
    </message>
    <message>
        <source>Il File </source>
        <translation>Die Datei </translation>
    </message>
    <message>
        <source>

E&apos; già esistente. Sovrascrivo ?</source>
        <translation>

ist bereits vorhanden. Überschreiben?</translation>
    </message>
    <message>
        <source>Si</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>Si,Tutti</source>
        <translation>Ja, alle</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>No,Tutti</source>
        <translation>Nein, keine</translation>
    </message>
    <message>
        <source>Cancella file</source>
        <translation>Dateien löschen</translation>
    </message>
    <message>
        <source>Cancellare gli elementi selezionati ?</source>
        <translation>Ausgewählte Elemente löschen?</translation>
    </message>
    <message>
        <source>Cancellazione in corso ...</source>
        <translation>Löschvorgang läuft...</translation>
    </message>
    <message>
        <source>Se hai terminato clicca su FINE</source>
        <translation>Wenn Sie fertig sind, klicken Sie auf FERTIG</translation>
    </message>
    <message>
        <source>Trasferimento non completato</source>
        <translation>Übertragung nicht abgeschlossen</translation>
    </message>
    <message>
        <source>La versione precedente è conservata sul PC:
%1</source>
        <translation>Die vorherige Version liegt auf dem PC:
%1</translation>
    </message>
    <message>
        <source>Copiati %1 file su %2.</source>
        <translation>%1 von %2 Dateien kopiert.</translation>
    </message>
    <message>
        <source>Cartelle di Corvin4</source>
        <translation>Ordner von Corvin4</translation>
    </message>
    <message>
        <source>Contenuto della cartella</source>
        <translation>Inhalt des Ordners</translation>
    </message>
</context>
</TS>
