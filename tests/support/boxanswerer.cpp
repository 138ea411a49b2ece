#include "boxanswerer.h"

#include "testing.h"

namespace {

QString plain(QString buttonText) {
    return buttonText.remove(QLatin1Char('&'));
}

QAbstractButton *buttonWithText(const QMessageBox *box, const QString &text) {
    const QList<QAbstractButton *> buttons = box->buttons();
    for (QAbstractButton *button : buttons) {
        if (plain(button->text()) == text)
            return button;
    }
    return nullptr;
}

} // namespace

BoxAnswerer::~BoxAnswerer() {
    qApp->removeEventFilter(this);
    for (const Answer &answer : qAsConst(m_expected))
        failTest("The announced box \"%1\" never came"_s.arg(answer.title));
}

bool BoxAnswerer::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Show) {
        if (auto *box = qobject_cast<QMessageBox *>(watched)) {
            // Answered from the box's own event loop, as a click is.
            QTimer::singleShot(0, box, [this, box] { handle(box); });
        }
    }
    return QObject::eventFilter(watched, event);
}

void BoxAnswerer::handle(QMessageBox *box) {
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
    seen.hadFixedSize = box->windowFlags().testFlag(Qt::MSWindowsFixedSizeDialogHint);
    m_seen.append(seen);

    // What a test does while the box is open may close and delete it.
    bool gone = false;
    const auto watch = connect(box, &QObject::destroyed, this, [&gone] { gone = true; });
    if (m_whenShown)
        m_whenShown(box);
    disconnect(watch);
    if (gone)
        return;

    if (!m_expected.isEmpty() && m_expected.first().title == seen.title)
        return act(box, m_expected.takeFirst());
    for (const Answer &answer : qAsConst(m_always)) {
        if (answer.title == seen.title)
            return act(box, answer);
    }
    const QString expected = m_expected.isEmpty() ? QString() : ", expected \"%1\""_s.arg(m_expected.first().title);
    const QString buttonTexts = seen.buttons.join(QLatin1Char('|'));
    failTest("Unexpected box \"%1\": \"%2\" [%3]%4"_s.arg(seen.title, seen.text, buttonTexts, expected));
    box->done(0);
}

void BoxAnswerer::act(QMessageBox *box, const Answer &answer) {
    if (answer.means == Means::Key) {
        QTest::keyClick(box, answer.key);
    } else if (answer.means == Means::Close) {
        box->close();
    } else if (QAbstractButton *button = buttonWithText(box, answer.buttonText)) {
        QTest::mouseClick(button, Qt::LeftButton);
    } else {
        failTest("The box \"%1\" has no button \"%2\""_s.arg(answer.title, answer.buttonText));
        box->done(0);
    }
}
