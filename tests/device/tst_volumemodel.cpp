#include "device/volumemodel.h"

#include "device/devicefilters.h"
#include "support/files.h"
#include "support/simulatedplayer.h"
#include "support/testing.h"

#include <QAbstractItemModelTester>

namespace {
const QStringList kLoaded = {QString(), "My Songs"_s};

/// A player with a few songs, as a volume, with what some folders hold already there.
struct Songs : VolumeModel
{
    explicit Songs(const QStringList &loaded = {}) {
        player.addFile("AUTOEXEC.BAT"_s, "12345");
        player.addFile("My Songs/a.mid"_s);
        player.addFile("My Songs/b.mid"_s, "123");
        player.addFolder("Videos"_s);
        open(player.root(), "CORVIN4"_s);
        for (const QString &folder : loaded)
            load(folder);
    }
    QModelIndex top() const { return shown.index(0, 0); }
    QModelIndex at(const QString &path) const { return indexForPath(player.path(path)); }
    QStringList names(const QModelIndex &parent) const {
        QStringList found;
        for (int row = 0; row < shown.rowCount(parent); ++row)
            found.append(shown.index(row, 0, parent).data().toString());
        found.sort();
        return found;
    }
    void fetch(const QModelIndex &index) {
        if (shown.canFetchMore(index))
            shown.fetchMore(index);
    }
    /// Waits for all that lies in a folder.
    void load(const QString &folder) {
        QVERIFY(at(folder).isValid());
        fetch(at(folder));
        const int expected = QDir(player.path(folder)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size();
        QTRY_COMPARE(shown.rowCount(at(folder)), expected);
    }

    SimulatedPlayer player;
    QAbstractItemModel &shown = *model();
    QFileSystemModel &behind = *fileSystemModel();
    QAbstractItemModelTester tester{&shown, QAbstractItemModelTester::FailureReportingMode::QtTest};
};
} // namespace

class TestVolumeModel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() {
#ifdef Q_OS_WIN
        QSKIP("SKIPPED WHOLE: here the views stand on the file system model itself");
#endif
    }

    void volumeIsTheOneTopNodeNamedByItsLabel() {
        const Songs songs;
        const QAbstractItemModel &model = songs.shown;
        const QModelIndex top = songs.top();
        QCOMPARE(model.rowCount(), 1);
        QVERIFY(model.hasChildren());
        QCOMPARE(top.data().toString(), "CORVIN4"_s);
        QVERIFY(!top.data(Qt::DecorationRole).isNull());
        QVERIFY(!top.parent().isValid());
        QVERIFY(model.hasChildren(top));
        for (const QModelIndex &none : {model.index(1, 0), model.index(0, model.columnCount()), model.index(-1, 0),
                                        top.siblingAtColumn(model.columnCount()), top.siblingAtRow(1)})
            QVERIFY(!none.isValid());
        QVERIFY(songs.isDir(top));
        QVERIFY(!model.canFetchMore(QModelIndex()));
    }

    void whatLiesUnderTheVolumeIsShownOneToOne() {
        const Songs songs(kLoaded);
        QCOMPARE(songs.names(songs.top()), (QStringList{"AUTOEXEC.BAT"_s, "My Songs"_s, "Videos"_s}));
        QCOMPARE(songs.at("My Songs"_s).parent(), songs.top());
        QCOMPARE(songs.names(songs.at("My Songs"_s)), words("a.mid b.mid"));
        // Every column comes from the model behind.
        const QModelIndex file = songs.at("AUTOEXEC.BAT"_s);
        const QModelIndex behind = songs.behind.index(songs.player.path("AUTOEXEC.BAT"_s));
        QCOMPARE(songs.shown.columnCount(), songs.behind.columnCount());
        for (int i = 0; i < songs.shown.columnCount(); ++i) {
            QCOMPARE(file.siblingAtColumn(i).data(), behind.siblingAtColumn(i).data());
            QCOMPARE(songs.shown.headerData(i, Qt::Horizontal), songs.behind.headerData(i, Qt::Horizontal));
        }
    }

