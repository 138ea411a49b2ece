#include "foldertree.h"

#include <QHeaderView>

FolderTree::FolderTree(QWidget *parent) : QTreeView(parent)
{
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
}

int FolderTree::sizeHintForColumn(int column) const
{
    return qMax(QTreeView::sizeHintForColumn(column), viewport()->width());
}
