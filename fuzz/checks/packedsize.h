#pragma once

#include <QByteArray>

/// @p bytes with the size that a packed stream states at @p offset cut to what is unpacked in no time; nothing is
/// changed where it is small, or so large that it is refused anyway.
QByteArray withQuickSize(const QByteArray &bytes, int offset);
