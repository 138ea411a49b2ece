#include "procedures/updateserver.h"

#include "support/testing.h"

class TestUpdateServer : public QObject
{
    Q_OBJECT

private slots:
    void init() { qunsetenv("CORVIN_UPDATE_SERVER"); }

    void environmentOverridesTheBuild_data() {
        columns<QByteArray, QString>("address", "url");
        row("not set", QByteArray(), QStringLiteral(BUILT_IN_SERVER "/x"));
        row("plain", QByteArray("http://127.0.0.1:8080"), "http://127.0.0.1:8080/x"_s);
        row("closing slashes", QByteArray("http://shop//"), "http://shop/x"_s);
        row("blanks around", QByteArray(" http://shop "), "http://shop/x"_s);
        row("below a path", QByteArray("http://shop/c4/"), "http://shop/c4/x"_s);
        row("empty counts as not set", QByteArray(""), QStringLiteral(BUILT_IN_SERVER "/x"));
    }
    void environmentOverridesTheBuild() {
        QFETCH(QByteArray, address);
        if (!address.isNull())
            qputenv("CORVIN_UPDATE_SERVER", address);
        QTEST(updateServerUrl("/x"_s), "url");
    }

    void pathsAreTheServers() {
        QCOMPARE(kUpdateArchivePath, "/download/Corvin4/CorvinUpdate.c4"_s);
        QCOMPARE(kSystemArchivePath, "/download/Corvin4/CorvinAll.zip"_s);
    }
};

QTEST_GUILESS_MAIN(TestUpdateServer)
#include "tst_updateserver.moc"
