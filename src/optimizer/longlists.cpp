#include "longlists.h"

#include "ottimizzarun.h"

#include <QCoreApplication>

namespace {
/// How many paths are let go between two looks at the events.
constexpr int kPiece = 10000;
} // namespace

PathSet setOf(const QStringList &paths)
{
    PathSet set;
    set.reserve(paths.size());
    for (int i = 0; i < paths.size(); ++i) {
        set.insert(paths.at(i));
        if (i % kListingRound == 0)
            QCoreApplication::processEvents();
    }
    return set;
}

void letGo(QStringList &paths)
{
    while (!paths.isEmpty()) {
        paths.erase(paths.end() - qMin(kPiece, paths.size()), paths.end());
        QCoreApplication::processEvents();
    }
}

void letGo(PathSet &paths)
{
    while (paths.drop(kPiece))
        QCoreApplication::processEvents();
}
