#include "device/volumemodel.h"

#include "device/devicefilters.h"
#include "support/simulatedplayer.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QFileSystemModel>
#include <QSignalSpy>
#include <QTreeView>
#include <QtTest>

class TestVolumeModel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void volumeIsTheOneTopNodeNamedByItsLabel();
    void whatLiesUnderTheVolumeIsShownOneToOne();
    void pathsAndIndexesBelongTogether();
    void pathsElsewhereHaveNoIndex();
    void addedFileAppears();
    void removedFileDisappears();
    void addedFolderInsideAFolderAppears();
    void changesBesideTheVolumeAreNotPassedOn();
    void sortingKeepsPersistentIndexes();
    void nameFilterOfTheFileSystemModelIsFollowed();
    void removedVolumeFolderLeavesNothing();
    void openingAnotherVolumeReplacesTheFirst();
    void missingVolumeShowsNothing_data();
    void missingVolumeShowsNothing();
    void viewOverTheDriveFilterFollowsTheDisk();

private:
    QModelIndex top() const { return m_volume->model()->index(0, 0); }
    QStringList names(const QModelIndex &parent) const;
    void load(const QString &folder);

    QScopedPointer<SimulatedPlayer> m_player;
    QScopedPointer<VolumeModel> m_volume;
    QScopedPointer<QAbstractItemModelTester> m_tester;
};

void TestVolumeModel::init()
{
#ifdef Q_OS_WIN
    QSKIP("SKIPPED WHOLE: here the views stand on the file system model itself");
#endif
    m_player.reset(new SimulatedPlayer);
    m_player->addFile(QStringLiteral("AUTOEXEC.BAT"), "12345");
    m_player->addFile(QStringLiteral("My Songs/a.mid"));
    m_player->addFile(QStringLiteral("My Songs/b.mid"), "123");
    m_player->addFolder(QStringLiteral("Videos"));
    m_volume.reset(new VolumeModel);
    m_tester.reset(
        new QAbstractItemModelTester(m_volume->model(), QAbstractItemModelTester::FailureReportingMode::QtTest));
    m_volume->open(m_player->root(), QStringLiteral("CORVIN4"));
}

void TestVolumeModel::cleanup()
{
    m_tester.reset();
    m_volume.reset();
    m_player.reset();
}

QStringList TestVolumeModel::names(const QModelIndex &parent) const
{
    QStringList found;
    for (int row = 0; row < m_volume->model()->rowCount(parent); ++row)
        found.append(m_volume->model()->index(row, 0, parent).data().toString());
    found.sort();
    return found;
}

