#include "simulatedplayer.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTest>

namespace {
const QString kLabelFile = QStringLiteral(".windows-label");
} // namespace

SimulatedPlayer::SimulatedPlayer(const QString &label)
{
    m_folder = QFileInfo(m_dir.path()).canonicalFilePath() + QLatin1Char('/');
    m_root = m_folder;
    QFile file(m_folder + kLabelFile);
    if (!file.open(QIODevice::WriteOnly) || file.write(label.toUtf8() + '\n') < 0)
        QTest::qFail("The label cannot be written", __FILE__, __LINE__);
    file.close();
    connect();
}

SimulatedPlayer::~SimulatedPlayer()
{
    disconnect();
}

QString SimulatedPlayer::addFile(const QString &relative, const QByteArray &content)
{
    const QString full = m_folder + relative;
    QDir().mkpath(QFileInfo(full).absolutePath());
    QFile file(full);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        QTest::qFail(qPrintable(QStringLiteral("Cannot write ") + full), __FILE__, __LINE__);
    return path(relative);
}

QString SimulatedPlayer::addFolder(const QString &relative)
{
    QDir().mkpath(m_folder + relative);
    return path(relative);
}

void SimulatedPlayer::addSystemFiles()
{
    addFile(QStringLiteral("AUTOEXEC.BAT"), "@echo off\r\n");
    addFile(QStringLiteral("System/Corvin/Corvin.exe"), "MZ");
    addFile(QStringLiteral("System/GuiProc/GuiProc.exe"), "MZ");
}

bool SimulatedPlayer::exists(const QString &relative) const
{
    return QFileInfo::exists(m_folder + relative);
}

QByteArray SimulatedPlayer::content(const QString &relative) const
{
    QFile file(m_folder + relative);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList SimulatedPlayer::files(const QString &folder) const
{
    QStringList found;
    QDirIterator entries(m_folder + folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString relative = entries.next().mid(m_folder.size());
        if (relative != kLabelFile)
            found.append(relative);
    }
    found.sort();
    return found;
}

QStringList SimulatedPlayer::folders(const QString &folder) const
{
    return QDir(m_folder + folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}
