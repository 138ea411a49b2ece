#pragma once

#include <QByteArray>
#include <QString>

#include <random>

/// Draws what is done to some bytes: the same for the same bytes, wherever and whenever.
class Draws
{
public:
    explicit Draws(const QByteArray &bytes);

    /// A number from 0 to @p count - 1.
    int below(int count);
    /// Small letters, up to @p most of them, at least one: a text that every format holds and reads back unchanged.
    QString plainText(int most);

private:
    std::minstd_rand m_generator;
};
