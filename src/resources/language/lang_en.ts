<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_GB" sourcelanguage="it_IT">
<context>
    <name>Avanzate</name>
    <message>
        <source>AGGIORNA / RIPRISTINA IL SISTEMA OPERATIVO</source>
        <translation>UPDATE / RESTORE THE OPERATING SYSTEM</translation>
    </message>
    <message>
        <source>AGGIORNA IL CORVIN CON L&apos; ULTIMA RELEASE DISPONIBILE</source>
        <translation>UPDATE CORVIN TO THE LATEST AVAILABLE RELEASE</translation>
    </message>
    <message>
        <source>CREA UNA COPIA DI SICUREZZA DELLE TUE BASI</source>
        <translation>CREATE A BACKUP OF YOUR SONGS</translation>
    </message>
    <message>
        <source>RIPRISTINA LA COPIA DI SICUREZZA SUL CORVIN</source>
        <translation>RESTORE THE BACKUP TO CORVIN</translation>
    </message>
    <message>
        <source>REINSTALLA IL SISTEMA OPERATIVO</source>
        <translation>REINSTALL THE OPERATING SYSTEM</translation>
    </message>
    <message>
        <source>REINSTALLA IL SISTEMA OPERATIVO E CANCELLA LE BASI</source>
        <translation>REINSTALL THE OPERATING SYSTEM AND ERASE THE SONGS</translation>
    </message>
    <message>
        <source>REINSTALLA IL SISTEMA OPERATIVO E RIPRISTINA LE BASI</source>
        <translation>REINSTALL THE OPERATING SYSTEM AND RESTORE THE SONGS</translation>
    </message>
    <message>
        <source>INDIETRO</source>
        <translation>BACK</translation>
    </message>
    <message>
        <source>Corvin4 non collegato</source>
        <translation>Corvin4 not connected</translation>
    </message>
    <message>
        <source>Ricollega Corvin4 alla porta USB</source>
        <translation>Reconnect Corvin4 to the USB port.</translation>
    </message>
    <message>
        <source>Scarica la versione più recente. Le basi restano dove sono.</source>
        <translation>Downloads the latest version. The songs stay where they are.</translation>
    </message>
    <message>
        <source>Copia tutte le basi in una cartella del PC.</source>
        <translation>Copies all songs to a folder on the PC.</translation>
    </message>
    <message>
        <source>Riporta su Corvin le basi salvate sul PC.</source>
        <translation>Brings the songs saved on the PC back to Corvin.</translation>
    </message>
    <message>
        <source>Installa di nuovo il sistema. Le basi restano dove sono.</source>
        <translation>Installs the system again. The songs stay where they are.</translation>
    </message>
    <message>
        <source>Cancella tutto il disco, comprese le basi.</source>
        <translation>Erases the whole disk, songs included.</translation>
    </message>
    <message>
        <source>Salva le basi sul PC, cancella il disco, riporta le basi.</source>
        <translation>Saves the songs on the PC, erases the disk, restores the songs.</translation>
    </message>
</context>
<context>
    <name>Check</name>
    <message>
        <source>AVANTI</source>
        <translation>NEXT</translation>
    </message>
    <message>
        <source>CONTROLLO INTEGRITA&apos; SOFTWARE ...</source>
        <translation>CHECKING SOFTWARE INTEGRITY ...</translation>
    </message>
    <message>
        <source>File di sistema mancanti</source>
        <translation>Missing system files</translation>
    </message>
    <message>
        <source>ATTENZIONE: file di sistema danneggiati o mancanti,

tentare il ripristino ?</source>
        <translation>WARNING: system files are damaged or missing.

Try to restore them?</translation>
    </message>
    <message>
        <source>CHECK UP IN CORSO</source>
        <translation>CHECK IN PROGRESS</translation>
    </message>
    <message>
        <source>CONTROLLO SOFTWARE COMPLETATO</source>
        <translation>SOFTWARE CHECK COMPLETED</translation>
    </message>
    <message>
        <source>Problema rilevato durante il controllo del sistema operativo !!!</source>
        <translation>Problem detected while checking the operating system!!!</translation>
    </message>
    <message>
        <source>RIPRISTINO DEI FILE DEL SISTEMA OPERATIVO</source>
        <translation>RESTORING THE OPERATING SYSTEM FILES</translation>
    </message>
    <message>
        <source>ATTENZIONE :

