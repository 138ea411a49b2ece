#include "scratchfolder.h"

#include <QFile>

ScratchFolder::ScratchFolder()
{
    if (!m_folder.isValid())
        qFatal("No folder for files: %s", qPrintable(m_folder.errorString()));
}

void ScratchFolder::write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    // Many file systems wait for the disk whenever a file is written over.
    file.remove();
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write(bytes) != bytes.size())
        qFatal("Cannot write %s", qPrintable(path));
}

QByteArray ScratchFolder::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("Cannot read %s", qPrintable(path));
    return file.read(file.size());
}
