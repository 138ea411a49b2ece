#pragma once

#include <QDir>
#include <QFileInfo>
#include <QList>
#include <QMap>
#include <QMultiMap>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>
#include <optional>

class QTextStream;
struct SplitFolder;

namespace Ui {
class Ottimizza;
}

/// The page on which the user chooses what to tidy on the player's disk, and the run that does it.
///
/// A run works on the GUI thread and keeps the window alive by processing events between files; the window's STOP
/// reaches it through on_stopActionPressed(). All paths are PC paths: absolute, with forward slashes, beginning with
/// rootPath. Failures of single file operations are not reported; what fails stays as it is.
class Ottimizza : public QWidget
{
    Q_OBJECT

public:
    /// Builds the page, hidden, with all operations chosen.
    explicit Ottimizza(QWidget *parent = nullptr);
    ~Ottimizza() override;

    /// Why a run did not do its work, as the result page is told.
    enum FailCode : int
    {
        Success = 0,
        DeviceNotFound = 1,
        ImportFileNotCreated = 2,
    };

    // What a run works on. The lists are filled by scan_directories() and hold until the next scan empties them.

    QString rootPath;                  ///< canonical root of the player's volume with a closing slash; empty: none
    QList<QFileInfo> imageFiles;       ///< pictures outside "Images"
    QList<QFileInfo> videoFiles;       ///< videos outside "Videos"
    QList<QFileInfo> unsupportedFiles; ///< files that the player cannot use
    QList<QFileInfo> bigFolders;       ///< folders of more than bigFolderThreshold counted files, longest path first
    QDir workDir;                      ///< working directory object of the steps
    const QStringList songNameFilters; ///< "*.mp3" and so on, in the order of songSuffixes
    const QStringList songSuffixes;    ///< lower case; the position is the song's format index
    const QMap<QString, int> suffixFormatIndex; ///< each of songSuffixes with its position
    const QStringList imageSuffixes;            ///< of pictures, lower case
    const QStringList videoSuffixes;            ///< of videos, lower case
    const QStringList companionSuffixes;        ///< of files that belong to the song with the same base name
    /// PC path of a song -> absolute path of a playlist that names it, one entry a mention. Describes the playlists as
    /// they were at the scan: moving files does not change it.
    QMultiMap<QString, QString> playlistIndex;
    const int bigFolderThreshold = 1000;  ///< a folder of more counted files than this is split
    const int maxFilesPerSubfolder = 900; ///< a sub-folder of as many files gets no more

    bool abortRequested = false; ///< the page's stop flag; clear whenever the page is shown
    int failCode = Success;      ///< FailCode of the running or last run
    bool optDelete = true;       ///< run delete_files()
    bool optMove = true;         ///< run move_images() and move_videos()
    bool optSplit = true;        ///< run corvin_optimizer()

    /// Whether a run is working now.
    bool isRunning() const { return m_running; }

    // Chapter directoryscan.cpp

    /// Reads the playlists, moves the loose files of the root into "My Songs", classifies every file of the disk and
    /// finds the big folders. A stop leaves the lists partly filled and bigFolders empty.
    void scan_directories();
    /// In the playlist @p playlistPath, lets every mention of the song at @p oldPath name @p newPath (both PC paths).
    /// Returns false when the playlist could not be read or written whole; it is then as it was.
    bool rewritePlaylist(const QString &playlistPath, const QString &oldPath, const QString &newPath) const;

    // Chapter unsupportedfiles.cpp

    /// Deletes unsupportedFiles in their order, each after a copy of it was made on the PC, where that can be. A stop
    /// leaves the rest in place.
    void delete_files();

    // Chapter mediamove.cpp

    /// Moves imageFiles into the folder "Images" of the root. A stop leaves the rest in place.
    void move_images();
    /// Moves videoFiles into the folder "Videos" of the root. A stop leaves the rest in place.
    void move_videos();

    // Chapter foldersplitting.cpp

    /// Spreads the songs of each of bigFolders over sub-folders named after the initials of their titles. A stop is
    /// honoured between two folders, never inside one, and is used up: abortRequested is clear afterwards. A folder for
    /// which the disk has no room, or which may not be written to, stays as it is. What finds no place in a sub-folder
    /// stays in the folder; what is neither song, picture nor video is copied to the PC and deleted.
    /// Deliberate: playlists are not told where the songs have gone.
    void corvin_optimizer();

    // Chapter songdatabase.cpp

