#include "boxanswerer.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

QString plain(QString buttonText)
{
    return buttonText.remove(QLatin1Char('&'));
}

QAbstractButton *buttonWithText(const QMessageBox *box, const QString &text)
{
    const QList<QAbstractButton *> buttons = box->buttons();
    for (QAbstractButton *button : buttons) {
        if (plain(button->text()) == text)
            return button;
    }
    return nullptr;
}

void fail(const QString &why)
{
    QTest::qFail(qPrintable(why), __FILE__, __LINE__);
}

} // namespace

BoxAnswerer::BoxAnswerer()
{
    qApp->installEventFilter(this);
}

BoxAnswerer::~BoxAnswerer()
{
    qApp->removeEventFilter(this);
    for (const Answer &answer : qAsConst(m_expected))
        fail(QStringLiteral("The announced box \"%1\" never came").arg(answer.title));
}

void BoxAnswerer::answer(const QString &title, const QString &buttonText)
{
    m_expected.append({title, Means::Button, buttonText, Qt::Key_unknown});
}

void BoxAnswerer::answerByKey(const QString &title, Qt::Key key)
{
    m_expected.append({title, Means::Key, QString(), key});
}

void BoxAnswerer::answerByClosing(const QString &title)
{
    m_expected.append({title, Means::Close, QString(), Qt::Key_unknown});
}

void BoxAnswerer::answerAlways(const QString &title, const QString &buttonText)
{
    m_always.append({title, Means::Button, buttonText, Qt::Key_unknown});
}

bool BoxAnswerer::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show) {
        if (auto *box = qobject_cast<QMessageBox *>(watched)) {
            // Answered from the box's own event loop, as a click is.
            QTimer::singleShot(0, box, [this, box] { handle(box); });
        }
    }
    return QObject::eventFilter(watched, event);
}

void BoxAnswerer::handle(QMessageBox *box)
{
    if (!box->isVisible())
        return;
    Seen seen;
    seen.title = box->windowTitle();
    seen.text = box->text();
    seen.informativeText = box->informativeText();
    const QList<QAbstractButton *> buttons = box->buttons();
    for (const QAbstractButton *button : buttons)
        seen.buttons.append(plain(button->text()));
    if (box->defaultButton())
        seen.defaultButton = plain(box->defaultButton()->text());
    seen.icon = box->icon();
    seen.hadParent = box->parentWidget() != nullptr;
    m_seen.append(seen);

    // What a test does while the box is open may close and delete it.
    bool gone = false;
    const auto watch = connect(box, &QObject::destroyed, this, [&gone] { gone = true; });
    if (m_whenShown)
        m_whenShown(box);
    disconnect(watch);
    if (gone)
        return;

    if (!m_expected.isEmpty() && m_expected.first().title == seen.title) {
        act(box, m_expected.takeFirst());
        return;
    }
    for (const Answer &answer : qAsConst(m_always)) {
        if (answer.title == seen.title) {
            act(box, answer);
            return;
        }
    }
    fail(
        QStringLiteral("Unexpected box \"%1\": \"%2\" [%3]%4")
            .arg(seen.title, seen.text, seen.buttons.join(QLatin1Char('|')),
                 m_expected.isEmpty() ? QString() : QStringLiteral(", expected \"%1\"").arg(m_expected.first().title)));
    box->done(0);
}

void BoxAnswerer::act(QMessageBox *box, const Answer &answer)
{
    switch (answer.means) {
    case Means::Button:
        if (QAbstractButton *button = buttonWithText(box, answer.buttonText)) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
        fail(QStringLiteral("The box \"%1\" has no button \"%2\"").arg(answer.title, answer.buttonText));
        box->done(0);
        return;
    case Means::Key:
        QTest::keyClick(box, answer.key);
        return;
    case Means::Close:
        box->close();
        return;
    }
}
