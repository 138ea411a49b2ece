#include "connect.h"

#include "ui_connect.h"

#include "app/shared/sharedfonts.h"

#include <QEvent>

Connect::Connect(QWidget *parent) : QWidget(parent), ui(std::make_unique<Ui::Connect>())
{
    ui->setupUi(this);
    setTitleFont(ui->label_descr, sharedFonts().fontTitle18);
    setTitleFont(ui->label_titolo, sharedFonts().fontTitle18);
    hide();
}

Connect::~Connect() = default;

void Connect::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        ui->retranslateUi(this);
    QWidget::changeEvent(event);
}
