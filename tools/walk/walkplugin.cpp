#include "walkplugin.h"

#include "walkdriver.h"

QObject *WalkPlugin::create(const QString &key, const QString &specification)
{
    Q_UNUSED(specification)
    return key == QLatin1String("corvinwalk") ? new WalkDriver : nullptr;
}
