#pragma once

#include "support/files.h"
#include "support/pagetest.h"
#include "support/platform.h"
#include "support/programfolder.h"
#include "support/signalrecorder.h"
#include "support/simulatedplayer.h"
#include "transfer/transfer.h"

inline const QString kEnd = "label Se hai terminato clicca su FINE"_s;

/// One for each system; the program starts its own.
inline const QStringList kFileManagers = words("xdg-open explorer");

/// A file manager that only writes down which folder it was asked to open, found before the system's while it lives.
class FakeFileManager
{
public:
    FakeFileManager() {
        for (const QString &name : kFileManagers)
            m_programs.addStandIn(name, {Does::record(m_dir.path("opened"_s))});
    }
    /// What it was asked to open, as it was given, once it has been started; empty before. A folder with blanks in its
    /// name reaches the file manager of Windows in pieces, as it wants them.
    QString opened() const {
        return QString::fromUtf8(m_dir.content("opened"_s)).chopped(1).replace(QLatin1Char('\n'), QLatin1Char(' '));
    }

private:
    PcFolder m_dir;
    ProgramFolder m_programs;
};

inline QList<QUrl> fileUrls(const QStringList &paths) {
    QList<QUrl> urls;
    for (const QString &path : paths)
        urls.append(QUrl::fromLocalFile(path));
    return urls;
}

/// One drag from outside, whose events reach the page as the system's do. Each call tells whether the page accepted.
class Drag
{
public:
    Drag(QWidget &page, const QList<QUrl> &urls, Qt::DropActions actions = Qt::CopyAction,
         Qt::KeyboardModifiers modifiers = Qt::NoModifier)
        : m_page(page), m_actions(actions), m_modifiers(modifiers) {
        m_data.setUrls(urls);
    }
    bool enter(const QPoint &where) { return send<QDragEnterEvent>(where); }
    bool move(const QPoint &where) { return send<QDragMoveEvent>(where); }
    bool drop(const QPoint &where) { return send<QDropEvent>(where); }
    /// The whole way in one go.
    bool bring(const QPoint &where) { return enter(where) && drop(where); }
    void leave() {
        QDragLeaveEvent event;
        QApplication::sendEvent(&m_page, &event);
    }

private:
    template <typename Event> bool send(const QPoint &where) {
        Event event(where, m_actions, &m_data, Qt::LeftButton, m_modifiers);
        QApplication::sendEvent(&m_page, &event);
        return event.isAccepted();
    }

    QWidget &m_page;
    QMimeData m_data;
    Qt::DropActions m_actions;
    Qt::KeyboardModifiers m_modifiers;
};

/// The transfer page in the state in which a user drops: shown, prepared for a player, and "ESPLORA PC" pressed.
class OpenTransfer
{
public:
    explicit OpenTransfer(const QString &deviceRoot) {
        page.resize(1100, 640);
        page.prepare(deviceRoot);
        page.show();
        click(page, "pButPc");
        opening = told();
        recorder.clear();
        if (!QTest::qWaitForWindowExposed(&page))
            failTest("the page does not come up"_s);
    }

