#include "foldertree.h"

#include <QHeaderView>

namespace {
constexpr int kIndentation = 16; ///< pixels of each level: enough for its arrow
}

FolderTree::FolderTree(QWidget *parent) : QTreeView(parent)
{
    setIndentation(kIndentation);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
}

int FolderTree::sizeHintForColumn(int column) const
{
    return qMax(QTreeView::sizeHintForColumn(column), viewport()->width());
}
