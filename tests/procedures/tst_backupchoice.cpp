#include "procedures/backupchoice.h"
#include "procedures/songlist.h"

#include "disk/datafolder.h"

#include "support/files.h"
#include "support/platform.h"
#include "support/testing.h"

#include <QStorageInfo>

class TestBackupChoice : public QObject
{
    Q_OBJECT

private slots:
    void systemPartsStayOutWhateverLeadsToTheRoot_data() {
        columns<QString, bool>("path", "system");
        row("song in the root", "song.mid"_s, false);
        row("song in a folder", "My Songs/song.mid"_s, false);
        row("bridges", "Bridges/a.brg"_s, true);
        row("bridges in lower case", "bridges/a.brg"_s, true);
        row("bridges deep", "My Songs/BRIDGES/x/a.mid"_s, true);
        row("other bridges", "MyBridges/a.mid"_s, false);
        row("bridges as the end of the path", "x.y/bridges"_s, false);
        row("effects", "effects/a.fx"_s, true);
        row("system", "SYSTEM/GuiProc/GuiProc.exe"_s, true);
        row("system folder alone", "System"_s, false);
        row("systems", "Systems/a.mid"_s, false);
        row("start-up file", "AUTOEXEC.BAT"_s, true);
        row("start-up file deep", "Songs/AutoExec.bat"_s, true);
        row("start-up file inside a name", "Songs/my autoexec.bat.mid"_s, true);
        row("start-up file as a folder", "autoexec.bat/a.mid"_s, true);
    }
    void systemPartsStayOutWhateverLeadsToTheRoot() {
        QFETCH(QString, path);
        for (const QString &root : {"E:/"_s, "/media/system/effects/CORVIN4/"_s})
            QTEST(isSystemPart(root + path, Player(root)), "system");
    }

    void folderHoldsItselfAndWhatIsBelow() {
        PcFolder dir;
        const QString outer = dir.path("songs"_s);
        const QString inner = dir.addFolder("songs/a/b"_s);
        const QString beside = dir.addFolder("songs2/c"_s);
        QVERIFY(holdsFolder(outer, outer));
        QVERIFY(holdsFolder(outer + QLatin1Char('/'), inner));
        QVERIFY(holdsFolder(QDir::rootPath(), inner));
        QVERIFY(!holdsFolder(inner, outer));
        QVERIFY(!holdsFolder(outer, beside));
        // Not there yet, but it would be below.
        QVERIFY(holdsFolder(outer, outer + "/new"_s));
    }

    void linksAreResolvedBeforeComparing() {
        SKIP_ON_WINDOWS("links are files of another kind here");
        PcFolder dir;
        const QString inner = dir.addFolder("songs/a"_s);
        const QString link = dir.path("link"_s);
        QVERIFY(QFile::link(dir.path("songs"_s), link));
        QVERIFY(holdsFolder(link, inner));
        QVERIFY(holdsFolder(dir.path("songs"_s), link + "/a"_s));
    }

    void foldersThatMustNotBeEmptied() {
        PcFolder dir;
        const QString songs = dir.addFolder("media/CORVIN4/My Songs"_s);
        const QString player = dir.path("media/CORVIN4/"_s);
        const QString backup = dir.addFolder("home/anna/backup"_s);
        const QString home = dir.path("home/anna"_s);
        const QString program = dir.addFolder("opt/program"_s);
        const QStringList keep = {program, home};
        const auto fault = [&](const QString &folder) { return destinationFault(folder, Player(player), keep); };
        QVERIFY(fault(backup) == DestinationFault::None);
        QVERIFY(fault(dir.addFolder("opt/other"_s)) == DestinationFault::None);
        for (const QString &folder : {player, songs})
            QVERIFY2(fault(folder) == DestinationFault::IsOnPlayer, qPrintable(folder));
        for (const QString &folder :
             {QString(), dir.path("media"_s), home, dir.path("home"_s), program, dir.path("opt"_s), QDir::rootPath()})
            QVERIFY2(fault(folder) == DestinationFault::HoldsOthers, qPrintable(folder));
    }

    void usersOwnFoldersAreKeptAndThoseInThemAreNot() {
        const QStringList keep = foldersToKeep();
        for (const auto place :
             {QStandardPaths::DesktopLocation, QStandardPaths::DocumentsLocation, QStandardPaths::MusicLocation,
              QStandardPaths::PicturesLocation, QStandardPaths::MoviesLocation, QStandardPaths::DownloadLocation}) {
            const QString folder = QStandardPaths::writableLocation(place);
            QVERIFY2(destinationFault(folder, Player(), keep) == DestinationFault::HoldsOthers, qPrintable(folder));
            QVERIFY2(destinationFault(folder + "/backup"_s, Player(), keep) == DestinationFault::None,
                     qPrintable(folder));
        }
        // Below it lies what earlier runs have taken off the player.
        QVERIFY(destinationFault(dataFolder(), Player(), keep) == DestinationFault::HoldsOthers);
    }

    void rootOfAVolumeIsKnown() {
        // Inside a chroot the system knows no volume for the root folder.
        if (QStorageInfo::root().rootPath() == QDir::rootPath())
            QVERIFY(isVolumeRoot(QDir::rootPath()));
        QVERIFY(!isVolumeRoot(PcFolder().path()));
    }
};

QTEST_GUILESS_MAIN(TestBackupChoice)
#include "tst_backupchoice.moc"
