#include "windowplace.h"

#include "disk/datafolder.h"

#include <QDir>
#include <QSettings>

#include <algorithm>

namespace {

const QString kPlace = QStringLiteral("Window/Place");
const QString kMaximized = QStringLiteral("Window/Maximized");

/// A file of its own: the settings hold what the user has chosen, the language alone.
QString storePath()
{
    return dataFolder() + QLatin1String("/window.ini");
}

QVariant stored(const QString &key)
{
    return QSettings(storePath(), QSettings::IniFormat).value(key);
}

void store(const QString &key, const QVariant &value)
{
    QDir().mkpath(dataFolder());
    QSettings(storePath(), QSettings::IniFormat).setValue(key, value);
}

} // namespace

QRect openingPlace(const QRect &kept, const QSize &wanted, const QList<QRect> &screens)
{
    const auto holds = [&kept](const QRect &screen) { return screen.contains(kept); };
    if (kept.isValid() && std::any_of(screens.cbegin(), screens.cend(), holds))
        return kept;
    QRect place(QPoint(), wanted);
    if (!screens.isEmpty())
        place.moveCenter(screens.first().center());
    return place;
}

QRect storedPlace()
{
    return stored(kPlace).toRect();
}

void storePlace(const QRect &place)
{
    store(kPlace, place);
}

bool wasMaximized()
{
    return stored(kMaximized).toBool();
}

void storeMaximized(bool maximized)
{
    store(kMaximized, maximized);
}
