#include "device/devicefilters.h"
#include "device/volumemodel.h"

#include "support/simulatedplayer.h"

#include <QFileSystemModel>
#include <QStandardItemModel>
#include <QtTest>

namespace {

QStandardItem *node(const QString &name, const QList<QStandardItem *> &children = {})
{
    auto *item = new QStandardItem(name);
    item->appendRows(children);
    return item;
}

/// All paths that a model shows, in its order.
QStringList shown(const QAbstractItemModel &model, const QModelIndex &parent = QModelIndex(),
                  const QString &prefix = QString())
{
    QStringList paths;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        const QString path = prefix + index.data().toString();
        paths.append(path);
        paths.append(shown(model, index, path + QLatin1Char('/')));
    }
    return paths;
}

} // namespace

class TestDeviceFilters : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void driveFilterShowsThePlayerAlone();
    void driveFilterComparesTheDriveNameWithItsCase();
    void driveFilterFindsThePlayerUnderAnyLetter();
    void driveFilterAcceptsByTheRowsOwnName();
    void driveFilterHidesThePlayersFoldersOfAnyDriveThatIsNamedSo();
    void folderFilterHidesThePlayersFoldersAndNothingElse();
    void folderFilterComparesFolderNamesWithTheirCase();
    void onlyTheNameInTheFirstColumnCounts();
    void emptyModelShowsNothing();
    void realPlayerIsShownThroughTheDriveFilter();
    void realPlayersFoldersAreHiddenByTheFolderFilter();

private:
    QScopedPointer<QStandardItemModel> m_pc;
};

void TestDeviceFilters::init()
{
    m_pc.reset(new QStandardItemModel);
    m_pc->appendRow(node(QStringLiteral("C:"), {node(QStringLiteral("Windows"), {node(QStringLiteral("System"))}),
                                                node(QStringLiteral("System"))}));
    m_pc->appendRow(
        node(QStringLiteral("CORVIN4 (E:)"),
             {node(QStringLiteral("CorvinUpdate"), {node(QStringLiteral("new"))}),
              node(QStringLiteral("My Songs"), {node(QStringLiteral("System")), node(QStringLiteral("CorvinUpdate")),
                                                node(QStringLiteral("Azzurro.mid"))}),
              node(QStringLiteral("System"), {node(QStringLiteral("Corvin"))}), node(QStringLiteral("Systems"))}));
}

void TestDeviceFilters::driveFilterShowsThePlayerAlone()
{
    Corvin4DriveFilter filter;
    filter.setSourceModel(m_pc.data());
    const QStringList expected = {QStringLiteral("CORVIN4 (E:)"),
                                  QStringLiteral("CORVIN4 (E:)/My Songs"),
                                  QStringLiteral("CORVIN4 (E:)/My Songs/System"),
                                  QStringLiteral("CORVIN4 (E:)/My Songs/CorvinUpdate"),
                                  QStringLiteral("CORVIN4 (E:)/My Songs/Azzurro.mid"),
                                  QStringLiteral("CORVIN4 (E:)/Systems")};
    QCOMPARE(shown(filter), expected);
}

void TestDeviceFilters::driveFilterComparesTheDriveNameWithItsCase()
{
    m_pc->item(1)->setText(QStringLiteral("Corvin4 (E:)"));
    Corvin4DriveFilter filter;
    filter.setSourceModel(m_pc.data());
    QCOMPARE(shown(filter), QStringList());
}

void TestDeviceFilters::driveFilterFindsThePlayerUnderAnyLetter()
{
    m_pc->item(1)->setText(QStringLiteral("CORVIN4 (Z:)"));
    m_pc->insertRow(0, node(QStringLiteral("A:")));
    Corvin4DriveFilter filter;
    filter.setSourceModel(m_pc.data());
    QCOMPARE(shown(filter).first(), QStringLiteral("CORVIN4 (Z:)"));
    QCOMPARE(filter.rowCount(), 1);
}

void TestDeviceFilters::driveFilterAcceptsByTheRowsOwnName()
{
    // A top row is its own top-level ancestor; below another drive such a row is accepted but its drive is not shown.
    m_pc->item(0)->appendRow(node(QStringLiteral("CORVIN4 copy")));
    Corvin4DriveFilter filter;
    filter.setSourceModel(m_pc.data());
    QCOMPARE(filter.rowCount(), 1);
    m_pc->item(0)->setText(QStringLiteral("CORVIN4 BACKUP (C:)"));
    QVERIFY(shown(filter).contains(QStringLiteral("CORVIN4 BACKUP (C:)/Windows/System")));
}

void TestDeviceFilters::driveFilterHidesThePlayersFoldersOfAnyDriveThatIsNamedSo()
{
    // The name of the parent decides, wherever it stands.
    m_pc->item(1)->child(1)->setText(QStringLiteral("copy of CORVIN4"));
    Corvin4DriveFilter filter;
    filter.setSourceModel(m_pc.data());
    const QStringList paths = shown(filter);
    QVERIFY(paths.contains(QStringLiteral("CORVIN4 (E:)/copy of CORVIN4/Azzurro.mid")));
    QVERIFY(!paths.contains(QStringLiteral("CORVIN4 (E:)/copy of CORVIN4/System")));
    QVERIFY(!paths.contains(QStringLiteral("CORVIN4 (E:)/copy of CORVIN4/CorvinUpdate")));
}

