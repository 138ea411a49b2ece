#include "consoletext.h"

QString consoleText(const QByteArray &output)
{
    return QString::fromLocal8Bit(output);
}
