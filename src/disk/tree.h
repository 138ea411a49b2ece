#pragma once

#include <QDir>
#include <QString>
#include <QStringList>
#include <functional>

// What the maintenance procedures do with whole folders. Everything here runs on the GUI thread and processes events
// after every entry, so that the window stays alive and STOP can be pressed: slots may run meanwhile.

/// Deletes the folder @p path (absolute, forward slashes, a closing slash is forgiven) with everything in it, hidden
/// and write-protected entries too. A link is deleted and never followed, be it @p path itself or an entry below it.
/// Entries that cannot be deleted are passed over; what can be deleted is gone all the same.
/// Returns true when nothing is left under @p path: a folder that is not there counts as deleted. False when something
/// remains, when @p path is a file (which is kept) or empty.
bool removeFolder(const QString &path);

/// Deletes the folder @p path as removeFolder() does and makes it again, empty. Its parent must exist.
/// Returns false when something could not be deleted (the folder is then not made) or the new folder could not be made.
bool emptyFolder(const QString &path);

/// Calls @p visit with every entry below @p root that @p filters and @p nameFilters let pass, folder after folder, and
/// processes events after each. The paths are @p root followed by what is below it, with forward slashes; "." and ".."
/// need QDir::NoDotAndDotDot to stay out. An empty @p nameFilters lets every name pass.
/// A folder is entered whether or not it passes itself, a hidden one only with QDir::Hidden, a link never.
/// @p visit returns whether to go on. Returns false when it did not, else true; an unreadable or missing @p root has no
/// entries.
bool visitTree(const QString &root, QDir::Filters filters, const QStringList &nameFilters,
               const std::function<bool(const QString &path)> &visit);

/// The paths that visitTree() visits, in its order, unsorted. When @p abort is given the listing ends as soon as it is
/// true, and what was found so far is returned: the caller tests it again.
QStringList listTree(const QString &root, QDir::Filters filters, const QStringList &nameFilters,
                     const bool *abort = nullptr);
