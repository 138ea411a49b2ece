#pragma once

#include "device/devicelocator.h"

#include <QMainWindow>
#include <QMessageBox>
#include <QString>
#include <memory>

class Avanzate;
class Check;
class Connect;
class EndOttimizza;
class FirstMenu;
class Ottimizza;
class QProgressBar;
class QTimer;
class Transfer;

namespace Ui {
class MainWindow;
}

/// The numbered texts of the maintenance procedures, see MainWindow::langDbInfo(). Any int may be cast to it.
enum LANGUAGE_STRING_CODE : int
{
    TEXT_FORMAT_TITLE = 0,
    TEXT_FORMAT_QUESTION = 1,
    TEXT_LOOKING_FOR_DEVICE = 2,
    TEXT_DOWNLOADING_RELEASE = 3,
    TEXT_COPYING_UPDATE = 4,
    TEXT_BACKING_UP = 5,
    TEXT_COPYING_SYSTEM_TO_PC = 6,
    TEXT_FORMATTING = 7,
    TEXT_TRANSFERRING_SYSTEM = 8,
    TEXT_RESTORING_BACKUP = 9,
    TEXT_READING_DEVICE = 10,
    TEXT_SYSTEM_FILES_TITLE = 11,
    TEXT_SYSTEM_FILES_QUESTION = 12,
    TEXT_DEVICE_NOT_FOUND_TITLE = 13,
    TEXT_DEVICE_NOT_FOUND = 14,
    TEXT_FORMAT_ERROR_TITLE = 15,
    TEXT_FORMAT_ERROR = 16,
    TEXT_BACKUP_ERROR_TITLE = 17,
    TEXT_BACKUP_ERROR = 18,
    TEXT_RESTORE_ERROR_TITLE = 19,
    TEXT_RESTORE_ERROR = 20,
    TEXT_INSTALLED_TITLE = 21,
    TEXT_INSTALLED = 22,
    TEXT_DOWNLOAD_ERROR_TITLE = 23,
    TEXT_DOWNLOAD_ERROR = 24,
    TEXT_UPDATED_TITLE = 25,
    TEXT_UPDATED = 26
};

/// The program's only top-level window. It owns every page and moves between them, carries the progress bar, the status
/// line and the STOP button that all long work drives through signals, watches for the player until it is connected,
/// and runs the maintenance procedures in its own slots.
///
/// Long work runs inside a slot on the GUI thread and keeps the window alive by processing events; that is how STOP is
/// pressed meanwhile. The class is defined in chapters, named above each group of declarations.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Builds the window with all pages hidden and starts the watch for the player. Needs an application object, the
    /// resources, the settings and the language. The window is neither shown nor modal.
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    /// The height in pixels at which a window that wants @p wanted opens on a screen whose work area is @p available
    /// pixels high: as it is, or 50 pixels less than the work area when it is higher than that.
    static int openingHeight(int wanted, int available);

    /// STOP was pressed and confirmed. Every procedure clears it when it starts and polls it between its steps.
    bool abortRequested = false;
    /// The running procedure has had no failure so far. Set when a procedure starts, cleared by a failing step.
    bool procedureOk = true;

    // procedures/foldercopy.cpp
    /// Copies files one by one: each of @p sources (absolute paths, forward slashes) goes to @p destinationRoot followed
    /// by what is left of the source path behind as many characters as @p sourceRoot has. Missing folders are made. Asks
    /// before replacing and after a failed copy, drives @p bar and processes events after every file.
    /// Returns the outcome of the last file, false at once after a stop, a refused question or a folder that could not be
    /// made; the latter also clears procedureOk.
    bool copyFileList(const QStringList &sources, const QString &destinationRoot, const QString &sourceRoot,
                      QProgressBar *bar);

    // procedures/songbackup.cpp
    /// Empties the PC folder @p destination (asking first when it holds anything) and copies the player's content at
    /// @p deviceRoot into it, without its system parts. Returns false when refused, stopped or failed.
    bool backupSongs(const QString &deviceRoot, const QString &destination);
    /// Copies everything in the PC folder @p source onto the player and flushes it. Returns false when stopped or failed,
    /// also when the player is gone at the end.
    bool restoreSongs(const QString &source, const QString &deviceRoot);

    // procedures/diskformat.cpp
    /// What the user and the system made of a format.
    enum class FormatOutcome
    {
        Done,
        Refused,
        Failed
    };
    /// Asks, formats the volume at @p drive (the player's root path, with its closing slash) as exFAT labelled CORVIN4 and
    /// waits, without limit, until the player is found again. Returns whether the format command ran to its end;
    /// lastFormatOutcome tells a refusal from a failure.
    bool FormatCorvinDisk(const QString &drive);
    FormatOutcome lastFormatOutcome = FormatOutcome::Done;

    // procedures/filedownload.cpp
    /// Downloads @p url into the temporary "Corvin" folder while driving the window's bar; @p makeFolder empties that
    /// folder first. Returns the saved file's path, or an empty text when it has fewer than 10000 bytes.
    QString downloadFile(const QString &url, bool makeFolder);

    // procedures/extraction.cpp
    /// Unpacks @p archivePath into the folder it lies in and deletes it. Returns whether the tool could be started.
    bool unpackArchive(const QString &archivePath);

    // procedures/systemupdate.cpp
    /// Downloads the latest release and copies it onto the player; reports each failure by its numbered box. Returns true
    /// when the files were copied.
    bool updateSystem(bool showFinalMessage);

    // procedures/systemtransfer.cpp
    /// Replaces the system parts of the player at @p deviceRoot by those in @p unpackedFolder. Returns true once the batch
    /// file that hides them has been run.
    bool transferSystem(const QString &deviceRoot, const QString &unpackedFolder);

