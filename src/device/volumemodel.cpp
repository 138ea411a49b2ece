#include "volumemodel.h"

#include "localfiles.h"

VolumeModel::~VolumeModel() = default;

QAbstractItemModel *VolumeModel::model() const
{
    return m_model;
}

QFileSystemModel *VolumeModel::fileSystemModel() const
{
    return m_files;
}

void VolumeModel::setLocale(const QLocale &locale)
{
    m_files->setLocale(locale);
}

QModelIndex VolumeModel::indexForPath(const QString &path) const
{
    return path.isEmpty() ? QModelIndex() : fromFiles(m_files->index(path));
}

QString VolumeModel::filePath(const QModelIndex &index) const
{
    return index.isValid() ? m_files->filePath(toFiles(index)) : QString();
}

bool VolumeModel::isDir(const QModelIndex &index) const
{
    return index.isValid() && m_files->isDir(toFiles(index));
}
