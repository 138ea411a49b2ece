#pragma once

#include <QRandomGenerator>
#include <QString>
#include <QStringList>

/// Invented titles and names, as mixed as those of a real archive.
namespace Titles {

/// One title at least for every way in which a title can begin: each letter, digits, accents, quotes, parentheses,
/// symbols, other alphabets, ligatures, a lone sign. None of them is empty or begins with a blank.
QStringList everyKindOfBeginning();
/// Some title that Latin-1 can hold; three of five begin with S, so that one initial outgrows one sub-folder.
QString random(QRandomGenerator &random);
/// A performer, or sometimes nothing.
QString artist(QRandomGenerator &random);
/// A genre, or sometimes nothing.
QString genre(QRandomGenerator &random);
/// A composer.
QString author(QRandomGenerator &random);
/// The name of a key, or sometimes nothing.
QString keyName(QRandomGenerator &random);

/// Whether Latin-1 holds every character.
bool isLatin1(const QString &text);
/// A file name without suffix made of the title: characters that the player's disk refuses are replaced, a leading dot
/// too, and what lies beyond @p maxBytes in UTF-8 is cut.
QString asFileName(const QString &title, int maxBytes = 60);

} // namespace Titles
