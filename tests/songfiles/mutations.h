#pragma once

#include <QByteArray>

/// Calls @p check with every prefix of @p bytes, the empty and the whole one included, and with @p bytes in which one
/// byte is changed, every byte in turn: inverted, its lowest bit and its highest bit changed.
template <typename Check> void forEachDamagedCopy(const QByteArray &bytes, Check check)
{
    for (int size = 0; size <= bytes.size(); ++size)
        check(bytes.left(size));
    for (int i = 0; i < bytes.size(); ++i) {
        for (const int mask : {0xFF, 0x01, 0x80}) {
            QByteArray damaged = bytes;
            damaged[i] = static_cast<char>(damaged.at(i) ^ mask);
            check(damaged);
        }
    }
}
