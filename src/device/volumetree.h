#pragma once

#include <QFileSystemModel>
#include <QIdentityProxyModel>
#include <QList>
#include <QPersistentModelIndex>

/// One folder of a QFileSystemModel as the only top row, under a name of its own; everything below it one to one, with
/// all columns. What happens elsewhere in the source model is not passed on. When the folder disappears the model is
/// empty.
///
/// The index mapping of QIdentityProxyModel is used as it is for everything but the top row; its signal handling is
/// not, since it would pass on rows whose parents are not here.
class VolumeTree : public QIdentityProxyModel
{
    Q_OBJECT

public:
    explicit VolumeTree(QFileSystemModel *files, QObject *parent = nullptr);

    /// Shows the folder at the absolute path @p folder under the name @p name. Empty or missing: no row at all.
    void showFolder(const QString &folder, const QString &name);

    QModelIndex index(int row, int column, const QModelIndex &parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    QModelIndex sibling(int row, int column, const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    bool hasChildren(const QModelIndex &parent = QModelIndex()) const override;
    bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QModelIndexList match(const QModelIndex &start, int role, const QVariant &value, int hits,
                          Qt::MatchFlags flags) const override;
    QModelIndex mapToSource(const QModelIndex &proxyIndex) const override;
    /// Invalid for a source index outside the folder.
    QModelIndex mapFromSource(const QModelIndex &sourceIndex) const override;

private:
    void follow(QFileSystemModel *files);
    void aboutToInsertRows(const QModelIndex &sourceParent, int first, int last);
    void insertedRows(const QModelIndex &sourceParent);
    void aboutToRemoveRows(const QModelIndex &sourceParent, int first, int last);
    void removedRows();
    void changedData(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QVector<int> &roles);
    void aboutToChangeLayout();
    void changedLayout();

    bool isTop(const QModelIndex &proxyIndex) const;
    bool isInside(const QModelIndex &sourceIndex) const;

    /// A change of rows that has been announced and passed on, and must be ended.
    bool m_passingOn = false;
    QPersistentModelIndex m_folder;
    QString m_folderPath;
    QString m_name;
    QModelIndexList m_layoutIndexes;
    QList<QPersistentModelIndex> m_layoutSources;
};