void TestDeviceFilters::folderFilterHidesThePlayersFoldersAndNothingElse()
{
    FolderFilesFilter filter;
    filter.setSourceModel(m_pc.data());
    const QStringList all = shown(*m_pc);
    QStringList expected;
    for (const QString &path : all) {
        if (!path.startsWith(QStringLiteral("CORVIN4 (E:)/CorvinUpdate")) &&
            path != QLatin1String("CORVIN4 (E:)/System") && path != QLatin1String("CORVIN4 (E:)/System/Corvin"))
            expected.append(path);
    }
    QCOMPARE(expected.size(), all.size() - 4);
    QCOMPARE(shown(filter), expected);
}

void TestDeviceFilters::folderFilterComparesFolderNamesWithTheirCase()
{
    m_pc->item(1)->child(0)->setText(QStringLiteral("CORVINUPDATE"));
    m_pc->item(1)->child(2)->setText(QStringLiteral("SYSTEM"));
    FolderFilesFilter filter;
    filter.setSourceModel(m_pc.data());
    QCOMPARE(shown(filter), shown(*m_pc));
}

void TestDeviceFilters::onlyTheNameInTheFirstColumnCounts()
{
    QStandardItemModel pc;
    pc.appendRow({node(QStringLiteral("CORVIN4 (E:)")), node(QStringLiteral("Drive"))});
    pc.appendRow({node(QStringLiteral("D:")), node(QStringLiteral("CORVIN4"))});
    // A tooltip or an edit text is no name.
    pc.item(1, 0)->setData(QStringLiteral("CORVIN4"), Qt::ToolTipRole);
    Corvin4DriveFilter filter;
    filter.setSourceModel(&pc);
    QCOMPARE(shown(filter), QStringList{QStringLiteral("CORVIN4 (E:)")});
}

void TestDeviceFilters::emptyModelShowsNothing()
{
    QStandardItemModel empty;
    Corvin4DriveFilter drives;
    drives.setSourceModel(&empty);
    FolderFilesFilter folders;
    folders.setSourceModel(&empty);
    QCOMPARE(drives.rowCount(), 0);
    QCOMPARE(folders.rowCount(), 0);
}

void TestDeviceFilters::realPlayerIsShownThroughTheDriveFilter()
{
    SimulatedPlayer player;
    player.addSystemFiles();
    player.addFolder(QStringLiteral("CorvinUpdate"));
    player.addFile(QStringLiteral("My Songs/System/Azzurro.mid"));
    VolumeModel volume;
    volume.open(player.root(), QStringLiteral("CORVIN4"));
    Corvin4DriveFilter filter;
    filter.setSourceModel(volume.model());

    const auto indexOf = [&](const QString &relative) {
        return filter.mapFromSource(volume.indexForPath(player.path(relative)));
    };
    QTRY_COMPARE(filter.rowCount(), 1);
    const QPersistentModelIndex drive = filter.index(0, 0);
    QVERIFY(drive.data().toString().contains(QStringLiteral("CORVIN4")));
    if (filter.canFetchMore(drive))
        filter.fetchMore(drive);
    QTRY_VERIFY(indexOf(QStringLiteral("My Songs")).isValid());
    QTRY_VERIFY(indexOf(QStringLiteral("My Songs/System")).isValid());
    QTRY_VERIFY(volume.indexForPath(player.path(QStringLiteral("CorvinUpdate"))).isValid());
    QVERIFY(!indexOf(QStringLiteral("CorvinUpdate")).isValid());
    QVERIFY(!indexOf(QStringLiteral("System")).isValid());
    QTRY_COMPARE(filter.rowCount(drive), 2); // AUTOEXEC.BAT and "My Songs"
}

void TestDeviceFilters::realPlayersFoldersAreHiddenByTheFolderFilter()
{
    SimulatedPlayer player;
    player.addSystemFiles();
    player.addFolder(QStringLiteral("CorvinUpdate"));
    VolumeModel volume;
    volume.open(player.root(), QStringLiteral("CORVIN4"));
    FolderFilesFilter filter;
    filter.setSourceModel(volume.model());
    const QPersistentModelIndex drive = filter.mapFromSource(volume.indexForPath(player.root()));
    QVERIFY(drive.isValid());
    if (filter.canFetchMore(drive))
        filter.fetchMore(drive);
    QTRY_COMPARE(filter.rowCount(drive), 1);
    QCOMPARE(filter.index(0, 0, drive).data().toString(), QStringLiteral("AUTOEXEC.BAT"));
}

QTEST_MAIN(TestDeviceFilters)
#include "tst_devicefilters.moc"
