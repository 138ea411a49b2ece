#include "positioncodes.h"

#include "byteview.h"

namespace {

struct LengthGroup
{
    int bits;
    int codes;
};

constexpr LengthGroup kGroups[] = {{3, 1}, {4, 3}, {5, 8}, {6, 12}, {7, 24}, {8, 16}};

} // namespace

PositionCodes::PositionCodes() : code(), length(), decodedUpper(), decodedLength()
{
    std::size_t upper = 0;
    std::size_t nextCode = 0;
    for (const LengthGroup &group : kGroups) {
        const std::size_t step = std::size_t(1) << (ByteView::kByteBits - group.bits);
        for (int i = 0; i < group.codes; ++i, ++upper, nextCode += step) {
            code.at(upper) = static_cast<quint8>(nextCode);
            length.at(upper) = static_cast<quint8>(group.bits);
            for (std::size_t byte = nextCode; byte < nextCode + step; ++byte) {
                decodedUpper.at(byte) = static_cast<quint8>(upper);
                decodedLength.at(byte) = static_cast<quint8>(group.bits);
            }
        }
    }
}
