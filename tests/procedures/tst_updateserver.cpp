#include "procedures/updateserver.h"

#include <QTest>

class TestUpdateServer : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void addressOfTheBuildIsUsed();
    void environmentOverridesTheBuild_data();
    void environmentOverridesTheBuild();
    void pathsAreTheServers();
};

void TestUpdateServer::cleanup()
{
    qunsetenv("CORVIN_UPDATE_SERVER");
}

void TestUpdateServer::addressOfTheBuildIsUsed()
{
    qunsetenv("CORVIN_UPDATE_SERVER");
    QCOMPARE(updateServerUrl(QStringLiteral("/a/b.zip")), QStringLiteral(BUILT_IN_SERVER "/a/b.zip"));
}

void TestUpdateServer::environmentOverridesTheBuild_data()
{
    QTest::addColumn<QByteArray>("address");
    QTest::addColumn<QString>("url");
    QTest::newRow("plain") << QByteArray("http://127.0.0.1:8080") << QStringLiteral("http://127.0.0.1:8080/x");
    QTest::newRow("closing slashes") << QByteArray("http://shop//") << QStringLiteral("http://shop/x");
    QTest::newRow("blanks around") << QByteArray(" http://shop ") << QStringLiteral("http://shop/x");
    QTest::newRow("below a path") << QByteArray("http://shop/c4/") << QStringLiteral("http://shop/c4/x");
    QTest::newRow("empty counts as not set") << QByteArray("") << QStringLiteral(BUILT_IN_SERVER "/x");
}

void TestUpdateServer::environmentOverridesTheBuild()
{
    QFETCH(QByteArray, address);
    QFETCH(QString, url);
    qputenv("CORVIN_UPDATE_SERVER", address);
    QCOMPARE(updateServerUrl(QStringLiteral("/x")), url);
}

void TestUpdateServer::pathsAreTheServers()
{
    QCOMPARE(kUpdateArchivePath, QStringLiteral("/download/Corvin4/CorvinUpdate.c4"));
    QCOMPARE(kSystemArchivePath, QStringLiteral("/download/Corvin4/CorvinAll.zip"));
}

QTEST_GUILESS_MAIN(TestUpdateServer)
#include "tst_updateserver.moc"
