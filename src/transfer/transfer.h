#pragma once

#include "droptally.h"

#include "device/player.h"

#include <QString>
#include <QStringList>
#include <QWidget>
#include <memory>

enum class CopyResult;
class FilteredVolume;
class QItemSelection;
class QModelIndex;

namespace Ui {
class Transfer;
}

/// The page on which the user copies songs to the player, by dragging them from the PC's file manager, and deletes
/// songs from it. It reports progress through its signals alone, which the main window wires to its own widgets.
///
/// Copying and deleting run on the GUI thread inside the drop event or the slot, and process events between files: that
/// is how STOP reaches the page meanwhile. The class is defined in chapters, named above each group of declarations.
/// Folders and files are absolute paths with forward slashes; the player's root alone ends with a slash.
class Transfer : public QWidget
{
    Q_OBJECT

public:
    // transfer.cpp
    /// Builds the page, hidden, with "FINE" disabled.
    explicit Transfer(QWidget *parent = nullptr);
    ~Transfer() override;

    /// Makes the page ready to be shown for the player at @p deviceRoot (absolute, closing slash; empty when there is
    /// no player): the instructions are shown and the player's root is the current folder.
    void prepare(const QString &deviceRoot);

    /// Whether "FINE" is enabled: something was transferred and the optimisation that belongs to it has not run yet.
    bool isFinishPending() const;
    /// Gives "FINE" the focus and brings it into sight where the page has to be scrolled. Does nothing while the page
    /// is not shown.
    void goToFinish();

    // transfercopy.cpp
    /// The number of files to copy for one dropped path: 1 for a file, for a folder all files below it, links left
    /// out; 0 for a path that does not exist, and for everything once aborted is set. Processes events.
    int countFiles(const QString &path);
    /// Copies the folder @p source with everything below it into the existing folder @p destination, sub-folders
    /// first. Links are copied as what they point to; one that leads to a folder around it, or around the
    /// destination, is passed over. Does nothing when aborted is set or the source does not exist.
    void copyFolder(const QString &source, const QString &destination);
    /// Copies one file and asks before it overwrites another. Emits increaseProgressBarVal() and processes events
    /// first, so that a file that is skipped counts too. One that fails is named when the drop ends.
    void copyOneFile(const QString &source, const QString &destination);

    bool busy = false;       ///< a copy or a deletion runs; every slot returns at once while it is set
    bool aborted = false;    ///< STOP was confirmed; the copy and the deletion poll it
    int overwriteAnswer = 0; ///< last answer to the overwrite question, a QMessageBox::StandardButton; 0: none yet
    QString deviceRoot;      ///< root of the player, absolute with a closing slash, or empty
    QString currentFolder;   ///< the folder shown in the table: where a drop goes to
    QString dropTarget;      ///< what a drop would make the current folder: the row under the cursor; or empty

public slots:
    // transfer.cpp
    /// Opens the PC's file manager and shows drop area, tree and table in place of the instructions, unless busy.
    void on_pButPc_clicked();
    /// Makes the clicked folder the current folder, unless busy.
    void on_treeView_clicked(const QModelIndex &index);
    /// Makes a double-clicked folder the current folder, unless busy.
    void on_tableView_doubleClicked(const QModelIndex &index);
    // transferdelete.cpp
    /// Deletes the rows selected in the table after a question, unless busy.
    void on_actionDeleteSelectedItems_triggered();
    // transfer.cpp
    /// Leaves for the first menu, unless busy.
    void on_pushBtnBack_clicked();
    /// "FINE": disables itself, leaves for the optimisation page and starts the optimisation, unless busy.
    void on_pushBtnForward_clicked();
    /// Sets aborted.
    void on_stopActionPressed();

signals:
    /// What bar, status line and STOP are to show; the window has a slot for each.
    void setProgressBarVisible(bool visible);
    void setProgressBarMinVal(int value);
    void setProgressBarMaxVal(int value);
    void setProgressBarFormat(QString format);
    void updateProgressBarVal(int value);
    void increaseProgressBarVal();
    void updateLabelAction(QString text);
    void setPushButtonStopVisible(bool visible);
    void backFromTransferToFirstMenu(); ///< INDIETRO was pressed
    void backFromTransferToOttimizza(); ///< "FINE" was pressed: the other page is to be seen
    void startOttimizzaProcedure();     ///< and its run is to start; emitted right after

protected:
    // transfer.cpp
    void changeEvent(QEvent *event) override;
    /// Gives the focus to the button that opens the PC's file manager.
    void showEvent(QShowEvent *event) override;
    // transferviews.cpp
    /// Shows as many columns of the table as have room beside the names, and gives the focus to "FINE" when it comes.
    bool eventFilter(QObject *watched, QEvent *event) override;
    // transferdrag.cpp
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    // transfercopy.cpp
    void dropEvent(QDropEvent *event) override;

private:
    // transfer.cpp
    void applyFonts();
    void setBrowsing(bool browsing);
    void showFolderText();
    static QString pathIn(const QString &folder, const QString &name);

    // transferviews.cpp
    void makeModels();
    void fitColumns();
    void deleteModels();
    void remakeModels();
    QString folderAt(FilteredVolume &volume, const QModelIndex &index) const;
    void enterFolder(const QString &folder);
    void showCurrentFolder();
    void showInTree();
    QStringList expandedFolders() const;
    void enterBusy();
    void leaveBusy();
    void showBusy(bool shown);
    bool isPlayerThere();
    void endWork();

    // transferdrag.cpp
    void setDropAreaHovered(bool hovered);
    void forgetDropTarget();
    bool isOver(const QWidget *widget, const QPoint &position) const;
    void aimAtRow(const QPoint &position);

    // transfercopy.cpp
    bool copyDropped(const QStringList &paths);
    void copyCounted(const QStringList &paths, int total);
    void takeDropTarget();
    int countAll(const QStringList &paths);
    void copyAll(const QStringList &paths);
    bool leadsIntoItself(const QString &source, const QString &destination) const;
    void copyFolderTo(const QString &source, const QString &destination);
    bool keepWindowAlive();
    CopyResult copyOver(const QString &source, const QString &destination);
    bool mayOverwrite(const QString &destination);
    void tellWhatIsMissing();

    // transferdelete.cpp
    QStringList selectedPaths() const;
    void deleteAll(const QStringList &paths);
    void deleteEntry(const QString &path);

    std::unique_ptr<Ui::Transfer> ui;
    std::unique_ptr<FilteredVolume> m_folders; ///< behind the tree, while the page is open
    std::unique_ptr<FilteredVolume> m_entries; ///< behind the table, while the page is open
    bool m_folderTextCleared = false;          ///< the folder label has lost its first text
    QString m_folderText;                      ///< what the folder label shows since
    Player m_player;                           ///< the one that the page is open for
    bool m_playerGone = false;                 ///< it went away during this copy or deletion
    DropTally m_tally;                         ///< of the running drop
    QStringList m_openFolders;                 ///< canonical paths of the folders being copied, outermost first
};
