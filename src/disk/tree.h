#pragma once

#include <QDir>
#include <QFileInfo>
#include <QString>
#include <QStringList>
#include <functional>

// What is done with whole folders. On the GUI thread events are processed between the entries (see Breath), so that the
// window stays alive and STOP can be pressed: slots may run meanwhile.

/// Everything that a folder can hold.
constexpr QDir::Filters kAllEntries = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

/// What a walk goes through.
struct Walk
{
    QString root;                        ///< absolute or not, with or without a closing slash
    QDir::Filters filters = kAllEntries; ///< which entries are visited
    QStringList names = {};              ///< wildcards; empty lets every name pass
    bool below = true;                   ///< the folders below the root too, not it alone
    int breath = 1;                      ///< events may be processed after so many entries (see Breath); 0: never
};

/// Calls @p visit with every entry below the root that the filters let pass, folder after folder. The paths are the
/// root followed by what is below it, with forward slashes.
/// A folder is entered whether or not it passes itself, a hidden one only with QDir::Hidden, a link never.
/// @p visit returns whether to go on. Returns false when it did not, else true; an unreadable, missing or empty root
/// has no entries. What @p visit changes in the folder being listed may or may not be visited.
bool walkTree(const Walk &walk, const std::function<bool(const QFileInfo &entry)> &visit);

/// The paths that a walk visits, in its order, unsorted. @p goOn, when given, is asked before each entry: the listing
/// ends when it says no, and what was found so far is returned, so that the caller asks again.
QStringList listTree(const Walk &walk, const std::function<bool()> &goOn = nullptr);

/// Whether the folder @p root and all that a walk with these filters enters can be listed to their ends: a walk takes
/// one that cannot be for one that ends earlier. Processes events.
bool isTreeListable(const QString &root, QDir::Filters filters = kAllEntries);

/// Deletes the folder @p path (absolute, forward slashes, a closing slash is forgiven) with everything in it, hidden
/// and write-protected entries too. A link is deleted and never followed, be it @p path itself or an entry below it.
/// Entries that cannot be deleted are passed over; what can be deleted is gone all the same.
/// Returns true when nothing is left under @p path: a folder that is not there counts as deleted. False when something
/// remains, when @p path is a file (which is kept) or empty.
/// @p goOn, when given, is asked before each entry; when it says no, nothing more is deleted.
bool removeTree(const QString &path, const std::function<bool()> &goOn = nullptr);

/// Deletes the folder @p path as removeTree() does and makes it again, empty. Its parent must exist.
/// Returns false when something could not be deleted (the folder is then not made) or the new folder could not be made.
bool emptyFolder(const QString &path);

/// Deletes a file, a write-protected one too, or a link, never what it points to. Returns whether it is gone.
bool removeFile(const QString &path);

/// Whether @p entry is a link to something else, of whatever kind the system has.
bool isLink(const QFileInfo &entry);

/// Whether @p name, in any case, is that of a folder that Windows keeps for itself at the root of every disk.
bool isWindowsOwn(const QString &name);
