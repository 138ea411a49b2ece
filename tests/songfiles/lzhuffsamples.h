#pragma once

#include "bytes.h"

#include <random>
#include <utility>

/// Data to compress, the same in every run.
namespace LzHuffSamples {

constexpr int kLargest = 500000; ///< bytes that can be expanded at most

/// @p size bytes below @p values, at random.
inline QByteArray randomBytes(int size, int values = 256) {
    std::minstd_rand generator(4711);
    QByteArray bytes;
    for (int i = 0; i < size; ++i)
        bytes.append(static_cast<char>((generator() >> 8) % static_cast<unsigned>(values)));
    return bytes;
}

/// Notes as a small sequencer writes them.
inline QByteArray songLike(int size) {
    std::minstd_rand generator(7);
    QByteArray bytes("MThd");
    while (bytes.size() < size) {
        bytes.append(static_cast<char>((generator() >> 8) % 4 * 60));
        bytes.append(static_cast<char>(0x90 + (generator() >> 8) % 16));
        bytes.append(static_cast<char>(36 + (generator() >> 8) % 48));
        bytes.append(static_cast<char>((generator() >> 8) % 3 * 40));
    }
    return bytes.left(size);
}

inline QByteArray repeated(const QByteArray &pattern, int size) {
    return pattern.repeated(size / pattern.size() + 1).left(size);
}

/// Bytes whose frequencies grow as the numbers of Fibonacci do, shuffled.
inline QByteArray unevenBytes(int size) {
    QByteArray bytes;
    int count = 1;
    int before = 1;
    for (char value = 0; bytes.size() < size; ++value) {
        bytes.append(count, value);
        before = std::exchange(count, count + before);
    }
    bytes.truncate(size);
    std::shuffle(bytes.begin(), bytes.end(), std::minstd_rand(99));
    return bytes;
}

/// Up to 34,000 bytes each.
inline void addSmallSamples() {
    columns<QByteArray>("input");
    row("one byte", "A"_b);
    row("two blanks", "  "_b);
    row("three blanks", "   "_b);
    for (const int size : {28, 29, 30, 31})
        QTest::addRow("%d equal bytes", size) << QByteArray(size, 'x');
    row("blanks beyond the ring", QByteArray(5000, ' '));
    row("zeros", QByteArray(20000, '\0'));
    row("two values at random", randomBytes(20000, 2));
    row("ten values at random", randomBytes(20000, 10));
    row("all values at random", randomBytes(20000));
    row("beyond the first halving of the frequencies", randomBytes(34000));
    for (const int distance : {4066, 4067, 4068, 4095, 4096})
        QTest::addRow("repeats at distance %d", distance) << repeated(randomBytes(distance), 13000);
    row("short period", repeated("abcab", 9000));
    row("song", songLike(30000));
}

/// These and others of kLargest bytes each.
inline void addAllSamples() {
    addSmallSamples();
    row("500,000 zeros", QByteArray(kLargest, '\0'));
    row("500,000 at random", randomBytes(kLargest));
    row("500,000 of two values", randomBytes(kLargest, 2));
    row("500,000 with period 4095", repeated(randomBytes(4095), kLargest));
    row("500,000 like a song", songLike(kLargest));
    row("500,000 of uneven frequencies", unevenBytes(kLargest));
}

} // namespace LzHuffSamples
