#pragma once

#include <QList>
#include <QMessageBox>
#include <QString>

class QWidget;

/// One button of a question: the standard button (its role decides the place on the screen) and the text it shows.
struct QuestionButton
{
    QMessageBox::StandardButton button; ///< its role decides the place on the screen
    QString text = {};                  ///< the system's own when empty
};

/// What a question box shows and how it may be answered.
struct Question
{
    QString title;                                                     ///< of the box
    QString text;                                                      ///< what is asked
    QList<QuestionButton> buttons;                                     ///< in the order they are added
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton; ///< the one that Enter presses
    /// What Escape and the box's own close button mean. NoButton leaves it to Qt's own rule.
    QMessageBox::StandardButton escapeButton = QMessageBox::NoButton;
    QString informativeText = {}; ///< a second, smaller text below; may be empty
};

/// Asks a modal question with relabelled buttons and returns the standard button that was pressed.
/// @p parent may be null: the box is then a top-level dialog and brought to the front. Events are processed while the
/// box is open.
QMessageBox::StandardButton askQuestion(QWidget *parent, const Question &question);

/// The same with the system's own buttons "Yes" and "No". Returns whether it was "Yes"; Escape means "No".
bool askYesOrNo(QWidget *parent, const QString &title, const QString &text, QMessageBox::StandardButton defaultButton);

/// Tells the user something in a modal box with the button "Ok"; @p informativeText stands below, smaller, and
/// @p detailedText, when there is one, is shown when the user asks for it.
void tellUser(QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text,
              const QString &informativeText = QString(), const QString &detailedText = QString());

/// Tells the user that a job cannot start because another window of the program has one running.
void tellOtherWindowWorks(QWidget *parent);
