#pragma once

#include "testing.h"

/// The value of a column in the running row of a table of cases: what QFETCH declares, for tests of one expression.
template <typename T> const T &given(const char *column) {
    return *static_cast<const T *>(QTest::qData(column, qMetaTypeId<T>()));
}
