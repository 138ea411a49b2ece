#pragma once

#include <QLatin1String>

/// Style sheets that several widgets share, letter for letter as the forms carry them.
namespace Styles {

/// A literal with the length the compiler knows: QLatin1String counts at run time with some compilers.
template <int size> constexpr QLatin1String sheet(const char (&text)[size])
{
    return QLatin1String(text, size - 1);
}

/// Dark grey ground, amber text: pages and buttons.
inline constexpr QLatin1String kPage = sheet("background-color: rgb(51, 51, 51);\ncolor: rgb(249,191,0);");

/// As kPage for a widget and its children, with grey text while disabled: INDIETRO, the language button.
inline constexpr QLatin1String kContainer =
    sheet("* {\n\tbackground-color: rgb(51, 51, 51);\n\tcolor: rgb(249,191,0);\n}\n\n"
          "*:disabled {\n\tcolor: rgb(200,200,200);\n}\n");

/// Black text straight on the window's picture.
inline constexpr QLatin1String kTransparentLabel = sheet("color: rgb(0,0,0);\nbackground-color: rgba(0, 0, 0, 0%);");

/// The amber progress bar.
inline constexpr QLatin1String kProgressBar =
    sheet("QProgressBar {border: 2px solid grey;border-radius: 5px;text-align: center;}"
          "QProgressBar::chunk {background-color: #f9bf00;width: 20px;}");

} // namespace Styles
