#include "checks.h"
#include "packedsize.h"

#include "songfiles/lzhuff.h"

#include <QtEndian>

namespace {

constexpr int kSizeBytes = 4;
constexpr quint32 kQuickSize = 0x1100; ///< a little more than a ring

quint32 statedSize(const QByteArray &bytes, int offset)
{
    return qFromLittleEndian<quint32>(bytes.constData() + offset);
}

constexpr int kQuickWayBack = 1024; ///< compressing takes longer than expanding, and has a check of its own

/// What is wrong with the result of expanding @p packed.
FuzzChecks::Verdict expanded(LzHuff &codec, const QByteArray &packed, QByteArray &plain)
{
    const bool isRight = codec.expand(packed, plain);
    const quint32 size = packed.size() < kSizeBytes ? 0 : statedSize(packed, 0);
    if (isRight != (size > 0 && size <= quint32(LzHuff::kMostBytes)))
        return QStringLiteral("a stated size was judged wrongly");
    if (quint32(plain.size()) != (isRight ? size : 0))
        return QStringLiteral("the output has another size than stated");
    return QString();
}

/// What is wrong with @p plain when it has been compressed and expanded.
FuzzChecks::Verdict comesBack(LzHuff &codec, const QByteArray &plain)
{
    QByteArray packed;
    QByteArray again;
    codec.compress(plain, packed);
    if (codec.expand(packed, again) == plain.isEmpty())
        return QStringLiteral("what was compressed does not expand");
    return again == plain ? QString() : QStringLiteral("what was compressed expands to something else");
}

} // namespace

QByteArray withQuickSize(const QByteArray &bytes, int offset)
{
    if (bytes.size() < offset + kSizeBytes)
        return bytes;
    const quint32 size = statedSize(bytes, offset);
    if (size <= kQuickSize || size > quint32(LzHuff::kMostBytes))
        return bytes;
    QByteArray quick = bytes;
    qToLittleEndian(size % kQuickSize, quick.data() + offset);
    return quick;
}

FuzzChecks::Verdict FuzzChecks::expand(const QByteArray &bytes)
{
    static LzHuff codec;
    QByteArray plain;
    Verdict wrong = expanded(codec, withQuickSize(bytes, 0), plain);
    return wrong.isEmpty() && plain.size() <= kQuickWayBack ? comesBack(codec, plain) : wrong;
}

FuzzChecks::Verdict FuzzChecks::compress(const QByteArray &bytes)
{
    static LzHuff codec;
    return comesBack(codec, bytes);
}
