#pragma once

#include "support/exfatvolume.h"
#include "support/programfolder.h"

#include <QByteArray>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>
#include <memory>

class MainWindow;
class QFileDialog;
class QLabel;
class QProgressBar;
class QPushButton;

/// Entries of an archive: name inside it (forward slashes, a closing one for a folder) and content.
using Entries = QMap<QString, QByteArray>;

/// The entries as a zip of at least @p leastBytes bytes; what is missing goes into an entry "filler.bin" in @p fillerIn.
QByteArray zipOf(const Entries &entries, const QString &fillerIn = QString(), int leastBytes = 0);

/// Bytes that do not repeat, the same in every run.
QByteArray noise(int size);

/// All files below @p folder, hidden ones too, sorted, relative to it. The volume's stand-in label file is left out.
QStringList filesBelow(const QString &folder);
QByteArray contentOf(const QString &path);
/// Runs a program to its end. Returns whether it ended well.
bool runProgram(const QString &program, const QStringList &arguments);

/// Every file and folder below @p folder, hidden ones too, relative to it and sorted.
QStringList entriesBelow(const QString &folder);
/// Writes a file and its folders; fails the running test when it cannot.
void putFile(const QString &path, const QByteArray &content = QByteArrayLiteral("x"));

/// A temporary folder of its own for the PC: while it lives, everything temporary lands below it, and so does the
/// download folder.
class TemporaryPc
{
public:
    TemporaryPc();
    ~TemporaryPc();
    QString path(const QString &relative) const { return m_dir.filePath(relative); }
    QString downloads() const { return path(QStringLiteral("Corvin")); }

private:
    QTemporaryDir m_dir;
    QByteArray m_before;
};

/// Makes the project's own extraction tool, or the one at @p program, the one that the program finds.
void addUnar(ProgramFolder &programs, const QString &program = QStringLiteral(UNAR_PROGRAM));

/// The player on a real exFAT volume, found by the program as a volume with the player's label.
class MountedPlayer
{
public:
    explicit MountedPlayer(int megabytes = 64);
    ~MountedPlayer();
    bool isMounted() const { return volume->isMounted(); }
    QString root() const { return volume->root(); }
    QString path(const QString &relative) const { return volume->path(relative); }
    QStringList files() const { return filesBelow(root()); }

    std::unique_ptr<ExFatVolume> volume;
};

/// Something mounted on a folder for as long as this lives. Needs root: test isGood().
class Mount
{
public:
    /// A memory disk of this many kilobytes.
    Mount(const QString &folder, int kilobytes);
    /// The folder itself, from now on read-only.
    explicit Mount(const QString &folder);
    ~Mount();
    Mount(const Mount &) = delete;
    Mount &operator=(const Mount &) = delete;
    bool isGood() const { return m_mounted && m_good; }

private:
    QString m_folder;
    bool m_mounted;
    bool m_good = true;
};

/// The main window as the procedures need it, without its watch for the player.
class ProcedureWindow
{
public:
    ProcedureWindow();
    ~ProcedureWindow();
    MainWindow *operator->() const { return window.get(); }
    /// Runs a slot by its name, as the signal of a page does.
    void run(const char *slot) const;
    QLabel *label() const;
    QProgressBar *bar() const;
    QPushButton *stop() const;
    QString status() const;
    bool isAtRest() const;

    std::unique_ptr<MainWindow> window;
};

/// Presses STOP once, as soon as the procedure processes events while a moment holds.
class StopPresser : public QObject
{
public:
    StopPresser(const ProcedureWindow &window, const std::function<bool()> &moment);
    /// The moment is when the status line shows a text and a condition holds.
    StopPresser(const ProcedureWindow &window, const QString &statusText, const std::function<bool()> &condition = {});
    bool pressed = false;

private:
    QTimer m_timer;
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
