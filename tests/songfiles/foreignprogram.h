#pragma once

#include "support/testing.h"

/// What a program written elsewhere puts out; the test fails when it does not end well.
inline QByteArray outputOf(const QString &program, const QStringList &arguments, const QString &folder = QString())
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(program, arguments);
    process.waitForFinished();
    const QByteArray complaint = process.readAllStandardError();
    if (process.error() != QProcess::UnknownError || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        failTest("%1 is needed: %2 %3"_s.arg(program, process.errorString(), QString::fromUtf8(complaint)));
    return process.readAllStandardOutput();
}