NON Spegnere/Riavviare Corvin4 e NON scollegare il cavo USB.

L&apos;operazione potrebbe richiedere qualche minuto.</source>
        <translation>WARNING:

Do NOT switch off or restart Corvin4 and do NOT disconnect the USB cable.

The operation may take a few minutes.</translation>
    </message>
</context>
<context>
    <name>Connect</name>
    <message>
        <source>Corvin4 NON collegato.</source>
        <translation>Corvin4 NOT connected.</translation>
    </message>
    <message>
        <source>Collega Corvin4 al PC tramite il cavo USB.
Accendi Corvin4.</source>
        <translation>Connect Corvin4 to the PC with the USB cable.
Switch Corvin4 on.</translation>
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
        <translation>Optimisation completed successfully</translation>
    </message>
    <message>
        <source>Scollegare il Corvin4 dalla porta USB
Spegnerlo e riaccenderlo per completare la procedura</source>
        <translation>Disconnect Corvin4 from the USB port,
then switch it off and on again to complete the procedure.</translation>
    </message>
    <message>
        <source>Ottimizzazione non completata correttamente</source>
        <translation>Optimisation not completed correctly</translation>
    </message>
    <message>
        <source>I file rimossi dal Corvin4 sono conservati in:</source>
        <translation>The files removed from Corvin4 are kept in:</translation>
    </message>
</context>
<context>
    <name>FirstMenu</name>
    <message>
        <source>GESTIONE E MANUTENZIONE DEL TUO CORVIN4</source>
        <translation>MANAGE AND MAINTAIN YOUR CORVIN4</translation>
    </message>
    <message>
        <source>TRASFERISCI LE BASI DAL PC A CORVIN4</source>
        <translation>TRANSFER SONGS FROM THE PC TO CORVIN4</translation>
    </message>
    <message>
        <source>OTTIMIZZA L&apos;ARCHVIO DELLE BASI DI CORVIN4</source>
        <translation>OPTIMISE THE CORVIN4 SONG ARCHIVE</translation>
    </message>
    <message>
        <source>AGGIORNA / RIPRISTINA IL SISTEMA OPERATIVO</source>
        <translation>UPDATE / RESTORE THE OPERATING SYSTEM</translation>
    </message>
    <message>
        <source>Corvin4 non collegato</source>
        <translation>Corvin4 not connected</translation>
    </message>
    <message>
        <source>Ricollega Corvin4 alla porta USB</source>
        <translation>Reconnect Corvin4 to the USB port.</translation>
    </message>
    <message>
        <source>Copia sul player le canzoni che hai sul PC.</source>
        <translation>Copies the songs on your PC to the player.</translation>
    </message>
    <message>
        <source>Mette in ordine le canzoni e le rende facili da trovare.</source>
        <translation>Puts the songs in order and makes them easy to find.</translation>
    </message>
    <message>
        <source>Aggiornamento, copie di sicurezza, reinstallazione.</source>
        <translation>Updates, backups, reinstallation.</translation>
    </message>
</context>
<context>
    <name>Guide</name>
    <message>
        <source>Guida</source>
        <translation>Guide</translation>
    </message>
    <message>
        <source>La guida non si trova su questo PC.</source>
        <translation>The guide is not on this PC.</translation>
    </message>
</context>
<context>
    <name>IstruzioniTransfer</name>
    <message>
        <source>Scegli nel riquadro la cartella di Corvin4 in cui copiare le basi.</source>
        <translation>In the panel, choose the folder on Corvin4 to copy the songs into.</translation>
    </message>
    <message>
        <source>Trascina nell&apos;area tratteggiata i file e le cartelle dal PC.</source>
        <translation>Drag files and folders from the PC onto the dashed area.</translation>
    </message>
    <message>
        <source>Al termine clicca su &quot;FINE&quot;: l&apos;archivio di Corvin4 viene ottimizzato.</source>
        <translation>When you have finished, click &quot;FINISH&quot;: the Corvin4 song archive is optimised.</translation>
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
        <translation>Transfer not completed</translation>
    </message>
    <message>
        <source>Prima di poter chiudere il programma,
