#pragma once

#include "device/player.h"

#include <QByteArray>
#include <QByteArrayMatcher>
#include <QString>

#include <optional>

/// Finds the songs named in the player's compact database export, one a call, so that the caller can keep the window
/// alive in between.
///
/// | bytes                | meaning                                    |
/// |----------------------|--------------------------------------------|
/// | 5C "sdmemory" 5C …   | path of a song in device form, UTF-8       |
/// | 00                   | its end                                    |
/// | anything else        | the player's own, passed over              |
class FastDbReader
{
public:
    /// @p data is the whole export of @p player.
    FastDbReader(const QByteArray &data, const Player &player);

    /// The PC path of the next song, in the order of the export. Nothing at the end, also when the last path has no NUL
    /// behind it.
    std::optional<QString> next();

private:
    QByteArray m_data;
    Player m_player;
    QByteArrayMatcher m_start;
    int m_position = 0;
};
