#pragma once

#include <QTest>

/// First line of a test that needs what only the other systems have; @p why says what that is.
#ifdef Q_OS_WIN
#define SKIP_ON_WINDOWS(why) QSKIP(why)
#else
#define SKIP_ON_WINDOWS(why) static_cast<void>(0)
#endif

/// Of the thousands of broken songs that go through a file, every how-manieth does. Wine takes twenty times as long for
/// each, and what reads them is the same code.
#ifdef Q_OS_WIN
constexpr int kBrokenFilesStep = 5;
#else
constexpr int kBrokenFilesStep = 1;
#endif
