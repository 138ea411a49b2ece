#include "altkeys.h"

#include <QCheckBox>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>

namespace {

QKeySequence altKey(QChar letter)
{
    return QKeySequence(int(Qt::ALT) + letter.unicode());
}

/// The letters that press one of @p buttons already.
QString lettersOf(const QList<QAbstractButton *> &buttons)
{
    QString letters;
    for (const QAbstractButton *button : buttons) {
        if (!button->shortcut().isEmpty())
            letters += QChar(button->shortcut()[0] & ~int(Qt::KeyboardModifierMask));
    }
    return letters;
}

QList<QAbstractButton *> buttonsIn(const QWidget &widget)
{
    QList<QAbstractButton *> buttons;
    const QList<QAbstractButton *> all = widget.findChildren<QAbstractButton *>();
    for (QAbstractButton *button : all) {
        if (qobject_cast<QPushButton *>(button) || qobject_cast<QCheckBox *>(button))
            buttons.append(button);
    }
    return buttons;
}

QString lettersBeside(const QWidget &page)
{
    const QWidget *frame = page.parentWidget();
    if (!frame)
        return {};
    QList<QAbstractButton *> beside;
    const QList<QAbstractButton *> all = buttonsIn(*page.window());
    for (QAbstractButton *button : all) {
        if (!frame->isAncestorOf(button))
            beside.append(button);
    }
    return lettersOf(beside);
}

} // namespace

QChar freeLetter(const QString &text, const QString &taken)
{
    const QString capitals = text.toUpper();
    for (const QChar letter : capitals) {
        // Other letters are not on every keyboard.
        const bool isPlain = letter >= QLatin1Char('A') && letter <= QLatin1Char('Z');
        if (isPlain && !taken.contains(letter, Qt::CaseInsensitive))
            return letter;
    }
    return {};
}

void giveAltKeys(const QList<QAbstractButton *> &buttons, const QString &taken)
{
    QString letters = taken;
    for (QAbstractButton *button : buttons) {
        const QChar letter = freeLetter(button->text(), letters);
        const QKeySequence key = letter.isNull() ? QKeySequence() : altKey(letter);
        button->setShortcut(key);
        button->setToolTip(key.toString(QKeySequence::NativeText));
        letters += letter;
    }
}

void givePageAltKeys(const QWidget &page)
{
    giveAltKeys(buttonsIn(page), lettersBeside(page));
}

void giveBoxAltKeys(QMessageBox &box)
{
    const QList<QAbstractButton *> buttons = box.buttons();
    QString letters = lettersOf(buttons);
    for (QAbstractButton *button : buttons) {
        const QChar letter = freeLetter(button->text(), letters);
        if (!button->shortcut().isEmpty() || letter.isNull())
            continue;
        // A key of the button itself would answer the box without Alt as well.
        const auto *key = new QShortcut(altKey(letter), &box);
        QObject::connect(key, &QShortcut::activated, button, &QAbstractButton::click);
        button->setToolTip(key->key().toString(QKeySequence::NativeText));
        letters += letter;
    }
}
