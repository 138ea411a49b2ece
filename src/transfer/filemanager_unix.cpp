#include "filemanager.h"

#include <QProcess>
#include <QStandardPaths>

bool openHomeInFileManager()
{
    QProcess process;
    process.setProgram(QStringLiteral("xdg-open"));
    process.setArguments({QStandardPaths::writableLocation(QStandardPaths::HomeLocation)});
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}
