#pragma once

#include "support/files.h"
#include "support/logcapture.h"
#include "support/programfolder.h"
#include "transfer/transfer.h"

#include <QMimeData>
#include <QModelIndex>
#include <QPoint>
#include <QStringList>
#include <QTemporaryDir>
#include <QUrl>

class QTableView;
class QTreeView;

/// A file manager that only writes down which folder it was asked to open, found before the system's while it lives.
class FakeFileManager
{
public:
    FakeFileManager();
    /// What it was asked to open, as it was given, once it has been started; empty before.
    QString opened() const;

private:
    QTemporaryDir m_dir;
    ProgramFolder m_programs;
};

/// A file manager that cannot be started, found before the system's while it lives.
class BrokenFileManager
{
public:
    BrokenFileManager();

private:
    ProgramFolder m_programs;
};

/// The transfer page in the state in which a user drops: shown, prepared for a player, and "ESPLORA PC" pressed.
class OpenTransfer
{
public:
    explicit OpenTransfer(const QString &deviceRoot);

    Transfer page;

    QTableView *table() const;
    QTreeView *tree() const;
    template <typename T> T *child(const char *name) const { return page.findChild<T *>(QLatin1String(name)); }
    /// The row of the table with this name; waits for it a while, invalid when it does not come.
    QModelIndex row(const QString &name) const;
    /// The names in the table, in their order.
    QStringList names() const;
    /// Selects rows of the table by their names.
    bool select(const QStringList &names);

    /// Points of the page.
    QPoint overDropArea() const;
    QPoint overRow(const QString &name) const;
    QPoint overEmptyTable() const;
    QPoint overHeader() const;
    QPoint elsewhere() const;

    /// Drags local files over the drop area and drops them there.
    void drop(const QStringList &paths) { dropAt(overDropArea(), paths); }
    void dropAt(const QPoint &where, const QStringList &paths);

private:
    FakeFileManager m_fileManager;
};

/// One drag from outside, whose events reach the page as the system's do. Each call tells whether the page accepted.
class Drag
{
public:
    Drag(QWidget &page, const QList<QUrl> &urls, Qt::DropActions actions = Qt::CopyAction,
         Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    bool enter(const QPoint &where);
    bool move(const QPoint &where);
    bool drop(const QPoint &where);
    void leave();

private:
    QWidget &m_page;
    QMimeData m_data;
    Qt::DropActions m_actions;
    Qt::KeyboardModifiers m_modifiers;
};

QList<QUrl> fileUrls(const QStringList &paths);

/// Writes down what the page tells the window and the log while it lives, each as one line and all in the order in
/// which they came: "visible 1", "min 0", "max 12", "format %v", "value 3", "increase", "label …", "stop 0", "back",
/// "optimise page", "optimise", and "log …" for the lines of the log.
class TransferRecorder : public QObject
{
public:
    explicit TransferRecorder(Transfer &page);
    QStringList lines();
    int count(const QString &line) { return lines().count(line); }
    const LogCapture &log() const { return m_log; }
    void clear();

private:
    void add(const QString &line);
    void takeLog();

    LogCapture m_log;
    int m_logTaken = 0;
    QStringList m_lines;
};
