#include "walkdriver.h"

#include "walkwidgets.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QScreen>
#include <QTest>
#include <QUrl>
#include <QWindow>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kTickMs = 20;
constexpr int kSettleMs = 250; // what the X server and the style need until a page stands on the screen
constexpr int kExitFailed = 3;
const QString kLabelFile = QStringLiteral(".windows-label");

} // namespace

WalkDriver::WalkDriver()
    : m_commands{{QStringLiteral("wait"), &WalkDriver::wait},         {QStringLiteral("text"), &WalkDriver::text},
                 {QStringLiteral("click"), &WalkDriver::click},       {QStringLiteral("key"), &WalkDriver::key},
                 {QStringLiteral("box"), &WalkDriver::box},           {QStringLiteral("pick"), &WalkDriver::pick},
                 {QStringLiteral("language"), &WalkDriver::language}, {QStringLiteral("shot"), &WalkDriver::shot},
                 {QStringLiteral("plug"), &WalkDriver::plug},         {QStringLiteral("unplug"), &WalkDriver::unplug},
                 {QStringLiteral("select"), &WalkDriver::select},     {QStringLiteral("drop"), &WalkDriver::drop},
                 {QStringLiteral("within"), &WalkDriver::within},     {QStringLiteral("show"), &WalkDriver::show},
                 {QStringLiteral("close"), &WalkDriver::close}},
      m_steps(readScenario(qEnvironmentVariable("CORVIN_WALK_SCENARIO"))),
      m_log(qEnvironmentVariable("CORVIN_WALK_LOG"))
{
    // A folder dialog of the desktop lies outside the program; Qt's own can be driven on every system.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    if (!m_log.fileName().isEmpty())
        m_log.open(QIODevice::WriteOnly | QIODevice::Text);
    if (m_steps.isEmpty())
        giveUp(QStringLiteral("the scenario cannot be read"));
    m_sinceStep.start();
    m_sinceClick.start();
    connect(&m_timer, &QTimer::timeout, this, &WalkDriver::tick);
    m_timer.start(kTickMs);
}

void WalkDriver::tick()
{
    if (m_next >= m_steps.size())
        return;
    const WalkStep step = m_steps.at(m_next);
    if (!m_commands.contains(step.command)) {
        giveUp(QStringLiteral("unknown step: ") + step.text());
    } else if ((this->*m_commands.value(step.command))(step)) {
        say(step.text());
        ++m_next;
        m_sinceStep.restart();
    } else if (m_sinceStep.elapsed() > m_limitMs) {
        giveUp(QStringLiteral("line %1 did not come about: %2").arg(step.line).arg(step.text()));
    }
}

void WalkDriver::say(const QString &text)
{
    const QByteArray line = QByteArrayLiteral("    ") + text.toUtf8() + '\n';
    std::fputs(line.constData(), stdout);
    std::fflush(stdout);
    if (m_log.isOpen()) {
        m_log.write(line);
        m_log.flush();
    }
}

void WalkDriver::giveUp(const QString &why)
{
    say(QStringLiteral("FAILED: ") + why);
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget *window : windows) {
        if (window->isVisible())
            say(QStringLiteral("open window: ") + window->windowTitle());
    }
    WalkStep last;
    last.words = QStringList{QStringLiteral("failed")};
    shot(last);
    std::_Exit(kExitFailed);
}

void WalkDriver::clickLater(QWidget *widget, const QPoint &where)
{
    bringIntoSight(widget);
    // What the click starts may run for minutes; the driver's own timer must be free meanwhile.
    const QPoint inWindow = widget->mapTo(widget->window(), where);
    QWindow *window = widget->window()->windowHandle();
    m_sinceClick.restart();
    QTimer::singleShot(0, window,
                       [window, inWindow] { QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, inWindow); });
}

bool WalkDriver::wait(const WalkStep &step)
{
    return findWidget(step.word(0)) != nullptr;
}

bool WalkDriver::text(const WalkStep &step)
{
    QWidget *widget = findWidget(step.word(0));
    return widget && shownText(widget) == step.word(1);
}

bool WalkDriver::show(const WalkStep &step)
{
    QWidget *widget = findWidget(step.word(0));
    if (!widget)
        return false;
    bringIntoSight(widget);
    return true;
}

bool WalkDriver::click(const WalkStep &step)
{
    QWidget *widget = findWidget(step.word(0));
    if (!widget || !widget->isEnabled() || QApplication::activeModalWidget())
        return false;
    // A check box takes clicks on its box and its text only, not in the empty room behind the text.
    const QPoint where = widget->inherits("QCheckBox") ? QPoint(8, widget->height() / 2) : widget->rect().center();
    clickLater(widget, where);
    return true;
}

bool WalkDriver::key(const WalkStep &step)
{
    QWidget *widget = findWidget(step.word(0));
    if (!widget)
        return false;
    const int code = QKeySequence(step.word(1))[0];
    bringIntoSight(widget);
    widget->setFocus();
    QWindow *window = widget->window()->windowHandle();
    QTimer::singleShot(0, window, [window, code] { QTest::keyClick(window, static_cast<Qt::Key>(code)); });
    return true;
}

