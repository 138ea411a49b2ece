#include "byteview.h"

QByteArray ByteView::bytesAt(const QByteArray &bytes, qint64 offset, qint64 count)
{
    if (offset < 0 || offset >= bytes.size() || count <= 0)
        return QByteArray();
    return bytes.mid(static_cast<int>(offset), static_cast<int>(qMin(count, bytes.size() - offset)));
}

quint8 ByteView::byteAt(const QByteArray &bytes, qint64 offset)
{
    if (offset < 0 || offset >= bytes.size())
        return 0;
    return static_cast<quint8>(bytes.at(static_cast<int>(offset)));
}

QString ByteView::textAt(const QByteArray &bytes, qint64 offset, qint64 count)
{
    QByteArray stored = bytesAt(bytes, offset, count);
    const int end = stored.indexOf('\0');
    if (end >= 0)
        stored.truncate(end);
    return QString::fromLatin1(stored).trimmed();
}
