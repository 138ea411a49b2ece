#include "procedures/songlist.h"

#include "support/simulatedplayer.h"
#include "systemfixture.h"

#include <QTest>

class TestBackupCheck : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void wholeBackupIsComplete();
    void missingSongIsNoticed();
    void shortSongIsNoticed();
    void missingPlaylistIsNoticed();
    void systemPartsAndNamesWithoutADotAreNotExpected();
    void stopEndsTheCheck();

private:
    void addBoth(const QString &relative, const QByteArray &content);
    bool isComplete(bool abort = false) const { return isBackupComplete(m_backup->path(), Player(m_player->root()), [abort] { return !abort; }); }

    QScopedPointer<SimulatedPlayer> m_player;
    QScopedPointer<QTemporaryDir> m_backup;
};

void TestBackupCheck::init()
{
    m_player.reset(new SimulatedPlayer);
    m_backup.reset(new QTemporaryDir);
    addBoth(QStringLiteral("My Songs/a.mid"), "MThd");
    addBoth(QStringLiteral("System/Playlist/one.pls"), "list");
}

void TestBackupCheck::cleanup()
{
    m_player.reset();
    m_backup.reset();
}

void TestBackupCheck::addBoth(const QString &relative, const QByteArray &content)
{
    m_player->addFile(relative, content);
    putFile(m_backup->filePath(relative), content);
}

void TestBackupCheck::wholeBackupIsComplete()
{
    QVERIFY(isComplete());
}

void TestBackupCheck::missingSongIsNoticed()
{
    m_player->addFile(QStringLiteral("My Songs/deep/b.mp3"));
    QVERIFY(!isComplete());
}

void TestBackupCheck::shortSongIsNoticed()
{
    putFile(m_backup->filePath(QStringLiteral("My Songs/a.mid")), "MTh");
    QVERIFY(!isComplete());
}

void TestBackupCheck::missingPlaylistIsNoticed()
{
    m_player->addFile(QStringLiteral("System/Playlist/two"));
    QVERIFY(!isComplete());
}

void TestBackupCheck::systemPartsAndNamesWithoutADotAreNotExpected()
{
    m_player->addSystemFiles();
    m_player->addFile(QStringLiteral("BRIDGES/b.dat"));
    m_player->addFile(QStringLiteral("effects/e.dat"));
    m_player->addFile(QStringLiteral("README"));
    QVERIFY(isComplete());
}

void TestBackupCheck::stopEndsTheCheck()
{
    QVERIFY(!isComplete(true));
}

QTEST_GUILESS_MAIN(TestBackupCheck)
#include "tst_backupcheck.moc"
