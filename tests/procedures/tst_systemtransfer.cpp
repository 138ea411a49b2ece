#include "app/mainwindow.h"
#include "procedures/systemattributes.h"

#include "support/boxanswerer.h"
#include "support/platform.h"
#include "support/simulatedplayer.h"
#include "systemfixture.h"

#include <QDir>
#include <QProgressBar>
#include <QTest>

class TestSystemTransfer : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void systemPartsAreReplacedAndAllElseStays();
    void systemPartsAreFoundWhateverTheirCase();
    void transferOnARealVolume();
    void linksOnThePlayerAreRemovedNotFollowed();
    void partThatCannotBeRemovedEndsTheTransfer();
    void failedCopyEndsTheTransferBeforeTheBatch();
    void folderThatCannotBeMadeIsToldByTheFlagAlone();
    void stopDuringTheCopyEndsTheTransfer();
    void batchFileHidesSystemAndStartUpFile();
    void batchFileIsWrittenIntoTheUnpackedFolder();
    void batchFileThatCannotBeWrittenIsAFailure();
    void volumeWithoutAttributesIsLeftAsItIs();

private:
    void unpack(const QString &relative, const QByteArray &content = "new") const
    {
        putFile(m_unpacked + QLatin1Char('/') + relative, content);
    }
    bool transfer() { return transferSystem(*m_window, m_player->root(), m_unpacked); }

    QScopedPointer<TemporaryPc> m_pc;
    QScopedPointer<SimulatedPlayer> m_player;
    QScopedPointer<ProcedureWindow> m_window;
    QString m_unpacked;
};

void TestSystemTransfer::init()
{
    m_pc.reset(new TemporaryPc);
    m_unpacked = m_pc->downloads();
    m_player.reset(new SimulatedPlayer);
    m_window.reset(new ProcedureWindow);
    unpack(QStringLiteral("System/Corvin/Corvin.exe"));
    unpack(QStringLiteral("Bridges/b.dat"));
    unpack(QStringLiteral("Effects/e.dat"));
    unpack(QStringLiteral("AUTOEXEC.BAT"));
}

void TestSystemTransfer::cleanup()
{
    m_window.reset();
    m_player.reset();
    m_pc.reset();
}

void TestSystemTransfer::systemPartsAreReplacedAndAllElseStays()
{
    for (const auto *old : {"System/old.exe", "System/Playlist/mine.pls", "Bridges/old.dat", "Effects/old/e.dat",
                            "AUTOEXEC.BAT", "My Songs/a.mid", "My Songs/System/b.mid", "Images/c.jpg", "d.mp3",
                            "CorvinImportDB.sql", "SystemNotes/n.txt"})
        m_player->addFile(QLatin1String(old), "old");
    // No question is asked: what is replaced was removed before.
    const BoxAnswerer answers;
    QVERIFY(transfer());
    QStringList expected;
    for (const auto *file :
         {"AUTOEXEC.BAT", "Bridges/b.dat", "CorvinImportDB.sql", "Effects/e.dat", "Images/c.jpg",
          "My Songs/System/b.mid", "My Songs/a.mid", "System/Corvin/Corvin.exe", "SystemNotes/n.txt", "d.mp3"})
        expected.append(QLatin1String(file));
    QCOMPARE(m_player->files(), expected);
    QCOMPARE(m_player->content(QStringLiteral("AUTOEXEC.BAT")), QByteArray("new"));
    QCOMPARE(m_player->content(QStringLiteral("My Songs/System/b.mid")), QByteArray("old"));
}

void TestSystemTransfer::systemPartsAreFoundWhateverTheirCase()
{
    for (const auto *old : {"SYSTEM/a.exe", "system/b.exe", "bRIDGES/old.dat", "EFFECTS/old.dat", "autoexec.bat"})
        m_player->addFile(QLatin1String(old), "old");
    QVERIFY(transfer());
    QCOMPARE(m_player->files(),
             (QStringList{QStringLiteral("AUTOEXEC.BAT"), QStringLiteral("Bridges/b.dat"),
                          QStringLiteral("Effects/e.dat"), QStringLiteral("System/Corvin/Corvin.exe")}));
    QCOMPARE(m_player->folders(),
             (QStringList{QStringLiteral("Bridges"), QStringLiteral("Effects"), QStringLiteral("System")}));
}

void TestSystemTransfer::transferOnARealVolume()
{
    QString why;
    if (!ExFatVolume::isPossible(&why))
        QSKIP(qPrintable(why));
    const MountedPlayer player(16);
    QVERIFY2(player.isMounted(), qPrintable(player.volume->error()));
    for (const auto *old : {"SYSTEM/a.exe", "bridges/old.dat", "autoexec.bat", "My Songs/a.mid"})
        putFile(player.path(QLatin1String(old)), "old");
    const BoxAnswerer answers;
    QVERIFY(transferSystem(*m_window, player.root(), m_unpacked));
    QCOMPARE(player.files(), (QStringList{QStringLiteral("AUTOEXEC.BAT"), QStringLiteral("Bridges/b.dat"),
                                          QStringLiteral("Effects/e.dat"), QStringLiteral("My Songs/a.mid"),
                                          QStringLiteral("System/Corvin/Corvin.exe")}));
    QCOMPARE(contentOf(player.path(QStringLiteral("AUTOEXEC.BAT"))), QByteArray("new"));
}

