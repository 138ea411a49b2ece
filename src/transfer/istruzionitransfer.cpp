#include "istruzionitransfer.h"

#include "app/shared/sharedfonts.h"
#include "ui_istruzionitransfer.h"

#include <QEvent>
#include <QIcon>
#include <QPainter>

namespace {

constexpr QSize kPictureSize(88, 60);

/// The drop area in small: a dashed frame, and an arrow that leads into it.
QPixmap dropPicture(qreal ratio)
{
    QPixmap picture(kPictureSize * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0x51, 0x51, 0x51), 2, Qt::DashLine));
    painter.drawRect(QRectF(QPointF(), kPictureSize).adjusted(4, 4, -4, -4));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(249, 191, 0));
    painter.drawPolygon(QPolygonF({{39, 12}, {49, 12}, {49, 29}, {60, 29}, {44, 48}, {28, 29}, {39, 29}}));
    return picture;
}

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
    ui->labelPicture1->setPixmap(QIcon(QStringLiteral(":/imgs/corvin88x60.png")).pixmap(kPictureSize));
    ui->labelPicture2->setPixmap(dropPicture(devicePixelRatioF()));
    ui->labelPicture3->setPixmap(QIcon(QStringLiteral(":/imgs/ok.png")).pixmap(kPictureSize));
}

IstruzioniTransfer::~IstruzioniTransfer() = default;

int IstruzioniTransfer::heightForWidth(int width) const
{
    Q_UNUSED(width)
    return -1;
}

void IstruzioniTransfer::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        ui->retranslateUi(this);
    QWidget::changeEvent(event);
}