signals:
    /// STOP was pressed and confirmed: the pages that work on their own stop at their next test.
    void stopActionPressed();

public slots:
    // operationtexts.cpp
    /// The translated text of @p code, or "???" for a number that is none of the enumeration's.
    QString langDbInfo(LANGUAGE_STRING_CODE code);

    // mainwindow.cpp
    /// Makes the timer that looks for the player every 500 ms and starts it.
    void start_check_connection();

    // pageflow.cpp: each slot hides the page that is left and shows the one that is entered.
    void on_checkDone();
    void on_gotoTransfer();
    void on_gotoOptimizer();
    void on_gotoAvanzate();
    void on_backFromOttimizzaToFirstMenu();
    void on_backFromAvanzateToFirstMenu();
    void on_backFromTransferToFirstMenu();
    void on_backFromTransferToOttimizza();
    /// Shows the result page for @p code: 0 is success, any other number a failure.
    void on_backFromOttimizzaToEndOttimizza(int code);
    void on_backFromEndOttimizzaToFirstMenu();

    // progress.cpp: the contract that every reporting page relies on.
    /// Shows or hides progress bar, status line and STOP together; the bar goes back to 0 and "%p%", the line is empty.
    void on_setProgressBarVisible(bool visible);
    void on_setProgressBarMinVal(int value);
    void on_setProgressBarMaxVal(int value);
    /// @p format is QProgressBar's: "%p" percent, "%v" value, "%m" maximum.
    void on_setProgressBarFormat(const QString &format);
    void on_updateProgressBarVal(int value);
    void on_increaseProgressBarVal();
    /// Logs @p text and shows it in the status line, as plain text.
    void on_updateLabelAction(const QString &text);
    /// Shows or hides STOP alone.
    void on_setPushButtonStopVisible(bool visible);
    /// Asks whether to stop; on "Si" sets abortRequested, logs it and emits stopActionPressed().
    void on_pushButtonStop_clicked();
    /// Shows Qt's own "about" box.
    void on_pushButtonAboutQT_clicked();

protected:
    // mainwindow.cpp
    /// Refuses to close while the transfer waits for its "FINE".
    void closeEvent(QCloseEvent *event) override;
    /// Applies the texts again when the language has changed.
    void changeEvent(QEvent *event) override;

private slots:
    // mainwindow.cpp
    /// Moves on to the next language and stores it.
    void on_pButLang_clicked();
    /// One look for the player: shows the connection page, or stops the watch for good and starts the check.
    void check_connection();

    // The next six each run a whole maintenance procedure and return when it has ended.
    // procedures/systemupdate.cpp
    void updateCorvinWithLastRelease();
    // procedures/songbackup.cpp
    void makeSecurityCopyOfSongs();
    void restoreSecurityCopyOfSongs();
    // procedures/reinstall.cpp
    void reinstallOpSysOnly();
    void reinstallOpSysAndCleanSongs();
    void reinstallOpSysAndRestoreSongs();

private:
    // mainwindow.cpp
    void fitIntoScreen();
    void createPages();
    void applyStyle();

    // connections.cpp
    void connectPages();
    void connectCheck();
    void connectFirstMenu();
    void connectOttimizza();
    void connectAvanzate();
    void connectTransfer();
    void connectEndOttimizza();

    // procedures/songbackup.cpp
    bool emptyBackupFolder(const QString &deviceRoot, const QString &destination);
    bool listSongs(const QString &deviceRoot, QStringList &files);
    bool confirmManyFiles(int count);
    bool isStillConnected(const QString &deviceRoot) const;
    /// Flushes the player. Returns whether what was copied to @p deviceRoot is on its disk, and the disk still there.
    bool isOnPlayer(const QString &deviceRoot) const;
    void tellEndOfSongCopy(bool good);

    // procedures/operationwidgets.cpp
    void prepareOperation();
    void resetOperation();
    void showOperation(LANGUAGE_STRING_CODE code);
    bool findDeviceForOperation(QString &deviceRoot);

    // procedures/systemupdate.cpp
    bool copyUpdate(const QString &deviceRoot, const QString &archiveFolder);
    void finishUpdate(bool showFinalMessage);
    void tellDownloadError(int code);

    // procedures/reinstall.cpp
    void replaceSystem();
    void eraseAndReplaceSystem();
    void saveSongsAndReplaceSystem();
    bool confirmErasing();

    // procedures/reinstallsteps.cpp: each returns whether the procedure goes on.
    bool chooseBackupFolder(QString &backup);
    bool saveSongs(const QString &deviceRoot, const QString &backup);
    bool downloadSystem(QString &archive);
    bool unpackSystem(const QString &archive, QString &unpacked);
    bool formatDisk(QString &deviceRoot);
    bool installSystem(QString &deviceRoot, const QString &unpacked);
    bool bringSongsBack(const QString &backup, const QString &deviceRoot);
    bool findDeviceAgain(QString &deviceRoot);
    void finishReinstall(const QString &deviceRoot);
    void tell(QMessageBox::Icon icon, const QString &title, const QString &text);

    std::unique_ptr<Ui::MainWindow> ui;
    QTimer *connectionTimer = nullptr;
    DeviceLocator deviceLocator;
    /// The PC folder with the songs while they may be there alone: the boxes of a reinstall name it.
    QString keptBackup;
    // The pages: children of the form's framePage, alive as long as the window.
    Check *check = nullptr;
    Connect *connectPage = nullptr;
    FirstMenu *firstMenu = nullptr;
    Avanzate *avanzate = nullptr;
    Ottimizza *ottimizza = nullptr;
    EndOttimizza *endOttimizza = nullptr;
    Transfer *transfer = nullptr;
};
