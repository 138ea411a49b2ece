#pragma once

#include "support/files.h"
#include "support/mountedplayer.h"
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

/// One job in the window's own widgets, as the procedures run it.
bool transferSystem(const ProcedureWindow &window, const QString &root, const QString &unpacked);
bool unpackArchive(const ProcedureWindow &window, const QString &archive);
bool updateSystem(const ProcedureWindow &window, bool showFinalMessage);

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
