#include "endottimizza.h"

#include "ui_endottimizza.h"

#include "app/shared/sharedfonts.h"
#include "app/shared/styles.h"

EndOttimizza::EndOttimizza(QWidget *parent) : QWidget(parent), ui(std::make_unique<Ui::EndOttimizza>())
{
    ui->setupUi(this);
    ui->label_titolo->setStyleSheet(Styles::kTransparentLabel);
    setTitleFont(ui->label_titolo, sharedFonts().fontTitle22);
    ui->label_descr->setStyleSheet(Styles::kTransparentLabel);
    ui->label_descr->setFont(sharedFonts().fontText13);
    ui->pushButton->setStyleSheet(Styles::kPage);
    setTitleFont(ui->pushButton, sharedFonts().fontTitle18);
    hide();
}

EndOttimizza::~EndOttimizza() = default;

void EndOttimizza::setFailCodeAndShow(int failCode)
{
    m_failCode = failCode;
    ui->label_image->setStyleSheet(m_failCode != 0 ? QStringLiteral("image: url(:/imgs/ko.png);")
                                                   : QStringLiteral("image: url(:/imgs/ok.png);"));
    setTexts();
    show();
}

void EndOttimizza::on_pushButton_clicked()
{
    emit backFromEndOttimizzaToFirstMenu();
}

void EndOttimizza::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        ui->retranslateUi(this);
        setTexts();
    }
    QWidget::changeEvent(event);
}

void EndOttimizza::setTexts()
{
    if (m_failCode == 0) {
        ui->label_titolo->setText(tr("Ottimizzazione completata con successo"));
        ui->label_descr->setText(tr("Scollegare il Corvin4 dalla porta USB\n"
                                    "Spegnerlo e riaccenderlo per completare la procedura"));
        return;
    }
    ui->label_titolo->setText(tr("Ottimizzazione non completata correttamente"));
    // Deliberate: this message stays Italian in every language.
    ui->label_descr->setText(QStringLiteral("Riesegui la procedura di ottimizzazione"));
}
