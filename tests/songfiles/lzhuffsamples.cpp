#include "lzhuffsamples.h"

#include <algorithm>
#include <random>
#include <utility>

namespace {

QByteArray repeated(const QByteArray &pattern, int size)
{
    return pattern.repeated(size / pattern.size() + 1).left(size);
}

/// Bytes whose frequencies grow as the numbers of Fibonacci do, shuffled.
QByteArray unevenBytes(int size)
{
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

} // namespace

QByteArray LzHuffSamples::randomBytes(int size, int values)
{
    std::minstd_rand generator(4711);
    QByteArray bytes;
    for (int i = 0; i < size; ++i)
        bytes.append(static_cast<char>((generator() >> 8) % static_cast<unsigned>(values)));
    return bytes;
}

QByteArray LzHuffSamples::songLike(int size)
{
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

QList<LzHuffSamples::Sample> LzHuffSamples::smallSamples()
{
    return {
        {"one byte", "A"},
        {"two blanks", "  "},
        {"three blanks", "   "},
        {"28 equal bytes", QByteArray(28, 'x')},
        {"29 equal bytes", QByteArray(29, 'x')},
        {"30 equal bytes", QByteArray(30, 'x')},
        {"31 equal bytes", QByteArray(31, 'x')},
        {"blanks beyond the ring", QByteArray(5000, ' ')},
        {"zeros", QByteArray(20000, '\0')},
        {"two values at random", randomBytes(20000, 2)},
        {"ten values at random", randomBytes(20000, 10)},
        {"all values at random", randomBytes(20000, 256)},
        {"beyond the first halving of the frequencies", randomBytes(34000, 256)},
        {"repeats at distance 4066", repeated(randomBytes(4066, 256), 13000)},
        {"repeats at distance 4067", repeated(randomBytes(4067, 256), 13000)},
        {"repeats at distance 4068", repeated(randomBytes(4068, 256), 13000)},
        {"repeats at distance 4095", repeated(randomBytes(4095, 256), 13000)},
        {"repeats at distance 4096", repeated(randomBytes(4096, 256), 13000)},
        {"short period", repeated("abcab", 9000)},
        {"song", songLike(30000)},
    };
}

QList<LzHuffSamples::Sample> LzHuffSamples::largeSamples()
{
    return {
        {"500,000 zeros", QByteArray(kLargest, '\0')},
        {"500,000 at random", randomBytes(kLargest, 256)},
        {"500,000 of two values", randomBytes(kLargest, 2)},
        {"500,000 with period 4095", repeated(randomBytes(4095, 256), kLargest)},
        {"500,000 like a song", songLike(kLargest)},
        {"500,000 of uneven frequencies", unevenBytes(kLargest)},
    };
}
