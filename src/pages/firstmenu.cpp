#include "firstmenu.h"

#include "ui_firstmenu.h"

#include "app/shared/sharedfonts.h"
#include "devicepresent.h"

#include <QEvent>

FirstMenu::FirstMenu(QWidget *parent) : QWidget(parent), ui(std::make_unique<Ui::FirstMenu>())
{
    ui->setupUi(this);
    const QFont &font = sharedFonts().fontTitle18;
    setTitleFont(ui->labelDescr, font);
    setTitleFont(ui->pushBtnTransfer, font);
    setTitleFont(ui->pushBtnOptimize, font);
    setTitleFont(ui->pushBtnUpRes, font);
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
    if (event->type() == QEvent::LanguageChange)
        ui->retranslateUi(this);
    QWidget::changeEvent(event);
}
