#pragma once

#include "support/testing.h"

// Tests of random cases: a few, the same each time, in the usual run; with the environment variable CORVIN_SOAK far
// more, which differ from run to run. CORVIN_SEED=<number> repeats one case alone.

inline bool isSoak() {
    return qEnvironmentVariableIsSet("CORVIN_SOAK");
}

/// How often something is done.
inline int rounds(int usual, int soak) {
    return isSoak() ? soak : usual;
}

/// A random text of at most @p most of these characters.
inline QString randomText(QRandomGenerator &random, int most, const QString &characters) {
    QString text;
    for (int i = random.bounded(most + 1); i > 0; --i)
        text.append(characters.at(random.bounded(characters.size())));
    return text;
}

inline QByteArray randomBytes(QRandomGenerator &random, int count, int limit = 256) {
    QByteArray bytes(count, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = static_cast<char>(random.bounded(limit));
    return bytes;
}

/// Calls @p check with generators of different seeds until the test fails, and names the seed then.
template <typename Check> void forEachSeed(int usual, int soak, Check check) {
    bool isOne = false;
    const uint only = qEnvironmentVariable("CORVIN_SEED").toUInt(&isOne);
    const quint32 first = isOne ? only : isSoak() ? QRandomGenerator::global()->generate() : 1;
    const int count = isOne ? 1 : rounds(usual, soak);
    for (int i = 0; i < count; ++i) {
        const quint32 seed = first + quint32(i);
        QRandomGenerator random(seed);
        check(random);
        if (QTest::currentTestFailed()) {
            // Not by qWarning: the log may be captured.
            QTest::qWarn(qPrintable("CORVIN_SEED=%1 brings this case back"_s.arg(seed)));
            return;
        }
    }
}
