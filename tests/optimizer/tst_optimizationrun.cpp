#include "runrecorder.h"
#include "support/playerdatabase.h"
#include "support/exfatvolume.h"

#include "optimizer/endottimizza.h"
#include "optimizer/ottimizza.h"
#include "songfactory/songfactory.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTest>

/// The whole optimisation on a real exFAT volume, found through the system's own list of volumes.
class tst_OptimizationRun : public QObject
{
    Q_OBJECT

private:
    static void write(const ExFatVolume &volume, const QString &relative, const QByteArray &content)
    {
        const QString path = volume.path(relative);
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(path));
        QCOMPARE(file.write(content), qint64(content.size()));
    }
    static QByteArray read(const ExFatVolume &volume, const QString &relative)
    {
        QFile file(volume.path(relative));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static QStringList files(const ExFatVolume &volume, const QString &folder)
    {
        QStringList found;
        QDirIterator entries(volume.path(folder), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (entries.hasNext())
            found.append(entries.next().mid(volume.root().size()));
        found.sort();
        return found;
    }
    static SongInfo titled(const QString &title)
    {
        SongInfo info;
        info.title = title;
        info.artist = QStringLiteral("L'Artista");
        info.userBpm = 120;
        return info;
    }
    static void fill(const ExFatVolume &volume)
    {
        write(volume, QStringLiteral("AUTOEXEC.BAT"), "@echo off\r\n");
        write(volume, QStringLiteral("q-artedev"), "q");
        write(volume, QStringLiteral("System/GuiProc/GuiProc.exe"), "MZ");
        write(volume, QStringLiteral("System/readme.txt"), "kept");
        write(volume, QStringLiteral("System/Playlist/mine.pls"), "\\sdmemory\\Loose.mid^12^0\r\n");
        write(volume, QStringLiteral("System/Corvin/data.fastDB"),
              QByteArrayLiteral("\x01\x02\\sdmemory\\Big\\B0\\known.mid\0\xFF\\sdmemory\\Gone\\l'ultima.mid\0"));
        // A volume that ignores case: nothing is spelled otherwise on account of this.
        write(volume, QStringLiteral("my songs/Other.mid"), SongFactory::midi(titled(QStringLiteral("Altra"))));
        write(volume, QStringLiteral("Loose.mid"), SongFactory::midi(titled(QStringLiteral("Sciolta"))));
        write(volume, QStringLiteral("Songs/Perch\u00e9.MIDI"), SongFactory::midi(titled(QStringLiteral("Perché"))));
        write(volume, QStringLiteral("Songs/rock.mf3"), SongFactory::mfx(3, titled(QStringLiteral("Rock 'n' Roll"))));
        write(volume, QStringLiteral("Songs/pop.mp3"), SongFactory::mp3(3, titled(QStringLiteral("Pop"))));
        write(volume, QStringLiteral("Songs/broken.mid"), "no song");
        write(volume, QStringLiteral("Songs/notes.TXT"), "gone");
        write(volume, QStringLiteral("Songs/cover.jpg"), "cover");
        write(volume, QStringLiteral("Songs/clip.AVI"), "clip");
        for (int i = 0; i < 1000; ++i) {
            write(volume, QStringLiteral("Big/%1.mid").arg(i, 4, 10, QLatin1Char('0')),
                  SongFactory::midi(titled(QStringLiteral("Ballad %1").arg(i, 4, 10, QLatin1Char('0')))));
        }
        write(volume, QStringLiteral("Big/known.mid"), SongFactory::midi(titled(QStringLiteral("ballad"))));
        write(volume, QStringLiteral("Big/known.cdg"), "graphics");
    }

private slots:
    void initTestCase()
    {
        QString why;
        if (!ExFatVolume::isPossible(&why))
            QSKIP(qPrintable(QStringLiteral("SKIPPED WHOLE: no exFAT volume can be made here: ") + why));
        // The tests hide the machine's volumes by this variable; here they are wanted.
        qunsetenv("CORVIN_VOLUMES");
    }

    void wholeRunOnAVolumeOfTheSystem()
    {
        ExFatVolume volume;
        QVERIFY2(volume.isMounted(), qPrintable(volume.error()));
        QVERIFY2(volume.linkLabel(), qPrintable(volume.error()));
        fill(volume);

        Ottimizza page;
        EndOttimizza result;
        connect(&page, &Ottimizza::backFromOttimizzaToEndOttimizza, &result, &EndOttimizza::setFailCodeAndShow);
        page.show();
        RunRecorder recorder(page);
        QTest::mouseClick(page.findChild<QPushButton *>(QStringLiteral("Btn_Opt_Ok")), Qt::LeftButton);

        QCOMPARE(page.rootPath, volume.root());
        QCOMPARE(recorder.lines().last(), QStringLiteral("end 0"));
        QVERIFY(result.isVisible());
        checkFiles(volume);
        checkImportFile(volume);

        // What was written stands on the medium, not in a cache alone.
        QVERIFY2(volume.pull(), qPrintable(volume.error()));
        QTest::mouseClick(page.findChild<QPushButton *>(QStringLiteral("Btn_Opt_Ok")), Qt::LeftButton);
        QCOMPARE(recorder.lines().last(), QStringLiteral("end 1"));
        QVERIFY2(volume.mount(), qPrintable(volume.error()));
        checkImportFile(volume);
    }

private:
    static void checkFiles(const ExFatVolume &volume)
    {
        QCOMPARE(files(volume, QStringLiteral("Songs")),
                 QStringList({QStringLiteral("Songs/Perch\u00e9.MID"), QStringLiteral("Songs/pop.mp3"),
                              QStringLiteral("Songs/rock.mf3")}));
        QCOMPARE(read(volume, QStringLiteral("Images/cover.jpg")), QByteArray("cover"));
        QCOMPARE(read(volume, QStringLiteral("Videos/clip.AVI")), QByteArray("clip"));
        QVERIFY(QFileInfo::exists(volume.path(QStringLiteral("My Songs/Loose.mid"))));
        QCOMPARE(read(volume, QStringLiteral("System/Playlist/mine.pls")),
                 QByteArray("\\sdmemory\\My Songs\\Loose.mid^12^0\r\n"));
        QCOMPARE(read(volume, QStringLiteral("System/readme.txt")), QByteArray("kept"));
        QVERIFY(QFileInfo::exists(volume.path(QStringLiteral("AUTOEXEC.BAT"))));
        QVERIFY(QFileInfo::exists(volume.path(QStringLiteral("q-artedev"))));
        // "ballad" and its companion come first and count two.
        QCOMPARE(
            QDir(volume.path(QStringLiteral("Big"))).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name),
            QStringList({QStringLiteral("B0"), QStringLiteral("B1")}));
        QCOMPARE(files(volume, QStringLiteral("Big/B0")).size(), 900);
        QCOMPARE(files(volume, QStringLiteral("Big/B1")).size(), 102);
        QCOMPARE(read(volume, QStringLiteral("Big/B0/known.cdg")), QByteArray("graphics"));
        QVERIFY(!QFileInfo::exists(volume.path(QStringLiteral("Big.old"))));
    }

    static void checkImportFile(const ExFatVolume &volume)
    {
        PlayerDatabase database;
        database.run(
            QStringLiteral("INSERT INTO songs (filename,title) VALUES ('\\sdmemory\\Big\\B0\\known.mid','B')"));
        database.run(QStringLiteral("INSERT INTO songs (filename) VALUES ('\\sdmemory\\Gone\\l''ultima.mid')"));
        QCOMPARE(database.runFile(read(volume, QStringLiteral("CorvinImportDB.sql"))), QString());
        QStringList expected;
        for (const char *folder : {"Big", "my songs", "Songs"}) {
            for (const QString &file : files(volume, QString::fromLatin1(folder))) {
                if (file.endsWith(QLatin1String(".cdg")))
                    continue;
                expected.append(QStringLiteral("\\sdmemory\\") +
                                QString(file).replace(QLatin1Char('/'), QLatin1Char('\\')));
            }
        }
        expected.sort();
        QStringList paths = database.paths();
        paths.sort();
        QCOMPARE(paths, expected);
        const QList<QStringList> rows = database.songs();
        constexpr int kTitle = 2;
        constexpr int kArtist = 3;
        QHash<QString, QStringList> byPath;
        for (const QStringList &row : rows)
            byPath.insert(row.first(), row);
        QCOMPARE(byPath.value(QStringLiteral("\\sdmemory\\Songs\\rock.mf3")).at(kTitle),
                 QStringLiteral("Rock 'n' Roll"));
        QCOMPARE(byPath.value(QStringLiteral("\\sdmemory\\Songs\\Perch\u00e9.MID")).at(kTitle),
                 QStringLiteral("Perché"));
        QCOMPARE(byPath.value(QStringLiteral("\\sdmemory\\Songs\\pop.mp3")).at(kArtist), QStringLiteral("L'Artista"));
        QCOMPARE(byPath.value(QStringLiteral("\\sdmemory\\Big\\B0\\0007.mid")).at(kTitle),
                 QStringLiteral("Ballad 0007"));
    }
};

QTEST_MAIN(tst_OptimizationRun)
#include "tst_optimizationrun.moc"
