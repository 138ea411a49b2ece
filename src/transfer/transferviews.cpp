// The transfer page's chapter of what its two views stand on, and of the state in which they must keep still.
#include "transfer.h"

#include "device/devicelocator.h"
#include "device/localfiles.h"
#include "filteredvolume.h"
#include "ui_transfer.h"

#include <QDateTime>
#include <QHeaderView>
#include <QScrollArea>
#include <QScrollBar>

namespace {

/// What the names are to have before another column is shown, in characters of middle width.
constexpr int kNameCharacters = 24;
constexpr int kCellMargin = 16;

QString longestDate(const QLocale &locale)
{
    return locale.toString(QDateTime(QDate(2028, 10, 28), QTime(22, 48)), QLocale::ShortFormat);
}

QString longestSize(const QLocale &locale)
{
    constexpr qint64 kThousand = 1000;
    const QString bytes = locale.formattedDataSize(kThousand, 1, QLocale::DataSizeTraditionalFormat);
    const QString kilobytes = locale.formattedDataSize(kThousand * kThousand, 1, QLocale::DataSizeTraditionalFormat);
    return bytes.size() > kilobytes.size() ? bytes : kilobytes;
}

/// Wide enough for @p text and for the column's own title.
int columnWidth(const QTableView *table, int column, const QString &text)
{
    return qMax(table->fontMetrics().horizontalAdvance(text) + kCellMargin,
                table->horizontalHeader()->sectionSizeHint(column));
}

void layOutTable(QTableView *table)
{
    QHeaderView *header = table->horizontalHeader();
    header->setSectionResizeMode(LocalFiles::NameColumn, QHeaderView::Stretch);
    header->resizeSection(LocalFiles::SizeColumn,
                          columnWidth(table, LocalFiles::SizeColumn, longestSize(table->locale())));
    header->resizeSection(LocalFiles::TypeColumn,
                          columnWidth(table, LocalFiles::TypeColumn, QStringLiteral("mpg-Datei")));
    header->resizeSection(LocalFiles::DateColumn,
                          columnWidth(table, LocalFiles::DateColumn, longestDate(table->locale())));
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

} // namespace

void Transfer::makeModels()
{
    deleteModels();
    const QString label = deviceRoot.isEmpty() ? QString() : DeviceLocator().volumeLabel(deviceRoot);
    m_folders = std::make_unique<FilteredVolume>(deviceRoot, label, QDir::Dirs | QDir::NoDotAndDotDot, locale());
    m_entries =
        std::make_unique<FilteredVolume>(deviceRoot, label, QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot, locale());
    ui->treeView->setModel(m_folders->model());
    for (int column = LocalFiles::SizeColumn; column <= LocalFiles::DateColumn; ++column)
        ui->treeView->hideColumn(column);
    ui->tableView->setModel(m_entries->model());
    layOutTable(ui->tableView);
    fitColumns();
    connect(ui->tableView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { ui->actionDeleteSelectedItems->setEnabled(ui->tableView->selectionModel()->hasSelection()); });
    showCurrentFolder();
}

/// In a narrow table the names need the room: first the types go, which the names' endings tell as well, then the
/// dates, at last the sizes.
void Transfer::fitColumns()
{
    QTableView *table = ui->tableView;
    const QHeaderView *header = table->horizontalHeader();
    if (header->count() <= LocalFiles::DateColumn)
        return;
    // A list that grows gets a scroll bar: no column is to go on its account.
    const QScrollBar *bar = table->verticalScrollBar();
    const int barToCome = bar->isVisible() ? 0 : bar->sizeHint().width();
    int room = table->viewport()->width() - barToCome - kNameCharacters * table->fontMetrics().averageCharWidth();
    for (const int column : {LocalFiles::SizeColumn, LocalFiles::DateColumn, LocalFiles::TypeColumn}) {
        // A hidden column is 0 wide until it is shown again.
        table->setColumnHidden(column, false);
        room -= header->sectionSize(column);
        table->setColumnHidden(column, room < 0);
    }
}

bool Transfer::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == ui->tableView->viewport() && event->type() == QEvent::Resize)
        fitColumns();
    // "FINE" comes back at the end of each copy.
    if (watched == ui->pushBtnForward && event->type() == QEvent::EnabledChange && ui->pushBtnForward->isEnabled())
        goToFinish();
    return QWidget::eventFilter(watched, event);
}