void TestSystemTransfer::linksOnThePlayerAreRemovedNotFollowed()
{
    SKIP_ON_WINDOWS("links are files of another kind here");
    putFile(m_pc->path(QStringLiteral("home/letter.txt")), "mine");
    m_player->addFile(QStringLiteral("bridges/old.dat"));
    QVERIFY(QFile::link(m_pc->path(QStringLiteral("home")), m_player->path(QStringLiteral("effects"))));
    QVERIFY(QFile::link(m_pc->path(QStringLiteral("home")), m_player->path(QStringLiteral("bridges/link"))));
    QVERIFY(transfer());
    QCOMPARE(filesBelow(m_pc->path(QStringLiteral("home"))), QStringList{QStringLiteral("letter.txt")});
    QVERIFY(!m_player->exists(QStringLiteral("effects")));
}

void TestSystemTransfer::partThatCannotBeRemovedEndsTheTransfer()
{
    // A file where the folder should be.
    m_player->addFile(QStringLiteral("bridges"), "file");
    m_player->addFile(QStringLiteral("system/a.exe"), "old");
    m_player->addFile(QStringLiteral("effects/e.dat"), "old");
    m_player->addFile(QStringLiteral("AUTOEXEC.BAT"), "old");
    QVERIFY(!transfer());
    // Removed in their order, up to the one that failed.
    QCOMPARE(m_player->files(),
             (QStringList{QStringLiteral("AUTOEXEC.BAT"), QStringLiteral("bridges"), QStringLiteral("effects/e.dat")}));
    QVERIFY(!QFile::exists(m_unpacked + QStringLiteral("/MATTRB.BAT")));
}

void TestSystemTransfer::failedCopyEndsTheTransferBeforeTheBatch()
{
    unpack(QStringLiteral("Aaa.d/x.txt"));
    BoxAnswerer answers;
    answers.answer(QStringLiteral("Errore sulla copia"), QStringLiteral("No"));
    QVERIFY(!transfer());
    QVERIFY((*m_window)->procedureOk);
    QVERIFY(!QFile::exists(m_unpacked + QStringLiteral("/MATTRB.BAT")));
}

void TestSystemTransfer::folderThatCannotBeMadeIsToldByTheFlagAlone()
{
    unpack(QStringLiteral("Data/x.txt"));
    m_player->addFile(QStringLiteral("Data"), "file in the way");
    BoxAnswerer answers;
    answers.answer(QStringLiteral("ERRORE"), QStringLiteral("OK"));
    QVERIFY(transfer());
    QVERIFY(!(*m_window)->procedureOk);
    QCOMPARE(m_player->content(QStringLiteral("Data")), QByteArray("file in the way"));
}

void TestSystemTransfer::stopDuringTheCopyEndsTheTransfer()
{
    (*m_window)->abortRequested = true;
    QVERIFY(!transfer());
    // The first file of the sorted list, and no other.
    QCOMPARE(m_player->files(), QStringList{QStringLiteral("AUTOEXEC.BAT")});
    QVERIFY(!QFile::exists(m_unpacked + QStringLiteral("/MATTRB.BAT")));
}

void TestSystemTransfer::batchFileHidesSystemAndStartUpFile()
{
    QCOMPARE(attributeBatch(QStringLiteral("E:/")),
             QByteArray("ATTRIB +H +S E:\\System\nATTRIB +H +S E:\\AUTOEXEC.BAT\n"));
    QCOMPARE(attributeBatch(QStringLiteral("/media/anna/CORVIN4/")),
             QByteArray("ATTRIB +H +S \\media\\anna\\CORVIN4\\System\n"
                        "ATTRIB +H +S \\media\\anna\\CORVIN4\\AUTOEXEC.BAT\n"));
}

void TestSystemTransfer::batchFileIsWrittenIntoTheUnpackedFolder()
{
    QVERIFY(transfer());
    QCOMPARE(contentOf(m_unpacked + QStringLiteral("/MATTRB.BAT")), attributeBatch(m_player->root()));
    // Written after the copy: it is none of the player's files.
    QVERIFY(!m_player->exists(QStringLiteral("MATTRB.BAT")));
}

void TestSystemTransfer::batchFileThatCannotBeWrittenIsAFailure()
{
    QVERIFY(QDir().mkpath(m_unpacked + QStringLiteral("/MATTRB.BAT")));
    BoxAnswerer answers;
    answers.answer(QStringLiteral("Errore sulla copia"), QStringLiteral("Si"));
    QVERIFY(!transfer());
}

void TestSystemTransfer::volumeWithoutAttributesIsLeftAsItIs()
{
    SKIP_ON_WINDOWS("every volume has attributes");
    m_player->addFile(QStringLiteral("System/a.exe"), "a");
    m_player->addFile(QStringLiteral("AUTOEXEC.BAT"), "b");
    QVERIFY(runAttributeBatch(m_unpacked + QStringLiteral("/MATTRB.BAT"), Player(m_player->root())));
    QCOMPARE(m_player->content(QStringLiteral("AUTOEXEC.BAT")), QByteArray("b"));
    // Nothing there to hide is no failure either.
    QVERIFY(runAttributeBatch(QString(), Player(m_pc->path(QStringLiteral("nowhere/")))));
}

QTEST_MAIN(TestSystemTransfer)
#include "tst_systemtransfer.moc"
