#include "connect.h"

#include "ui_connect.h"

#include "app/sharedfonts.h"

#include <QEvent>

Connect::Connect(QWidget *parent) : QWidget(parent), ui(std::make_unique<Ui::Connect>())
{
    ui->setupUi(this);
    ui->label_descr->setFont(sharedFonts().fontTitle18);
    ui->label_titolo->setFont(sharedFonts().fontTitle18);
    hide();
}

Connect::~Connect() = default;

void Connect::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        ui->retranslateUi(this);
    QWidget::changeEvent(event);
}
