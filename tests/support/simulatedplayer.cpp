#include "simulatedplayer.h"

#include "files.h"

SimulatedPlayer::SimulatedPlayer(const QString &label)
    : m_root(QFileInfo(m_dir.path()).canonicalFilePath() + "/"_s), m_folder(m_root) {
    putFile(m_folder + ".windows-label"_s, label.toUtf8() + '\n');
    connect();
}

SimulatedPlayer::~SimulatedPlayer() {
    disconnect();
}

QString SimulatedPlayer::addFile(const QString &relative, const QByteArray &content) {
    putFile(m_folder + relative, content);
    return path(relative);
}

QString SimulatedPlayer::addFolder(const QString &relative) {
    QDir().mkpath(m_folder + relative);
    return path(relative);
}

void SimulatedPlayer::addSystemFiles() {
    addFile("AUTOEXEC.BAT"_s, "@echo off\r\n");
    addFile("System/Corvin/Corvin.exe"_s, "MZ");
    addFile("System/GuiProc/GuiProc.exe"_s, "MZ");
}

QByteArray SimulatedPlayer::content(const QString &relative) const {
    return contentOf(m_folder + relative);
}

QStringList SimulatedPlayer::files(const QString &folder) const {
    const QString start = folder.isEmpty() || folder.endsWith(QLatin1Char('/')) ? folder : folder + "/"_s;
    QStringList found;
    for (const QString &file : filesBelow(m_folder + folder))
        found.append(start + file);
    return found;
}

QStringList SimulatedPlayer::folders(const QString &folder) const {
    return QDir(m_folder + folder)
        .entryList(QDir::Dirs | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}
