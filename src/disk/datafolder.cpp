#include "datafolder.h"

#include <QStandardPaths>

namespace {
QString &chosenFolder()
{
    static QString folder;
    return folder;
}
} // namespace

QString dataFolder()
{
    return chosenFolder().isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
                                    : chosenFolder();
}

void setDataFolder(const QString &folder)
{
    chosenFolder() = folder;
}
