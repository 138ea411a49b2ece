#include "questionbox.h"

#include "altkeys.h"
#include "onscreen.h"
#include "shade.h"
#include "sharedfonts.h"
#include "styles.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QFontMetrics>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QScreen>
#include <QTextEdit>
#include <QTimer>

namespace {

struct OtherWindow
{
    Q_DECLARE_TR_FUNCTIONS(QuestionBox)
};

// What the lines of a box may be wide, and what a screen has to have beside them.
constexpr int kMargin = 18;
constexpr int kWidestText = 680;
constexpr int kLeastText = 220; ///< of a box of one word, which would be a stamp
constexpr int kBesideText = 108;
constexpr int kDetailsWidth = 460;
constexpr int kDetailsHeight = 150;
/// The box itself stays so much narrower than a screen of more than 1024 pixels.
constexpr int kBesideBox = 480;
constexpr int kNarrowScreen = 1024;
constexpr int kBesideNarrowBox = 24; ///< on a narrower one: for the box's frame

/// The window that a box belongs to: a page's own style sheet would reach into the box.
QWidget *windowOf(QWidget *parent)
{
    return parent ? parent->window() : nullptr;
}

/// A box breaks all lines anew once one of them is wider than it likes: the text gets the room of its own lines, and of
/// those below it.
void giveRoom(const QMessageBox &box, QLabel *label)
{
    const int screen = box.screen()->availableGeometry().width();
    const int widest =
        qMin(kWidestText, screen - (screen > kNarrowScreen ? kBesideBox : kBesideNarrowBox) - kBesideText);
    const QFontMetrics metrics(label->font());
    int wanted = kLeastText;
    const QStringList lines = (label->text() + QLatin1Char('\n') + box.informativeText()).split(QLatin1Char('\n'));
    for (const QString &line : lines)
        wanted = qMax(wanted, metrics.horizontalAdvance(line) + 2);
    label->setMinimumWidth(qBound(0, wanted, widest));
}

/// The button that shows and hides the details has its width from the font it had first, and its text changes. The box
/// would grow to the right and down alone, on a small screen beyond its edge.
void fitDetailsButton(QMessageBox &box, QAbstractButton *button)
{
    if (box.detailedText().isEmpty() || box.buttonRole(button) != QMessageBox::ActionRole)
        return;
    const QFontMetrics metrics(button->font());
    int widest = 0;
    for (const char *text : {"Show Details...", "Hide Details..."}) {
        const QString shown = QCoreApplication::translate("QMessageBox", text);
        widest = qMax(widest, metrics.size(Qt::TextShowMnemonic, shown).width());
    }
    // Of the box's sheet no width but that of another sheet is taken.
    button->setStyleSheet(QStringLiteral("min-width: %1px;").arg(widest));
    QObject::connect(
        button, &QAbstractButton::clicked, &box,
        [&box] {
            const QRect around =
                box.parentWidget() ? box.parentWidget()->geometry() : box.screen()->availableGeometry();
            centreOnScreen(box, around.center());
        },
        Qt::QueuedConnection);
}

/// Gives a box that has its texts and buttons the look of the program's pages.
void dress(QMessageBox &box)
{
    const SharedFonts &fonts = sharedFonts();
    box.setStyleSheet(Styles::kMessageBox);
    box.setFont(fonts.fontText13);
    const QList<QLabel *> labels = box.findChildren<QLabel *>();
    for (QLabel *label : labels)
        label->setFont(fonts.fontText13);
    const QList<QAbstractButton *> buttons = box.buttons();
    for (QAbstractButton *button : buttons) {
        setTitleFont(button, fonts.fontTitle18);
        // Some desktops put pictures on the buttons of boxes, in colours of their own.
        button->setIcon(QIcon());
        fitDetailsButton(box, button);
    }
    if (auto *details = box.findChild<QTextEdit *>()) {
        // Most details are paths, one a line.
        details->setMinimumWidth(kDetailsWidth);
        details->setFixedHeight(kDetailsHeight);
        details->setFont(fonts.fontText11);
    }
    giveBoxAltKeys(box);
    box.layout()->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    if (auto *text = box.findChild<QLabel *>(QStringLiteral("qt_msgbox_label")))
        giveRoom(box, text);
}

} // namespace

QMessageBox::StandardButton askQuestion(QWidget *parent, const Question &question)
{
    QMessageBox box(windowOf(parent));
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
    dress(box);
    const Shade shade;
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
    QMessageBox box(icon, title, text, QMessageBox::Ok, windowOf(parent));
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(informativeText);
    box.setDetailedText(detailedText);
    dress(box);
    const Shade shade;
    box.exec();
}

void tellOtherWindowWorks(QWidget *parent)
{
    tellUser(parent, QMessageBox::Information, OtherWindow::tr("Corvin4 Manager"),
             OtherWindow::tr("Un'altra finestra del programma sta lavorando.\nAttendere che abbia finito."));
}
