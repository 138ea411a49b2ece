#include "randomdisk.h"

#include "disk/datafolder.h"

/// Whatever a disk holds, whatever the user chooses, and whenever the run is stopped: no content is lost, playlists
/// name what they named, and a run after it leaves nothing to do for another one.
class TestRandomDisks : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsLostAndTheNextRunMakesItGood() {
        forEachSeed(9, 1500, [this](QRandomGenerator &random) {
            const PcFolder pc;
            setDataFolder(pc.path());
            OptimizerRun run;
            const RandomDisk disk(run, random);
            const QMap<QString, QByteArrayList> named = disk.namedByPlaylists();
            const auto check = [&](const QString &when) {
                checkContents(run, disk, pc, when);
                checkPlaylists(disk, named, when);
            };
            check("at the beginning"_s);
            disturbedRun(run, random);
            check("after the first run"_s);
            undisturbedRun(run);
            check("after the second run"_s);
            const QMap<QString, QByteArray> second = stateOf(run);
            undisturbedRun(run);
            check("after the third run"_s);
            expectSame(second, stateOf(run));
            setDataFolder(QString());
        });
    }

private:
    /// Random options; the user, the window or the cable ends it at a random moment, or nobody does.
    static void disturbedRun(OptimizerRun &run, QRandomGenerator &random) {
        Ottimizza &page = run.page;
        page.show();
        page.optDelete = random.bounded(3) > 0;
        page.optMove = random.bounded(3) > 0;
        page.optSplit = random.bounded(3) > 0;
        page.findChild<QCheckBox *>("Check_Database"_s)->setChecked(random.bounded(3) > 0);
        const int kind = random.bounded(4);
        int left = 1 << random.bounded(12);
        left += random.bounded(left);
        const auto disturb = [&run, &left, kind] {
            if (--left != 0)
                return;
            if (kind == 1)
                run.page.on_stopActionPressed();
            else if (kind == 2)
                run.page.on_closeRequested();
            else if (kind == 3)
                SimulatedPlayer::disconnect();
        };
        QObject scope;
        QObject::connect(&page, &Ottimizza::updateProgressBarVal, &scope, disturb);
        QObject::connect(&page, &Ottimizza::updateLabelAction, &scope, disturb);
        page.abortRequested = false;
        page.startAllOptimization();
        page.hide();
        run.player.connect();
    }
    static void undisturbedRun(OptimizerRun &run) {
        Ottimizza &page = run.page;
        page.optDelete = page.optMove = page.optSplit = true;
        page.show();
        page.abortRequested = false;
        run.told.clear();
        page.startAllOptimization();
        page.hide();
        QCOMPARE(run.ends(), words("0"));
    }

    static void checkContents(const OptimizerRun &run, const RandomDisk &disk, const PcFolder &pc,
                              const QString &when) {
        const auto valuesOf = [](const QMap<QString, QByteArray> &files) {
            return QSet<QByteArray>(files.cbegin(), files.cend());
        };
        const QSet<QByteArray> onPlayer = valuesOf(contentBelow(run.player.root()));
        const QSet<QByteArray> kept = valuesOf(contentBelow(pc.path("removed"_s)));
        for (const QByteArray &content : disk.treasures())
            QVERIFY2(onPlayer.contains(content), qPrintable("%1: not on the player:\n"_s.arg(when) + shown(content)));
        for (const QByteArray &content : disk.others())
            QVERIFY2(onPlayer.contains(content) || kept.contains(content),
                     qPrintable("%1: nowhere:\n"_s.arg(when) + shown(content)));
    }
    static void checkPlaylists(const RandomDisk &disk, const QMap<QString, QByteArrayList> &named,
                               const QString &when) {
        for (auto list = named.begin(); list != named.end(); ++list) {
            const QByteArrayList now = disk.contentsNamedBy(list.key());
            QCOMPARE(now.size(), list->size());
            for (int i = 0; i < now.size(); ++i) {
                QVERIFY2(now.at(i) == list->at(i) || !disk.isSteady(list->at(i)),
                         qPrintable("%1: line %2 of "_s.arg(when).arg(i) + list.key()));
            }
        }
    }
    /// All files; the import file's lines are in the order of the disk.
    static QMap<QString, QByteArray> stateOf(const OptimizerRun &run) {
        QMap<QString, QByteArray> files = contentBelow(run.player.root());
        QByteArrayList lines = files.value("CorvinImportDB.sql"_s).split('\n');
        std::sort(lines.begin(), lines.end());
        files.insert("CorvinImportDB.sql"_s, lines.join('\n'));
        for (const QString &folder : entriesBelow(run.player.root()))
            files.insert(folder + QLatin1Char('/'), files.value(folder));
        return files;
    }
    static void expectSame(const QMap<QString, QByteArray> &second, const QMap<QString, QByteArray> &third) {
        for (auto file = second.begin(); file != second.end(); ++file)
            QVERIFY2(third.contains(file.key()), qPrintable("the third run takes "_s + file.key()));
        for (auto file = third.begin(); file != third.end(); ++file)
            QVERIFY2(second.contains(file.key()), qPrintable("the third run makes "_s + file.key()));
        for (auto file = third.begin(); file != third.end(); ++file)
            QVERIFY2(second.value(file.key()) == file.value(), qPrintable("the third run changes "_s + file.key()));
    }
    static QString shown(const QByteArray &content) {
        return QString::fromLatin1(content.left(150).toPercentEncoding(" "));
    }
};

QTEST_MAIN(TestRandomDisks)
#include "tst_randomdisks.moc"
