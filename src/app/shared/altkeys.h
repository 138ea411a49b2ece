#pragma once

#include <QChar>
#include <QList>
#include <QString>

class QAbstractButton;
class QMessageBox;
class QWidget;

// Letters that press a button when Alt is held. The texts of the buttons do not change: the letter is told by the tool
// tip and by what reads the screen aloud.

/// The first letter from A to Z that stands in @p text and not in @p taken, both whatever their case, as a capital. A
/// null character when there is none.
QChar freeLetter(const QString &text, const QString &taken);

/// Gives each of @p buttons that shows a text a letter of it, no two the same, none of @p taken. Qt takes a letter away
/// with the text: to be called again when the texts have changed.
void giveAltKeys(const QList<QAbstractButton *> &buttons, const QString &taken = QString());

/// Does so for the push buttons and check boxes of @p page. None of their letters presses a button of the window that
/// stands beside the pages, which are those of one parent.
void givePageAltKeys(const QWidget &page);

/// Does so for the buttons of @p box, apart from those that have a letter from Qt. Without Alt the letter does nothing:
/// what is being typed while a box appears must not answer it.
void giveBoxAltKeys(QMessageBox &box);
