#include "volumemodel.h"

#include "localfiles.h"

VolumeModel::VolumeModel(QObject *parent) : QObject(parent), m_files(new LocalFiles(this)), m_model(m_files) {}

/// The drive's node takes its label from the system.
void VolumeModel::open(const QString &deviceRoot, const QString &label)
{
    Q_UNUSED(label)
    m_files->setRootPath(deviceRoot);
}

QModelIndex VolumeModel::toFiles(const QModelIndex &index) const
{
    return index;
}

QModelIndex VolumeModel::fromFiles(const QModelIndex &index) const
{
    return index;
}
