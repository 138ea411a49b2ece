#include "support/exfatvolume.h"
#include "support/files.h"
#include "support/playerdatabase.h"
#include "support/signalrecorder.h"
#include "support/widgets.h"

#include "optimizer/endottimizza.h"
#include "optimizer/ottimizza.h"
#include "songfactory/songfactory.h"

/// The whole optimisation on a real exFAT volume, found through the system's own list of volumes.
class TestOptimizationRun : public QObject
{
    Q_OBJECT

    static SongInfo titled(const QString &title) {
        SongInfo info;
        info.title = title;
        info.artist = "L'Artista"_s;
        info.userBpm = 120;
        return info;
    }
    static void fill(const ExFatVolume &volume) {
        const auto midi = [](const QString &title) { return SongFactory::midi(titled(title)); };
        const QList<QPair<QString, QByteArray>> files = {
            {"AUTOEXEC.BAT"_s, "@echo off\r\n"},
            {"q-artedev"_s, "q"},
            {"System/GuiProc/GuiProc.exe"_s, "MZ"},
            {"System/readme.txt"_s, "kept"},
            {"System/Playlist/mine.pls"_s, "\\sdmemory\\Loose.mid^12^0\r\n"},
            {"System/Corvin/data.fastDB"_s,
             QByteArrayLiteral("\x01\x02\\sdmemory\\Big\\B0\\known.mid\0\xFF\\sdmemory\\Gone\\l'ultima.mid\0")},
            // A volume that ignores case: nothing is spelled otherwise on account of this.
            {"my songs/Other.mid"_s, midi("Altra"_s)},
            {"Loose.mid"_s, midi("Sciolta"_s)},
            {"Songs/Perché.MIDI"_s, midi("Perché"_s)},
            {"Songs/rock.mf3"_s, SongFactory::mfx(3, titled("Rock 'n' Roll"_s))},
            {"Songs/pop.mp3"_s, SongFactory::mp3(3, titled("Pop"_s))},
            {"Songs/broken.mid"_s, "no song"},
            {"Songs/notes.TXT"_s, "gone"},
            {"Songs/cover.jpg"_s, "cover"},
            {"Songs/clip.AVI"_s, "clip"},
            {"Big/known.mid"_s, midi("ballad"_s)},
            {"Big/known.cdg"_s, "graphics"}};
        for (const auto &file : files)
            putFile(volume.path(file.first), file.second);
        for (int i = 0; i < 1000; ++i) {
            const QString number = "%1"_s.arg(i, 4, 10, QLatin1Char('0'));
            putFile(volume.path("Big/%1.mid"_s.arg(number)), midi("Ballad "_s + number));
        }
    }

    static void checkFiles(const ExFatVolume &volume) {
        const auto content = [&volume](const QString &path) { return contentOf(volume.path(path)); };
        QCOMPARE(filesBelow(volume.path("Songs"_s)), words("Perché.MID pop.mp3 rock.mf3"));
        QCOMPARE(content("Images/cover.jpg"_s), QByteArray("cover"));
        QCOMPARE(content("Videos/clip.AVI"_s), QByteArray("clip"));
        QVERIFY(QFileInfo::exists(volume.path("My Songs/Loose.mid"_s)));
        QCOMPARE(content("System/Playlist/mine.pls"_s), QByteArray("\\sdmemory\\My Songs\\Loose.mid^12^0\r\n"));
        QCOMPARE(content("System/readme.txt"_s), QByteArray("kept"));
        QVERIFY(QFileInfo::exists(volume.path("AUTOEXEC.BAT"_s)));
        QVERIFY(QFileInfo::exists(volume.path("q-artedev"_s)));
        // "ballad" and its companion come first and count two.
        const QDir big(volume.path("Big"_s));
        QCOMPARE(big.entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name), words("B0 B1"));
        QCOMPARE(filesBelow(big.filePath("B0"_s)).size(), 900);
        QCOMPARE(filesBelow(big.filePath("B1"_s)).size(), 102);
        QCOMPARE(content("Big/B0/known.cdg"_s), QByteArray("graphics"));
        QVERIFY(!QFileInfo::exists(volume.path("Big.old"_s)));
    }

    static void checkImportFile(const ExFatVolume &volume) {
        PlayerDatabase database;
        database.run("INSERT INTO songs (filename,title) VALUES ('\\sdmemory\\Big\\B0\\known.mid','B')"_s);
        database.run("INSERT INTO songs (filename) VALUES ('\\sdmemory\\Gone\\l''ultima.mid')"_s);
        QCOMPARE(database.runFile(contentOf(volume.path("CorvinImportDB.sql"_s))), QString());
        QStringList expected;
        for (const QString &folder : {"Big"_s, "my songs"_s, "Songs"_s}) {
            const QStringList files = filesBelow(volume.path(folder));
            for (const QString &file : files) {
                if (!file.endsWith(".cdg"_s))
                    expected.append("\\sdmemory\\%1\\"_s.arg(folder) + QString(file).replace("/"_s, "\\"_s));
            }
        }
        expected.sort();
        QStringList paths = database.paths();
        paths.sort();
        QCOMPARE(paths, expected);
        constexpr int kTitle = 2;
        constexpr int kArtist = 3;
        const QList<QStringList> rows = database.songs();
        const auto value = [&rows](const QString &path, int column) {
            const auto isSong = [&path](const QStringList &row) { return row.first() == "\\sdmemory\\"_s + path; };
            return std::find_if(rows.begin(), rows.end(), isSong)->at(column);
        };
        QCOMPARE(value("Songs\\rock.mf3"_s, kTitle), "Rock 'n' Roll"_s);
        QCOMPARE(value("Songs\\Perché.MID"_s, kTitle), "Perché"_s);
        QCOMPARE(value("Songs\\pop.mp3"_s, kArtist), "L'Artista"_s);
        QCOMPARE(value("Big\\B0\\0007.mid"_s, kTitle), "Ballad 0007"_s);
    }

private slots:
    void initTestCase() {
        QString why;
        if (!ExFatVolume::isPossible(&why))
            QSKIP(qPrintable("SKIPPED WHOLE: no exFAT volume can be made here: "_s + why));
        // The tests hide the machine's volumes by this variable; here they are wanted.
        qunsetenv("CORVIN_VOLUMES");
    }

    void wholeRunOnAVolumeOfTheSystem() {
        ExFatVolume volume;
        QVERIFY2(volume.isMounted(), qPrintable(volume.error()));
        QVERIFY2(volume.linkLabel(), qPrintable(volume.error()));
        fill(volume);

        Ottimizza page;
        EndOttimizza result;
        connect(&page, &Ottimizza::backFromOttimizzaToEndOttimizza, &result, &EndOttimizza::setFailCodeAndShow);
        page.show();
        SignalRecorder told(page);
        click(page, "Btn_Opt_Ok");
        QCOMPARE(page.rootPath, volume.root());
        QCOMPARE(told.lines().last(), "backFromOttimizzaToEndOttimizza 0"_s);
        QVERIFY(result.isVisible());
        checkFiles(volume);
        checkImportFile(volume);

        // What was written stands on the medium, not in a cache alone.
        QVERIFY2(volume.pull(), qPrintable(volume.error()));
        click(page, "Btn_Opt_Ok");
        QCOMPARE(told.lines().last(), "backFromOttimizzaToEndOttimizza 1"_s);
        QVERIFY2(volume.mount(), qPrintable(volume.error()));
        checkImportFile(volume);
    }
};

QTEST_MAIN(TestOptimizationRun)
#include "tst_optimizationrun.moc"
