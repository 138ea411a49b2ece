#include "device/devicefilters.h"
#include "device/volumemodel.h"

#include "support/simulatedplayer.h"
#include "support/testing.h"

namespace {
QStandardItem *node(const QString &name, const QList<QStandardItem *> &children = {}) {
    auto *item = new QStandardItem(name);
    item->appendRows(children);
    return item;
}

/// A PC with a player.
struct Pc : QStandardItemModel
{
    Pc() {
        appendRow(node("C:"_s, {node("Windows"_s, {node("System"_s)}), node("System"_s)}));
        appendRow(player);
    }

    QStandardItem *player =
        node("CORVIN4 (E:)"_s, {node("CorvinUpdate"_s, {node("new"_s)}),
                                node("My Songs"_s, {node("System"_s), node("CorvinUpdate"_s), node("Azzurro.mid"_s)}),
                                node("System"_s, {node("Corvin"_s)}), node("Systems"_s)});
};
} // namespace

class TestDeviceFilters : public QObject
{
    Q_OBJECT

    /// All paths that a model shows, in its order.
    static QStringList shown(const QAbstractItemModel &model, const QModelIndex &parent = {},
                             const QString &prefix = {}) {
        QStringList paths;
        for (int row = 0; row < model.rowCount(parent); ++row) {
            const QModelIndex index = model.index(row, 0, parent);
            const QString path = prefix + index.data().toString();
            paths += path;
            paths += shown(model, index, path + "/"_s);
        }
        return paths;
    }
    /// What a filter shows of a model.
    template <typename Filter> static QStringList shownThrough(QAbstractItemModel &source) {
        Filter filter;
        filter.setSourceModel(&source);
        return shown(filter);
    }
    static void fetch(QAbstractItemModel &model, const QModelIndex &index) {
        if (model.canFetchMore(index))
            model.fetchMore(index);
    }

private slots:
    void driveFilterShowsThePlayerAlone() {
        Pc pc;
        const QString songs = "CORVIN4 (E:)/My Songs"_s;
        const QStringList inSongs = {songs + "/System"_s, songs + "/CorvinUpdate"_s, songs + "/Azzurro.mid"_s};
        const QStringList expected =
            QStringList{"CORVIN4 (E:)"_s, songs} + inSongs + QStringList{"CORVIN4 (E:)/Systems"_s};
        QCOMPARE(shownThrough<Corvin4DriveFilter>(pc), expected);
    }

    void driveFilterFindsThePlayerUnderAnyLetterButInItsCase() {
        Pc pc;
        pc.player->setText("Corvin4 (E:)"_s);
        QCOMPARE(shownThrough<Corvin4DriveFilter>(pc), QStringList());
        pc.player->setText("CORVIN4 (Z:)"_s);
        pc.insertRow(0, node("A:"_s));
        const QStringList paths = shownThrough<Corvin4DriveFilter>(pc);
        QCOMPARE(paths.first(), "CORVIN4 (Z:)"_s);
        QCOMPARE(paths.filter("/"_s).size(), paths.size() - 1);
    }

    void driveFilterAcceptsByTheRowsOwnName() {
        // A top row is its own top-level ancestor; below another drive such a row is accepted but its drive is not
        // shown.
        Pc pc;
        pc.item(0)->appendRow(node("CORVIN4 copy"_s));
        Corvin4DriveFilter filter;
        filter.setSourceModel(&pc);
        QCOMPARE(filter.rowCount(), 1);
        pc.item(0)->setText("CORVIN4 BACKUP (C:)"_s);
        QVERIFY(shown(filter).contains("CORVIN4 BACKUP (C:)/Windows/System"_s));
    }

    void driveFilterHidesThePlayersFoldersOfAnyDriveThatIsNamedSo() {
        // The name of the parent decides, wherever it stands.
        Pc pc;
        pc.player->child(1)->setText("copy of CORVIN4"_s);
        const QStringList paths = shownThrough<Corvin4DriveFilter>(pc);
        QVERIFY(paths.contains("CORVIN4 (E:)/copy of CORVIN4/Azzurro.mid"_s));
        QVERIFY(!paths.contains("CORVIN4 (E:)/copy of CORVIN4/System"_s));
        QVERIFY(!paths.contains("CORVIN4 (E:)/copy of CORVIN4/CorvinUpdate"_s));
    }

    void folderFilterHidesThePlayersFoldersAndNothingElse() {
        Pc pc;
        QStringList expected = shown(pc);
        for (const char *hidden : {"CorvinUpdate", "CorvinUpdate/new", "System", "System/Corvin"})
            QCOMPARE(expected.removeAll("CORVIN4 (E:)/%1"_s.arg(QLatin1String(hidden))), 1);
        QCOMPARE(shownThrough<FolderFilesFilter>(pc), expected);
        // In another case they are shown.
        pc.player->child(0)->setText("CORVINUPDATE"_s);
        pc.player->child(2)->setText("SYSTEM"_s);
        QCOMPARE(shownThrough<FolderFilesFilter>(pc), shown(pc));
    }

    void onlyTheNameInTheFirstColumnCounts() {
        QStandardItemModel pc;
        pc.appendRow({node("CORVIN4 (E:)"_s), node("Drive"_s)});
        pc.appendRow({node("D:"_s), node("CORVIN4"_s)});
        // A tooltip or an edit text is no name.
        pc.item(1, 0)->setData("CORVIN4"_s, Qt::ToolTipRole);
        QCOMPARE(shownThrough<Corvin4DriveFilter>(pc), QStringList{"CORVIN4 (E:)"_s});
    }

    void emptyModelShowsNothing() {
        QStandardItemModel empty;
        QCOMPARE(shownThrough<Corvin4DriveFilter>(empty), QStringList());
        QCOMPARE(shownThrough<FolderFilesFilter>(empty), QStringList());
    }

    void realPlayerIsShownThroughTheFilters() {
        SimulatedPlayer player;
        player.addSystemFiles();
        player.addFolder("CorvinUpdate"_s);
        VolumeModel volume;
        volume.open(player.root(), "CORVIN4"_s);
        FolderFilesFilter folders;
        folders.setSourceModel(volume.model());
        QPersistentModelIndex drive = folders.mapFromSource(volume.indexForPath(player.root()));
        QVERIFY(drive.isValid());
        fetch(folders, drive);
        QTRY_COMPARE(folders.rowCount(drive), 1);
        QCOMPARE(folders.index(0, 0, drive).data().toString(), "AUTOEXEC.BAT"_s);

        player.addFile("My Songs/System/Azzurro.mid"_s);
        Corvin4DriveFilter filter;
        filter.setSourceModel(volume.model());
        const auto indexOf = [&](const QString &relative) {
            return filter.mapFromSource(volume.indexForPath(player.path(relative)));
        };
        QTRY_COMPARE(filter.rowCount(), 1);
        drive = filter.index(0, 0);
        QVERIFY(drive.data().toString().contains("CORVIN4"_s));
        fetch(filter, drive);
        QTRY_VERIFY(indexOf("My Songs"_s).isValid());
        QTRY_VERIFY(indexOf("My Songs/System"_s).isValid());
        QTRY_VERIFY(volume.indexForPath(player.path("CorvinUpdate"_s)).isValid());
        QVERIFY(!indexOf("CorvinUpdate"_s).isValid());
        QVERIFY(!indexOf("System"_s).isValid());
        QTRY_COMPARE(filter.rowCount(drive), 2); // AUTOEXEC.BAT and "My Songs"
    }
};

QTEST_MAIN(TestDeviceFilters)
#include "tst_devicefilters.moc"
