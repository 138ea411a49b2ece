#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// What a stand-in for a program can do: each makes one line for ProgramFolder::addStandIn(). Files are given by their
/// full path.
namespace Does {

/// Adds the arguments it was given to a file, one a line; whoever waits for the file finds it complete.
QString record(const QString &file);
/// Writes its working folder into a file, one line with forward slashes.
QString recordFolder(const QString &file);
/// Writes a line to the standard output.
QString print(const QString &text);
/// Writes a line to the standard error output.
QString complain(const QString &text);
/// Makes an empty file.
QString make(const QString &file);
/// Empties the folder or drive that its argument of this number names, counted from 1; the label file stays.
QString emptyArgument(int number);
/// Goes on when the file is there.
QString waitFor(const QString &file);
/// Only ends when it is stopped.
QString waitForever();
/// Reads its standard input to the end. When anything comes, it ends with exit code 1.
QString readInput();
/// Ends with this exit code.
QString exitWith(int code);
/// Ends as one that was killed.
QString die();

} // namespace Does

/// Programs of the test's own, which the product finds before the system's while this lives: in a folder that comes
/// first in the PATH. On Windows that folder is the test program's own, where Windows looks even before that, and where
/// the product looks for what is shipped with it; names without ".exe" get it there.
class ProgramFolder
{
public:
    ProgramFolder();
    /// Takes the programs away again, as soon as they have ended.
    ~ProgramFolder();
    ProgramFolder(const ProgramFolder &) = delete;
    ProgramFolder &operator=(const ProgramFolder &) = delete;

    /// A program that does this, in this order, and then ends well. Each of these calls replaces what has the name.
    void addStandIn(const QString &name, const QStringList &does = {});
    /// A copy of another program.
    void addCopy(const QString &name, const QString &program);
    /// A shell script with these lines: for what only Linux has.
    void addScript(const QString &name, const QByteArray &lines);
    /// Something that is found and cannot be started.
    void addBroken(const QString &name);
    void remove(const QString &name);

    /// From now on the PATH holds this folder and nothing else.
    void hideOthers();
    /// Where a program of this name is, or would be. With forward slashes.
    QString path(const QString &name) const;

private:
    QString folder() const;
    void addFile(const QString &name, const QByteArray &content);

    QTemporaryDir m_dir;
    QStringList m_names;
    QByteArray m_before;
};
