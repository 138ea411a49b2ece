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

    /// The frames are high enough for their texts at every width: the page asks for no other height in a narrow window,
    /// which it would ask for the whole stack, shown or not.
    bool hasHeightForWidth() const override { return false; }
    int heightForWidth(int width) const override; ///< none

protected:
    void changeEvent(QEvent *event) override;

private:
    std::unique_ptr<Ui::IstruzioniTransfer> ui;
};
