#include "killedjob.h"
#include "songfactory/songfactory.h"
#include "songfiles/rounds.h"

/// Jobs that are killed at random moments, some of them again and again, and the undisturbed one after them.
class TestKilledJobs : public QObject
{
    Q_OBJECT

    /// A player, a folder of songs on the PC, and what belongs to the program there.
    struct Disk
    {
        explicit Disk(const QString &whatJob) : job(whatJob), source(pc.addFolder("album"_s)) {
            pc.addFolder("tmp"_s);
            if (job == "optimisation"_s)
                fillForOptimisation();
            else
                fillForCopy();
        }
        /// Songs of all sizes in folders in folders; of every fourth the player has another version already.
        void fillForCopy() {
            const QString below = job == "transfer"_s ? "album/"_s : QString();
            constexpr int kFiles = 120;
            for (int i = 0; i < kFiles; ++i) {
                const QString name = "%1/%2.mid"_s.arg(words("a a/b a/b/c").at(i % 3)).arg(i);
                const QByteArray content = "new " + QByteArray::number(i) + QByteArray(1 << (i % 21), 'n');
                pc.addFile("album/"_s + name, content);
                if (i % 4 == 0)
                    player.addFile(below + name, "old " + QByteArray::number(i) + QByteArray(1 << ((i + 7) % 19), 'o'));
            }
            for (int i = 0; i < 20; ++i)
                player.addFile("My Songs/%1.mid"_s.arg(i), "mine " + QByteArray::number(i));
        }
        void fillForOptimisation() {
            SongInfo info;
            for (int i = 0; i < 1010; ++i) {
                info.title = "%1 title %2"_s.arg(QChar('A' + i % 3)).arg(i, 5, 10, QLatin1Char('0'));
                player.addFile("Big/%1.mid"_s.arg(i), SongFactory::midi(info, 0, SongFactory::Markers::WithBars, 1));
                if (i % 3 == 0)
                    player.addFile("Big/%1.cdg"_s.arg(i), "graphics of " + QByteArray::number(i));
            }
            for (int i = 0; i < 60; ++i)
                player.addFile("A/%1.%2"_s.arg(i).arg(words("txt jpg avi mid").at(i % 4)),
                               "no song " + QByteArray::number(i));
            player.addFile("Big/lonely.dat"_s, "lonely");
        }

        /// The child's exit code, -1 when it was killed; how many microseconds the job took.
        int work(qint64 killAt = -1, qint64 *took = nullptr) const {
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert("CORVIN_TEST_JOB"_s, job);
            environment.insert("CORVIN_TEST_DATA"_s, pc.path("data"_s));
            environment.insert("CORVIN_TEST_SOURCE"_s, source);
            environment.insert("TMPDIR"_s, pc.path("tmp"_s)); // what a killed child leaves there goes with the test
            if (killAt >= 0)
                environment.insert("CORVIN_TEST_KILL"_s, QString::number(killAt));
            // Half of the kills come once the splitting has begun, which is a small part of the whole.
            if (QRandomGenerator::global()->bounded(2) == 0)
                environment.insert("CORVIN_TEST_FROM"_s, "Ottimizzazione cartelle"_s);
            QProcess child;
            child.setProcessEnvironment(environment);
            child.setStandardErrorFile(QProcess::nullDevice());
            child.start(QCoreApplication::applicationFilePath(), QStringList());
            if (!child.waitForFinished(120000))
                qFatal("the job does not end");
            const QByteArray said = child.readAllStandardOutput();
            if (took)
                *took = said.mid(said.indexOf("took ") + 5).trimmed().toLongLong();
            return child.exitStatus() == QProcess::NormalExit ? child.exitCode() : -1;
        }
        QMap<QString, QByteArray> files() const {
            QMap<QString, QByteArray> found = contentBelow(player.root());
            found.remove("CorvinImportDB.sql"_s); // its lines are in the order of the disk
            return found;
        }
        /// Everything by content, on the player and on the PC.
        QSet<QByteArray> contents() const {
            QSet<QByteArray> found;
            for (const QString &root : {player.root(), source, pc.path("data"_s)}) {
                const QMap<QString, QByteArray> files = contentBelow(root);
                found.unite(QSet<QByteArray>(files.cbegin(), files.cend()));
            }
            return found;
        }

