#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class EndOttimizza;
}

/// The page that tells how an optimisation ended.
class EndOttimizza : public QWidget
{
    Q_OBJECT

public:
    /// Builds the page, hidden.
    explicit EndOttimizza(QWidget *parent = nullptr);
    ~EndOttimizza() override;

signals:
    void backFromEndOttimizzaToFirstMenu(); ///< OK was pressed

public slots:
    /// Shows the page with the picture and the texts for @p failCode: 0 is success, every other value a failure.
    void setFailCodeAndShow(int failCode);
    /// OK: emits backFromEndOttimizzaToFirstMenu().
    void on_pushButton_clicked();

protected:
    void changeEvent(QEvent *event) override;

private:
    void setTexts();

    std::unique_ptr<Ui::EndOttimizza> ui;
    int m_failCode = 0;
};
