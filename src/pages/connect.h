#pragma once

#include <QWidget>
#include <memory>

namespace Ui {
class Connect;
}

/// The page that asks the user to plug the player in. It does nothing by itself: the main window shows it while no
/// player is found and hides it for good when one is. Hidden when constructed.
class Connect : public QWidget
{
    Q_OBJECT

public:
    explicit Connect(QWidget *parent = nullptr); ///< hidden
    ~Connect() override;

protected:
    /// Shows the texts in the new language on QEvent::LanguageChange.
    void changeEvent(QEvent *event) override;

private:
    std::unique_ptr<Ui::Connect> ui;
};