        SimulatedPlayer player;
        PcFolder pc;
        const QString job;
        const QString source;
    };

private slots:
    void nextJobEndsAsIfNothingHadHappened_data() {
        columns<QString>("job");
        for (const char *job : {"transfer", "restore", "optimisation"})
            row(job, QString::fromLatin1(job));
    }
    void nextJobEndsAsIfNothingHadHappened() {
        QFETCH(QString, job);
        const Disk undisturbed(job);
        const QMap<QString, QByteArray> before = undisturbed.files();
        const QMap<QString, QByteArray> source = contentBelow(undisturbed.source);
        qint64 whole = 0;
        QCOMPARE(undisturbed.work(-1, &whole), 0);
        QVERIFY(whole > 0);
        const QMap<QString, QByteArray> expected = undisturbed.files();
        QVERIFY(expected != before);

        const int kills = rounds(4, 34);
        int killed = 0;
        for (int round = 0; killed < kills; ++round) {
            QVERIFY2(round < 8 * kills, "too few jobs were killed");
            const Disk disk(job);
            const QSet<QByteArray> all = disk.contents();
            QStringList moments;
            for (int again = QRandomGenerator::global()->bounded(1, 4); again > 0; --again) {
                const auto moment = qint64(double(whole) * QRandomGenerator::global()->generateDouble());
                moments.append(QString::number(moment));
                qint64 took = whole;
                if (disk.work(moment, &took) == -1)
                    ++killed;
                else if (took > 0)
                    whole = qMin(whole, took);
                if (job == "optimisation"_s)
                    QVERIFY2(disk.contents().contains(all), qPrintable(moments.join(QLatin1Char(' '))));
                else
                    checkCopy(disk, before, source, expected);
            }
            QCOMPARE(disk.work(), 0);
            compare(disk.files(), expected, "after "_s + moments.join(QLatin1Char(' ')));
            if (job == "optimisation"_s)
                QVERIFY(disk.contents().contains(all));
        }
    }

private:
    /// What was copied is still whole on the PC; on the player every file is whole, the former or the new one, but for
    /// one at most that is new and was being written.
    static void checkCopy(const Disk &disk, const QMap<QString, QByteArray> &before,
                          const QMap<QString, QByteArray> &source, const QMap<QString, QByteArray> &expected) {
        compare(contentBelow(disk.source), source, "on the PC"_s);
        const QMap<QString, QByteArray> now = disk.files();
        int half = 0;
        for (auto file = now.begin(); file != now.end(); ++file) {
            const bool isOther = file.key().endsWith("/corvin4-copy0.tmp"_s);
            if (isOther || file.value() == expected.value(file.key()))
                continue;
            const bool isFormer = before.contains(file.key()) && file.value() == before.value(file.key());
            half += isFormer ? 0 : 1;
            QVERIFY2(isFormer || !before.contains(file.key()), qPrintable(file.key()));
        }
        for (auto file = before.begin(); file != before.end(); ++file)
            QVERIFY2(now.contains(file.key()), qPrintable(file.key()));
        QVERIFY2(half <= 1, qPrintable(QString::number(half)));
    }
    static void compare(const QMap<QString, QByteArray> &now, const QMap<QString, QByteArray> &expected,
                        const QString &when) {
        QVERIFY2(now.keys() == expected.keys(),
                 qPrintable(when + ": "_s + difference(now.keys(), expected.keys()).join(QLatin1Char(' '))));
        for (auto file = expected.begin(); file != expected.end(); ++file)
            QVERIFY2(now.value(file.key()) == file.value(), qPrintable(when + ": "_s + file.key()));
    }
    static QStringList difference(const QStringList &some, const QStringList &others) {
        QSet<QString> left(some.begin(), some.end());
        QSet<QString> right(others.begin(), others.end());
        return (QSet<QString>(left).subtract(right) + QSet<QString>(right).subtract(left)).values();
    }
};

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    loadResources();
    if (qEnvironmentVariableIsSet("CORVIN_TEST_JOB"))
        return workInChild();
    TestKilledJobs test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_killedjobs.moc"
