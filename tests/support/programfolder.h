#pragma once

#include "testing.h"

/// What a stand-in for a program can do: each makes one line for ProgramFolder::addStandIn(). Files are given by their
/// full path.
struct Does
{
    /// Adds the arguments it was given to a file, one a line; whoever waits for the file finds it complete.
    static QString record(const QString &file) { return "record "_s + file; }
    /// Writes its working folder into a file, one line with forward slashes.
    static QString recordFolder(const QString &file) { return "record-folder "_s + file; }
    /// Writes a line to the standard output.
    static QString print(const QString &text) { return "print "_s + text; }
    /// Writes a line to the standard error output.
    static QString complain(const QString &text) { return "complain "_s + text; }
    /// Makes an empty file.
    static QString make(const QString &file) { return "make "_s + file; }
    /// Empties the folder or drive that its argument of this number names, counted from 1; the label file stays.
    static QString emptyArgument(int number) { return "empty %1"_s.arg(number); }
    /// Goes on when the file is there.
    static QString waitFor(const QString &file) { return "wait-for "_s + file; }
    /// Only ends when it is stopped.
    static QString waitForever() { return "wait-forever"_s; }
    /// Reads its standard input to the end. When anything comes, it ends with exit code 1.
    static QString readInput() { return "read-input"_s; }
    /// Ends with this exit code.
    static QString exitWith(int code) { return "exit %1"_s.arg(code); }
    /// Ends as one that was killed.
    static QString die() { return "die"_s; }
};

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
    void addScript(const QString &name, const QByteArray &lines) { addFile(name, "#!/bin/sh\n" + lines); }
    /// Something that is found and cannot be started.
    void addBroken(const QString &name) { addFile(name, "#!/no/such/interpreter\n"); }
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
