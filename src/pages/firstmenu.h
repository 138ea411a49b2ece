#pragma once

#include "device/devicelocator.h"

#include <QWidget>
#include <memory>

namespace Ui {
class FirstMenu;
}

/// The page with the three main choices. Each button first makes sure that the player is connected; without it a box
/// says so and nothing is emitted. Hidden when constructed.
class FirstMenu : public QWidget
{
    Q_OBJECT

public:
    explicit FirstMenu(QWidget *parent = nullptr); ///< hidden
    ~FirstMenu() override;

signals:
    /// The user's choice: the songs' transfer, the optimisation, or the maintenance page.
    void gotoTransfer();
    void gotoOptimizer();
    void gotoAvanzate();

protected:
    /// Shows the texts in the new language on QEvent::LanguageChange.
    void changeEvent(QEvent *event) override;
    /// Gives the focus to the first choice.
    void showEvent(QShowEvent *event) override;

private slots:
    void on_pushBtnTransfer_clicked();
    void on_pushBtnOptimize_clicked();
    void on_pushBtnUpRes_clicked();

private:
    bool isDevicePresent();

    std::unique_ptr<Ui::FirstMenu> ui;
    DeviceLocator m_deviceLocator;
};