    void pathsAndIndexesBelongTogether() {
        const Songs songs(kLoaded);
        const QString root = QDir::cleanPath(songs.player.root());
        QCOMPARE(songs.indexForPath(songs.player.root()), songs.top());
        QCOMPARE(songs.indexForPath(root), songs.top());
        QCOMPARE(songs.filePath(songs.top()), root);
        const QString song = songs.player.path("My Songs/b.mid"_s);
        const QModelIndex index = songs.indexForPath(song);
        QCOMPARE(songs.filePath(index), song);
        QCOMPARE(songs.filePath(index.siblingAtColumn(2)), song);
        QVERIFY(!songs.isDir(index));
        QVERIFY(songs.isDir(index.parent()));
        QCOMPARE(index.parent().parent(), songs.top());
        QCOMPARE(songs.filePath(QModelIndex()), QString());
        QVERIFY(!songs.isDir(QModelIndex()));
    }

    void pathsElsewhereHaveNoIndex() {
        const Songs songs;
        const QString parent = QDir::cleanPath(songs.player.path(".."_s));
        for (const QString &path : {"/"_s, parent, songs.player.path("no such file"_s), QString()})
            QVERIFY2(!songs.indexForPath(path).isValid(), qPrintable(path));
    }

    void fileAppearsWhenAddedAndDisappearsWhenRemoved() {
        Songs songs(kLoaded);
        QSignalSpy inserted(&songs.shown, &QAbstractItemModel::rowsInserted);
        const QSignalSpy removed(&songs.shown, &QAbstractItemModel::rowsRemoved);
        songs.player.addFile("new.mid"_s);
        QTRY_VERIFY(songs.names(songs.top()).contains("new.mid"_s));
        QCOMPARE(inserted.count(), 1);
        QCOMPARE(inserted.first().first().toModelIndex(), songs.top());
        const QPersistentModelIndex file = songs.at("AUTOEXEC.BAT"_s);
        QVERIFY(file.isValid());
        QVERIFY(QFile::remove(songs.player.path("AUTOEXEC.BAT"_s)));
        QTRY_VERIFY(!file.isValid());
        QCOMPARE(removed.count(), 1);
        QCOMPARE(songs.names(songs.top()), (QStringList{"My Songs"_s, "Videos"_s, "new.mid"_s}));
    }

    void addedFolderInsideAFolderAppears() {
        Songs songs(kLoaded);
        songs.player.addFile("My Songs/Z/zingara.mid"_s);
        QTRY_VERIFY(songs.names(songs.at("My Songs"_s)).contains("Z"_s));
        QVERIFY(songs.isDir(songs.at("My Songs/Z"_s)));
        songs.load("My Songs/Z"_s);
    }

    void changesBesideTheVolumeAreNotPassedOn() {
        Songs songs(kLoaded);
        PcFolder beside;
        const QSignalSpy inserted(&songs.shown, &QAbstractItemModel::rowsInserted);
        const QSignalSpy insertedBehind(&songs.behind, &QAbstractItemModel::rowsInserted);
        // The model behind learns of a folder elsewhere, and of what lies in it.
        beside.addFile("file"_s);
        const QModelIndex folder = songs.behind.index(beside.path());
        songs.behind.fetchMore(folder);
        QTRY_COMPARE(songs.behind.rowCount(folder), 1);
        QVERIFY(insertedBehind.count() > 0);
        QCOMPARE(inserted.count(), 0);
        QCOMPARE(songs.shown.rowCount(), 1);
        QCOMPARE(songs.top().data().toString(), "CORVIN4"_s);
    }

    void sortingKeepsPersistentIndexes() {
        Songs songs(kLoaded);
        const QPersistentModelIndex song = songs.at("My Songs/a.mid"_s);
        const QPersistentModelIndex drive = songs.top();
        const QSignalSpy changed(&songs.shown, &QAbstractItemModel::layoutChanged);
        songs.shown.sort(0, Qt::AscendingOrder);
        QTRY_COMPARE(song.row(), 0);
        songs.shown.sort(0, Qt::DescendingOrder);
        QTRY_COMPARE(song.row(), 1);
        QVERIFY(changed.count() >= 1);
        QCOMPARE(songs.filePath(song), songs.player.path("My Songs/a.mid"_s));
        QCOMPARE(songs.filePath(drive), QDir::cleanPath(songs.player.root()));
        QCOMPARE(drive.row(), 0);
        QVERIFY(songs.shown.match(songs.top(), Qt::DisplayRole, "CORVIN4"_s).contains(songs.top()));
    }

