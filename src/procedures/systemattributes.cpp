#include "systemattributes.h"

QByteArray attributeBatch(const Player &player)
{
    QString root = player.root();
    root.replace(QLatin1Char('/'), QLatin1Char('\\'));
    const QString command = QStringLiteral("ATTRIB +H +S ") + root;
    return (command + PlayerNames::kSystem + QLatin1Char('\n') + command + PlayerNames::kStartScript +
            QLatin1Char('\n'))
        .toLocal8Bit();
}
