#include "appsettings.h"

namespace {

class AppSettings : public QSettings
{
public:
    AppSettings() : QSettings(QStringLiteral("Q-Arte"), QStringLiteral("Corvin4Manager"))
    {
        setFallbacksEnabled(false);
    }
};

} // namespace

QSettings &appSettings()
{
    static AppSettings settings;
    return settings;
}
