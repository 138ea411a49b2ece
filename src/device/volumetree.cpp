#include "volumetree.h"

#include <QFileIconProvider>

VolumeTree::VolumeTree(QFileSystemModel *files, QObject *parent) : QIdentityProxyModel(parent)
{
    // The grandparent's, on purpose: QIdentityProxyModel would connect its own handlers.
    QAbstractProxyModel::setSourceModel(files); // NOLINT(bugprone-parent-virtual-call)
    follow(files);
}

void VolumeTree::follow(QFileSystemModel *files)
{
    connect(files, &QAbstractItemModel::rowsAboutToBeInserted, this, &VolumeTree::aboutToInsertRows);
    connect(files, &QAbstractItemModel::rowsInserted, this, &VolumeTree::insertedRows);
    connect(files, &QAbstractItemModel::rowsAboutToBeRemoved, this, &VolumeTree::aboutToRemoveRows);
    connect(files, &QAbstractItemModel::rowsRemoved, this, &VolumeTree::removedRows);
    connect(files, &QAbstractItemModel::dataChanged, this, &VolumeTree::changedData);
    connect(files, &QAbstractItemModel::layoutAboutToBeChanged, this, &VolumeTree::aboutToChangeLayout);
    connect(files, &QAbstractItemModel::layoutChanged, this, &VolumeTree::changedLayout);
    connect(files, &QAbstractItemModel::headerDataChanged, this, &VolumeTree::headerDataChanged);
    connect(files, &QAbstractItemModel::modelAboutToBeReset, this, [this] { beginResetModel(); });
    connect(files, &QAbstractItemModel::modelReset, this, [this, files] {
        m_folder = files->index(m_folderPath);
        endResetModel();
    });
}

void VolumeTree::showFolder(const QString &folder, const QString &name)
{
    beginResetModel();
    m_folderPath = folder;
    m_name = name;
    // An empty path would be the source's invisible root, which has no index.
    m_folder = folder.isEmpty() ? QModelIndex() : static_cast<QFileSystemModel *>(sourceModel())->index(folder);
    endResetModel();
}

bool VolumeTree::isTop(const QModelIndex &proxyIndex) const
{
    return proxyIndex.isValid() && proxyIndex.internalPointer() == m_folder.internalPointer();
}

bool VolumeTree::isInside(const QModelIndex &sourceIndex) const
{
    if (!m_folder.isValid())
        return false;
    const QModelIndex folder = m_folder;
    for (QModelIndex index = sourceIndex; index.isValid(); index = index.parent()) {
        if (index.internalPointer() == folder.internalPointer())
            return true;
    }
    return false;
}

QModelIndex VolumeTree::mapToSource(const QModelIndex &proxyIndex) const
{
    if (!proxyIndex.isValid() || !m_folder.isValid())
        return {};
    if (isTop(proxyIndex))
        return QModelIndex(m_folder).siblingAtColumn(proxyIndex.column());
    return QIdentityProxyModel::mapToSource(proxyIndex);
}

QModelIndex VolumeTree::mapFromSource(const QModelIndex &sourceIndex) const
{
    if (!isInside(sourceIndex))
        return {};
    const QModelIndex folder = m_folder;
    if (sourceIndex.internalPointer() == folder.internalPointer())
        return createIndex(0, sourceIndex.column(), sourceIndex.internalPointer());
    return QIdentityProxyModel::mapFromSource(sourceIndex);
}

QModelIndex VolumeTree::index(int row, int column, const QModelIndex &parent) const
{
    if (parent.isValid())
        return QIdentityProxyModel::index(row, column, parent);
    if (row != 0 || column < 0 || column >= columnCount() || !m_folder.isValid())
        return {};
    return mapFromSource(QModelIndex(m_folder).siblingAtColumn(column));
}

QModelIndex VolumeTree::parent(const QModelIndex &child) const
{
    return isTop(child) ? QModelIndex() : QIdentityProxyModel::parent(child);
}