concludi le operazioni di ottimizzazione cliccando sul tasto &quot;FINE&quot;.</source>
        <translation>Before you can close the program,
complete the optimisation by clicking the &quot;FINISH&quot; button.</translation>
    </message>
    <message>
        <source>Azzeramento HD Corvin4</source>
        <translation>Erasing the Corvin4 disk</translation>
    </message>
    <message>
        <source>ATTENZIONE!
Ogni contenuto presente nell&apos; HD verrà cancellato!
Continuare?</source>
        <translation>WARNING!
Everything on the Corvin4 disk will be erased!
Continue?</translation>
    </message>
    <message>
        <source>Cerco se Corvin4 è connesso via USB...</source>
        <translation>Checking whether Corvin4 is connected via USB...</translation>
    </message>
    <message>
        <source>Scarico l&apos; ultima release dal sito Q-Arte...</source>
        <translation>Downloading the latest release from the Q-Arte website...</translation>
    </message>
    <message>
        <source>Copia dei files dell&apos; aggiornamento...</source>
        <translation>Copying the update files...</translation>
    </message>
    <message>
        <source>Copia di backup dei files sul PC...</source>
        <translation>Backing up the files to the PC...</translation>
    </message>
    <message>
        <source>Creazione della copia del sistema operativo...</source>
        <translation>Creating a copy of the operating system...</translation>
    </message>
    <message>
        <source>Sto formattando Corvin...</source>
        <translation>Formatting Corvin...</translation>
    </message>
    <message>
        <source>Trasferimento del sistema operativo...</source>
        <translation>Transferring the operating system...</translation>
    </message>
    <message>
        <source>Ripristino copia di backup sul Corvin...</source>
        <translation>Restoring the backup to Corvin...</translation>
    </message>
    <message>
        <source>Lettura del contenuto di Corvin...</source>
        <translation>Reading the contents of Corvin...</translation>
    </message>
    <message>
        <source>File di sistema danneggiati o mancanti</source>
        <translation>Damaged or missing system files</translation>
    </message>
    <message>
        <source>ATTENZIONE: file di sistema danneggiati o mancanti, tentare il ripristino?</source>
        <translation>WARNING: system files are damaged or missing. Try to restore them?</translation>
    </message>
    <message>
        <source>Corvin4 non è stato trovato</source>
        <translation>Corvin4 was not found</translation>
    </message>
    <message>
        <source>Spegnere Corvin4 e connetterlo alla porta USB del PC.
Quindi accendere Corvin4 e
quando appare la schermata di connessione sul display di Corvin,
cliccare ancora su START</source>
        <translation>Switch Corvin4 off and connect it to a USB port on the PC.
Then switch Corvin4 on.
When the connection screen appears on the Corvin display,
try again.</translation>
    </message>
    <message>
        <source>Errore di formattazione</source>
        <translation>Formatting error</translation>
    </message>
    <message>
        <source>C&apos;è stato un errore durante la formattazione di Corvin4.
Spegnere Corvin4 e connetterlo alla porta USB del PC.
Quindi accendere Corvin4 e
quando appare la schermata di connessione sul display di Corvin,
cliccare ancora su START</source>
        <translation>An error occurred while formatting Corvin4.
Switch Corvin4 off and connect it to a USB port on the PC.
Then switch Corvin4 on.
When the connection screen appears on the Corvin display,
try again.</translation>
    </message>
    <message>
        <source>Errore durante il BackUp</source>
        <translation>Backup error</translation>
    </message>
    <message>
        <source>C&apos;è stato durante il salvataggio delle basi.
Operazione annullata</source>
        <translation>An error occurred while backing up the songs.
Operation cancelled.</translation>
    </message>
    <message>
        <source>Errore durante il Restore</source>
        <translation>Restore error</translation>
    </message>
    <message>
        <source>C&apos;è stato durante il ripristino delle basi.
Operazione annullata</source>
        <translation>An error occurred while restoring the songs.
Operation cancelled.</translation>
    </message>
    <message>
        <source>Fine operazioni</source>
        <translation>Operations completed</translation>
    </message>
    <message>
        <source>Installazione terminata.
Spegnere il Corvin e scollegare dal PC e riaccendere Corvin.
Se viene chiesto di riavviare, spegnere e accendere
finchè non appare la lista delle canzoni.</source>
        <translation>Installation completed.
