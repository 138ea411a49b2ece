// The transfer page's chapter of what a drag shows before it is dropped.
#include "transfer.h"

#include "filteredvolume.h"
#include "ui_transfer.h"

#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDragMoveEvent>

namespace {

const QString kNormalStyle = QStringLiteral("border-style: dashed; border-color: #515151; border-width: 2px;"
                                            "background-color: rgb(221,221,221,127);");
const QString kHoverStyle = QStringLiteral("border-style: dashed; border-color: #515151; border-width: 2px;"
                                           "background-color: rgb(249,191,000,127);");

} // namespace

void Transfer::setDropAreaHovered(bool hovered)
{
    const QString &sheet = hovered ? kHoverStyle : kNormalStyle;
    // A drag moves at each pixel; a style sheet is parsed each time it is set.
    if (ui->dropArea->styleSheet() != sheet)
        ui->dropArea->setStyleSheet(sheet);
}

void Transfer::forgetDropTarget()
{
    ui->tableView->clearSelection();
    dropTarget.clear();
}

bool Transfer::isOver(const QWidget *widget, const QPoint &position) const
{
    return widget->isVisible() && widget->rect().contains(widget->mapFrom(this, position));
}

void Transfer::aimAtRow(const QPoint &position)
{
    const QModelIndex row =
        ui->tableView->indexAt(ui->tableView->viewport()->mapFrom(this, position)).siblingAtColumn(0);
    const QString name = row.data().toString();
    forgetDropTarget();
    if (name.isEmpty() || !m_entries)
        return;
    if (m_entries->isDir(row)) {
        dropTarget = pathIn(currentFolder, name);
        ui->tableView->selectRow(row.row());
    } else {
        dropTarget = currentFolder;
    }
}

void Transfer::dragEnterEvent(QDragEnterEvent *event)
{
    if (busy)
        event->ignore();
    else
        event->acceptProposedAction();
}

void Transfer::dragMoveEvent(QDragMoveEvent *event)
{
    event->ignore();
    if (busy || event->proposedAction() != Qt::CopyAction)
        return;
    if (isOver(ui->dropArea, event->pos())) {
        setDropAreaHovered(true);
        forgetDropTarget();
        event->accept();
        return;
    }
    setDropAreaHovered(false);
    if (isOver(ui->tableView->viewport(), event->pos())) {
        aimAtRow(event->pos());
        event->accept();
        return;
    }
    forgetDropTarget();
}

void Transfer::dragLeaveEvent(QDragLeaveEvent *event)
{
    Q_UNUSED(event)
    setDropAreaHovered(false);
    forgetDropTarget();
}
