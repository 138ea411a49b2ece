#pragma once

#include <QFont>

class QWidget;

/// The eight fonts that all pages share. None is italic; sizes are in points.
/// "Helvetica" is for text, "Bebas Neue" for titles.
struct SharedFonts
{
    QFont fontText10;     ///< Helvetica 10
    QFont fontText10Bold; ///< Helvetica 10 bold
    QFont fontText11;     ///< Helvetica 11
    QFont fontText11Bold; ///< Helvetica 11 bold
    QFont fontText13;     ///< Helvetica 13
    QFont fontTitle14;    ///< Bebas Neue 14
    QFont fontTitle18;    ///< Bebas Neue 18
    QFont fontTitle22;    ///< Bebas Neue 22
};

/// Registers every file below ":/fonts/" with the font database and makes the families "Helvetica" and "Bebas Neue"
/// resolve to them, whatever family names the files carry. Needs an application object; files that cannot be read are
/// passed over and the system's own fonts take their place.
void registerEmbeddedFonts();

/// The shared fonts, built at the first call and alive until the process ends. Needs an application object.
const SharedFonts &sharedFonts();

/// Gives @p widget (a label, button or check box) one of the shared title fonts, and with it the height that accented
/// capitals need: the title font states an ascent that ends below their accents, which a widget of that height cuts
/// off.
void setTitleFont(QWidget *widget, const QFont &font);