    void nameFilterOfTheFileSystemModelIsFollowed() {
        Songs songs(kLoaded);
        songs.behind.setFilter(QDir::Dirs | QDir::NoDotAndDotDot);
        QTRY_COMPARE(songs.names(songs.top()), (QStringList{"My Songs"_s, "Videos"_s}));
    }

    void removedVolumeFolderLeavesNothing() {
        Songs songs(kLoaded);
        const QPersistentModelIndex drive = songs.top();
        const QTemporaryDir dir;
        const QString parent = QFileInfo(dir.path()).canonicalFilePath();
        const QString folder = parent + "/CORVIN4"_s;
        QVERIFY(QDir().mkpath(folder));
        songs.open(folder + "/"_s, "CORVIN4"_s);
        QVERIFY(!drive.isValid());
        // The parent folder is known to the model behind, as it is when its views were there before.
        songs.behind.fetchMore(songs.behind.index(parent));
        QCOMPARE(songs.shown.rowCount(), 1);
        const QSignalSpy removed(&songs.shown, &QAbstractItemModel::rowsRemoved);
        QVERIFY(QDir().rmdir(folder));
        QTRY_COMPARE(songs.shown.rowCount(), 0);
        QCOMPARE(removed.count(), 1);
        QVERIFY(!songs.shown.hasChildren());
        QVERIFY(!songs.top().isValid());
    }

    void openingAnotherVolumeReplacesTheFirst() {
        Songs songs(kLoaded);
        PcFolder other;
        other.addFile("only.mid"_s);
        const QSignalSpy reset(&songs.shown, &QAbstractItemModel::modelReset);
        songs.open(other.path() + "/"_s, "CORVIN4 BIS"_s);
        QCOMPARE(reset.count(), 1);
        QCOMPARE(songs.shown.rowCount(), 1);
        QCOMPARE(songs.top().data().toString(), "CORVIN4 BIS"_s);
        QVERIFY(!songs.indexForPath(songs.player.root()).isValid());
        songs.fetch(songs.top());
        QTRY_COMPARE(songs.names(songs.top()), QStringList{"only.mid"_s});
    }

    void missingVolumeShowsNothing() {
        for (const QString &root : {QString(), "/no/such/folder/"_s}) {
            Songs songs;
            songs.open(root, "CORVIN4"_s);
            QVERIFY2(songs.shown.rowCount() == 0 && !songs.shown.hasChildren(), qPrintable(root));
            QVERIFY(!songs.indexForPath(songs.player.root()).isValid());
            songs.open(songs.player.root(), "CORVIN4"_s);
            QCOMPARE(songs.shown.rowCount(), 1);
        }
    }

    void viewOverTheDriveFilterFollowsTheDisk() {
        Songs songs;
        songs.player.addFile("System/Corvin/Corvin.exe"_s);
        Corvin4DriveFilter filter;
        filter.setSourceModel(&songs.shown);
        const QAbstractItemModelTester tester(&filter, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QTreeView view;
        view.setModel(&filter);
        view.show();
        view.expandAll();
        const QPersistentModelIndex drive = filter.index(0, 0);
        QCOMPARE(drive.data().toString(), "CORVIN4"_s);
        QTRY_COMPARE(filter.rowCount(drive), 3);
        songs.player.addFolder("Images"_s);
        QTRY_COMPARE(filter.rowCount(drive), 4);
        QTRY_VERIFY(view.visualRect(filter.mapFromSource(songs.at("Images"_s))).isValid());
        QVERIFY(QDir().rmdir(songs.player.path("Images"_s)));
        QTRY_COMPARE(filter.rowCount(drive), 3);
        songs.player.addFolder("CorvinUpdate"_s);
        QTRY_VERIFY(songs.at("CorvinUpdate"_s).isValid());
        QTRY_COMPARE(filter.rowCount(drive), 3);
    }
};

QTEST_MAIN(TestVolumeModel)
#include "tst_volumemodel.moc"
