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

void VolumeModel::open(const QString &deviceRoot, const QString &label)
{
    const bool isThere = !deviceRoot.isEmpty() && QFileInfo(deviceRoot).isDir();
    const QString folder = isThere ? QDir::cleanPath(deviceRoot) : QString();
    if (isThere)
        m_files->setRootPath(folder);
    static_cast<VolumeTree *>(m_model)->showFolder(folder, label);
}

QModelIndex VolumeModel::toFiles(const QModelIndex &index) const
{
    return static_cast<VolumeTree *>(m_model)->mapToSource(index);
}

QModelIndex VolumeModel::fromFiles(const QModelIndex &index) const
{
    return static_cast<VolumeTree *>(m_model)->mapFromSource(index);
}
