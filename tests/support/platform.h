#pragma once

#include <QTest>

/// First line of a test that needs what only the other systems have; @p why says what that is.
#ifdef Q_OS_WIN
#define SKIP_ON_WINDOWS(why) QSKIP(why)
#else
#define SKIP_ON_WINDOWS(why) static_cast<void>(0)
#endif
