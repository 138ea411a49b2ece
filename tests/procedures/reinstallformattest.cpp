#include "reinstallformattest.h"

#include "app/mainwindow.h"
#include "procedures/updateserver.h"
#include "support/logcapture.h"

#include <QDir>
#include <QTest>

Entries ReinstallFormatTest::systemEntries()
{
    Entries entries = {{QStringLiteral("AUTOEXEC.BAT"), "new"}, {QStringLiteral("System/Corvin/Corvin.exe"), "new"}};
    for (int i = 0; i < kManyFiles; ++i)
        entries.insert(QStringLiteral("System/many/%1.dat").arg(i), "x");
    return entries;
}

void ReinstallFormatTest::initTestCase()
{
    QString why;
    if (!PlayerDisk::isPossible(&why))
        QSKIP(qPrintable(QStringLiteral("SKIPPED WHOLE: ") + why));
}

void ReinstallFormatTest::init()
{
    m_pc.reset(new TemporaryPc);
    QVERIFY(QDir().mkpath(backup()));
    m_server.reset(new HttpServer);
    qputenv("CORVIN_UPDATE_SERVER", m_server->address().toLatin1());
    m_server->serve(kSystemArchivePath, zipOf(systemEntries(), QStringLiteral("System/"), kLeast));
    m_server->serve(kUpdateArchivePath,
                    zipOf({{QStringLiteral("CorvinUpdate/u.exe"), "update"}}, QStringLiteral("CorvinUpdate/"), kLeast));
    m_player.reset(new PlayerDisk);
    QVERIFY2(m_player->isThere(), qPrintable(m_player->error()));
    putFile(m_player->path(QStringLiteral("AUTOEXEC.BAT")), "old");
    putFile(m_player->path(QStringLiteral("System/old.exe")), "old");
    putFile(m_player->path(QStringLiteral("System/Playlist/mine.pls")), "list");
    for (int i = 0; i < kManyFiles; ++i)
        putFile(m_player->path(QStringLiteral("My Songs/%1.mid").arg(i)), QByteArray::number(i));
    m_programs.reset(new ProgramFolder);
    addUnar(*m_programs);
    m_formatRecord = m_pc->path(QStringLiteral("format.txt"));
    m_player->addFormatCommand(*m_programs, m_formatRecord);
    m_window.reset(new ProcedureWindow);
}

void ReinstallFormatTest::cleanup()
{
    m_window.reset();
    m_programs.reset();
    m_player.reset();
    m_server.reset();
    m_pc.reset();
    qunsetenv("CORVIN_UPDATE_SERVER");
}

void ReinstallFormatTest::expectOldDisk() const
{
    QVERIFY(!QFile::exists(m_formatRecord));
    QCOMPARE(m_player->content(QStringLiteral("AUTOEXEC.BAT")), QByteArray("old"));
    QCOMPARE(m_player->content(QStringLiteral("System/old.exe")), QByteArray("old"));
    QCOMPARE(m_player->files().size(), kManyFiles + 3);
    QVERIFY(m_window->isAtRest());
}

void ReinstallFormatTest::expectNewSystem() const
{
    QCOMPARE(m_player->content(QStringLiteral("AUTOEXEC.BAT")), QByteArray("new"));
    QCOMPARE(m_player->content(QStringLiteral("System/Corvin/Corvin.exe")), QByteArray("new"));
    QVERIFY(!QFile::exists(m_player->path(QStringLiteral("System/old.exe"))));
    QCOMPARE(filesBelow(m_player->path(QStringLiteral("System/many"))).size(), kManyFiles);
    QVERIFY(!QFile::exists(m_pc->downloads()));
    QVERIFY(m_window->isAtRest());
}

void ReinstallFormatTest::useSlowTool()
{
    m_programs->addStandIn(QStringLiteral("unar"), {Does::waitForever()});
}

QStringList ReinstallFormatTest::statusTexts(const LogCapture &log)
{
    const QString prefix = QStringLiteral("MainWindow::on_updateLabelAction : \"");
    QStringList texts = log.textsStartingWith(prefix);
    for (QString &text : texts)
        text = text.mid(prefix.size()).chopped(1);
    return texts;
}
