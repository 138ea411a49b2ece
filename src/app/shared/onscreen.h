#pragma once

#include <QPoint>

class QWidget;

/// Moves @p window, which is shown, so that its centre, frame included, comes as near to @p centre (pixels of the whole
/// desktop) as its screen lets it: all of it stays on the screen, or its upper left where it is larger.
void centreOnScreen(QWidget &window, const QPoint &centre);
