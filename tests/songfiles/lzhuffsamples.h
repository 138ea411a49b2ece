#pragma once

#include <QByteArray>
#include <QList>

/// Data to compress, the same in every run.
namespace LzHuffSamples {

const int kLargest = 500000; ///< bytes that can be expanded at most

struct Sample
{
    const char *name;
    QByteArray bytes;
};

/// @p size bytes below @p values, at random.
QByteArray randomBytes(int size, int values);
/// Notes as a small sequencer writes them.
QByteArray songLike(int size);

/// Up to 34,000 bytes each.
QList<Sample> smallSamples();
/// kLargest bytes each.
QList<Sample> largeSamples();

} // namespace LzHuffSamples