void Transfer::goToFinish()
{
    // Of a page that is not shown it would take the focus all the same, and Enter would press it unseen.
    if (!isVisible())
        return;
    ui->pushBtnForward->setFocus();
    // The window may lie behind the one that the songs were dragged from: there no page follows the focus.
    for (QWidget *above = parentWidget(); above; above = above->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(above))
            area->ensureWidgetVisible(ui->pushBtnForward);
    }
}

void Transfer::deleteModels()
{
    // The views make selections of their own for each model; those go together with it.
    ui->treeView->setModel(nullptr);
    ui->tableView->setModel(nullptr);
    ui->actionDeleteSelectedItems->setEnabled(false);
    m_folders.reset();
    m_entries.reset();
}

void Transfer::remakeModels()
{
    const QStringList expanded = expandedFolders();
    makeModels();
    for (const QString &folder : expanded)
        ui->treeView->expand(m_folders->index(folder));
    showInTree();
}

QStringList Transfer::expandedFolders() const
{
    QStringList folders;
    const QAbstractItemModel *model = ui->treeView->model();
    for (QModelIndex index = model->index(0, 0); index.isValid(); index = ui->treeView->indexBelow(index)) {
        if (ui->treeView->isExpanded(index))
            folders.append(m_folders->path(index));
    }
    return folders;
}

QString Transfer::folderAt(FilteredVolume &volume, const QModelIndex &index) const
{
    const QString path = volume.path(index);
    return path == QDir::cleanPath(deviceRoot) ? deviceRoot : path;
}

void Transfer::enterFolder(const QString &folder)
{
    if (folder != currentFolder) {
        ui->tableView->clearSelection();
        currentFolder = folder;
    }
    showCurrentFolder();
    m_folderText = currentFolder.mid(deviceRoot.size());
    showFolderText();
}

void Transfer::showCurrentFolder()
{
    if (m_entries)
        ui->tableView->setRootIndex(m_entries->index(currentFolder));
}

void Transfer::showInTree()
{
    if (!m_folders)
        return;
    const QModelIndex index = m_folders->index(currentFolder);
    ui->treeView->setCurrentIndex(index);
    ui->treeView->scrollTo(index);
}

void Transfer::enterBusy()
{
    busy = true;
    // The player may have been unplugged and be back: what is found under its root is then another volume.
    if (!m_player.isThere()) {
        const Player found = Player::find();
        if (found.isFound() && found.root() == deviceRoot)
            m_player = found;
    }
    m_playerGone = false;
    showBusy(true);
    if (m_folders)
        m_folders->freeze();
    if (m_entries)
        m_entries->freeze();
    ui->treeView->blockSignals(true);
    ui->tableView->blockSignals(true);
}

void Transfer::leaveBusy()
{
    // Models made anew show what has become of the disk meanwhile.
    if (m_entries)
        remakeModels();
    ui->treeView->blockSignals(false);
    ui->tableView->blockSignals(false);
    showBusy(false);
    busy = false;
}

/// What answers to nothing during a copy or a deletion is to look so.
void Transfer::showBusy(bool shown)
{
    ui->pButPc->setEnabled(!shown);
    ui->pushBtnBack->setEnabled(!shown);
    // It comes back with the next selection.
    if (shown)
        ui->actionDeleteSelectedItems->setEnabled(false);
}

/// Once it is gone it counts as gone until the work ends: asking a volume that no longer answers once for each file
/// that is left takes minutes, and what appears in its place meanwhile is not what the work began with.
bool Transfer::isPlayerThere()
{
    m_playerGone = m_playerGone || !m_player.isThere();
    return !m_playerGone;
}

void Transfer::endWork()
{
    emit updateLabelAction(tr("Se hai terminato clicca su FINE"));
    emit setPushButtonStopVisible(false);
}
