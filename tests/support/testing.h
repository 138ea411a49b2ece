#pragma once

// What every test begins with. Qt's headers come here once for all of them: they are compiled ahead (see
// cmake/Tests.cmake).

#include <QtTest>
#include <QtWidgets>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>

/// "text"_s is the UTF-8 text as a QString.
inline QString operator""_s(const char *text, size_t size) {
    return QString::fromUtf8(text, static_cast<int>(size));
}

/// The words of a text with single blanks between them: "mp3 mid kar".
inline QStringList words(const char *text) {
    return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// The columns of a table of cases, of these types: columns<QString, int>("path", "length").
template <typename... Types, typename... Names> void columns(Names... names) {
    static_assert(sizeof...(Types) == sizeof...(Names), "each column has a name");
    (QTest::addColumn<Types>(names), ...);
}

/// The next row of a table of cases: row("empty", QString(), 0).
template <typename... Values> void row(const char *name, const Values &...values) {
    (QTest::newRow(name) << ... << values);
}

/// Fails the running test from wherever it is.
inline void failTest(const QString &why) {
    QTest::qFail(qPrintable(why), __FILE__, __LINE__);
}
