#pragma once

#include <QChar>
#include <QString>

/// The character that a split folder files a title under: the first letter or digit without its accent and in upper
/// case, behind one opening quote or parenthesis at most; "#" for everything else and for an empty title.
QChar initialOfTitle(const QString &title);
