#pragma once

#include "testing.h"

/// The colour of the ground that stands for the window's picture behind a page.
constexpr QRgb kGround = qRgb(220, 220, 220);

/// The widgets of a page, shown at a size that has room for them, as they are seen on the window's picture.
inline QImage pictureOf(QWidget &page) {
    QImage picture(page.size(), QImage::Format_RGB32);
    picture.fill(kGround);
    QPainter painter(&picture);
    page.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
    return picture;
}

/// Where a widget stands on the picture of its page.
inline QRect placeOn(const QWidget &page, const QWidget &widget) {
    return {widget.mapTo(&page, QPoint()), widget.size()};
}
