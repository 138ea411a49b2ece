#include "sessionlog.h"

#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QSysInfo>
#include <QTextStream>
#include <memory>

namespace {

/// Asked for during static initialisation: nobody has installed a handler yet, so this is Qt's own.
const QtMessageHandler previousHandler = qInstallMessageHandler(nullptr);

/// Owns the log file until the static objects go. Other static objects may still speak after this one is gone, so the
/// handler leaves with the file.
class LogFileOwner
{
public:
    LogFileOwner() = default;
    LogFileOwner(const LogFileOwner &) = delete;
    LogFileOwner &operator=(const LogFileOwner &) = delete;
    ~LogFileOwner()
    {
        if (logFile)
            qInstallMessageHandler(previousHandler);
    }

    std::unique_ptr<QFile> logFile;
};

LogFileOwner owner;

QLatin1String levelTag(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return QLatin1String("DBG ");
    case QtWarningMsg:
        return QLatin1String("WRN ");
    case QtCriticalMsg:
        return QLatin1String("CRT ");
    case QtFatalMsg:
        return QLatin1String("FTL ");
    case QtInfoMsg:
        return QLatin1String("INF ");
    }
    return QLatin1String();
}

void writeBanner()
{
    qInfo() << "**********************************************";
    qInfo() << "***** START LOGGING SESSION KRT Rel, " CORVIN_VERSION " *****";
    qInfo() << "**********************************************";
    qInfo() << "WIN :" << QSysInfo::productVersion();
    qInfo() << "Log File :" << sessionLogPath();
}

} // namespace

void startSessionLog()
{
    const QString directory = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    const QString name = QLatin1String("log_") + QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd")) +
                         QLatin1String(".txt");
    QDir().mkdir(directory);
    owner.logFile = std::make_unique<QFile>(directory + QLatin1Char('/') + name);
    owner.logFile->open(QIODevice::Append | QIODevice::Text);
    qInstallMessageHandler(sessionMessageHandler);
    writeBanner();
}

QString sessionLogPath()
{
    return owner.logFile ? owner.logFile->fileName() : QString();
}

void sessionMessageHandler(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    // A stream without a device drops what it is given; one on a closed file would complain by a message of its own.
    const bool writable = owner.logFile && owner.logFile->isOpen();
    QTextStream stream(writable ? owner.logFile.get() : nullptr);
    if (writable) {
        stream << QDateTime::currentDateTime().toString(QStringLiteral("[hh:mm:ss.zzz] ")) << levelTag(type) << message
               << Qt::endl;
        stream.flush();
    }
    previousHandler(type, context, message);
}
