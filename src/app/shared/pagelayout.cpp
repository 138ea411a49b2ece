#include "pagelayout.h"

#include <QScopedValueRollback>

int PageLayout::heightForWidth(int width) const
{
    // Qt asks this function for the least height as well.
    if (m_asking)
        return QVBoxLayout::heightForWidth(width);
    const QScopedValueRollback<bool> asking(m_asking, true);
    return minimumHeightForWidth(width);
}