    QTableView *table() const { return child<QTableView>(page, "tableView"); }
    QTreeView *tree() const { return child<QTreeView>(page, "treeView"); }
    /// The top of the tree: the player.
    QModelIndex top() const { return tree()->model()->index(0, 0); }
    /// The row of the table with this name; waits for it a while, fails the test when it does not come.
    QModelIndex row(const QString &name) const {
        int found = -1;
        if (!QTest::qWaitFor([&] { return (found = names().indexOf(name)) >= 0; }))
            failTest("The table has no "_s + name);
        return table()->model()->index(found, 0, table()->rootIndex());
    }
    /// The names in the table, in their order.
    QStringList names() const {
        QStringList found;
        for (int i = 0; i < table()->model()->rowCount(table()->rootIndex()); ++i)
            found.append(table()->model()->index(i, 0, table()->rootIndex()).data().toString());
        return found;
    }
    /// Selects these rows of the table alone.
    void select(const QStringList &rows) {
        table()->clearSelection();
        for (const QString &name : rows)
            table()->selectionModel()->select(row(name), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    /// Double-clicks a folder in the table.
    void enter(const QString &folder) { page.on_tableView_doubleClicked(row(folder)); }
    /// How many of table, tree and their models keep their signals to themselves: all four or none.
    int blocked() const {
        return int(table()->signalsBlocked()) + int(table()->model()->signalsBlocked()) +
               int(tree()->signalsBlocked()) + int(tree()->model()->signalsBlocked());
    }

    /// What the page has told since it is open, without Qt's own warnings, of style sheets and of what a screen lacks:
    /// the page itself warns of nothing.
    QStringList told() {
        QStringList lines = recorder.lines();
        for (const LogCapture::Line &line : recorder.log().lines()) {
            if (line.type == QtWarningMsg)
                lines.removeOne("log "_s + line.text);
        }
        return lines;
    }
    bool hasTold(const QString &line) { return recorder.count(line) > 0; }
    bool hasLogged(const QString &text) const { return recorder.log().contains(text); }
    /// How many files the log says were not copied.
    int notCopied() const { return recorder.log().textsStartingWith("!QFile::copy - src :"_s).size(); }

    /// Points of the page.
    QPoint overDropArea() const { return centreOf(child<QWidget>(page, "dropArea")); }
    QPoint overRow(const QString &name) const {
        return table()->viewport()->mapTo(&page, table()->visualRect(row(name)).center());
    }
    QPoint overEmptyTable() const {
        const QRect viewport = table()->viewport()->rect();
        return table()->viewport()->mapTo(&page, QPoint(viewport.center().x(), viewport.bottom() - 1));
    }
    QPoint overHeader() const { return centreOf(table()->horizontalHeader()); }
    QPoint elsewhere() const { return centreOf(tree()); }

    /// Drags local files over the drop area, or another place, and drops them there.
    void drop(const QStringList &paths) { dropAt(overDropArea(), paths); }
    void dropAt(const QPoint &where, const QStringList &paths) {
        Drag drag(page, fileUrls(paths));
        drag.enter(where);
        drag.move(where);
        drag.drop(where);
    }
    /// Makes these files ("pc") on the PC and drops them in one go, or else what is named of their folders.
    void dropNew(const QStringList &files, const QStringList &dropped = {}) {
        QStringList paths;
        for (const QString &file : files)
            paths.append(pc.addFile(file));
        if (!dropped.isEmpty())
            paths.clear();
        for (const QString &name : dropped)
            paths.append(pc.path(name));
        drop(paths);
    }
    /// Does something whenever the bar steps: before each file is copied, after each entry is deleted.
    template <typename Action> void atEachStep(Action action) {
        QObject::connect(&page, &Transfer::increaseProgressBarVal, &page, action);
    }

    const FakeFileManager fileManager;
    PcFolder pc;
    Transfer page;
    SignalRecorder recorder{page};
    QStringList opening; ///< what the page told until it was open

private:
    QPoint centreOf(const QWidget *widget) const { return widget->mapTo(&page, widget->rect().center()); }
};

/// A simulated player with these files ("player"), and folders, which end with a slash.
struct PlayerWith
{
    explicit PlayerWith(const QStringList &content, const QString &label = "CORVIN4"_s) : player(label) {
        for (const QString &path : content) {
            if (path.endsWith(QLatin1Char('/')))
                player.addFolder(path);
            else
                player.addFile(path, "player");
        }
    }

    SimulatedPlayer player;
};

/// The page, open for a simulated player of its own.
class OpenForPlayer : public PlayerWith, public OpenTransfer
{
public:
    explicit OpenForPlayer(const QStringList &content = {"My Songs/Rock/"_s}, const QString &label = "CORVIN4"_s)
        : PlayerWith(content, label), OpenTransfer(player.root()) {}
};