    /// Looks the player up afresh, repairs names that it cannot handle, moves files that are no songs to the PC, and
    /// writes the difference between the disk and the player's database as "CorvinImportDB.sql" into the root. Clears
    /// abortRequested when it starts; sets failCode when there is no player or no file could be written.
    void createDiffDatabaseImportFile();

signals:
    void setProgressBarVisible(bool visible);           ///< with status line and STOP
    void setProgressBarMinVal(int val);                 ///< the bar's lower end
    void setProgressBarMaxVal(int val);                 ///< 0 together with a minimum of 0: a busy bar
    void setProgressBarFormat(QString format);          ///< as QProgressBar takes it, "%p%"
    void updateProgressBarVal(int step);                ///< between the minimum and the maximum
    void updateLabelAction(QString text);               ///< a text for the status line
    void backFromOttimizzaToFirstMenu();                ///< INDIETRO was pressed
    void backFromOttimizzaToEndOttimizza(int failCode); ///< the run is over; not emitted after a mere stop
    void filesKept(QString folder); ///< the run has copied files to this folder of the PC; before the end of the run

public slots:
    /// STOP was pressed: the running step ends at its next test.
    void on_stopActionPressed();
    /// The window is to be closed: a running run ends at its next test, whatever steps would forget a stop. Does
    /// nothing between runs.
    void on_closeRequested();
    /// Runs the chosen operations in their fixed order, with the page's controls disabled meanwhile. Returns when all
    /// is done; a call while a run is working does nothing.
    void startAllOptimization();
    /// Chooses all operations, and lets the user change that only when @p checked is false.
    void on_Check_Optimize_clicked(bool checked);
    void on_Check_Delete_clicked(bool checked); ///< sets optDelete
    void on_Check_Move_clicked(bool checked);   ///< sets optMove
    void on_Check_Split_clicked(bool checked);  ///< sets optSplit
    /// OTTIMIZZA: forgets an earlier stop and runs the chosen operations.
    void on_Btn_Opt_Ok_clicked();
    /// INDIETRO: emits backFromOttimizzaToFirstMenu().
    void on_pushBtnBack_clicked();

protected:
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    struct FolderPlace;
    struct MediaMove;
    struct Run;
    struct SplitRun;

    // Chapter ottimizza.cpp
    void applyStyle();
    void setOptionBoxesEnabled(bool enabled);
    void setControlsEnabled(bool enabled);
    void runChosenSteps();
    void finishRun();
    bool matchesSongFilter(const QString &fileName) const;

    // Chapter ottimizzarun.cpp
    Run &run();
    bool isPlayerThere();
    bool keepOnPc(const QString &path, bool isSong);

    // Chapter killedsplits.cpp
    void makeGoodKilledSplits();
    void bringCompanionsBack(const SplitFolder &split);

    // Chapter directoryscan.cpp
    void mapPlaylists();
    bool moveRootFiles();
    bool rewritePlaylists(const QString &song, const QString &oldPath, const QString &newPath) const;
    std::optional<QStringList> listRootFiles() const;
    bool belongsInRoot(const QString &path) const;
    bool classifyFiles(QMap<QString, int> &folderFileCount);
    FolderPlace placeOf(const QString &folder) const;
    bool classifyFile(const QFileInfo &file, FolderPlace &place, QMap<QString, int> &folderFileCount);
    void findBigFolders(const QMap<QString, int> &folderFileCount);

    // Chapter mediamove.cpp
    void moveMedia(const MediaMove &step);
    void moveMediaFile(const QFileInfo &file, const QString &targetFolder) const;

    // Chapter foldersplitting.cpp
    void splitFolder(const QString &folder, const QString &header);
    bool splitEntries(SplitRun &run);
    void listEntries(SplitRun &run) const;
    void readTitles(SplitRun &run);
    bool moveIntoSubfolders(SplitRun &run);
    bool moveSong(SplitRun &run, const QString &title, const QFileInfo &song) const;
    void chooseSubfolder(SplitRun &run, QChar initial) const;

    // Chapter splitedges.cpp: before a folder is split and after it
    bool canBeSplit(SplitRun &run);
    bool setAside(const SplitRun &run);
    bool hasRoomForTitles(const SplitRun &run) const;
    bool bringBack(const SplitRun &run);
    QStringList listRest(const SplitRun &run) const;
    void takeAwayRest(const SplitRun &run, const QStringList &rest);

    // Chapter songdatabase.cpp
    QStringList readDatabaseSongs() const;
    std::optional<QStringList> collectDiskSongs();
    std::optional<QStringList> listSongFiles() const;
    bool isOutsideDatabase(const QString &path) const;
    void writeImportFile(const QStringList &dbSongs, const QStringList &diskSongs);
    bool writeStatements(QTextStream &stream, const QStringList &dbSongs, const QStringList &diskSongs);
    bool writeInsert(QTextStream &stream, const QString &path);
    bool removeInvalidSong(const QString &path);
    void reportImportFileNotCreated();

    std::unique_ptr<Ui::Ottimizza> ui;
    std::unique_ptr<Run> m_run; ///< see run()
    bool m_running = false;
    bool m_closing = false; ///< the window is to be closed: unlike abortRequested no step clears this
};
