#include "questionbox.h"

#include <QAbstractButton>
#include <QPushButton>

QMessageBox::StandardButton askQuestion(QWidget *parent, const Question &question)
{
    QMessageBox box(parent);
    box.setIcon(QMessageBox::Question);
    box.setWindowTitle(question.title);
    box.setText(question.text);
    // The texts hold file names: a name with angle brackets must not be taken for markup.
    box.setTextFormat(Qt::PlainText);
    for (const QuestionButton &entry : question.buttons)
        box.addButton(entry.button)->setText(entry.text);
    box.setDefaultButton(question.defaultButton);
    if (question.escapeButton != QMessageBox::NoButton)
        box.setEscapeButton(question.escapeButton);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}
