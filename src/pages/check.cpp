#include "check.h"

#include "ui_check.h"

#include "app/shared/altkeys.h"
#include "app/shared/questionbox.h"
#include "app/shared/sharedfonts.h"
#include "device/player.h"
#include "disk/waitms.h"

#include <QEvent>
#include <QIcon>
#include <QPixmap>
#include <QResizeEvent>

namespace {

constexpr int kProgressMin = 0;
constexpr int kProgressMax = 100;
constexpr int kProgressStepMs = 10;
constexpr int kPictureSide = 160;
/// In a low window the picture gives way, down to this.
constexpr int kLeastPictureSide = 72;
constexpr int kPicturesInAPage = 3;

} // namespace

Check::Check(QWidget *parent) : QWidget(parent), ui(std::make_unique<Ui::Check>())
{
    ui->setupUi(this);
    // A plain QWidget subclass paints the ground of its style sheet only when told to.
    setAttribute(Qt::WA_StyledBackground);
    setTitleFont(ui->label_titolo, sharedFonts().fontTitle22);
    setTitleFont(ui->label_descr, sharedFonts().fontTitle18);
    setTitleFont(ui->pushButton, sharedFonts().fontTitle18);
    // A form gives no alignment to what lies in a layout of our own.
    ui->verticalLayout->setAlignment(ui->pushButton, Qt::AlignHCenter);
    givePageAltKeys(*this);
    showTexts();
    hide();
}

Check::~Check() = default;

void Check::runCheck(const QString &deviceRoot)
{
    enter(Stage::Running);
    ui->label_titolo->show();
    ui->label_descr->hide();
    ui->pushButton->hide();

    emit updateLabelAction(tr("CONTROLLO INTEGRITA' SOFTWARE ..."));
    emit setProgressBarMinVal(kProgressMin);
    emit setProgressBarMaxVal(kProgressMax);
    emit updateProgressBarVal(kProgressMin);
    emit setProgressBarVisible(true);
    emit setPushButtonStopVisible(false);
    sweepProgressBar();
    emit setProgressBarVisible(false);
    if (m_closing)
        return;

    if (Player(deviceRoot).hasSystemFiles()) {
        enter(Stage::Intact);
        ui->label_descr->show();
        ui->pushButton->show();
        ui->pushButton->setFocus();
        return;
    }
    enter(Stage::Damaged);
    ui->label_descr->show();
    offerReinstallation();
    finish();
}

/// Deliberate: a fixed pause of about a second, not a measure of work.
void Check::sweepProgressBar()
{
    for (int value = kProgressMin; value <= kProgressMax && !m_closing; ++value) {
        emit updateProgressBarVal(value);
        waitMs(kProgressStepMs);
    }
}

void Check::offerReinstallation()
{
    // Over the window and not over this page, whose style sheet would reach into the box.
    if (!askYesOrNo(window(), tr("File di sistema mancanti"),
                    tr("ATTENZIONE: file di sistema danneggiati o mancanti,\n\ntentare il ripristino ?"),
                    QMessageBox::Yes))
        return;
    enter(Stage::Restoring);
    emit reinstallOpSysOnly();
}

void Check::on_closeRequested()
{
    m_closing = true;
}

void Check::finish()
{
    emit setProgressBarVisible(false);
    emit checkDone();
}

void Check::on_pushButton_clicked()
{
    finish();
}

void Check::enter(Stage stage)
{
    m_stage = stage;
    showTexts();
}

/// A label draws a picture of another resolution than the screen's with jagged edges; an icon is scaled smoothly.
QPixmap Check::pictureForScreen(const QString &path) const
{
    const int side = qBound(kLeastPictureSide, height() / kPicturesInAPage, kPictureSide);
    return QIcon(path).pixmap(window()->windowHandle(), QSize(side, side));
}

void Check::showTexts()
{
    // The picture that is shown must not keep the page as high as it was made for.
    ui->label_descr->setMinimumHeight(m_stage == Stage::Intact ? kLeastPictureSide : 0);
    switch (m_stage) {
    case Stage::Running:
        ui->label_titolo->setText(tr("CHECK UP IN CORSO"));
        ui->label_descr->clear();
        break;
    case Stage::Intact:
        ui->label_titolo->setText(tr("CONTROLLO SOFTWARE COMPLETATO"));
        ui->label_descr->setPixmap(pictureForScreen(QStringLiteral(":/imgs/ok.png")));
        break;
    case Stage::Damaged:
        ui->label_titolo->setText(tr("CONTROLLO SOFTWARE COMPLETATO"));
        ui->label_descr->setText(tr("Problema rilevato durante il controllo del sistema operativo !!!"));
        break;
    case Stage::Restoring:
        ui->label_titolo->setText(tr("RIPRISTINO DEI FILE DEL SISTEMA OPERATIVO"));
        ui->label_descr->setText(tr("ATTENZIONE :\n\nNON Spegnere/Riavviare Corvin4 e NON scollegare il cavo "
                                    "USB.\n\nL'operazione potrebbe richiedere qualche minuto."));
        break;
    }
}

void Check::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        ui->retranslateUi(this);
        givePageAltKeys(*this);
        showTexts();
    }
    QWidget::changeEvent(event);
}

void Check::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (m_stage == Stage::Intact)
        showTexts();
}
