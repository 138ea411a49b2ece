#include "istruzionitransfer.h"

#include "app/sharedfonts.h"
#include "ui_istruzionitransfer.h"

#include <QEvent>
#include <QStyle>

namespace {
constexpr int kPictureHeight = 56;
} // namespace

IstruzioniTransfer::IstruzioniTransfer(QWidget *parent)
    : QWidget(parent), ui(std::make_unique<Ui::IstruzioniTransfer>())
{
    ui->setupUi(this);
    const SharedFonts &fonts = sharedFonts();
    for (QLabel *number : {ui->labelNumber1, ui->labelNumber2, ui->labelNumber3})
        number->setFont(fonts.fontTitle22);
    for (QLabel *text : {ui->labelText1, ui->labelText2, ui->labelText3})
        text->setFont(fonts.fontText13);
    const auto picture = [](const QIcon &icon) { return icon.pixmap(QSize(2 * kPictureHeight, kPictureHeight)); };
    ui->labelPicture1->setPixmap(QPixmap(QStringLiteral(":/imgs/corvin88x60.png")));
    ui->labelPicture2->setPixmap(picture(style()->standardIcon(QStyle::SP_DirOpenIcon)));
    ui->labelPicture3->setPixmap(picture(QIcon(QStringLiteral(":/imgs/ok.png"))));
}

IstruzioniTransfer::~IstruzioniTransfer() = default;

void IstruzioniTransfer::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        ui->retranslateUi(this);
    QWidget::changeEvent(event);
}
