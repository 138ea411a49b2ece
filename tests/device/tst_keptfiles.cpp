#include "device/keptfiles.h"

#include "disk/datafolder.h"
#include "support/files.h"
#include "support/simulatedplayer.h"
#include "support/testing.h"

/// What a run takes off the player is kept on the PC.
class TestKeptFiles : public QObject
{
    Q_OBJECT

private slots:
    void init() {
        m_pc = std::make_unique<PcFolder>();
        setDataFolder(m_pc->path("data"_s));
    }
    void cleanup() { setDataFolder(QString()); }
    void nothingIsMadeWhileNothingIsKept();
    void fileLiesUnderItsPathOnThePlayer();
    void fileOfATakenNameGetsANumber();
    void secondRunOfTheSameSecondHasItsOwnFolder();
    void tooLittleRoomOnThePcKeepsNothing();
    void copyThatFailsLeavesNoEmptyFolder();
    void largeUnsupportedFileIsNotKept();
    void unsupportedFilesAreKeptUpToTheRunsLimit();
    void runsOfMoreThanThirtyDaysAgoGo();

private:
    std::unique_ptr<PcFolder> m_pc;
};

void TestKeptFiles::nothingIsMadeWhileNothingIsKept() {
    const SimulatedPlayer player;
    const KeptFiles kept((Player(player.root())));
    QCOMPARE(kept.folder(), QString());
    QCOMPARE(m_pc->files(), QStringList());
}

void TestKeptFiles::fileLiesUnderItsPathOnThePlayer() {
    SimulatedPlayer player;
    const QString song = player.addFile("My Songs/a/b.mid"_s, "song");
    KeptFiles kept((Player(player.root())));
    QVERIFY(kept.keep(song, KeptFiles::Kind::Songs));
    QVERIFY2(kept.folder().startsWith(m_pc->path("data/removed/"_s)), qPrintable(kept.folder()));
    QVERIFY(QDateTime::fromString(QFileInfo(kept.folder()).fileName(), "yyyy-MM-dd HH.mm.ss"_s).isValid());
    QCOMPARE(contentOf(kept.folder() + "/My Songs/a/b.mid"_s), QByteArray("song"));
    QVERIFY(player.exists("My Songs/a/b.mid"_s));
}

void TestKeptFiles::fileOfATakenNameGetsANumber() {
    SimulatedPlayer player;
    KeptFiles kept((Player(player.root())));
    for (const char *content : {"1", "2", "3"})
        QVERIFY(kept.keep(player.addFile("a.b.mid"_s, content), KeptFiles::Kind::Songs));
    const QMap<QString, QByteArray> expected = {{"a.b.mid"_s, "1"}, {"a.b (2).mid"_s, "2"}, {"a.b (3).mid"_s, "3"}};
    QCOMPARE(contentBelow(kept.folder()), expected);
}

void TestKeptFiles::secondRunOfTheSameSecondHasItsOwnFolder() {
    SimulatedPlayer player;
    const QString song = player.addFile("a.mid"_s);
    QSet<QString> folders;
    for (int run = 0; run < 3; ++run) {
        KeptFiles kept((Player(player.root())));
        QVERIFY(kept.keep(song, KeptFiles::Kind::Songs));
        folders.insert(kept.folder());
    }
    QCOMPARE(folders.size(), 3);
}

void TestKeptFiles::tooLittleRoomOnThePcKeepsNothing() {
    SimulatedPlayer player;
    const QString song = player.addFile("a.mid"_s);
    KeptFiles::Limits limits;
    limits.leastRoomLeft = QStorageInfo(m_pc->path()).bytesTotal();
    KeptFiles kept(Player(player.root()), limits);
    QVERIFY(!kept.keep(song, KeptFiles::Kind::Songs));
    QCOMPARE(kept.folder(), QString());
    QCOMPARE(KeptFiles::Limits().leastRoomLeft, 1073741824LL);
}

void TestKeptFiles::copyThatFailsLeavesNoEmptyFolder() {
    SimulatedPlayer player;
    KeptFiles kept((Player(player.root())));
    QVERIFY(!kept.keep(player.path("gone.mid"_s), KeptFiles::Kind::Songs));
    QCOMPARE(kept.folder(), QString());
    QCOMPARE(QDir(m_pc->path("data/removed"_s)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
    // What is there already stays.
    QVERIFY(kept.keep(player.addFile("a.mid"_s), KeptFiles::Kind::Songs));
    QVERIFY(!kept.keep(player.path("gone.mid"_s), KeptFiles::Kind::Songs));
    QCOMPARE(filesBelow(kept.folder()), QStringList{"a.mid"_s});
}

void TestKeptFiles::largeUnsupportedFileIsNotKept() {
    SimulatedPlayer player;
    const QString small = player.addFile("small.xyz"_s, QByteArray(100, 'x'));
    const QString large = player.addFile("large.xyz"_s, QByteArray(101, 'x'));
    KeptFiles::Limits limits;
    QCOMPARE(limits.mostOfUnsupportedFile, 100000000LL);
    limits.mostOfUnsupportedFile = 100;
    KeptFiles kept(Player(player.root()), limits);
    QVERIFY(kept.keep(small, KeptFiles::Kind::Unsupported));
    QVERIFY(!kept.keep(large, KeptFiles::Kind::Unsupported));
    QVERIFY(kept.keep(large, KeptFiles::Kind::Songs));
}

void TestKeptFiles::unsupportedFilesAreKeptUpToTheRunsLimit() {
    SimulatedPlayer player;
    const QString file = player.addFile("a.xyz"_s, QByteArray(100, 'x'));
    KeptFiles::Limits limits;
    QCOMPARE(limits.mostOfRun, 2000000000LL);
    limits.mostOfRun = 200;
    KeptFiles kept(Player(player.root()), limits);
    QVERIFY(kept.keep(file, KeptFiles::Kind::Unsupported));
    QVERIFY(kept.keep(file, KeptFiles::Kind::Unsupported));
    QVERIFY(!kept.keep(file, KeptFiles::Kind::Unsupported));
    QVERIFY(kept.keep(file, KeptFiles::Kind::Songs));
}

void TestKeptFiles::runsOfMoreThanThirtyDaysAgoGo() {
    const QDateTime now = QDateTime::currentDateTime();
    const auto name = [&now](int days) {
        return "data/removed/"_s + now.addDays(-days).toString("yyyy-MM-dd HH.mm.ss"_s);
    };
    m_pc->addFile(name(31) + "/a.mid"_s);
    m_pc->addFile(name(40) + " (2)/a.mid"_s);
    const QStringList stay = {m_pc->addFile(name(30) + "/a.mid"_s), m_pc->addFile("data/removed/my own/a.mid"_s),
                              m_pc->addFile(name(40) + " da tenere/a.mid"_s), m_pc->addFile(name(40) + "a/a.mid"_s)};
    KeptFiles::forgetOldOnes();
    QStringList left;
    for (const QString &file : m_pc->files())
        left.append(m_pc->path(file));
    QCOMPARE(QSet<QString>(left.begin(), left.end()), QSet<QString>(stay.begin(), stay.end()));
}

QTEST_MAIN(TestKeptFiles)
#include "tst_keptfiles.moc"
