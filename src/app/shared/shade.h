#pragma once

#include <QPointer>
#include <QWidget>

#include <vector>

/// Darkens the program's open windows for as long as it lives. What lies behind a box steps back that way, and the box
/// stands out from pages of its own colours. Neither mouse nor keys are held back. Several may live at once: a window
/// that is dark gets no darker.
class Shade
{
public:
    Shade(); ///< every visible window of the program that is no dialog
    ~Shade();
    Shade(const Shade &) = delete;
    Shade &operator=(const Shade &) = delete;

private:
    std::vector<QPointer<QWidget>> m_curtains; ///< each goes with its window
};
