#include "filemanager.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>

bool openHomeInFileManager()
{
    const QString home = QStandardPaths::writableLocation(QStandardPaths::HomeLocation);
    QProcess process;
    process.setProgram(QStringLiteral("explorer"));
    // The command line is "explorer " and the folder as it stands; the explorer takes blanks without quotes.
    process.setNativeArguments(QDir::toNativeSeparators(home));
    return process.startDetached();
}
