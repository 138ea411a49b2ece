#pragma once

#include "support/same.h"

/// "a\0b"_b are these three bytes.
inline QByteArray operator""_b(const char *text, size_t size) {
    return QByteArray(text, static_cast<int>(size));
}

/// "00FF"_hex are these two bytes.
inline QByteArray operator""_hex(const char *digits, size_t size) {
    return QByteArray::fromHex(QByteArray(digits, static_cast<int>(size)));
}

inline QByteArray littleEndian(quint32 value, int bytes = 4) {
    QByteArray result;
    for (int i = 0; i < bytes; ++i)
        result.append(static_cast<char>(value >> (8 * i)));
    return result;
}

inline QByteArray bigEndian(quint32 value, int bytes = 4) {
    QByteArray result = littleEndian(value, bytes);
    std::reverse(result.begin(), result.end());
    return result;
}

/// Calls @p check with every prefix of @p bytes, the empty and the whole one included, and with @p bytes in which one
/// byte is changed, every byte in turn: inverted, its lowest bit and its highest bit changed.
template <typename Check> void forEachDamagedCopy(const QByteArray &bytes, Check check) {
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
