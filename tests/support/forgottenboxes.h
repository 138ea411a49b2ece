#pragma once

#include "testing.h"

/// Closes each message box and each other modal dialog that nobody answers, and fails the running test with what stood
/// on it. Else the test would stay in the dialog's own event loop until its time limit, without a word of why.
class ForgottenBoxes : public QObject
{
public:
    ForgottenBoxes() { qApp->installEventFilter(this); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override {
        if (event->type() == QEvent::Show) {
            if (auto *box = qobject_cast<QDialog *>(watched))
                QTimer::singleShot(kLongestOpenMs, box, [box] { close(box); });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    /// Longer than any test keeps one open, also on a busy machine.
    static constexpr int kLongestOpenMs = 20000;

    static void close(QDialog *box) {
        if (!box->isVisible() || !box->isModal())
            return;
        const auto *message = qobject_cast<QMessageBox *>(box);
        failTest(
            "Nobody answers the box \"%1\": \"%2\""_s.arg(box->windowTitle(), message ? message->text() : QString()));
        box->done(0);
    }
};
