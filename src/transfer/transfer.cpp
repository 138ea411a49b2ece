#include "transfer.h"

#include "app/shared/altkeys.h"
#include "app/shared/questionbox.h"
#include "app/shared/sharedfonts.h"
#include "app/shared/styles.h"
#include "disk/worklock.h"
#include "filemanager.h"
#include "filteredvolume.h"
#include "ui_transfer.h"

#include <QDebug>
#include <QHeaderView>
#include <QScrollBar>
#include <QShowEvent>

namespace {
constexpr int kDropPage = 0;
constexpr int kInstructionsPage = 1;
} // namespace

Transfer::Transfer(QWidget *parent) : QWidget(parent), ui(std::make_unique<Ui::Transfer>())
{
    ui->setupUi(this);
    applyFonts();
    // An icon knows its picture for screens of high resolution, too.
    ui->labelPlayer->setPixmap(QIcon(QStringLiteral(":/imgs/corvin88x60.png")).pixmap(ui->labelPlayer->maximumSize()));
    ui->actionDeleteSelectedItems->setIcon(QIcon(QStringLiteral(":/imgs/chiudi.png")));
    ui->actionDeleteSelectedItems->setShortcut(QKeySequence::Delete);
    ui->actionDeleteSelectedItems->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(ui->actionDeleteSelectedItems);
    ui->toolButtonDelete->setDefaultAction(ui->actionDeleteSelectedItems);
    // The page takes all drags itself: a view that took them would answer for its own rows.
    const QList<QAbstractItemView *> views = {ui->treeView, ui->tableView};
    for (QAbstractItemView *view : views) {
        view->setAcceptDrops(false);
        view->viewport()->setAcceptDrops(false);
        view->verticalScrollBar()->setStyleSheet(Styles::kScrollBar);
        view->horizontalScrollBar()->setStyleSheet(Styles::kScrollBar);
        auto *corner = new QWidget(view);
        corner->setStyleSheet(Styles::kScrollCorner);
        view->setCornerWidget(corner);
    }
    ui->tableView->viewport()->installEventFilter(this);
    ui->pushBtnForward->installEventFilter(this);
    setDropAreaHovered(false);
    setBrowsing(false);
    givePageAltKeys(*this);
    hide();
}

Transfer::~Transfer()
{
    deleteModels();
}

void Transfer::applyFonts()
{
    const SharedFonts &fonts = sharedFonts();
    const QList<QWidget *> titles = {ui->pButPc,      ui->labelInstruction, ui->dropArea,
                                     ui->labelSelect, ui->pushBtnBack,      ui->pushBtnForward};
    for (QWidget *title : titles)
        setTitleFont(title, fonts.fontTitle18);
    ui->labelFolder->setFont(fonts.fontText13);
    ui->treeView->setFont(fonts.fontText11);
    ui->tableView->setFont(fonts.fontText11);
    ui->tableView->horizontalHeader()->setFont(fonts.fontText11Bold);
}

void Transfer::prepare(const QString &root)
{
    deviceRoot = root;
    currentFolder = root;
    dropTarget.clear();
    m_player = Player(root);
    m_playerGone = false;
    m_folderTextCleared = false;
    m_folderText.clear();
    ui->retranslateUi(this);
    givePageAltKeys(*this);
    setDropAreaHovered(false);
    setBrowsing(false);
    makeModels();
}

bool Transfer::isFinishPending() const
{
    return ui->pushBtnForward->isEnabled();
}

QString Transfer::pathIn(const QString &folder, const QString &name)
{
    return folder.endsWith(QLatin1Char('/')) ? folder + name : folder + QLatin1Char('/') + name;
}

void Transfer::setBrowsing(bool browsing)
{
    // A stack is as wide and as high as its largest page, shown or not.
    const QSizePolicy::Policy size = browsing ? QSizePolicy::Ignored : QSizePolicy::Preferred;
    ui->istruzioniTransfer->setSizePolicy(size, size);
    ui->stackedWidget->setCurrentIndex(browsing ? kDropPage : kInstructionsPage);
    ui->labelInstruction->setVisible(!browsing);
    const QList<QWidget *> widgets = {ui->widgetDevice, ui->treeView,    ui->tableView,
                                      ui->labelSelect,  ui->labelFolder, ui->toolButtonDelete};
    for (QWidget *widget : widgets)
        widget->setVisible(browsing);
}

void Transfer::showFolderText()
{
    m_folderTextCleared = true;
    ui->labelFolder->setText(m_folderText);
    // An empty line would push what stands above it out of the middle.
    ui->labelFolder->setMaximumHeight(m_folderText.isEmpty() ? 0 : QWIDGETSIZE_MAX);
    ui->labelFolder->setToolTip(m_folderText);
}

void Transfer::on_pButPc_clicked()
{
    if (busy)
        return;
    if (!openHomeInFileManager())
        qInfo() << "Transfer : Nessun file manager";
    qInfo() << "Transfer : Enter";
    setBrowsing(true);
    m_folderText.clear();
    showFolderText();
    ui->treeView->expandToDepth(0);
    ui->treeView->setFocus();
}

void Transfer::on_treeView_clicked(const QModelIndex &index)
{
    if (busy || !m_folders || !index.isValid())
        return;
    enterFolder(folderAt(*m_folders, index));
}

void Transfer::on_tableView_doubleClicked(const QModelIndex &index)
{
    if (busy || !m_entries || !index.isValid() || !m_entries->isDir(index))
        return;
    enterFolder(folderAt(*m_entries, index));
    showInTree();
}

void Transfer::on_pushBtnBack_clicked()
{
    if (busy)
        return;
    emit backFromTransferToFirstMenu();
    deleteModels();
}

void Transfer::on_pushBtnForward_clicked()
{
    if (busy)
        return;
    // A run that was refused would leave the songs outside the player's database, and the window could be closed.
    if (!WorkLock().isTaken()) {
        tellOtherWindowWorks(window());
        return;
    }
    ui->pushBtnForward->setEnabled(false);
    deleteModels();
    emit backFromTransferToOttimizza();
    emit startOttimizzaProcedure();
}

void Transfer::on_stopActionPressed()
{
    aborted = true;
}

void Transfer::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        ui->retranslateUi(this);
        givePageAltKeys(*this);
        if (m_folderTextCleared)
            showFolderText();
        // The file types in the table are texts that were made when the folder was read.
        if (!busy && m_entries)
            remakeModels();
    }
    QWidget::changeEvent(event);
}

void Transfer::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    // A window that comes back from the task bar shows its page too: the focus stays where the user left it.
    if (!event->spontaneous())
        ui->pButPc->setFocus();
}
