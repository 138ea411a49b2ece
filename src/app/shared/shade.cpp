#include "shade.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>

namespace {

const QColor kDarkness(0, 0, 0, 140);
const QString kCurtainName = QStringLiteral("shade");

/// Covers a window, whatever size it gets.
class Curtain : public QWidget
{
public:
    explicit Curtain(QWidget *window) : QWidget(window)
    {
        setObjectName(kCurtainName);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        window->installEventFilter(this);
        setGeometry(window->rect());
        show();
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Resize)
            setGeometry(parentWidget()->rect());
        return QWidget::eventFilter(watched, event);
    }

    void paintEvent(QPaintEvent *event) override
    {
        Q_UNUSED(event)
        QPainter(this).fillRect(rect(), kDarkness);
    }
};

bool isBright(const QWidget *window)
{
    return window->isVisible() && window->windowType() == Qt::Window &&
           !window->findChild<QWidget *>(kCurtainName, Qt::FindDirectChildrenOnly);
}

} // namespace

Shade::Shade()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (isBright(window))
            m_curtains.emplace_back(new Curtain(window));
    }
}

Shade::~Shade()
{
    for (const QPointer<QWidget> &curtain : m_curtains)
        delete curtain;
}
