#pragma once

#include "support/files.h"
#include "support/testing.h"

// What belongs to a whole process is tested in child processes: the test program itself, started again with arguments.

/// A child process that has ended.
struct Child
{
    QString console; ///< both outputs
    int exitCode = -1;
    QProcess::ExitStatus exitStatus = QProcess::CrashExit;
};

inline Child runChild(const QStringList &arguments, QProcessEnvironment environment) {
    environment.insert("QT_FORCE_STDERR_LOGGING"_s, "1"_s);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(), arguments);
    if (!process.waitForFinished())
        failTest("The child process does not end"_s);
    return {QString::fromUtf8(process.readAll()), process.exitCode(), process.exitStatus()};
}

/// The session log of today that an executable writes below @p dataHome.
inline QString logOfToday(const QString &dataHome, const QString &executable) {
    return "%1/%2/log_%3.txt"_s.arg(dataHome, executable, QDate::currentDate().toString("yyyy-MM-dd"_s));
}

/// The lines of a log, as they stand.
inline QStringList logLines(const QString &path) {
    const QString text = QString::fromUtf8(contentOf(path)).remove(QLatin1Char('\r'));
    return text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

/// The lines of a log without their stamps "[hh:mm:ss.zzz] ".
inline QStringList logTexts(const QString &path) {
    constexpr int kStampLength = 15;
    QStringList texts = logLines(path);
    for (QString &text : texts)
        text.remove(0, kStampLength);
    return texts;
}

/// The five lines with which every log begins.
inline QStringList bannerOf(const QString &log) {
    const QString stars = "INF "_s + QString(46, QLatin1Char('*'));
    return {stars, "INF ***** START LOGGING SESSION KRT Rel, 3.0 *****"_s, stars,
            "INF WIN : \"%1\""_s.arg(QSysInfo::productVersion()), "INF Log File : \"%1\""_s.arg(log)};
}
