#pragma once

#include <QWidget>
#include <memory>

namespace Ui {
class IstruzioniTransfer;
}

/// The part of the transfer page that tells the user how songs get onto the player. It stands in the page's stack
/// until the PC's file manager is opened.
class IstruzioniTransfer : public QWidget
{
    Q_OBJECT

public:
    explicit IstruzioniTransfer(QWidget *parent = nullptr); ///< shown with its parent
    ~IstruzioniTransfer() override;

protected:
    void changeEvent(QEvent *event) override;

private:
    std::unique_ptr<Ui::IstruzioniTransfer> ui;
};
