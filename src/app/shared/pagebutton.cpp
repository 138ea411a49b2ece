#include "pagebutton.h"

#include "sharedfonts.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QShortcut>
#include <QToolTip>

namespace {

constexpr int kSideMargin = 16;
constexpr int kUpperMargin = 8;
constexpr int kBesidePicture = 14;
constexpr int kAbovePicture = 3;
constexpr int kBetweenLines = 2;
constexpr int kRadius = 5;
constexpr int kWidthForFewLetters = 40;
// In percent of the ground's own lightness.
constexpr int kHoverLightness = 145;
constexpr int kPressedDarkness = 170;
const QColor kDisabledText(200, 200, 200);
const QColor kDisabledGround(92, 92, 92);
const QColor kEdge(110, 110, 110); // shows on the dark pages and on the bright ones

QFont lineFont()
{
    QFont font = sharedFonts().fontText11;
    // A painter fills what a font leaves open from the button's own, the title font: its family would come before the
    // one that stands for the text font.
    font.setFamilies({font.family()});
    font.setStyleName(QString());
    return font;
}

} // namespace

PageButton::PageButton(QWidget *parent) : QPushButton(parent)
{
    setAttribute(Qt::WA_Hover);
    // Outside a dialog Enter would do nothing.
    setAutoDefault(true);
}

void PageButton::setDescription(const QString &text)
{
    m_description = text;
    setAccessibleDescription(text);
    updateGeometry();
    update();
}

void PageButton::setPressedByEscape(bool pressed)
{
    if (pressed == isPressedByEscape())
        return;
    delete m_escape;
    m_escape = pressed ? new QShortcut(Qt::Key_Escape, this) : nullptr;
    if (!m_escape)
        return;
    m_escape->setAutoRepeat(false);
    connect(m_escape, &QShortcut::activated, this, &QAbstractButton::click);
}

bool PageButton::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip || m_description.isEmpty() || showsWholeLine())
        return QPushButton::event(event);
    // What the tool tip says otherwise, the key that presses it, comes second.
    const QString tip = toolTip().isEmpty() ? m_description : m_description + QLatin1Char('\n') + toolTip();
    QToolTip::showText(static_cast<const QHelpEvent *>(event)->globalPos(), tip, this);
    return true;
}

void PageButton::keyPressEvent(QKeyEvent *event)
{
    // A key that is held down goes on on the next page, and would press what has the focus there.
    if (!event->isAutoRepeat())
        QPushButton::keyPressEvent(event);
}

int PageButton::textHeight() const
{
    return fontMetrics().size(Qt::TextShowMnemonic, text()).height();
}

int PageButton::lineHeight() const
{
    return m_description.isEmpty() ? 0 : kBetweenLines + QFontMetrics(lineFont()).height();
}

bool PageButton::hasRoomForLine() const
{
    return height() >= textHeight() + lineHeight() + kUpperMargin;
}

bool PageButton::showsWholeLine() const
{
    return hasRoomForLine() && QFontMetrics(lineFont()).horizontalAdvance(m_description) <= textPlace().width();
}

/// The width of all that stands beside the texts.
int PageButton::besideText() const
{
    return 2 * kSideMargin + (icon().isNull() ? 0 : iconSize().width() + kBesidePicture);
}

QSize PageButton::minimumSizeHint() const
{
    const int width = fontMetrics().size(Qt::TextShowMnemonic, text()).width();
    return {qMax(kWidthForFewLetters, width + besideText()), textHeight() + 2 * kUpperMargin};
}

QSize PageButton::sizeHint() const
{
    const QSize least = minimumSizeHint();
    const int line = m_description.isEmpty() ? 0 : QFontMetrics(lineFont()).horizontalAdvance(m_description);
    const int picture = icon().isNull() ? 0 : iconSize().height();
    return {qMax(least.width(), line + besideText()), qMax(textHeight() + lineHeight(), picture) + 2 * kUpperMargin};
}

QColor PageButton::ground() const
{
    const QColor own = palette().color(backgroundRole());
    if (!isEnabled())
        return kDisabledGround;
    if (isDown())
        return own.darker(kPressedDarkness);
    return underMouse() ? own.lighter(kHoverLightness) : own;
}

QColor PageButton::textColour() const
{
    return isEnabled() ? palette().color(foregroundRole()) : kDisabledText;
}

/// Where the texts stand: beside the picture, if there is one; as far in from both sides when they are centred.
QRect PageButton::textPlace() const
{
    QRect place = rect().adjusted(kSideMargin, 0, -kSideMargin, 0);
    if (!icon().isNull())
        place.setLeft(place.left() + iconSize().width() + kBesidePicture);
    // A button that is pressed goes down.
    return isDown() ? place.translated(0, 1) : place;
}

void PageButton::paintFrame(QPainter &painter) const
{
    const bool focused = hasFocus() && isEnabled();
    const int edge = focused ? 2 : 1;
    painter.setPen(QPen(focused ? palette().color(foregroundRole()) : kEdge, edge));
    painter.setBrush(ground());
    const qreal inside = edge / 2.0;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inside, inside, -inside, -inside), kRadius, kRadius);
}

void PageButton::paintTexts(QPainter &painter) const
{
    const QRect place = textPlace();
    const bool withLine = !m_description.isEmpty() && hasRoomForLine();
    const int across = icon().isNull() ? Qt::AlignHCenter : Qt::AlignLeft;
    painter.setFont(font());
    painter.setPen(textColour());
    if (!withLine) {
        painter.drawText(place, across | Qt::AlignVCenter | Qt::TextShowMnemonic, text());
        return;
    }
    const int top = (height() - textHeight() - lineHeight()) / 2 + place.top();
    painter.drawText(QRect(place.left(), top, place.width(), textHeight()), across | Qt::TextShowMnemonic, text());
    const QFont small = lineFont();
    painter.setFont(small);
    painter.setPen(QColor(isEnabled() ? QColor(225, 225, 225) : kDisabledText));
    painter.drawText(QRect(place.left(), top + textHeight() + kBetweenLines, place.width(), lineHeight()), across,
                     QFontMetrics(small).elidedText(m_description, Qt::ElideRight, place.width()));
}

void PageButton::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintFrame(painter);
    if (!icon().isNull()) {
        // In a low button the picture is smaller, not cut.
        QRect place(QPoint(), iconSize().boundedTo(QSize(width(), height() - 2 * kAbovePicture)));
        place.moveCenter(QPoint(kSideMargin + iconSize().width() / 2, rect().center().y()));
        icon().paint(&painter, place, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    }
    paintTexts(painter);
}
