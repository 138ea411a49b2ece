#include "questionbox.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QPushButton>
#include <QTimer>

namespace {

struct OtherWindow
{
    Q_DECLARE_TR_FUNCTIONS(QuestionBox)
};

} // namespace

QMessageBox::StandardButton askQuestion(QWidget *parent, const Question &question)
{
    QMessageBox box(parent);
    box.setIcon(QMessageBox::Question);
    box.setWindowTitle(question.title);
    box.setText(question.text);
    box.setInformativeText(question.informativeText);
    // The texts hold file names: a name with angle brackets must not be taken for markup.
    box.setTextFormat(Qt::PlainText);
    for (const QuestionButton &entry : question.buttons) {
        QPushButton *button = box.addButton(entry.button);
        if (!entry.text.isEmpty())
            button->setText(entry.text);
    }
    box.setDefaultButton(question.defaultButton);
    if (question.escapeButton != QMessageBox::NoButton)
        box.setEscapeButton(question.escapeButton);
    // Nothing holds a box without a parent in front: it could come up behind the window that waits for it.
    if (!parent) {
        QTimer::singleShot(0, &box, [&box] {
            box.raise();
            box.activateWindow();
        });
    }
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

bool askYesOrNo(QWidget *parent, const QString &title, const QString &text, QMessageBox::StandardButton defaultButton)
{
    const Question question = {title, text, {{QMessageBox::Yes}, {QMessageBox::No}}, defaultButton, QMessageBox::No};
    return askQuestion(parent, question) == QMessageBox::Yes;
}

void tellUser(QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text,
              const QString &informativeText, const QString &detailedText)
{
    QMessageBox box(icon, title, text, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(informativeText);
    box.setDetailedText(detailedText);
    box.exec();
}

void tellOtherWindowWorks(QWidget *parent)
{
    tellUser(parent, QMessageBox::Information, OtherWindow::tr("Corvin4 Manager"),
             OtherWindow::tr("Un'altra finestra del programma sta lavorando.\nAttendere che abbia finito."));
}
