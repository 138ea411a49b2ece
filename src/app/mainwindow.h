#pragma once

#include "device/devicelocator.h"
#include "procedures/operationtexts.h"

#include <QMainWindow>
#include <QString>
#include <QTimer>
#include <memory>

class Avanzate;
class Check;
class Connect;
class EndOttimizza;
class FirstMenu;
class MaintenanceJob;
class Ottimizza;
class PacedBar;
class QProgressBar;
class Transfer;
struct JobEnd;

namespace Ui {
class MainWindow;
}

/// The program's only top-level window. It owns every page and moves between them, carries the progress bar, the status
/// line and the STOP button that all long work drives through signals, watches for the player until it is connected,
/// and starts the maintenance procedures, which are jobs of their own.
///
/// Long work runs inside a slot on the GUI thread and keeps the window alive by processing events; that is how STOP is
/// pressed meanwhile. The class is defined in chapters, named above each group of declarations.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Builds the window where it was left the last time, with all pages hidden, and starts the watch for the player.
    /// Needs an application object, the resources, the settings and the language. The window is neither shown nor
    /// modal.
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    /// The height in pixels at which a window that wants @p wanted opens on a screen whose work area is @p available
    /// pixels high: as it is, or 50 pixels less than the work area when it is higher than that. The width follows the
    /// same rule.
    static int openingHeight(int wanted, int available);

    /// STOP was pressed and confirmed. Cleared when a maintenance job starts, which polls it between its steps.
    bool abortRequested = false;
    /// The window was asked to close while a job ran: the job ends as after STOP, and then the window closes.
    bool closeRequested = false;
    /// Set when a maintenance job starts; cleared at the end of one that could not make a folder, or whose new system
    /// is not whole. For outsiders: the jobs themselves never read it.
    bool procedureOk = true;

    // maintenance.cpp. Each of these runs one job of the maintenance procedures alone, as they do, and returns at its
    // end.
    /// Copies files one by one: each of @p sources (absolute paths, forward slashes) goes to @p destinationRoot
    /// followed by what is left of the source path behind as many characters as @p sourceRoot has. Missing folders are
    /// made. Asks before replacing and after a failed copy, drives @p bar and processes events after every file.
    /// Returns the outcome of the last file, false at once after a stop, a refused question or a folder that could not
    /// be made; the latter also clears procedureOk.
    bool copyFileList(const QStringList &sources, const QString &destinationRoot, const QString &sourceRoot,
                      QProgressBar *bar);
    /// Asks, formats the volume at @p drive (the player's root path, with its closing slash) as exFAT with the player's
    /// label and waits, without limit, until the player is found again. Returns whether the format command ran to its
    /// end.
    bool FormatCorvinDisk(const QString &drive);
    /// Downloads @p url into the temporary "Corvin" folder while driving the window's bar; @p makeFolder empties that
    /// folder first. Returns the saved file's path, or an empty text when it has fewer than 10000 bytes.
    QString downloadFile(const QString &url, bool makeFolder);

signals:
    /// STOP was pressed and confirmed: the pages that work on their own stop at their next test.
    void stopActionPressed();

public slots:
    // mainwindow.cpp
    /// The translated text of @p code, or "???" for a number that is none of the enumeration's.
    QString langDbInfo(LANGUAGE_STRING_CODE code);
    /// Makes the timer that looks for the player every 500 ms and starts it.
    void start_check_connection();

    /// In pageflow.cpp. Hides the page that is left and shows the one that is entered.
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
    void on_backFromEndOttimizzaToFirstMenu(); ///< hides the one page and shows the other

    // progress.cpp: the contract that every reporting page relies on.
    /// Shows or hides progress bar, status line and STOP together; the bar goes back to 0 and "%p%", the line is empty.
    void on_setProgressBarVisible(bool visible);
    void on_setProgressBarMinVal(int value); ///< the bar's lower end
    void on_setProgressBarMaxVal(int value); ///< the bar's upper end; 0 and 0 make it busy
    /// @p format is QProgressBar's: "%p" percent, "%v" value, "%m" maximum.
    void on_setProgressBarFormat(const QString &format);
    void on_updateProgressBarVal(int value); ///< painted at most every 40 ms
    void on_increaseProgressBarVal();        ///< by one, painted as often
    /// Logs @p text and shows it in the status line, as plain text.
    void on_updateLabelAction(const QString &text);
    /// Shows or hides STOP alone.
    void on_setPushButtonStopVisible(bool visible);
    /// Asks whether to stop; on "Si" sets abortRequested, logs it and emits stopActionPressed().
    void on_pushButtonStop_clicked();
    /// Shows Qt's own "about" box.
    void on_pushButtonAboutQT_clicked();

protected:
    // closing.cpp
    /// Refuses to close while the transfer waits for its "FINE". While something works the closing counts as a
    /// confirmed STOP, and the window closes by itself as soon as all work has ended.
    void closeEvent(QCloseEvent *event) override;
    // mainwindow.cpp
    /// Applies the texts again when the language has changed.
    void changeEvent(QEvent *event) override;
    /// Keeps what has the focus in sight when the place of the pages becomes smaller.
    bool eventFilter(QObject *watched, QEvent *event) override;
    /// Notes where the window stood when it closed.
    void hideEvent(QHideEvent *event) override;

private slots:
    // mainwindow.cpp
    /// Moves on to the next language and stores it.
    void on_pButLang_clicked();
    /// One look for the player: shows the connection page, or stops the watch for good and starts the check.
    void check_connection();

    // maintenance.cpp: the next six each run a whole maintenance procedure and return when it has ended. While one
    // runs, another does not start.
    void updateCorvinWithLastRelease();
    void makeSecurityCopyOfSongs();
    void restoreSecurityCopyOfSongs();
    void reinstallOpSysOnly();
    void reinstallOpSysAndCleanSongs();
    void reinstallOpSysAndRestoreSongs();

private:
    // mainwindow.cpp
    void fitIntoScreen();
    void createPages();
    void applyStyle();
    void followLanguage(const QString &language);

    // closing.cpp
    bool isWorking() const;
    void askToClose();
    void endWork();
    void closeOnceIdle();

    // connections.cpp
    void connectPages();
    void connectCheck();
    void connectFirstMenu();
    void connectOttimizza();
    void connectAvanzate();
    void connectTransfer();

    // maintenance.cpp
    template <class Job, class... Arguments> void startJob(Arguments... arguments);
    void runJob(MaintenanceJob &job);
    bool noteEnd(const JobEnd &end);

    std::unique_ptr<Ui::MainWindow> ui;
    std::unique_ptr<PacedBar> m_pacedBar; ///< the form's bar
    QTimer *m_connectionTimer = nullptr;
    DeviceLocator m_deviceLocator;
    QTimer m_closeTimer; ///< runs from a close that had to wait to the close itself
    bool m_jobRunning = false;
    bool m_checkRunning = false;
    // The pages: children of the form's framePage, alive as long as the window.
    Check *m_check = nullptr;
    Connect *m_connectPage = nullptr;
    FirstMenu *m_firstMenu = nullptr;
    Avanzate *m_avanzate = nullptr;
    Ottimizza *m_ottimizza = nullptr;
    EndOttimizza *m_endOttimizza = nullptr;
    Transfer *m_transfer = nullptr;
};
