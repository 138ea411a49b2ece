#include "sharedfonts.h"

#include <QDirIterator>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QLabel>

namespace {

const QString kTextFamily = QStringLiteral("Helvetica");
const QString kTitleFamily = QStringLiteral("Bebas Neue");

QFont makeFont(const QString &family, int points, QFont::Weight weight)
{
    QFont font(family, points, weight);
    font.setItalic(false);
    return font;
}

QFont makeTitleFont(int points)
{
    QFont font = makeFont(kTitleFamily, points, QFont::Normal);
    // A system with the whole family installed has a second, thinner face of the same weight and would prefer it.
    font.setStyleName(QStringLiteral("Regular"));
    return font;
}

} // namespace

void registerEmbeddedFonts()
{
    QDirIterator files(QStringLiteral(":/fonts/"));
    while (files.hasNext()) {
        const QString path = files.next();
        const int id = QFontDatabase::addApplicationFont(path);
        const QString &wanted = path.endsWith(QLatin1String(".ttf")) ? kTextFamily : kTitleFamily;
        const QStringList families = QFontDatabase::applicationFontFamilies(id);
        for (const QString &family : families) {
            // The free files carry family names of their own; the program and its forms ask for the historic ones.
            if (family != wanted)
                QFont::insertSubstitution(wanted, family);
        }
    }
}

const SharedFonts &sharedFonts()
{
    static const SharedFonts fonts = {
        makeFont(kTextFamily, 10, QFont::Normal),
        makeFont(kTextFamily, 10, QFont::Bold),
        makeFont(kTextFamily, 11, QFont::Normal),
        makeFont(kTextFamily, 11, QFont::Bold),
        makeFont(kTextFamily, 13, QFont::Normal),
        makeTitleFont(14),
        makeTitleFont(18),
        makeTitleFont(22),
    };
    return fonts;
}

void setTitleFont(QWidget *widget, const QFont &font)
{
    widget->setFont(font);
    const QFontMetrics metrics(font);
    const int room = qMax(0, -metrics.tightBoundingRect(QStringLiteral("ÀÄÈÌÒÖÙÜ")).top() - metrics.ascent()) + 1;
    if (auto *label = qobject_cast<QLabel *>(widget)) {
        const QMargins margins = label->contentsMargins();
        label->setContentsMargins(margins.left(), room, margins.right(), room);
    } else {
        widget->setMinimumHeight(qMax(widget->minimumHeight(), metrics.height() + 2 * room));
    }
}
