#include "procedures/backupchoice.h"
#include "procedures/songlist.h"

#include "support/platform.h"

#include <QDir>
#include <QFile>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QTest>

class TestBackupChoice : public QObject
{
    Q_OBJECT

private slots:
    void systemPartsStayOut_data();
    void systemPartsStayOut();
    void wayToTheRootDoesNotCount();
    void folderHoldsItselfAndWhatIsBelow();
    void linksAreResolvedBeforeComparing();
    void foldersThatMustNotBeEmptied();
    void rootOfAVolumeIsKnown();
};

void TestBackupChoice::systemPartsStayOut_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("system");
    QTest::newRow("song in the root") << "song.mid" << false;
    QTest::newRow("song in a folder") << "My Songs/song.mid" << false;
    QTest::newRow("bridges") << "Bridges/a.brg" << true;
    QTest::newRow("bridges in lower case") << "bridges/a.brg" << true;
    QTest::newRow("bridges deep") << "My Songs/BRIDGES/x/a.mid" << true;
    QTest::newRow("other bridges") << "MyBridges/a.mid" << false;
    QTest::newRow("bridges as the end of the path") << "x.y/bridges" << false;
    QTest::newRow("effects") << "effects/a.fx" << true;
    QTest::newRow("system") << "SYSTEM/GuiProc/GuiProc.exe" << true;
    QTest::newRow("system folder alone") << "System" << false;
    QTest::newRow("systems") << "Systems/a.mid" << false;
    QTest::newRow("start-up file") << "AUTOEXEC.BAT" << true;
    QTest::newRow("start-up file deep") << "Songs/AutoExec.bat" << true;
    QTest::newRow("start-up file inside a name") << "Songs/my autoexec.bat.mid" << true;
    QTest::newRow("start-up file as a folder") << "autoexec.bat/a.mid" << true;
}

void TestBackupChoice::systemPartsStayOut()
{
    QFETCH(QString, path);
    const QString root = QStringLiteral("E:/");
    QTEST(isSystemPart(root + path, Player(root)), "system");
}

void TestBackupChoice::wayToTheRootDoesNotCount()
{
    const QString root = QStringLiteral("/media/system/effects/CORVIN4/");
    QVERIFY(!isSystemPart(root + QStringLiteral("song.mid"), Player(root)));
    QVERIFY(isSystemPart(root + QStringLiteral("system/song.mid"), Player(root)));
}

void TestBackupChoice::folderHoldsItselfAndWhatIsBelow()
{
    const QTemporaryDir dir;
    const QString outer = dir.path() + QStringLiteral("/songs");
    const QString inner = outer + QStringLiteral("/a/b");
    QVERIFY(QDir().mkpath(inner));
    QVERIFY(QDir().mkpath(outer + QStringLiteral("2/c")));
    QVERIFY(holdsFolder(outer, outer));
    QVERIFY(holdsFolder(outer + QLatin1Char('/'), inner));
    QVERIFY(holdsFolder(QDir::rootPath(), inner));
    QVERIFY(!holdsFolder(inner, outer));
    QVERIFY(!holdsFolder(outer, outer + QStringLiteral("2/c")));
    // Not there yet, but it would be below.
    QVERIFY(holdsFolder(outer, outer + QStringLiteral("/new")));
}

void TestBackupChoice::linksAreResolvedBeforeComparing()
{
    SKIP_ON_WINDOWS("links are files of another kind here");
    const QTemporaryDir dir;
    QVERIFY(QDir().mkpath(dir.path() + QStringLiteral("/songs/a")));
    const QString link = dir.path() + QStringLiteral("/link");
    QVERIFY(QFile::link(dir.path() + QStringLiteral("/songs"), link));
    QVERIFY(holdsFolder(link, dir.path() + QStringLiteral("/songs/a")));
    QVERIFY(holdsFolder(dir.path() + QStringLiteral("/songs"), link + QStringLiteral("/a")));
}

void TestBackupChoice::foldersThatMustNotBeEmptied()
{
    const QTemporaryDir dir;
    const QString base = dir.path();
    const QString player = base + QStringLiteral("/media/CORVIN4/");
    const QString home = base + QStringLiteral("/home/anna");
    const QString program = base + QStringLiteral("/opt/program");
    for (const QString &folder : {player + QStringLiteral("My Songs"), home + QStringLiteral("/backup"), program,
                                  base + QStringLiteral("/opt/other")})
        QVERIFY(QDir().mkpath(folder));
    const QStringList keep = {program, home};
    QVERIFY(mayBeEmptied(home + QStringLiteral("/backup"), player, keep));
    QVERIFY(mayBeEmptied(base + QStringLiteral("/opt/other"), player, keep));
    const QStringList refused = {QString(),
                                 player,
                                 player + QStringLiteral("My Songs"),
                                 base + QStringLiteral("/media"),
                                 home,
                                 base + QStringLiteral("/home"),
                                 program,
                                 base + QStringLiteral("/opt"),
                                 QDir::rootPath()};
    for (const QString &folder : refused)
        QVERIFY2(!mayBeEmptied(folder, player, keep), qPrintable(folder));
}

void TestBackupChoice::rootOfAVolumeIsKnown()
{
    // Inside a chroot the system knows no volume for the root folder.
    if (QStorageInfo::root().rootPath() == QDir::rootPath())
        QVERIFY(isVolumeRoot(QDir::rootPath()));
    const QTemporaryDir dir;
    QVERIFY(!isVolumeRoot(dir.path()));
}

QTEST_GUILESS_MAIN(TestBackupChoice)
#include "tst_backupchoice.moc"
