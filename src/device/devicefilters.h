#pragma once

#include <QSortFilterProxyModel>

/// Hides the player's own folders "CorvinUpdate" and "System" where they lie directly below the player's drive, and
/// nothing else. Decides from display names (column 0) alone, so that any source model will do.
/// For outsiders; the transfer page shows the player's drive alone, by the other filter.
class FolderFilesFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;
};

/// Shows the player's drive and what lies under it, without the player's own folders directly below the drive; the
/// other drives of the PC never appear. Decides from display names (column 0) alone.
/// Deliberate: unlike the look-up of the player the name "CORVIN4" is compared with its case.
class Corvin4DriveFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;
};
