#include "updateserver.h"

namespace {
const char kOverride[] = "CORVIN_UPDATE_SERVER";
}

QString updateServerUrl(const QString &path)
{
    QString address = qEnvironmentVariable(kOverride).trimmed();
    if (address.isEmpty())
        address = QStringLiteral(CORVIN_BUILT_IN_UPDATE_SERVER);
    while (address.endsWith(QLatin1Char('/')))
        address.chop(1);
    return address + path;
}
