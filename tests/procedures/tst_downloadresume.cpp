#include "downloadfixture.h"

/// A download whose server breaks off, changes its file or falls silent.
class TestDownloadResume : public QObject
{
    Q_OBJECT

private slots:
    void brokenTransferIsTakenUpWhereItBrokeOff_data() {
        columns<int, QByteArray, bool, QList<QByteArray>>("bytesAnAnswer", "mark", "whole", "ranges");
        const QByteArray none;
        row("two parts", 30000, QByteArray("\"v1\""), true, QList<QByteArray>{none, "bytes=30000-"});
        row("four parts", 12500, QByteArray("\"v1\""), true,
            QList<QByteArray>{none, "bytes=12500-", "bytes=25000-", "bytes=37500-"});
        row("more than four", 12499, QByteArray("\"v1\""), false,
            QList<QByteArray>{none, "bytes=12499-", "bytes=24998-", "bytes=37497-"});
        row("server without ranges", 30000, none, false, QList<QByteArray>{none, none, none, none});
        row("mark that is only about the same", 30000, QByteArray("W/\"v1\""), false,
            QList<QByteArray>{none, none, none, none});
    }
    void brokenTransferIsTakenUpWhereItBrokeOff() {
        QFETCH(int, bytesAnAnswer);
        QFETCH(QByteArray, mark);
        QFETCH(bool, whole);
        Downloads d;
        d.server.serveInParts(kFile, noise(kSize), bytesAnAnswer, mark);
        d.fetch();
        QCOMPARE(d.manager.whole, whole);
        QTEST(d.server.ranges(), "ranges");
        QCOMPARE(d.manager.downloadedCount, whole ? 1 : 0);
        QCOMPARE(d.content(), noise(kSize).left(whole ? kSize : qMax(4 * bytesAnAnswer % kSize, bytesAnAnswer)));
        // Counted in the whole file, not in what was missing of it.
        QCOMPARE(d.manager.percent, int(d.content().size() * 100LL / kSize));
    }

    void fileThatChangedMeanwhileComesFromItsStart() {
        Downloads d;
        QByteArray changed = noise(kSize);
        changed.fill('n', 40000);
        d.server.serveInParts(kFile, noise(kSize), 30000, "\"v1\"");
        connect(&d.server, &HttpServer::answered, this,
                [&] { d.server.serveInParts(kFile, changed, 40000, "\"v2\""); });
        d.fetch();
        QVERIFY(d.manager.whole);
        QCOMPARE(d.content(), changed);
        QCOMPARE(d.server.ranges(), (QList<QByteArray>{QByteArray(), "bytes=30000-"}));
    }

    void errorPageIsNotAddedToWhatHasCome() {
        Downloads d;
        d.server.serveInParts(kFile, noise(kSize), 30000, "\"v1\"");
        connect(&d.server, &HttpServer::answered, this, [&] {
            if (d.server.requests().size() == 1)
                d.server.serveError(kFile, 503, "busy");
            else
                d.server.serveInParts(kFile, noise(kSize), 30000, "\"v1\"");
        });
        d.fetch();
        QVERIFY(d.manager.whole);
        QCOMPARE(d.content(), noise(kSize));
        QCOMPARE(d.server.requests().size(), 3);
    }

    void silentServerIsAskedAgain() {
        Downloads d;
        d.manager.longestSilenceMs = 400;
        d.server.serveStalled(kFile, noise(kSize), 20000);
        connect(&d.server, &HttpServer::answered, this, [&] { d.server.serve(kFile, noise(kSize)); });
        d.fetch();
        QVERIFY(d.manager.whole);
        QCOMPARE(d.content(), noise(kSize));
        QCOMPARE(DownloadManager().longestSilenceMs, 60000);
    }

    void serverThatStaysSilentIsAFailure() {
        Downloads d;
        d.manager.longestSilenceMs = 300;
        d.server.serveStalled(kFile, noise(kSize), 20000);
        QVERIFY(d.manager.download(d.url()));
        QTRY_VERIFY_WITH_TIMEOUT(d.manager.done, 20000);
        QVERIFY(!d.manager.whole);
        QCOMPARE(d.server.requests().size(), 4);
    }
};

QTEST_GUILESS_MAIN(TestDownloadResume)
#include "tst_downloadresume.moc"
