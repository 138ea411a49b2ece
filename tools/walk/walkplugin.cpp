#include "walkplugin.h"

#include "walkdriver.h"

QObject *WalkPlugin::create(const QString &key, const QString &parameters)
{
    Q_UNUSED(parameters)
    return key == QLatin1String("corvinwalk") ? new WalkDriver : nullptr;
}
