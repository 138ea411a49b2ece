#pragma once

#include "testing.h"

/// The style sheets that several forms carry, letter for letter, on their own account: compared with the program's
/// constants, a form and its constant could change together unnoticed.
namespace FormSheets {

/// Pages and their buttons: dark grey ground, amber text.
inline const QString kPage = "background-color: rgb(51, 51, 51);\ncolor: rgb(249,191,0);"_s;

/// The same for a widget and its children, with grey text while disabled.
inline const QString kContainer = "* {\n\tbackground-color: rgb(51, 51, 51);\n\tcolor: rgb(249,191,0);\n}\n\n"
                                  "*:disabled {\n\tcolor: rgb(200,200,200);\n}\n"_s;

/// Black text straight on the window's picture.
inline const QString kTransparentLabel = "color: rgb(0,0,0);\nbackground-color: rgba(0, 0, 0, 0%);"_s;

} // namespace FormSheets
