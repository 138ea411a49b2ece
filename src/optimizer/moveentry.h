#pragma once

#include <QString>

// Names change places on one volume, and nothing is ever copied or written over: where a name cannot change, everything
// is as it was. QFile::rename would copy instead, which on a full disk leaves half a file.

/// Gives the file or folder @p from the path @p to (both absolute, on one volume). Returns false when something bears
/// that name already or the system refuses.
bool moveEntry(const QString &from, const QString &to);

/// Moves everything that lies directly in the folder @p from, hidden entries too, into the existing folder @p to. Names
/// that are taken there get "(1)", "(2)", …; files of one base name get the same number, and companions go before their
/// song. Processes events. Returns whether nothing is left in @p from.
bool moveContent(const QString &from, const QString &to);

/// Lets the folder @p folder have what is in @p aside, under which it was set aside, as well as what it holds by now;
/// @p aside is gone then. Needs no room on the disk: what does not fit into @p folder makes the way the other way
/// round. Returns false when something is left in @p aside; nothing is ever deleted. Processes events.
bool putBack(const QString &aside, const QString &folder);
