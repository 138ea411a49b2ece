#include "files.h"

#include "testing.h"

namespace {

constexpr QDir::Filters kFiles = QDir::Files | QDir::Hidden | QDir::System;
constexpr QDir::Filters kEntries = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

QStringList listedBelow(const QString &folder, QDir::Filters filters) {
    QStringList found;
    QDirIterator entries(folder, filters, QDirIterator::Subdirectories);
    while (entries.hasNext())
        found.append(QDir(folder).relativeFilePath(entries.next()));
    found.removeAll(".windows-label"_s);
    found.sort();
    return found;
}

} // namespace

QByteArray contentOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString putFile(const QString &path, const QByteArray &content) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush())
        failTest("Cannot write "_s + path);
    return path;
}

QStringList filesBelow(const QString &folder) {
    return listedBelow(folder, kFiles);
}

QStringList entriesBelow(const QString &folder) {
    return listedBelow(folder, kEntries);
}

QMap<QString, QByteArray> contentBelow(const QString &folder) {
    QMap<QString, QByteArray> found;
    const QStringList files = filesBelow(folder);
    for (const QString &file : files)
        found.insert(file, contentOf(folder + QLatin1Char('/') + file));
    return found;
}

bool runProgram(const QString &program, const QStringList &arguments) {
    QProcess process;
    process.start(program, arguments);
    return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

QString PcFolder::addFolder(const QString &relative) {
    if (!QDir().mkpath(path(relative)))
        failTest("Cannot make "_s + path(relative));
    return path(relative);
}
