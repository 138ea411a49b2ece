#include "volumemodel.h"

#include "localfiles.h"

VolumeModel::VolumeModel(QObject *parent) : QObject(parent), m_files(new LocalFiles(this)), m_model(m_files) {}

VolumeModel::~VolumeModel() = default;

/// The drive's node takes its label from the system.
void VolumeModel::open(const QString &deviceRoot, const QString &label)
{
    Q_UNUSED(label)
    m_files->setRootPath(deviceRoot);
}

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
    return path.isEmpty() ? QModelIndex() : m_files->index(path);
}

QString VolumeModel::filePath(const QModelIndex &index) const
{
    return index.isValid() ? m_files->filePath(index) : QString();
}

bool VolumeModel::isDir(const QModelIndex &index) const
{
    return index.isValid() && m_files->isDir(index);
}

QModelIndex VolumeModel::toFiles(const QModelIndex &index) const
{
    return index;
}