Switch Corvin off, disconnect it from the PC and switch it on again.
If you are asked to restart, keep switching it off and on
until the list of songs appears.</translation>
    </message>
    <message>
        <source>Download Error </source>
        <translation>Download error </translation>
    </message>
    <message>
        <source>C&apos;è stato un errore durante il download dell&apos; aggiornamento di Corvin
Riprovare più tardi</source>
        <translation>An error occurred while downloading the Corvin update.
Please try again later.</translation>
    </message>
    <message>
        <source>Aggiornamento scaricato.
Spegnere il Corvin e scollegare dal PC e riaccendere Corvin.
Se viene chiesto di riavviare, spegnere e accendere
finchè non appare la lista delle canzoni.</source>
        <translation>Update downloaded.
Switch Corvin off, disconnect it from the PC and switch it on again.
If you are asked to restart, keep switching it off and on
until the list of songs appears.</translation>
    </message>
    <message>
        <source>???</source>
        <translation>???</translation>
    </message>
    <message>
        <source>Interrompi Operazione</source>
        <translation>Stop Operation</translation>
    </message>
    <message>
        <source>Vuoi interrompere le operazioni in corso ?</source>
        <translation>Do you want to stop the current operation?</translation>
    </message>
    <message>
        <source>Si</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>No</source>
        <translation>No</translation>
    </message>
    <message>
        <source>Cancellazione Drive</source>
        <translation>Erasing Drive</translation>
    </message>
    <message>
        <source>ATTENZIONE: Il drive </source>
        <translation>WARNING: The drive </translation>
    </message>
    <message>
        <source> verrà cancellato.
Vuoi continuare?</source>
        <translation> will be erased.
Do you want to continue?</translation>
    </message>
    <message>
        <source>File Esistente</source>
        <translation>File already exists</translation>
    </message>
    <message>
        <source>Il File
</source>
        <translation>The file
</translation>
    </message>
    <message>
        <source>
Esiste già. Vuoi sostituirlo?</source>
        <translation>
already exists. Do you want to replace it?</translation>
    </message>
    <message>
        <source>Si,Tutti</source>
        <translation>Yes to All</translation>
    </message>
    <message>
        <source>La versione precedente è conservata sul PC:
%1</source>
        <translation>The previous version is kept on the PC:
%1</translation>
    </message>
    <message>
        <source>Errore sulla copia</source>
        <translation>Copy error</translation>
    </message>
    <message>
        <source>
on è stato copiato. Vuoi continuare a copiare?</source>
        <translation>
was not copied. Do you want to continue copying?</translation>
    </message>
    <message>
        <source>ERRORE</source>
        <translation>ERROR</translation>
    </message>
    <message>
        <source>Scegli una cartella per il salvataggio dei files</source>
        <translation>Choose a folder in which to save the files</translation>
    </message>
    <message>
        <source>Procedura terminata in modo inaspettato.
Provare a reinstallare il sistema operativo.</source>
        <translation>The procedure ended unexpectedly.
Try reinstalling the operating system.</translation>
    </message>
    <message>
        <source>La copia di sicurezza delle basi si trova in:
%1</source>
        <translation>The backup copy of your songs is in:
%1</translation>
    </message>
    <message>
        <source>Scegli cartella da cui prendere i files salvati</source>
        <translation>Choose the folder that holds the saved files</translation>
    </message>
    <message>
        <source>Fatto</source>
        <translation>Done</translation>
    </message>
    <message>
        <source>Trovati alcuni files</source>
        <translation>Files found</translation>
    </message>
    <message>
        <source>ATTENZIONE! Il contenuto della cartella di destinazione verrà cancellato.

Vuoi continuare ?</source>
        <translation>WARNING! The contents of the destination folder will be deleted.

Do you want to continue?</translation>
    </message>
    <message>
        <source>BackUp</source>
        <translation>Backup</translation>
    </message>
    <message>
        <source>Saranno copiati %1 files

Vuoi continuare ?</source>
        <translation>%1 files will be copied.

Do you want to continue?</translation>
    </message>
    <message>
        <source>, Cod %1</source>
        <translation>, Code %1</translation>
    </message>
    <message>
        <source>Non è stato possibile salvare le playlist sul PC.
