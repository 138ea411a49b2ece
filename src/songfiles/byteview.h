#pragma once

#include <QByteArray>
#include <QString>

/// The one way in which song bytes are looked at: whatever a song claims about its own lengths, only bytes that exist
/// are read. No function here fails.
namespace ByteView {

constexpr int kByteBits = 8;     ///< in every byte
constexpr int kByteValues = 256; ///< that a byte can have

/// The bytes from @p offset on, at most @p count of them and at most as many as there are; none when the offset lies
/// outside @p bytes or when offset or count is negative.
QByteArray bytesAt(const QByteArray &bytes, qint64 offset, qint64 count);

/// The byte at @p offset, 0 when there is none.
quint8 byteAt(const QByteArray &bytes, qint64 offset);

/// A stored text: the bytes of bytesAt up to the first zero byte, read as Latin-1, without white space at both ends.
QString textAt(const QByteArray &bytes, qint64 offset, qint64 count);

} // namespace ByteView
