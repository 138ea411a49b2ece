#pragma once

#include "pacedbar.h"

#include "procedures/jobview.h"

class MainWindow;
class QLabel;
class QProgressBar;
class QPushButton;

/// What a maintenance job shows and asks, in the main window. Made for one job.
class WindowJobView : public JobView
{
public:
    /// The widgets are the window's, or a bar of somebody else's.
    WindowJobView(MainWindow &window, QLabel &statusLine, QProgressBar &bar, QPushButton &stopButton);

    void showStatus(const QString &text) override;
    void hideProgress() override;
    void setBarRange(int minimum, int maximum) override;
    void setBarValue(int value) override;
    void setBarFormat(const QString &format) override;
    void paintBar() override;
    bool isStopped() const override;
    bool isClosing() const override;
    void forgetStop() override;
    void tell(const Notice &notice) override;
    JobAnswer ask(const JobQuestion &question) override;
    QString chooseFolder(const QString &caption) override;

private:
    MainWindow &m_window;
    QLabel &m_statusLine;
    QProgressBar &m_bar;
    PacedBar m_pacedBar;
    QPushButton &m_stopButton;
};
