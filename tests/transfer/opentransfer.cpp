#include "opentransfer.h"

#include <QApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QTableView>
#include <QTest>
#include <QTreeView>

namespace {

/// One for each system; the program starts its own.
const QStringList kFileManagers = {QStringLiteral("xdg-open"), QStringLiteral("explorer")};

const QString kOpened = QStringLiteral("opened");

} // namespace

FakeFileManager::FakeFileManager()
{
    for (const QString &name : kFileManagers)
        m_programs.addStandIn(name, {Does::record(m_dir.filePath(kOpened))});
}

QString FakeFileManager::opened() const
{
    QFile answer(m_dir.filePath(kOpened));
    if (!answer.open(QIODevice::ReadOnly))
        return {};
    QString arguments = QString::fromUtf8(answer.readAll()).chopped(1);
    // A folder with blanks in its name reaches the file manager of Windows in pieces, as it wants them.
    return arguments.replace(QLatin1Char('\n'), QLatin1Char(' '));
}

BrokenFileManager::BrokenFileManager()
{
    m_programs.hideOthers();
    for (const QString &name : kFileManagers)
        m_programs.addBroken(name);
}

OpenTransfer::OpenTransfer(const QString &deviceRoot)
{
    page.resize(1100, 640);
    page.prepare(deviceRoot);
    page.show();
    page.on_pButPc_clicked();
    if (!QTest::qWaitForWindowExposed(&page))
        QTest::qFail("the page does not come up", __FILE__, __LINE__);
}

QTableView *OpenTransfer::table() const
{
    return child<QTableView>("tableView");
}

QTreeView *OpenTransfer::tree() const
{
    return child<QTreeView>("treeView");
}

QModelIndex OpenTransfer::row(const QString &name) const
{
    QModelIndex found;
    (void)QTest::qWaitFor([&] {
        for (int i = 0; i < table()->model()->rowCount(table()->rootIndex()); ++i) {
            const QModelIndex index = table()->model()->index(i, 0, table()->rootIndex());
            if (index.data().toString() == name)
                found = index;
        }
        return found.isValid();
    });
    return found;
}

QStringList OpenTransfer::names() const
{
    QStringList found;
    for (int i = 0; i < table()->model()->rowCount(table()->rootIndex()); ++i)
        found.append(table()->model()->index(i, 0, table()->rootIndex()).data().toString());
    return found;
}

bool OpenTransfer::select(const QStringList &names)
{
    table()->clearSelection();
    for (const QString &name : names) {
        const QModelIndex index = row(name);
        if (!index.isValid())
            return false;
        table()->selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    return true;
}

QPoint OpenTransfer::overDropArea() const
{
    const auto *area = child<QLabel>("dropArea");
    return area->mapTo(&page, area->rect().center());
}

QPoint OpenTransfer::overRow(const QString &name) const
{
    return table()->viewport()->mapTo(&page, table()->visualRect(row(name)).center());
}

QPoint OpenTransfer::overEmptyTable() const
{
    const QRect viewport = table()->viewport()->rect();
    return table()->viewport()->mapTo(&page, QPoint(viewport.center().x(), viewport.bottom() - 1));
}

QPoint OpenTransfer::overHeader() const
{
    const QWidget *header = table()->horizontalHeader();
    return header->mapTo(&page, header->rect().center());
}

QPoint OpenTransfer::elsewhere() const
{
    return tree()->mapTo(&page, tree()->rect().center());
}

void OpenTransfer::dropAt(const QPoint &where, const QStringList &paths)
{
    Drag drag(page, fileUrls(paths));
    drag.enter(where);
    drag.move(where);
    drag.drop(where);
}

Drag::Drag(QWidget &page, const QList<QUrl> &urls, Qt::DropActions actions, Qt::KeyboardModifiers modifiers)
    : m_page(page), m_actions(actions), m_modifiers(modifiers)
{
    m_data.setUrls(urls);
}

bool Drag::enter(const QPoint &where)
{
    QDragEnterEvent event(where, m_actions, &m_data, Qt::LeftButton, m_modifiers);
    QApplication::sendEvent(&m_page, &event);
    return event.isAccepted();
}

bool Drag::move(const QPoint &where)
{
    QDragMoveEvent event(where, m_actions, &m_data, Qt::LeftButton, m_modifiers);
    QApplication::sendEvent(&m_page, &event);
    return event.isAccepted();
}

bool Drag::drop(const QPoint &where)
{
    QDropEvent event(where, m_actions, &m_data, Qt::LeftButton, m_modifiers);
    QApplication::sendEvent(&m_page, &event);
    return event.isAccepted();
}

void Drag::leave()
{
    QDragLeaveEvent event;
    QApplication::sendEvent(&m_page, &event);
}

QList<QUrl> fileUrls(const QStringList &paths)
{
    QList<QUrl> urls;
    for (const QString &path : paths)
        urls.append(QUrl::fromLocalFile(path));
    return urls;
}

TransferRecorder::TransferRecorder(Transfer &page)
{
    connect(&page, &Transfer::setProgressBarVisible, this,
            [this](bool visible) { add(QStringLiteral("visible %1").arg(int(visible))); });
    connect(&page, &Transfer::setProgressBarMinVal, this,
            [this](int value) { add(QStringLiteral("min %1").arg(value)); });
    connect(&page, &Transfer::setProgressBarMaxVal, this,
            [this](int value) { add(QStringLiteral("max %1").arg(value)); });
    connect(&page, &Transfer::setProgressBarFormat, this,
            [this](const QString &format) { add(QStringLiteral("format ") + format); });
    connect(&page, &Transfer::updateProgressBarVal, this,
            [this](int value) { add(QStringLiteral("value %1").arg(value)); });
    connect(&page, &Transfer::increaseProgressBarVal, this, [this] { add(QStringLiteral("increase")); });
    connect(&page, &Transfer::updateLabelAction, this,
            [this](const QString &text) { add(QStringLiteral("label ") + text); });
    connect(&page, &Transfer::setPushButtonStopVisible, this,
            [this](bool visible) { add(QStringLiteral("stop %1").arg(int(visible))); });
    connect(&page, &Transfer::backFromTransferToFirstMenu, this, [this] { add(QStringLiteral("back")); });
    connect(&page, &Transfer::backFromTransferToOttimizza, this, [this] { add(QStringLiteral("optimise page")); });
    connect(&page, &Transfer::startOttimizzaProcedure, this, [this] { add(QStringLiteral("optimise")); });
}

QStringList TransferRecorder::lines()
{
    takeLog();
    return m_lines;
}

void TransferRecorder::clear()
{
    m_log.clear();
    m_logTaken = 0;
    m_lines.clear();
}

void TransferRecorder::add(const QString &line)
{
    takeLog();
    m_lines.append(line);
}

void TransferRecorder::takeLog()
{
    for (; m_logTaken < m_log.lines().size(); ++m_logTaken) {
        // The page itself warns of nothing; Qt does, of style sheets and of what a screen lacks.
        const LogCapture::Line &line = m_log.lines().at(m_logTaken);
        if (line.type != QtWarningMsg)
            m_lines.append(QStringLiteral("log ") + line.text);
    }
}
