#include "simulatedplayer.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTest>

namespace {
const char kVolumes[] = "CORVIN_VOLUMES";
const QString kLabelFile = QStringLiteral(".windows-label");
} // namespace

SimulatedPlayer::SimulatedPlayer(const QString &label)
{
    m_root = QFileInfo(m_dir.path()).canonicalFilePath() + QLatin1Char('/');
    addFile(kLabelFile, label.toUtf8() + '\n');
    connect();
}

SimulatedPlayer::~SimulatedPlayer()
{
    disconnect();
}

void SimulatedPlayer::connect()
{
    qputenv(kVolumes, QFile::encodeName(m_dir.path()));
}

// An empty folder list still means "these and no mounted volumes": the tests never see a disk of the machine.
void SimulatedPlayer::disconnect()
{
    qputenv(kVolumes, "/nonexistent");
}

QString SimulatedPlayer::addFile(const QString &relative, const QByteArray &content)
{
    QString full = path(relative);
    QDir().mkpath(QFileInfo(full).absolutePath());
    QFile file(full);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        QTest::qFail(qPrintable(QStringLiteral("Cannot write ") + full), __FILE__, __LINE__);
    return full;
}

QString SimulatedPlayer::addFolder(const QString &relative)
{
    QDir().mkpath(path(relative));
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
    return QFileInfo::exists(path(relative));
}

QByteArray SimulatedPlayer::content(const QString &relative) const
{
    QFile file(path(relative));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList SimulatedPlayer::files(const QString &folder) const
{
    QStringList found;
    QDirIterator entries(path(folder), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString relative = entries.next().mid(m_root.size());
        if (relative != kLabelFile)
            found.append(relative);
    }
    found.sort();
    return found;
}

QStringList SimulatedPlayer::folders(const QString &folder) const
{
    return QDir(path(folder)).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}
