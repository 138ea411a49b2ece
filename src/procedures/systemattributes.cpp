#include "systemattributes.h"

QByteArray attributeBatch(const QString &deviceRoot)
{
    QString root = deviceRoot;
    root.replace(QLatin1Char('/'), QLatin1Char('\\'));
    const QString command = QStringLiteral("ATTRIB +H +S ") + root;
    return (command + QStringLiteral("System\n") + command + QStringLiteral("AUTOEXEC.BAT\n")).toLocal8Bit();
}
