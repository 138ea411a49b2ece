#include "devicefilters.h"

#include "playernames.h"

namespace {

QString displayName(const QModelIndex &index)
{
    return index.sibling(index.row(), 0).data(Qt::DisplayRole).toString();
}

QString topLevelName(QModelIndex index)
{
    for (QModelIndex parent = index.parent(); parent.isValid(); parent = index.parent())
        index = parent;
    return displayName(index);
}

bool isPlayersOwnFolder(const QString &name, const QModelIndex &parent)
{
    return (name == PlayerNames::kUpdate || name == PlayerNames::kSystem) &&
           displayName(parent).contains(PlayerNames::kLabel);
}

} // namespace

bool FolderFilesFilter::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    const QModelIndex row = sourceModel()->index(sourceRow, 0, sourceParent);
    return !isPlayersOwnFolder(displayName(row), sourceParent);
}

bool Corvin4DriveFilter::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    const QModelIndex row = sourceModel()->index(sourceRow, 0, sourceParent);
    const QString name = displayName(row);
    if (isPlayersOwnFolder(name, sourceParent))
        return false;
    return name.contains(PlayerNames::kLabel) || topLevelName(row).contains(PlayerNames::kLabel);
}
