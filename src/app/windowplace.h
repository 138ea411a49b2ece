#pragma once

#include <QList>
#include <QRect>

/// Where a window stands when it opens, without its frame, in pixels of the whole desktop. @p kept is where it was
/// left, invalid at a first start; @p screens are the screens' work areas, the first one where a new window opens; none
/// is no screen at all. The place is @p kept while a screen still holds all of it, else the middle of the first screen
/// in the size @p wanted, which must fit there.
QRect openingPlace(const QRect &kept, const QSize &wanted, const QList<QRect> &screens);

/// Where the window was left, from the file "window.ini" in the data folder; invalid when nothing, or nothing sensible,
/// is stored there.
QRect storedPlace();
/// Stores where the window is left. A store that cannot be written is passed over.
void storePlace(const QRect &place);

/// Whether the window filled its screen when it was left.
bool wasMaximized();
void storeMaximized(bool maximized); ///< stores it
