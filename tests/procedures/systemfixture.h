#pragma once

#include "app/mainwindow.h"
#include "disk/datafolder.h"
#include "procedures/updateserver.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"
#include "support/files.h"
#include "support/httpserver.h"
#include "support/logcapture.h"
#include "support/mountedplayer.h"
#include "support/pagetest.h"
#include "support/platform.h"
#include "support/programfolder.h"
#include "support/simulatedplayer.h"

/// Skips the rest of a test on a machine that lacks something.
#define NEEDS(condition, why)                                                                                          \
    do {                                                                                                               \
        if (!(condition))                                                                                              \
            QSKIP(why);                                                                                                \
    } while (false)

/// A local MountedPlayer of this name; skips the rest of a test on a machine where no real volume can be made.
#define MOUNT_PLAYER(name, megabytes)                                                                                  \
    QString whyNo##name;                                                                                               \
    NEEDS(ExFatVolume::isPossible(&whyNo##name), qPrintable(whyNo##name));                                             \
    const MountedPlayer name(megabytes);                                                                               \
    QVERIFY2((name).isMounted(), qPrintable((name).volume->error()))

/// Longer than anything takes that is not waited for.
inline constexpr int kLongWaitMs = 30000;
/// The fewest bytes that count as a release.
inline constexpr int kLeastRelease = 10000;

/// The slots of the main window that run a procedure.
namespace Slots {
inline constexpr char kUpdate[] = "updateCorvinWithLastRelease";
inline constexpr char kBackUp[] = "makeSecurityCopyOfSongs";
inline constexpr char kRestore[] = "restoreSecurityCopyOfSongs";
inline constexpr char kReinstall[] = "reinstallOpSysOnly";
inline constexpr char kReinstallClean[] = "reinstallOpSysAndCleanSongs";
inline constexpr char kReinstallRestoring[] = "reinstallOpSysAndRestoreSongs";
} // namespace Slots

/// Entries of an archive: name inside it (forward slashes, a closing one for a folder) and content.
using Entries = QMap<QString, QByteArray>;

/// The entries as a zip of at least @p leastBytes bytes; what is missing goes into an entry "filler.bin" in the folder
/// @p fillerIn.
QByteArray zipOf(const Entries &entries, const QString &fillerIn = QString(), int leastBytes = 0);

/// Bytes that do not repeat, the same in every run.
QByteArray noise(int size);

/// An environment variable with another value while this lives.
class Environment
{
public:
    Environment(const char *name, const QByteArray &value) : m_name(name), m_before(qgetenv(name)) {
        qputenv(name, value);
    }
    ~Environment() { m_before.isNull() ? qunsetenv(m_name) : qputenv(m_name, m_before); }
    Q_DISABLE_COPY(Environment)

private:
    const char *m_name;
    QByteArray m_before;
};

/// A temporary folder of its own for the PC: while it lives, everything temporary lands below it, and so does the
/// download folder.
class TemporaryPc : public PcFolder
{
public:
    /// What was downloaded under this name, or the folder of all downloads.
    QString downloads(const QString &name = QString()) const { return QDir(path("Corvin"_s)).filePath(name); }

private:
#ifdef Q_OS_WIN
    const Environment m_temporary{"TMP", QFile::encodeName(QDir::toNativeSeparators(path()))};
#else
    const Environment m_temporary{"TMPDIR", QFile::encodeName(path())};
#endif
};

/// Makes the project's own extraction tool, or the one at @p program, the one that the program finds.
void addUnar(ProgramFolder &programs, const QString &program = QStringLiteral(UNAR_PROGRAM));

/// The main window as the procedures need it, without its watch for the player.
class ProcedureWindow
{
public:
    ProcedureWindow();
    MainWindow *operator->() const { return window.get(); }
    /// Runs a slot by its name, as the signal of a page does.
    void run(const char *slot) const;
    QLabel *label() const { return child<QLabel>(*window, "labelAction"); }
    QProgressBar *bar() const { return child<QProgressBar>(*window, "progressBar"); }
    QPushButton *stop() const { return child<QPushButton>(*window, "pushButtonStop"); }
    QString status() const { return label()->text(); }
    bool isAtRest() const;

    std::unique_ptr<MainWindow> window;
};

/// Unpacks an archive into its folder as the procedures do. Returns whether the tool could be started.
bool unpackArchive(const ProcedureWindow &window, const QString &archive);
/// Replaces the player's system as the procedures do. Returns whether they would go on.
bool transferSystem(const ProcedureWindow &window, const QString &deviceRoot, const QString &unpacked);

/// Presses STOP once, as soon as the procedure processes events while the status line shows a text (any, when empty)
/// and a condition holds; fails the test when that never comes.
class StopPresser : public QObject
{
public:
    StopPresser(const ProcedureWindow &window, const QString &status, const std::function<bool()> &condition = {});
    ~StopPresser() override {
        if (!m_pressed)
            failTest("The moment to press STOP never came"_s);
    }

private:
    QTimer m_timer;
    bool m_pressed = false;
};

/// Answers every folder choice as a user does, by typing a path; an empty path is the "Cancel" button.
class FolderDialogAnswerer : public QObject
{
public:
    explicit FolderDialogAnswerer(const QString &path);
    /// The captions of the dialogs that came, in order.
    const QStringList &captions() const { return m_captions; }
    /// Called with each dialog before it is answered.
    std::function<void(QFileDialog *)> whenShown;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void answer(QFileDialog *dialog);

    QString m_path;
    QStringList m_captions;
};

/// How a box that will come is answered: with the button of a text, or by "enter", "escape" or "close"; when nothing is
/// said, with the button by which the procedure goes on.
struct Answer
{
    Answer(const QString &boxTitle = QString(), const QString &answeredHow = QString())
        : title(boxTitle), how(answeredHow) {}
    QString title;
    QString how;
};
Q_DECLARE_METATYPE(Answer)
void announce(BoxAnswerer &boxes, const QList<Answer> &answers);

/// A box had this icon and text and these buttons, given in the order of the alphabet.
void expectLook(const BoxAnswerer::Seen &box, QMessageBox::Icon icon, const QString &text,
                const QStringList &buttons = {Buttons::kOk});

/// What the status line has shown, in order.
QStringList statusTexts(const LogCapture &log);

/// All that a maintenance procedure meets: the PC's temporary folder, the extraction tool, an update server with a
/// system and an update, an empty player, the window, and a user who answers its boxes.
class Maintenance
{
public:
    Maintenance();

    void serveUpdate(const Entries &entries) {
        server.serve(kUpdateArchivePath, zipOf(entries, "CorvinUpdate/"_s, kLeastRelease));
    }
    /// The system's parts, each file "new", and what else is given.
    void serveSystem(Entries entries = {});
    /// Serves an archive with a fault: "cut" or of "unknown" length at this percentage, under a "length" of this
    /// percentage, or whole for a "tool" that ends with this number; whole for any other word.
    void serveSpoilt(const QString &path, const QByteArray &archive, const QString &fault, int number);
    /// No extraction tool is found.
    void hideTool() {
        programs.remove("unar"_s);
        programs.hideOthers();
    }
    /// Unpacking only ends when it is stopped.
    void useSlowTool() { programs.addStandIn("unar"_s, {Does::waitForever()}); }

    /// Runs a procedure while these boxes come and no others, in this order. With @p folder that folder is chosen once
    /// (an empty one cancels), without it no choice is offered. Each box of a title that always has the same text has
    /// it, and afterwards the window is at rest.
    void run(const char *slot, const QList<Answer> &answers = {}, const std::optional<QString> &folder = {});
    /// The same with the folder for a backup where the procedure asks for one, answering each box so that it goes on.
    void runThrough(const QByteArray &slot, const QStringList &titles);
    void backUp(const QList<Answer> &answers) { run(Slots::kBackUp, answers, backup); }
    void restore(const QList<Answer> &answers) { run(Slots::kRestore, answers, backup); }
    /// The cable of a player is pulled when a status is shown and the bar counts this many files.
    void pullAt(const MountedPlayer &mounted, const QString &status, int count);
    /// The one folder on the PC that the program keeps what it has taken off the player in.
    QString keptFolder() const;
    BoxAnswerer::Seen firstBox() const { return boxes.seen().value(0); }
    BoxAnswerer::Seen lastBox() const { return boxes.seen().value(boxes.seen().size() - 1); }

    /// From now on the download folder is a disk of this many kilobytes. False where none can be mounted.
    bool fillUpAfter(int kilobytes) { return fullPc.emplace(pc.addFolder("Corvin"_s), kilobytes).isGood(); }

    TemporaryPc pc;
    const PcFolder data; ///< the program's own folder on the PC
    std::optional<FolderMount> fullPc;
    const QString backup = pc.addFolder("backup"_s); ///< an empty folder of the PC
    ProgramFolder programs;
    HttpServer server;
    const Environment address{"CORVIN_UPDATE_SERVER", server.address().toLatin1()};
    SimulatedPlayer player;
    ProcedureWindow window;
    BoxAnswerer boxes;
    bool pulled = false; ///< pullAt() did it
};
