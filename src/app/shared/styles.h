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

/// The scroll bars: that of a page that is higher than the window is all that tells of what lies below.
inline constexpr QLatin1String kScrollBar =
    sheet("QScrollBar:vertical {background-color: rgb(190, 190, 190); border: none; width: 16px;}"
          "QScrollBar::handle:vertical {background-color: rgb(51, 51, 51); border: 1px solid rgb(110, 110, 110);"
          " border-radius: 5px; min-height: 32px; margin: 2px;}"
          "QScrollBar::handle:vertical:hover {background-color: rgb(90, 90, 90);}"
          "QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical {height: 0px;}"
          "QScrollBar:horizontal {background-color: rgb(190, 190, 190); border: none; height: 16px;}"
          "QScrollBar::handle:horizontal {background-color: rgb(51, 51, 51); border: 1px solid rgb(110, 110, 110);"
          " border-radius: 5px; min-width: 32px; margin: 2px;}"
          "QScrollBar::handle:horizontal:hover {background-color: rgb(90, 90, 90);}"
          "QScrollBar::add-line:horizontal, QScrollBar::sub-line:horizontal {width: 0px;}");

/// Where two scroll bars meet.
inline constexpr QLatin1String kScrollCorner = sheet("background-color: rgb(190, 190, 190);");

/// A message box: dark ground with an edge that shows on the dark pages too, amber text, pictures of our own, buttons
/// whose states can be told apart.
inline constexpr QLatin1String kMessageBox =
    sheet("QMessageBox {background-color: rgb(51, 51, 51); border: 1px solid rgb(150, 150, 150); icon-size: 48px;"
          " messagebox-question-icon: url(:/imgs/domanda.png);"
          " messagebox-information-icon: url(:/imgs/informazione.png);"
          " messagebox-warning-icon: url(:/imgs/avviso.png); messagebox-critical-icon: url(:/imgs/avviso.png);}"
          "QMessageBox QLabel {background-color: transparent; color: rgb(249,191,0);}"
          "QMessageBox QTextEdit {background-color: rgb(35, 35, 35); color: rgb(249,191,0);"
          " border: 1px solid rgb(110, 110, 110);}"
          "QMessageBox QFrame[frameShape=\"4\"] {border: none; max-height: 1px; background-color: rgb(110, 110, 110);}"
          "QMessageBox QScrollBar:vertical {background-color: rgb(35, 35, 35); border: none; width: 16px;}"
          "QMessageBox QScrollBar::handle:vertical {background-color: rgb(110, 110, 110); border-radius: 5px;"
          " min-height: 32px; margin: 2px;}"
          "QMessageBox QScrollBar::handle:vertical:hover {background-color: rgb(150, 150, 150);}"
          "QMessageBox QScrollBar::add-line:vertical, QMessageBox QScrollBar::sub-line:vertical {height: 0px;}"
          "QMessageBox QPushButton {background-color: rgb(66, 66, 66); color: rgb(249,191,0);"
          " border: 2px solid rgb(110, 110, 110); border-radius: 5px; min-width: 110px; min-height: 34px;"
          " padding: 2px 10px;}"
          "QMessageBox QPushButton:hover {background-color: rgb(90, 90, 90);}"
          "QMessageBox QPushButton:focus {border-color: rgb(249,191,0);}"
          "QMessageBox QPushButton:pressed {background-color: rgb(249,191,0); color: rgb(51, 51, 51);}"
          "QMessageBox QPushButton:disabled {color: rgb(200,200,200); border-color: rgb(66, 66, 66);}");

} // namespace Styles
