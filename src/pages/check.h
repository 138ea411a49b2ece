#pragma once

#include <QPixmap>
#include <QString>
#include <QWidget>
#include <memory>

namespace Ui {
class Check;
}

/// The page that looks, once per run, whether the player's system files are there, and offers to reinstall the system
/// when one is missing. Hidden when constructed; it ends by emitting checkDone(), and whoever shows it hides it.
class Check : public QWidget
{
    Q_OBJECT

public:
    explicit Check(QWidget *parent = nullptr); ///< hidden
    ~Check() override;

    /// Runs the check on the player at @p deviceRoot (with a closing slash). Events are processed meanwhile; about a
    /// second passes before the files are looked for.
    /// With all files in place the page then waits for the user to press AVANTI. Otherwise a question offers the
    /// reinstallation, which runs inside reinstallOpSysOnly(), and checkDone() follows whatever was answered.
    void runCheck(const QString &deviceRoot);

public slots:
    /// The window is to close: a pause that runs ends at once, and nothing is looked for, asked or emitted after it.
    void on_closeRequested();

signals:
    /// What the window shows of the check's progress; the bar goes from 0 to 100.
    void setProgressBarVisible(bool visible);
    void setProgressBarMinVal(int value);
    void setProgressBarMaxVal(int value);
    void updateProgressBarVal(int value);
    void updateLabelAction(const QString &text);
    void setPushButtonStopVisible(bool visible);
    /// The user wants the system reinstalled. The receiver does all of it before it returns.
    void reinstallOpSysOnly();
    /// The page has done its work: on to the first menu.
    void checkDone();

protected:
    /// Shows the texts of the moment in the new language on QEvent::LanguageChange.
    void changeEvent(QEvent *event) override;
    /// Shows the picture as large as the page has room for it.
    void resizeEvent(QResizeEvent *event) override;

private slots:
    void on_pushButton_clicked();

private:
    enum class Stage
    {
        Running,
        Intact,
        Damaged,
        Restoring
    };

    void enter(Stage stage);
    void showTexts();
    QPixmap pictureForScreen(const QString &path) const;
    void sweepProgressBar();
    void offerReinstallation();
    void finish();

    std::unique_ptr<Ui::Check> ui;
    Stage m_stage = Stage::Running;
    bool m_closing = false;
};