void TestVolumeModel::load(const QString &folder)
{
    const QModelIndex index = m_volume->indexForPath(m_player->path(folder));
    QVERIFY(index.isValid());
    if (m_volume->model()->canFetchMore(index))
        m_volume->model()->fetchMore(index);
    const int expected = QDir(m_player->path(folder)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size();
    QTRY_COMPARE(m_volume->model()->rowCount(m_volume->indexForPath(m_player->path(folder))), expected);
}

void TestVolumeModel::volumeIsTheOneTopNodeNamedByItsLabel()
{
    const QAbstractItemModel *model = m_volume->model();
    QCOMPARE(model->rowCount(), 1);
    QVERIFY(model->hasChildren());
    QCOMPARE(top().data().toString(), QStringLiteral("CORVIN4"));
    QVERIFY(!top().data(Qt::DecorationRole).isNull());
    QVERIFY(!top().parent().isValid());
    QVERIFY(model->hasChildren(top()));
    QVERIFY(!model->index(1, 0).isValid());
    QVERIFY(!model->index(0, model->columnCount()).isValid());
    QVERIFY(!model->index(-1, 0).isValid());
    QVERIFY(!top().siblingAtColumn(model->columnCount()).isValid());
    QVERIFY(!top().siblingAtRow(1).isValid());
    QVERIFY(m_volume->isDir(top()));
    QVERIFY(!model->canFetchMore(QModelIndex()));
}

void TestVolumeModel::whatLiesUnderTheVolumeIsShownOneToOne()
{
    load(QString());
    QCOMPARE(names(top()),
             (QStringList{QStringLiteral("AUTOEXEC.BAT"), QStringLiteral("My Songs"), QStringLiteral("Videos")}));
    load(QStringLiteral("My Songs"));
    const QModelIndex songs = m_volume->indexForPath(m_player->path(QStringLiteral("My Songs")));
    QCOMPARE(songs.parent(), top());
    QCOMPARE(names(songs), (QStringList{QStringLiteral("a.mid"), QStringLiteral("b.mid")}));
    // Every column comes from the model behind.
    const QModelIndex file = m_volume->indexForPath(m_player->path(QStringLiteral("AUTOEXEC.BAT")));
    const QModelIndex behind = m_volume->fileSystemModel()->index(m_player->path(QStringLiteral("AUTOEXEC.BAT")));
    QCOMPARE(m_volume->model()->columnCount(), m_volume->fileSystemModel()->columnCount());
    for (int column = 0; column < m_volume->model()->columnCount(); ++column)
        QCOMPARE(file.siblingAtColumn(column).data(), behind.siblingAtColumn(column).data());
    for (int section = 0; section < m_volume->model()->columnCount(); ++section)
        QCOMPARE(m_volume->model()->headerData(section, Qt::Horizontal),
                 m_volume->fileSystemModel()->headerData(section, Qt::Horizontal));
}

void TestVolumeModel::pathsAndIndexesBelongTogether()
{
    load(QString());
    load(QStringLiteral("My Songs"));
    const QString root = QDir::cleanPath(m_player->root());
    QCOMPARE(m_volume->indexForPath(m_player->root()), top());
    QCOMPARE(m_volume->indexForPath(root), top());
    QCOMPARE(m_volume->filePath(top()), root);
    const QString song = m_player->path(QStringLiteral("My Songs/b.mid"));
    const QModelIndex index = m_volume->indexForPath(song);
    QCOMPARE(m_volume->filePath(index), song);
    QCOMPARE(m_volume->filePath(index.siblingAtColumn(2)), song);
    QVERIFY(!m_volume->isDir(index));
    QVERIFY(m_volume->isDir(index.parent()));
    QCOMPARE(index.parent().parent(), top());
    QCOMPARE(m_volume->filePath(QModelIndex()), QString());
    QVERIFY(!m_volume->isDir(QModelIndex()));
}

void TestVolumeModel::pathsElsewhereHaveNoIndex()
{
    QVERIFY(!m_volume->indexForPath(QStringLiteral("/")).isValid());
    QVERIFY(!m_volume->indexForPath(QDir::cleanPath(m_player->path(QStringLiteral("..")))).isValid());
    QVERIFY(!m_volume->indexForPath(m_player->path(QStringLiteral("no such file"))).isValid());
    QVERIFY(!m_volume->indexForPath(QString()).isValid());
}

void TestVolumeModel::addedFileAppears()
{
    load(QString());
    load(QStringLiteral("My Songs"));
    QSignalSpy inserted(m_volume->model(), &QAbstractItemModel::rowsInserted);
    m_player->addFile(QStringLiteral("new.mid"));
    QTRY_VERIFY(names(top()).contains(QStringLiteral("new.mid")));
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(inserted.first().first().toModelIndex(), top());
}

void TestVolumeModel::removedFileDisappears()
{
    load(QString());
    load(QStringLiteral("My Songs"));
    QSignalSpy removed(m_volume->model(), &QAbstractItemModel::rowsRemoved);
    const QPersistentModelIndex file = m_volume->indexForPath(m_player->path(QStringLiteral("AUTOEXEC.BAT")));
    QVERIFY(file.isValid());
    QVERIFY(QFile::remove(m_player->path(QStringLiteral("AUTOEXEC.BAT"))));
    QTRY_VERIFY(!file.isValid());
    QCOMPARE(removed.count(), 1);
    QCOMPARE(names(top()), (QStringList{QStringLiteral("My Songs"), QStringLiteral("Videos")}));
}

void TestVolumeModel::addedFolderInsideAFolderAppears()
{
    load(QString());
    load(QStringLiteral("My Songs"));
    m_player->addFile(QStringLiteral("My Songs/Z/zingara.mid"));
    const QString folder = m_player->path(QStringLiteral("My Songs/Z"));
    QTRY_VERIFY(
        names(m_volume->indexForPath(m_player->path(QStringLiteral("My Songs")))).contains(QStringLiteral("Z")));
    QVERIFY(m_volume->isDir(m_volume->indexForPath(folder)));
    load(QStringLiteral("My Songs/Z"));
}

void TestVolumeModel::changesBesideTheVolumeAreNotPassedOn()
{
    load(QString());
    load(QStringLiteral("My Songs"));
    QTemporaryDir beside;
    QSignalSpy inserted(m_volume->model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy insertedBehind(m_volume->fileSystemModel(), &QAbstractItemModel::rowsInserted);
    // The model behind learns of a folder elsewhere, and of what lies in it.
    QFile(beside.filePath(QStringLiteral("file"))).open(QIODevice::WriteOnly);
    const QModelIndex folder = m_volume->fileSystemModel()->index(beside.path());
    m_volume->fileSystemModel()->fetchMore(folder);
    QTRY_COMPARE(m_volume->fileSystemModel()->rowCount(folder), 1);
    QVERIFY(insertedBehind.count() > 0);
    QCOMPARE(inserted.count(), 0);
    QCOMPARE(m_volume->model()->rowCount(), 1);
    QCOMPARE(top().data().toString(), QStringLiteral("CORVIN4"));
}

void TestVolumeModel::sortingKeepsPersistentIndexes()
{
    load(QString());
    load(QStringLiteral("My Songs"));
    const QString path = m_player->path(QStringLiteral("My Songs/a.mid"));
    const QPersistentModelIndex song = m_volume->indexForPath(path);
    const QPersistentModelIndex drive = top();
    QSignalSpy changed(m_volume->model(), &QAbstractItemModel::layoutChanged);
    m_volume->model()->sort(0, Qt::AscendingOrder);
    QTRY_COMPARE(song.row(), 0);
    m_volume->model()->sort(0, Qt::DescendingOrder);
    QTRY_COMPARE(song.row(), 1);
    QVERIFY(changed.count() >= 1);
    QCOMPARE(m_volume->filePath(song), path);
    QCOMPARE(m_volume->filePath(drive), QDir::cleanPath(m_player->root()));
    QCOMPARE(drive.row(), 0);
    QVERIFY(m_volume->model()->match(top(), Qt::DisplayRole, QStringLiteral("CORVIN4")).contains(top()));
}

void TestVolumeModel::nameFilterOfTheFileSystemModelIsFollowed()
{
    load(QString());
    m_volume->fileSystemModel()->setFilter(QDir::Dirs | QDir::NoDotAndDotDot);
    QTRY_COMPARE(names(top()), (QStringList{QStringLiteral("My Songs"), QStringLiteral("Videos")}));
}

void TestVolumeModel::removedVolumeFolderLeavesNothing()
{
    load(QString());
    const QPersistentModelIndex drive = top();
    // The parent folder is known to the model behind, as it is when its views were there before.
    QTemporaryDir parent;
    const QString folder = QFileInfo(parent.path()).canonicalFilePath() + QStringLiteral("/CORVIN4");
    QVERIFY(QDir().mkpath(folder));
    m_volume->open(folder + QLatin1Char('/'), QStringLiteral("CORVIN4"));
    QVERIFY(!drive.isValid());
    m_volume->fileSystemModel()->fetchMore(
        m_volume->fileSystemModel()->index(QFileInfo(parent.path()).canonicalFilePath()));
    QCOMPARE(m_volume->model()->rowCount(), 1);
    QSignalSpy removed(m_volume->model(), &QAbstractItemModel::rowsRemoved);
    QVERIFY(QDir().rmdir(folder));
    QTRY_COMPARE(m_volume->model()->rowCount(), 0);
    QCOMPARE(removed.count(), 1);
    QVERIFY(!m_volume->model()->hasChildren());
    QVERIFY(!top().isValid());
}

void TestVolumeModel::openingAnotherVolumeReplacesTheFirst()
{
    load(QString());
    QTemporaryDir other;
    QFile(other.filePath(QStringLiteral("only.mid"))).open(QIODevice::WriteOnly);
    QSignalSpy reset(m_volume->model(), &QAbstractItemModel::modelReset);
    m_volume->open(other.path() + QLatin1Char('/'), QStringLiteral("CORVIN4 BIS"));
    QCOMPARE(reset.count(), 1);
    QCOMPARE(m_volume->model()->rowCount(), 1);
    QCOMPARE(top().data().toString(), QStringLiteral("CORVIN4 BIS"));
    QVERIFY(!m_volume->indexForPath(m_player->root()).isValid());
    if (m_volume->model()->canFetchMore(top()))
        m_volume->model()->fetchMore(top());
    QTRY_COMPARE(names(top()), QStringList{QStringLiteral("only.mid")});
}

void TestVolumeModel::missingVolumeShowsNothing_data()
{
    QTest::addColumn<QString>("root");
    QTest::newRow("empty") << QString();
    QTest::newRow("no such folder") << QStringLiteral("/no/such/folder/");
}

void TestVolumeModel::missingVolumeShowsNothing()
{
    QFETCH(QString, root);
    m_volume->open(root, QStringLiteral("CORVIN4"));
    QCOMPARE(m_volume->model()->rowCount(), 0);
    QVERIFY(!m_volume->model()->hasChildren());
    QVERIFY(!m_volume->indexForPath(m_player->root()).isValid());
    m_volume->open(m_player->root(), QStringLiteral("CORVIN4"));
    QCOMPARE(m_volume->model()->rowCount(), 1);
}

void TestVolumeModel::viewOverTheDriveFilterFollowsTheDisk()
{
    m_player->addFile(QStringLiteral("System/Corvin/Corvin.exe"));
    Corvin4DriveFilter filter;
    filter.setSourceModel(m_volume->model());
    QAbstractItemModelTester filterTester(&filter, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QTreeView view;
    view.setModel(&filter);
    view.show();
    view.expandAll();
    const QPersistentModelIndex drive = filter.index(0, 0);
    QCOMPARE(drive.data().toString(), QStringLiteral("CORVIN4"));
    QTRY_COMPARE(filter.rowCount(drive), 3);
    m_player->addFolder(QStringLiteral("Images"));
    QTRY_COMPARE(filter.rowCount(drive), 4);
    const QModelIndex shown = filter.mapFromSource(m_volume->indexForPath(m_player->path(QStringLiteral("Images"))));
    QTRY_VERIFY(view.visualRect(shown).isValid());
    QVERIFY(QDir().rmdir(m_player->path(QStringLiteral("Images"))));
    QTRY_COMPARE(filter.rowCount(drive), 3);
    m_player->addFolder(QStringLiteral("CorvinUpdate"));
    QTRY_VERIFY(m_volume->indexForPath(m_player->path(QStringLiteral("CorvinUpdate"))).isValid());
    QTRY_COMPARE(filter.rowCount(drive), 3);
}

QTEST_MAIN(TestVolumeModel)
#include "tst_volumemodel.moc"
