#include "draws.h"

namespace {

/// The same number on every machine, other than qHash.
quint32 hashOf(const QByteArray &bytes)
{
    constexpr quint32 kBasis = 2166136261U;
    constexpr quint32 kPrime = 16777619U;
    quint32 hash = kBasis;
    for (const char byte : bytes)
        hash = (hash ^ static_cast<quint8>(byte)) * kPrime;
    return hash;
}

} // namespace

Draws::Draws(const QByteArray &bytes) : m_generator(hashOf(bytes)) {}

int Draws::below(int count)
{
    return static_cast<int>(m_generator() % static_cast<unsigned>(count));
}

QString Draws::plainText(int most)
{
    constexpr int kLetters = 26;
    QString text;
    for (int left = 1 + below(most); left > 0; --left)
        text.append(QChar(u'a' + below(kLetters)));
    return text;
}
