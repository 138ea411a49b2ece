#pragma once

#include "byteview.h"

#include <QtGlobal>
#include <array>

/// The fixed prefix code for the upper 6 bits of a match position. Near positions get short codes: 1 code of 3 bits,
/// then 3 of 4, 8 of 5, 12 of 6, 24 of 7 and 16 of 8 bits, counted upwards from zero: none is longer than a byte. All
/// tables follow from that.
struct PositionCodes
{
    static constexpr int kUpperValues = 64; ///< values the upper 6 bits can have

    /// Works the tables out.
    PositionCodes();

    /// Code of each upper value, left-aligned in a byte, and its length in bits.
    std::array<quint8, kUpperValues> code;
    std::array<quint8, kUpperValues> length;
    /// For each next byte of a stream: the upper value whose code it begins with, and the length of that code in bits.
    std::array<quint8, ByteView::kByteValues> decodedUpper;
    std::array<quint8, ByteView::kByteValues> decodedLength;
};
