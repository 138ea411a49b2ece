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
    /// The run whose end is shown next has copied files to the folder @p folder of the PC (absolute): the page then names
    /// it in a line of its own, a link that opens it.
    void setKeptFolder(const QString &folder);
    /// OK: emits backFromEndOttimizzaToFirstMenu().
    void on_pushButton_clicked();

protected:
    void changeEvent(QEvent *event) override;

private:
    void setTexts();
    void openKeptFolder() const;

    std::unique_ptr<Ui::EndOttimizza> ui;
    int m_failCode = 0;
    QString m_keptFolder;     ///< of the run that is shown, empty when it has kept nothing
    QString m_nextKeptFolder; ///< of the run whose end is shown next
};
