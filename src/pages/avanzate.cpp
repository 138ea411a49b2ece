#include "avanzate.h"

#include "ui_avanzate.h"

#include "app/shared/altkeys.h"
#include "app/shared/sharedfonts.h"
#include "devicepresent.h"

#include <QDebug>
#include <QPointer>
#include <QShowEvent>

Avanzate::Avanzate(QWidget *parent) : QWidget(parent), ui(std::make_unique<Ui::Avanzate>())
{
    ui->setupUi(this);
    const QFont &font = sharedFonts().fontTitle18;
    setTitleFont(ui->labelDescr, font);
    setTitleFont(ui->pushBtnUpdate, font);
    setTitleFont(ui->pushBtnBackup, font);
    setTitleFont(ui->pushBtnRestore, font);
    setTitleFont(ui->pushBtnInstall, font);
    setTitleFont(ui->pushBtnInstallAndClean, font);
    setTitleFont(ui->pushBtnInstallAndRestore, font);
    setTitleFont(ui->pushBtnBack, font);
    givePageAltKeys(*this);
    hide();
}

Avanzate::~Avanzate() = default;

void Avanzate::on_pushBtnUpdate_clicked()
{
    runOperation("updateCorvinWithLastRelease", &Avanzate::updateCorvinWithLastRelease);
}

void Avanzate::on_pushBtnBackup_clicked()
{
    runOperation("makeSecurityCopyOfSongs", &Avanzate::makeSecurityCopyOfSongs);
}

void Avanzate::on_pushBtnRestore_clicked()
{
    runOperation("restoreSecurityCopyOfSongs", &Avanzate::restoreSecurityCopyOfSongs);
}

void Avanzate::on_pushBtnInstall_clicked()
{
    runOperation("reinstallOpSysOnly", &Avanzate::reinstallOpSysOnly);
}

void Avanzate::on_pushBtnInstallAndClean_clicked()
{
    runOperation("reinstallOpSysAndCleanSongs", &Avanzate::reinstallOpSysAndCleanSongs);
}

void Avanzate::on_pushBtnInstallAndRestore_clicked()
{
    runOperation("reinstallOpSysAndRestoreSongs", &Avanzate::reinstallOpSysAndRestoreSongs);
}

void Avanzate::on_pushBtnBack_clicked()
{
    emit backFromAvanzateToFirstMenu();
}

/// @p name is the operation's signal as the log writes it.
void Avanzate::runOperation(const char *name, Operation operation)
{
    if (!isDevicePresent())
        return;
    // A disabled page loses the focus.
    const QPointer<QWidget> focused = focusWidget();
    qInfo() << "Avanzate : START" << name;
    ui->pushBtnBack->setEnabled(false);
    emit(this->*operation)();
    ui->pushBtnBack->setEnabled(true);
    qInfo() << "Avanzate : END" << name;
    if (focused)
        focused->setFocus();
}

bool Avanzate::isDevicePresent()
{
    return checkDevicePresent(m_deviceLocator, this, tr("Corvin4 non collegato"),
                              tr("Ricollega Corvin4 alla porta USB"));
}

void Avanzate::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        ui->retranslateUi(this);
        givePageAltKeys(*this);
    }
    QWidget::changeEvent(event);
}

void Avanzate::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    // A window that comes back from the task bar shows its page too: the focus stays where the user left it.
    if (!event->spontaneous())
        ui->pushBtnUpdate->setFocus();
}