Il sistema operativo di Corvin non è stato modificato.</source>
        <translation>The playlists could not be saved on the PC.
The operating system of Corvin has not been changed.</translation>
    </message>
    <message>
        <source>Provare a reinstallare il sistema operativo.</source>
        <translation>Try reinstalling the operating system.</translation>
    </message>
    <message>
        <source>Le playlist che erano su Corvin si trovano in:
%1</source>
        <translation>The playlists that were on Corvin are in:
%1</translation>
    </message>
    <message>
        <source>%1 (copia precedente)</source>
        <translation>%1 (previous copy)</translation>
    </message>
    <message>
        <source>La cartella è un intero disco. Scegliere o creare una cartella al suo interno.</source>
        <translation>The folder is a whole disk. Choose or create a folder inside it.</translation>
    </message>
    <message>
        <source>La cartella si trova sul disco di Corvin4. Scegliere una cartella del PC.</source>
        <translation>The folder is on the Corvin4 disk. Choose a folder on the PC.</translation>
    </message>
    <message>
        <source>La cartella è del sistema, dell&apos; utente o del programma e non può essere svuotata.
Scegliere o creare una cartella al suo interno.</source>
        <translation>The folder belongs to the system, the user or the program and cannot be emptied.
Choose or create a folder inside it.</translation>
    </message>
    <message>
        <source>La cartella non può essere svuotata: è protetta, oppure un altro programma la sta usando.</source>
        <translation>The folder cannot be emptied: it is protected, or another program is using it.</translation>
    </message>
    <message>
        <source>Avanzamento</source>
        <translation>Progress</translation>
    </message>
    <message>
        <source>Lingua</source>
        <translation>Language</translation>
    </message>
</context>
<context>
    <name>Ottimizza</name>
    <message>
        <source>Ottimizza</source>
        <translation>Optimise</translation>
    </message>
    <message>
        <source>Seleziona le operazioni che desideri effettuare:</source>
        <translation>Select the operations you wish to perform:</translation>
    </message>
    <message>
        <source>Ottimizzazione completa</source>
        <translation>Complete optimisation</translation>
    </message>
    <message>
        <source>Esegue tutte le operazioni sotto elencate.</source>
        <translation>Performs all the operations listed below.</translation>
    </message>
    <message>
        <source>Cancella file non supportati</source>
        <translation>Delete unsupported files</translation>
    </message>
    <message>
        <source>Cancella tutti i file non supportati dalla memoria di Corvin4, i formati supportati sono: jpg,png,bmp,mp3,mid,kar,mf3,mf4,mf5.</source>
        <translation>Deletes all unsupported files from the Corvin4 disk. The supported formats are: jpg, png, bmp, mp3, mid, kar, mf3, mf4, mf5.</translation>
    </message>
    <message>
        <source>Sposta immagini e video</source>
        <translation>Move images and videos</translation>
    </message>
    <message>
        <source>Sposta tutti i video e le immagini presenti nella memoria di Corvin4, nelle cartelle &quot;Videos&quot; e &quot;Images&quot;.</source>
        <translation>Moves all the videos and images on the Corvin4 disk into the &quot;Videos&quot; and &quot;Images&quot; folders.</translation>
    </message>
    <message>
        <source>Suddividi le basi in cartelle</source>
        <translation>Split songs into folders</translation>
    </message>
    <message>
        <source>Le cartelle contenenti più di 1000 basi verranno suddivise in cartelle ordinate secondo il titolo delle canzoni.</source>
        <translation>Folders containing more than 1000 songs will be split into folders sorted by song title.</translation>
    </message>
    <message>
        <source>Crea database</source>
        <translation>Create database</translation>
    </message>
    <message>
        <source>Crea il database delle canzoni prelevando le informazioni dai file, migliora i risultati delle ricerche</source>
        <translation>Creates the song database from the information in the files and improves search results.</translation>
    </message>
    <message>
        <source>INDIETRO</source>
        <translation>BACK</translation>
    </message>
    <message>
        <source>OTTIMIZZA</source>
        <translation>OPTIMISE</translation>
    </message>
    <message>
        <source>Scansione cartelle in corso...</source>
        <translation>Scanning folders...</translation>
    </message>
    <message>
        <source>Caricamento risorse...</source>
        <translation>Loading resources...</translation>
    </message>
    <message>
        <source>Operazione completata</source>
        <translation>Operation completed</translation>
    </message>
    <message>
        <source>Ottimizzazione cartelle </source>
        <translation>Optimising folders </translation>
    </message>
    <message>
        <source>Ricerca dei titoli nei brani</source>
        <translation>Searching for titles in the songs</translation>
    </message>
    <message>
        <source>Organizzazione in sottocartelle</source>
        <translation>Organising into subfolders</translation>
    </message>
    <message>
        <source>Spostamento immagini...</source>
        <translation>Moving images...</translation>
    </message>
    <message>
        <source>Spostamento video...</source>
        <translation>Moving videos...</translation>
    </message>
    <message>
        <source>Caricamento dati in corso...</source>
        <translation>Loading data...</translation>
    </message>
    <message>
        <source>Creazione database in corso...</source>
        <translation>Creating database...</translation>
    </message>
    <message>
        <source>Errore</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Database non creato</source>
        <translation>Database not created</translation>
    </message>
    <message>
        <source>Cancellazione file non supportati...</source>
        <translation>Deleting unsupported files...</translation>
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
        <translation>Another window of the program is busy.
