#pragma once

#include "optimizerrun.h"
#include "support/widgets.h"

inline const QStringList kOptions = words("Check_Delete Check_Move Check_Split Check_Database");
inline const QStringList kBoxes = words("Check_Optimize") + kOptions;
inline const QStringList kControls = kBoxes + words("Btn_Opt_Ok pushBtnBack");

/// The page as its user works it: shown, and complete or with some operations alone.
struct PageRun : OptimizerRun
{
    /// @p options are ticked by clicks, as a user does.
    explicit PageRun(const QStringList &files = {}, const std::optional<QStringList> &options = std::nullopt)
        : OptimizerRun(files) {
        page.show();
        for (const QString &box : options ? kBoxes : QStringList()) {
            if (!options->contains(box))
                clickBox(box);
        }
        told.clear();
    }
    void clickBox(const QString &name) {
        QTest::mouseClick(child<QCheckBox>(page, qPrintable(name)), Qt::LeftButton, {}, QPoint(10, 10));
    }
    void start() { click(page, "Btn_Opt_Ok"); }

    QStringList ticked() const { return controlsThat(&QAbstractButton::isChecked); }
    QStringList enabled() const { return controlsThat(&QAbstractButton::isEnabled); }
    /// Whether to delete, to move and to split.
    QList<bool> flags() const { return {page.optDelete, page.optMove, page.optSplit}; }

private:
    QStringList controlsThat(bool (QAbstractButton::*are)() const) const {
        QStringList found;
        for (const QString &name : kControls) {
            if ((child<QAbstractButton>(page, qPrintable(name))->*are)())
                found.append(name);
        }
        return found;
    }
};
