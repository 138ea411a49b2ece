#pragma once

#include <QDir>
#include <QString>

/// @p text as the system's own calls take it, for as long as @p text lives.
inline const wchar_t *wide(const QString &text)
{
    return reinterpret_cast<const wchar_t *>(text.utf16());
}

/// @p path (absolute, either slashes) as the system's own calls take it, whatever its length. The mark that lifts the
/// limit of 260 characters is set only ahead of a path that needs it: behind it Windows takes every name letter for
/// letter, also one that ends in a dot or a blank, and nobody could open or delete such a file any more.
inline QString longPath(const QString &path)
{
    constexpr int kLongestPlainPath = 247; // a folder has 12 characters less than a file
    QString native = QDir::toNativeSeparators(QDir::cleanPath(path));
    if (native.size() <= kLongestPlainPath)
        return native;
    while (native.endsWith(QLatin1Char('.')) || native.endsWith(QLatin1Char(' ')))
        native.chop(1);
    if (native.startsWith(QLatin1String("\\\\")))
        return QLatin1String("\\\\?\\UNC\\") + native.mid(2);
    return QLatin1String("\\\\?\\") + native;
}
