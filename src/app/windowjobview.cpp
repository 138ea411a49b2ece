#include "windowjobview.h"

#include "mainwindow.h"

#include "app/shared/onscreen.h"
#include "app/shared/questionbox.h"
#include "app/shared/shade.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QTreeView>

namespace {

constexpr int kRoomForFrame = 40; ///< pixels, of a window around a dialog

QMessageBox::StandardButton standardButton(JobAnswer answer)
{
    switch (answer) {
    case JobAnswer::Yes:
        return QMessageBox::Yes;
    case JobAnswer::YesToAll:
        return QMessageBox::YesToAll;
    case JobAnswer::No:
        return QMessageBox::No;
    case JobAnswer::Cancel:
        break;
    }
    return QMessageBox::Cancel;
}

/// The toolkit's folder dialog, shown where the desktop has none of its own, asks for more than a small screen has: its
/// buttons would lie below the edge. Its column of dates is too narrow for a date.
void fitIntoScreen(QFileDialog &dialog)
{
    if (dialog.testAttribute(Qt::WA_DontShowOnScreen))
        return;
    if (const auto *list = dialog.findChild<QTreeView *>()) {
        list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
        list->header()->setSectionResizeMode(list->header()->count() - 1, QHeaderView::ResizeToContents);
    }
    const QSize room = dialog.screen()->availableSize() - QSize(kRoomForFrame, kRoomForFrame);
    dialog.resize(dialog.size().boundedTo(room));
    centreOnScreen(dialog, dialog.frameGeometry().center());
}

} // namespace

WindowJobView::WindowJobView(MainWindow &window, QLabel &statusLine, QProgressBar &bar, QPushButton &stopButton)
    : m_window(window), m_statusLine(statusLine), m_bar(bar), m_pacedBar(bar), m_stopButton(stopButton)
{
}

void WindowJobView::showStatus(const QString &text)
{
    m_window.on_updateLabelAction(text);
    m_statusLine.repaint();
}

void WindowJobView::hideProgress()
{
    m_statusLine.clear();
    m_statusLine.hide();
    m_bar.hide();
    m_stopButton.hide();
}

void WindowJobView::setBarRange(int minimum, int maximum)
{
    m_pacedBar.settle();
    m_bar.setRange(minimum, maximum);
}

void WindowJobView::setBarValue(int value)
{
    m_pacedBar.setValue(value);
}

void WindowJobView::setBarFormat(const QString &format)
{
    m_bar.setFormat(format);
}

void WindowJobView::paintBar()
{
    m_pacedBar.paint();
}

bool WindowJobView::isStopped() const
{
    return m_window.abortRequested || isClosing();
}

bool WindowJobView::isClosing() const
{
    return m_window.closeRequested;
}

void WindowJobView::forgetStop()
{
    m_window.abortRequested = false;
}

void WindowJobView::tell(const Notice &notice)
{
    const auto icon = notice.kind == Notice::Critical ? QMessageBox::Critical : QMessageBox::Information;
    tellUser(&m_window, icon, notice.title, notice.text, notice.informativeText);
}

JobAnswer WindowJobView::ask(const JobQuestion &question)
{
    Question box;
    box.title = question.title;
    box.text = question.text;
    box.informativeText = question.informativeText;
    for (const JobQuestion::Choice &choice : question.choices)
        box.buttons.append({standardButton(choice.answer), choice.text});
    box.defaultButton = standardButton(question.preferred);
    box.escapeButton = standardButton(question.onEscape);
    const QMessageBox::StandardButton pressed = askQuestion(question.standsAlone ? nullptr : &m_window, box);
    for (const JobQuestion::Choice &choice : question.choices) {
        if (standardButton(choice.answer) == pressed)
            return choice.answer;
    }
    return question.onEscape;
}

QString WindowJobView::chooseFolder(const QString &caption)
{
    const Shade shade;
    // Once it is open.
    QTimer::singleShot(0, &m_window, [&window = m_window] {
        if (auto *dialog = window.findChild<QFileDialog *>())
            fitIntoScreen(*dialog);
    });
    QString folder = QFileDialog::getExistingDirectory(&m_window, caption, QString(),
                                                       QFileDialog::ShowDirsOnly | QFileDialog::DontResolveSymlinks);
    // The dialog of Windows may leave the process in the folder it showed, which nobody could remove or rename then.
    QDir::setCurrent(QCoreApplication::applicationDirPath());
    return folder;
}
