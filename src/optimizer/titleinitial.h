#pragma once

#include <QChar>
#include <QString>

/// The character under which a song of this title is filed: an upper-case letter or a digit without accents, or '#'.
/// An apostrophe, an opening parenthesis or a double quote in front of a letter or digit is passed over. Letters
/// without an ASCII base stay themselves. Never half of a surrogate pair, so that it can always stand in a file name.
QChar titleInitial(const QString &title);

/// The text by which titles are ordered, code unit by code unit: the title in upper case.
QString foldedTitle(const QString &title);
