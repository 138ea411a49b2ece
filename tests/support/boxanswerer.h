#pragma once

#include <QApplication>
#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>

/// Answers message boxes as a user does, by the text of a button, in the order in which they were announced.
/// A box that nobody announced fails the running test and is closed; so does a box with another title than the one
/// announced. An announced box that never came fails the test when the answerer is destroyed.
class BoxAnswerer : public QObject
{
    Q_OBJECT

public:
    /// What stood on a box when it was answered. Button texts come without mnemonics, in the order they were added
    /// where Qt keeps that order, else in the order on the screen.
    struct Seen
    {
        QString title;
        QString text;
        QString informativeText;
        QStringList buttons;
        QString defaultButton;
        QMessageBox::Icon icon;
        bool hadParent;
        bool hadFixedSize; ///< no frame to pull it larger by
    };

    BoxAnswerer() { qApp->installEventFilter(this); }
    ~BoxAnswerer() override;

    /// The next box has this title and is answered with the button of this text.
    void answer(const QString &title, const QString &buttonText) { expect({title, Means::Button, buttonText, {}}); }
    /// The next box has this title and is answered by a key: Return, Escape, …
    void answerByKey(const QString &title, Qt::Key key) { expect({title, Means::Key, {}, key}); }
    /// The next box has this title and is closed by its own close button.
    void answerByClosing(const QString &title) { expect({title, Means::Close, {}, {}}); }
    /// From now on every box with this title, however many, is answered so; announced single answers come first.
    void answerAlways(const QString &title, const QString &buttonText) {
        m_always.append({title, Means::Button, buttonText, {}});
    }
    /// Called with each box after it is shown and before it is answered: for what a test does while a box is open.
    void whenShown(const std::function<void(QMessageBox *)> &action) { m_whenShown = action; }

    const QList<Seen> &seen() const { return m_seen; }
    int pending() const { return m_expected.size(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class Means
    {
        Button,
        Key,
        Close
    };
    struct Answer
    {
        QString title;
        Means means;
        QString buttonText;
        Qt::Key key;
    };

    void expect(const Answer &answer) { m_expected.append(answer); }
    void handle(QMessageBox *box);
    void act(QMessageBox *box, const Answer &answer);

    QList<Answer> m_expected;
    QList<Answer> m_always;
    QList<Seen> m_seen;
    std::function<void(QMessageBox *)> m_whenShown;
};