Please wait until it has finished.</translation>
    </message>
</context>
<context>
    <name>Transfer</name>
    <message>
        <source>ESPLORA
PC</source>
        <translation>BROWSE
PC</translation>
    </message>
    <message>
        <source>INDIETRO</source>
        <translation>BACK</translation>
    </message>
    <message>
        <source>FINE</source>
        <translation>FINISH</translation>
    </message>
    <message>
        <source>Elimina i file e cartelle selezionate</source>
        <translation>Delete the selected files and folders</translation>
    </message>
    <message>
        <source>Clicca su &quot;ESPLORA PC&quot; ... e</source>
        <translation>Click &quot;BROWSE PC&quot;, then:</translation>
    </message>
    <message>
        <source>Trascina Qui File e Cartelle
Per copiarli nel Corvin4</source>
        <translation>Drag files and folders
here to copy them
to Corvin4</translation>
    </message>
    <message>
        <source>SELEZIONA LA CARTELLA DI DESTINAZIONE SUL CORVIN4</source>
        <translation>SELECT THE DESTINATION FOLDER ON CORVIN4</translation>
    </message>
    <message>
        <source>Conteggio numero file da trasferire ...</source>
        <translation>Counting the files to transfer...</translation>
    </message>
    <message>
        <source>Copia di %1 file su Corvin4 in corso ...</source>
        <translation>Copying %1 files to Corvin4...</translation>
    </message>
    <message>
        <source>File esistente</source>
        <translation>File already exists</translation>
    </message>
    <message>
        <source>Il File </source>
        <translation>The file </translation>
    </message>
    <message>
        <source>

E&apos; già esistente. Sovrascrivo ?</source>
        <translation>

already exists. Overwrite it?</translation>
    </message>
    <message>
        <source>Si</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>Si,Tutti</source>
        <translation>Yes to All</translation>
    </message>
    <message>
        <source>No</source>
        <translation>No</translation>
    </message>
    <message>
        <source>No,Tutti</source>
        <translation>No to All</translation>
    </message>
    <message>
        <source>Cancella file</source>
        <translation>Delete files</translation>
    </message>
    <message>
        <source>Cancellare gli elementi selezionati ?</source>
        <translation>Delete the selected items?</translation>
    </message>
    <message>
        <source>Cancellazione in corso ...</source>
        <translation>Deleting...</translation>
    </message>
    <message>
        <source>Se hai terminato clicca su FINE</source>
        <translation>When you have finished, click FINISH</translation>
    </message>
    <message>
        <source>Trasferimento non completato</source>
        <translation>Transfer not completed</translation>
    </message>
    <message>
        <source>La versione precedente è conservata sul PC:
%1</source>
        <translation>The previous version is kept on the PC:
%1</translation>
    </message>
    <message>
        <source>Copiati %1 file su %2.</source>
        <translation>%1 of %2 files copied.</translation>
    </message>
    <message>
        <source>Cartelle di Corvin4</source>
        <translation>Folders of Corvin4</translation>
    </message>
    <message>
        <source>Contenuto della cartella</source>
        <translation>Contents of the folder</translation>
    </message>
</context>
</TS>
