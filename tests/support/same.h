#pragma once

#include "support/testing.h"

/// Compares one case of a table that stands in the test itself; a failure names the case, and the others follow.
template <typename T> void same(const char *name, const T &actual, const T &expected) {
    QTest::qCompare(actual, expected, name, "expected", __FILE__, __LINE__);
}
