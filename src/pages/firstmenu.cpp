#include "firstmenu.h"

#include "ui_firstmenu.h"

#include "app/shared/altkeys.h"
#include "app/shared/sharedfonts.h"
#include "devicepresent.h"

#include <QShowEvent>

FirstMenu::FirstMenu(QWidget *parent) : QWidget(parent), ui(std::make_unique<Ui::FirstMenu>())
{
    ui->setupUi(this);
    const QFont &font = sharedFonts().fontTitle18;
    setTitleFont(ui->labelDescr, font);
    setTitleFont(ui->pushBtnTransfer, font);
    setTitleFont(ui->pushBtnOptimize, font);
    setTitleFont(ui->pushBtnUpRes, font);
    givePageAltKeys(*this);
    hide();
}

FirstMenu::~FirstMenu() = default;

void FirstMenu::on_pushBtnTransfer_clicked()
{
    if (isDevicePresent())
        emit gotoTransfer();
}

void FirstMenu::on_pushBtnOptimize_clicked()
{
    if (isDevicePresent())
        emit gotoOptimizer();
}

void FirstMenu::on_pushBtnUpRes_clicked()
{
    if (isDevicePresent())
        emit gotoAvanzate();
}

bool FirstMenu::isDevicePresent()
{
    return checkDevicePresent(m_deviceLocator, this, tr("Corvin4 non collegato"),
                              tr("Ricollega Corvin4 alla porta USB"));
}

void FirstMenu::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        ui->retranslateUi(this);
        givePageAltKeys(*this);
    }
    QWidget::changeEvent(event);
}

void FirstMenu::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    // A window that comes back from the task bar shows its page too: the focus stays where the user left it.
    if (!event->spontaneous())
        ui->pushBtnTransfer->setFocus();
}
