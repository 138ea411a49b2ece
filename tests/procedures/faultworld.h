#pragma once

#include "systemfixture.h"

class WorkLock;

/// One of the kinds of work that the program does on a player.
enum class Work
{
    Optimise,
    Update,
    Reinstall,
    ReinstallErasing,
    ReinstallRestoring,
    BackUp,
    Restore,
    Transfer
};

/// Whether all work can be tried on this machine: it needs real volumes. When not, @p why says what is missing.
bool canTryFaults(QString *why);

/// What the work is done on. Made before the PC's temporary folder, which lies on a small disk of its own, so that it
/// can be filled.
struct FaultDisks
{
    FaultDisks();

    std::unique_ptr<ExFatVolume> volume;
    PcFolder own;    ///< the user's files on the PC
    PcFolder pcDisk; ///< everything temporary
    const FolderMount mount{pcDisk.path(), 64000};
    const Environment temporary{"TMPDIR", QFile::encodeName(pcDisk.path())};
};

/// A player with a whole repertoire on a real exFAT volume, a PC with files of its own, and a user who always goes on:
/// everything that one piece of work meets, and afterwards the question whether anything was lost.
class FaultWorld : public FaultDisks, public Maintenance
{
public:
    explicit FaultWorld(Work workToDo);
    ~FaultWorld();

    /// Does the whole work, from the click to the last box.
    void doWork();
    /// Does something once, when the status line begins with a text and the bar counts at least @p value. Fails the
    /// test when that moment does not come.
    void when(const QString &status, int value, const std::function<void()> &action);
    /// As when(), but the moment need not come.
    void whenever(const QString &status, int value, const std::function<void()> &action);
    void pull() { wasPulled = volume->pull(); }
    void pushIn() { volume->mount(); }
    /// Leaves so many bytes free on the player.
    void fillPlayer(qint64 bytesFree);
    /// Leaves so much room in the folder that the PC downloads to and backs up to.
    void fillPc(int kilobytes);
    /// The update or the system is delivered up to this percentage, then the line is cut, as often as it is asked for.
    void cut(const QString &path, int percent);
    /// The extraction tool unpacks all, takes half of it away again and says that it failed.
    void halveTool();
    /// The format command says that it may not, and touches nothing.
    void refuseFormat();
    /// Holds the lock that another window of the program holds while it works.
    void workElsewhere();

    /// Fails the test for each thing that is lost: a file of the user's (by content) that is neither on the player nor
    /// in a folder that a box or the result page has named; a file of the PC's own that changed; something written
    /// where the player was mounted; a player's system that is neither the old nor the new one, whole, without a box
    /// that says so; half an update; a window that does not rest.
    void expectNothingLost();

    bool wasPulled = false;

private:
    void drop();
    QSet<QByteArray> contentsThatRemain() const;
    QStringList namedFolders() const;
    QString allBoxTexts() const;
    void expectSystem() const;
    void expectContents() const;

    const Work m_work;
    QMap<QString, QByteArray> m_ownBefore;
    QMap<QString, QByteArray> m_backupBefore;
    QSet<QByteArray> m_userContents;
    QMap<QString, QSet<QByteArray>> m_replaced; ///< path on the player -> the old content and the new
    QString m_mountPoint;
    std::unique_ptr<QObject> m_moments;
    int m_pendingMoments = 0;
    std::unique_ptr<WorkLock> m_elsewhere;
    const Environment m_path{"PATH", qgetenv("PATH")};
};
