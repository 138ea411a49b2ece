#include "volumemodel.h"

#include "localfiles.h"
#include "volumetree.h"

#include <QDir>
#include <QFileInfo>

// Views cannot show the root of a file system by its label here, and a QFileSystemModel's top is the folder "/": the
// volume's folder is lifted out of it.

VolumeModel::VolumeModel(QObject *parent)
    : QObject(parent), m_files(new LocalFiles(this)), m_model(new VolumeTree(m_files, this))
{
}

VolumeModel::~VolumeModel() = default;

void VolumeModel::open(const QString &deviceRoot, const QString &label)
{
    const bool isThere = !deviceRoot.isEmpty() && QFileInfo(deviceRoot).isDir();
    const QString folder = isThere ? QDir::cleanPath(deviceRoot) : QString();
    if (isThere)
        m_files->setRootPath(folder);
    static_cast<VolumeTree *>(m_model)->showFolder(folder, label);
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
    return path.isEmpty() ? QModelIndex() : static_cast<VolumeTree *>(m_model)->mapFromSource(m_files->index(path));
}

QString VolumeModel::filePath(const QModelIndex &index) const
{
    return index.isValid() ? m_files->filePath(toFiles(index)) : QString();
}

bool VolumeModel::isDir(const QModelIndex &index) const
{
    return index.isValid() && m_files->isDir(toFiles(index));
}

QModelIndex VolumeModel::toFiles(const QModelIndex &index) const
{
    return static_cast<VolumeTree *>(m_model)->mapToSource(index);
}
