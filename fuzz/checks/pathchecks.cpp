#include "checks.h"

#include "entrypath.h"
#include "optimizer/fastdb.h"

#include <QStringList>

namespace {

/// What ends with a NUL byte, piece by piece; each names one song at most.
QList<QByteArray> pieces(const QByteArray &bytes)
{
    QList<QByteArray> all = bytes.split('\0');
    all.removeLast();
    return all;
}

} // namespace

FuzzChecks::Verdict FuzzChecks::databaseExport(const QByteArray &bytes)
{
    static const Player player(QStringLiteral("/media/CORVIN4/"));
    FastDbReader reader(bytes, player);
    for (const QByteArray &piece : pieces(bytes)) {
        const int start = piece.indexOf("\\sdmemory\\");
        if (start < 0)
            continue;
        const std::optional<QString> path = reader.next();
        if (!path)
            return QStringLiteral("a song is missing");
        // In this order: the player's own root comes in one case alone.
        const QString expected = QString::fromUtf8(piece.mid(start))
                                     .replace(QStringLiteral("\\sdmemory\\"), player.root())
                                     .replace(u'\\', u'/');
        if (*path != expected || !path->startsWith(player.root()))
            return QStringLiteral("a song has another path");
    }
    return reader.next() ? QStringLiteral("a song is named that is none") : QString();
}

FuzzChecks::Verdict FuzzChecks::entryPath(const QByteArray &bytes)
{
    const std::optional<std::string> place = safeEntryPath(bytes.toStdString());
    if (!place || place->empty())
        return QString();
    const QByteArray path = QByteArray::fromStdString(*place);
    if (path.startsWith('/') || path.contains('\\') || path.contains(':') || path.contains('\0'))
        return QStringLiteral("a name leaves its folder");
    for (const QByteArray &part : path.split('/')) {
        if (part.isEmpty() || part == "." || part == "..")
            return QStringLiteral("a name has a part that is no name");
        if (part.endsWith('.') || part.endsWith(' '))
            return QStringLiteral("a name has a part that would be shortened");
    }
    return safeEntryPath(*place) == place ? QString() : QStringLiteral("a safe name is not the same place");
}
