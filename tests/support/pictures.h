#pragma once

#include "testing.h"

/// Counts the pixels of a picture for whose colour @p wanted holds.
template <typename Predicate> int countPixels(const QImage &image, Predicate wanted) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += wanted(image.pixelColor(x, y)) ? 1 : 0;
    return count;
}

/// What a widget shows, of exactly this colour.
inline int countPixels(QWidget &widget, const QColor &colour) {
    return countPixels(widget.grab().toImage(), [&colour](const QColor &seen) { return seen == colour; });
}
