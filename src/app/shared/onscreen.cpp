#include "onscreen.h"

#include <QScreen>
#include <QWidget>

void centreOnScreen(QWidget &window, const QPoint &centre)
{
    const QRect screen = window.screen()->availableGeometry();
    QRect place = window.frameGeometry();
    place.moveCenter(centre);
    place.moveRight(qMin(place.right(), screen.right()));
    place.moveBottom(qMin(place.bottom(), screen.bottom()));
    place.moveLeft(qMax(place.left(), screen.left()));
    place.moveTop(qMax(place.top(), screen.top()));
    window.move(place.topLeft());
}
