#include "endottimizza.h"

#include "ui_endottimizza.h"

#include "app/shared/altkeys.h"
#include "app/shared/sharedfonts.h"
#include "app/shared/styles.h"

#include <QDesktopServices>
#include <QDir>
#include <QUrl>

#include <utility>

EndOttimizza::EndOttimizza(QWidget *parent) : QWidget(parent), ui(std::make_unique<Ui::EndOttimizza>())
{
    ui->setupUi(this);
    ui->label_titolo->setStyleSheet(Styles::kTransparentLabel);
    setTitleFont(ui->label_titolo, sharedFonts().fontTitle22);
    ui->label_descr->setStyleSheet(Styles::kTransparentLabel);
    ui->label_descr->setFont(sharedFonts().fontText13);
    ui->label_kept->setStyleSheet(Styles::kTransparentLabel);
    ui->label_kept->setFont(sharedFonts().fontText13);
    connect(ui->label_kept, &QLabel::linkActivated, this, &EndOttimizza::openKeptFolder);
    ui->pushButton->setStyleSheet(Styles::kPage);
    setTitleFont(ui->pushButton, sharedFonts().fontTitle18);
    // A form gives no alignment to what lies in a layout of our own.
    ui->verticalLayout->setAlignment(ui->label_image, Qt::AlignHCenter);
    givePageAltKeys(*this);
    hide();
}

EndOttimizza::~EndOttimizza() = default;

void EndOttimizza::setFailCodeAndShow(int failCode)
{
    m_failCode = failCode;
    m_keptFolder = std::exchange(m_nextKeptFolder, QString());
    ui->label_image->setStyleSheet(m_failCode != 0 ? QStringLiteral("image: url(:/imgs/ko.png);")
                                                   : QStringLiteral("image: url(:/imgs/ok.png);"));
    setTexts();
    show();
    ui->pushButton->setFocus();
}

void EndOttimizza::setKeptFolder(const QString &folder)
{
    m_nextKeptFolder = folder;
}

void EndOttimizza::openKeptFolder() const
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(m_keptFolder));
}

void EndOttimizza::on_pushButton_clicked()
{
    emit backFromEndOttimizzaToFirstMenu();
}

void EndOttimizza::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        ui->retranslateUi(this);
        givePageAltKeys(*this);
        setTexts();
    }
    QWidget::changeEvent(event);
}

void EndOttimizza::setTexts()
{
    ui->label_kept->setVisible(!m_keptFolder.isEmpty());
    ui->label_kept->setText(tr("I file rimossi dal Corvin4 sono conservati in:") +
                            QStringLiteral("<br><a href=\"kept\" style=\"color: rgb(0,0,0);\">%1</a>")
                                .arg(QDir::toNativeSeparators(m_keptFolder).toHtmlEscaped()));
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