QModelIndex VolumeTree::sibling(int row, int column, const QModelIndex &index) const
{
    return isTop(index) ? this->index(row, column) : QIdentityProxyModel::sibling(row, column, index);
}

int VolumeTree::rowCount(const QModelIndex &parent) const
{
    if (parent.isValid())
        return QIdentityProxyModel::rowCount(parent);
    return m_folder.isValid() ? 1 : 0;
}

bool VolumeTree::hasChildren(const QModelIndex &parent) const
{
    return parent.isValid() ? QIdentityProxyModel::hasChildren(parent) : m_folder.isValid();
}

bool VolumeTree::canFetchMore(const QModelIndex &parent) const
{
    return parent.isValid() && QIdentityProxyModel::canFetchMore(parent);
}

void VolumeTree::fetchMore(const QModelIndex &parent)
{
    if (parent.isValid())
        QIdentityProxyModel::fetchMore(parent);
}

QVariant VolumeTree::data(const QModelIndex &index, int role) const
{
    if (isTop(index) && index.column() == 0) {
        if (role == Qt::DisplayRole || role == Qt::EditRole)
            return m_name;
        if (role == Qt::DecorationRole)
            return QFileIconProvider().icon(QFileIconProvider::Drive);
    }
    return QIdentityProxyModel::data(index, role);
}

QModelIndexList VolumeTree::match(const QModelIndex &start, int role, const QVariant &value, int hits,
                                  Qt::MatchFlags flags) const
{
    // The parent class would search the folder's neighbours in the source.
    return QAbstractItemModel::match(start, role, value, hits, flags); // NOLINT(bugprone-parent-virtual-call)
}

void VolumeTree::aboutToInsertRows(const QModelIndex &sourceParent, int first, int last)
{
    m_passingOn = isInside(sourceParent);
    if (m_passingOn)
        beginInsertRows(mapFromSource(sourceParent), first, last);
}

void VolumeTree::insertedRows(const QModelIndex &sourceParent)
{
    Q_UNUSED(sourceParent)
    if (m_passingOn)
        endInsertRows();
    m_passingOn = false;
}

void VolumeTree::aboutToRemoveRows(const QModelIndex &sourceParent, int first, int last)
{
    m_passingOn = isInside(sourceParent);
    if (m_passingOn) {
        beginRemoveRows(mapFromSource(sourceParent), first, last);
        return;
    }
    // The shown folder goes together with a folder above it.
    for (QModelIndex index = m_folder; index.isValid(); index = index.parent()) {
        if (index.parent() == sourceParent && index.row() >= first && index.row() <= last) {
            m_passingOn = true;
            beginRemoveRows(QModelIndex(), 0, 0);
            return;
        }
    }
}

void VolumeTree::removedRows()
{
    if (m_passingOn)
        endRemoveRows();
    m_passingOn = false;
}

void VolumeTree::changedData(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QVector<int> &roles)
{
    if (isInside(topLeft.parent())) {
        emit dataChanged(mapFromSource(topLeft), mapFromSource(bottomRight), roles);
        return;
    }
    const QModelIndex folder = m_folder;
    if (folder.isValid() && folder.parent() == topLeft.parent() && folder.row() >= topLeft.row() &&
        folder.row() <= bottomRight.row())
        emit dataChanged(index(0, topLeft.column()), index(0, bottomRight.column()), roles);
}

void VolumeTree::aboutToChangeLayout()
{
    emit layoutAboutToBeChanged();
    m_layoutIndexes = persistentIndexList();
    for (const QModelIndex &index : qAsConst(m_layoutIndexes))
        m_layoutSources.append(mapToSource(index));
}

void VolumeTree::changedLayout()
{
    for (int i = 0; i < m_layoutIndexes.size(); ++i)
        changePersistentIndex(m_layoutIndexes.at(i), mapFromSource(m_layoutSources.at(i)));
    m_layoutIndexes.clear();
    m_layoutSources.clear();
    emit layoutChanged();
}
