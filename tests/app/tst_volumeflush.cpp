#include "app/volumeflush.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestVolumeFlush : public QObject
{
    Q_OBJECT

private slots:
    void folderOfAVolumeIsFlushed();
    void fileOfAVolumeIsFlushed();
    void nameBeyondAsciiIsFlushed();
    void vanishedVolumeIsReported();
    void emptyPathIsReported();
};

void TestVolumeFlush::folderOfAVolumeIsFlushed()
{
    const QTemporaryDir folder;
    QVERIFY(flushVolume(folder.path()));
    QVERIFY(flushVolume(folder.path() + QLatin1Char('/')));
}

void TestVolumeFlush::fileOfAVolumeIsFlushed()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("song.mid")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(flushVolume(file.fileName()));
}

void TestVolumeFlush::nameBeyondAsciiIsFlushed()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Città perché"));
    QVERIFY(QDir().mkdir(path));
    QVERIFY(flushVolume(path));
}

void TestVolumeFlush::vanishedVolumeIsReported()
{
    QTemporaryDir folder;
    const QString path = folder.path();
    QVERIFY(folder.remove());
    QVERIFY(!flushVolume(path));
}

void TestVolumeFlush::emptyPathIsReported()
{
    QVERIFY(!flushVolume(QString()));
}

QTEST_MAIN(TestVolumeFlush)
#include "tst_volumeflush.moc"
