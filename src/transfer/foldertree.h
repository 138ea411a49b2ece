#pragma once

#include <QTreeView>

/// The tree of the player's folders. Its column (the others of its model are to be hidden) is as wide as its widest
/// name, so that the name can be scrolled to, and never narrower than the tree, so that the chosen folder is marked
/// across all of it.
class FolderTree : public QTreeView
{
    Q_OBJECT

public:
    explicit FolderTree(QWidget *parent = nullptr); ///< empty; shown with its parent

protected:
    int sizeHintForColumn(int column) const override;
};