bool WalkDriver::box(const WalkStep &step)
{
    QMessageBox *box = visibleWindow<QMessageBox>(step.word(0));
    if (!box || m_sinceClick.elapsed() < kSettleMs)
        return false;
    const QList<QAbstractButton *> buttons = box->buttons();
    for (QAbstractButton *button : buttons) {
        if (plainText(button->text()) == step.word(1)) {
            clickLater(button, button->rect().center());
            return true;
        }
    }
    return false;
}

bool WalkDriver::pick(const WalkStep &step)
{
    auto *dialog = visibleWindow<QFileDialog>();
    auto *edit = dialog ? dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit")) : nullptr;
    if (!edit || m_sinceStep.elapsed() < kSettleMs)
        return false;
    // Of a path that is typed the dialog may take up a beginning, while it still reads folders for its completion.
    const QString path = step.word(0);
    QTimer::singleShot(0, edit, [edit, path] {
        edit->setText(path);
        QTest::keyClick(edit, Qt::Key_Return);
    });
    return true;
}

bool WalkDriver::language(const WalkStep &step)
{
    QWidget *button = findWidget(QStringLiteral("pButLang"));
    if (!button || m_sinceClick.elapsed() < kSettleMs)
        return false;
    if (shownText(button).toLower() == step.word(0))
        return true;
    clickLater(button, button->rect().center());
    return false;
}

bool WalkDriver::shot(const WalkStep &step)
{
    raiseWindows();
    if (step.line > 0 && (m_sinceStep.elapsed() < kSettleMs || m_sinceClick.elapsed() < kSettleMs))
        return false;
    const QDir folder(qEnvironmentVariable("CORVIN_WALK_SHOTS"));
    const QPixmap screen = QGuiApplication::primaryScreen()->grabWindow(0);
    return screen.save(folder.filePath(step.word(0) + QLatin1String(".png")));
}

bool WalkDriver::plug(const WalkStep &)
{
    QFile label(QDir(qEnvironmentVariable("CORVIN_WALK_PLAYER")).filePath(kLabelFile));
    return label.open(QIODevice::WriteOnly) && label.write("CORVIN4\n") > 0;
}

bool WalkDriver::unplug(const WalkStep &)
{
    return QFile::remove(QDir(qEnvironmentVariable("CORVIN_WALK_PLAYER")).filePath(kLabelFile));
}

bool WalkDriver::select(const WalkStep &step)
{
    auto *view = qobject_cast<QAbstractItemView *>(findWidget(step.word(0)));
    // A list may be about to be made anew after what the last click has started.
    if (!view || QApplication::activeModalWidget() || m_sinceClick.elapsed() < kSettleMs)
        return false;
    QList<QModelIndex> rows;
    for (int i = 1; i < step.words.size(); ++i) {
        const QModelIndex start = view->model()->index(0, 0, view->rootIndex());
        const QModelIndexList found = view->model()->match(start, Qt::DisplayRole, step.word(i), 1, Qt::MatchExactly);
        if (found.isEmpty())
            return false;
        rows.append(found.first());
    }
    for (int i = 0; i < rows.size(); ++i) {
        view->scrollTo(rows.at(i));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, i == 0 ? Qt::NoModifier : Qt::ControlModifier,
                          view->visualRect(rows.at(i)).center());
    }
    return view->selectionModel()->selectedRows().size() == rows.size();
}

bool WalkDriver::drop(const WalkStep &step)
{
    QWidget *target = findWidget(step.word(0));
    if (!target || !target->isEnabled() || m_sinceClick.elapsed() < kSettleMs)
        return false;
    QList<QUrl> urls;
    for (int i = 1; i < step.words.size(); ++i)
        urls.append(QUrl::fromLocalFile(step.word(i)));
    QWidget *receiver = target;
    while (receiver && !receiver->acceptDrops())
        receiver = receiver->parentWidget();
    if (!receiver)
        return false;
    const QPoint where = target->mapTo(receiver, target->rect().center());
    // The drop copies for as long as it takes: it must not run inside the driver's timer.
    QTimer::singleShot(0, receiver, [receiver, where, urls] {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter(where, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(receiver, &enter);
        QDragMoveEvent move(where, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(receiver, &move);
        QDropEvent drop(where, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(receiver, &drop);
    });
    return true;
}

bool WalkDriver::within(const WalkStep &step)
{
    m_limitMs = step.word(0).toInt() * 1000;
    return true;
}

bool WalkDriver::close(const WalkStep &)
{
    QWidget *window = findWidget(QStringLiteral("centralWidget"));
    if (!window || QApplication::activeModalWidget())
        return false;
    QTimer::singleShot(0, window->window(), [window] { window->window()->close(); });
    return true;
}
