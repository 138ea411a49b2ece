#include "fastdb.h"

FastDbReader::FastDbReader(const QByteArray &data, const Player &player)
    : m_data(data),
      m_player(player),
      m_start(QByteArray(PlayerNames::kPathStart.data(), PlayerNames::kPathStart.size()))
{
}

std::optional<QString> FastDbReader::next()
{
    const int start = m_start.indexIn(m_data, m_position);
    if (start < 0)
        return std::nullopt;
    const int end = m_data.indexOf('\0', start);
    if (end < 0)
        return std::nullopt;
    QString path = QString::fromUtf8(m_data.constData() + start, end - start);
    // Unlike a playlist's, these paths are the player's own: its root comes in exactly this case.
    path.replace(PlayerNames::kPathStart, m_player.root());
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    m_position = end;
    return path;
}
