#include "optimizer/devicepath.h"

#include <QTest>

namespace {
const QString kRoot = QStringLiteral("E:/");
}

class TestDevicePath : public QObject
{
    Q_OBJECT

private slots:
    void deviceTextBecomesPcPath_data();
    void deviceTextBecomesPcPath();
    void pcPathBecomesDevicePath_data();
    void pcPathBecomesDevicePath();
    void bothWaysGiveTheSamePath_data();
    void bothWaysGiveTheSamePath();
};

void TestDevicePath::deviceTextBecomesPcPath_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("pc");
    QTest::newRow("song") << R"(\sdmemory\My Songs\Artist\song.mid)"
                          << "E:/My Songs/Artist/song.mid";
    QTest::newRow("song in the root") << R"(\sdmemory\song.mid)"
                                      << "E:/song.mid";
    QTest::newRow("case of the device root does not matter") << R"(\SDMemory\Song.MID)"
                                                             << "E:/Song.MID";
    QTest::newRow("every device root") << R"(\sdmemory\a;\SDMEMORY\b)"
                                       << "E:/a;E:/b";
    QTest::newRow("device roots one behind the other") << R"(\sdmemory\\sdmemory\a)"
                                                       << "E:/E:/a";
    QTest::newRow("device root without its end") << R"(\sdmemory)"
                                                 << "/sdmemory";
    QTest::newRow("other folder") << R"(\sdmemory2\a)"
                                  << "/sdmemory2/a";
    QTest::newRow("forward slashes are not the player's") << "/sdmemory/a"
                                                          << "/sdmemory/a";
    QTest::newRow("numbers and line end stay") << "\\sdmemory\\a.mid^12^0\r\n"
                                               << "E:/a.mid^12^0\r\n";
    QTest::newRow("empty") << ""
                           << "";
}

void TestDevicePath::deviceTextBecomesPcPath()
{
    QFETCH(QString, device);
    QTEST(devicePathToPc(device, kRoot), "pc");
}

void TestDevicePath::pcPathBecomesDevicePath_data()
{
    QTest::addColumn<QString>("pc");
    QTest::addColumn<QString>("root");
    QTest::addColumn<QString>("device");
    QTest::newRow("song") << "E:/My Songs/song.mid"
                          << "E:/"
                          << R"(\sdmemory\My Songs\song.mid)";
    QTest::newRow("root alone") << "E:/"
                                << "E:/"
                                << R"(\sdmemory\)";
    QTest::newRow("case of the root matters") << "e:/song.mid"
                                              << "E:/"
                                              << R"(e:\song.mid)";
    QTest::newRow("every root") << "E:/a/E:/b"
                                << "E:/"
                                << R"(\sdmemory\a\\sdmemory\b)";
    QTest::newRow("mounted volume") << "/media/u/CORVIN4/a/b.mp3"
                                    << "/media/u/CORVIN4/"
                                    << R"(\sdmemory\a\b.mp3)";
    QTest::newRow("not on the player") << "/home/u/b.mp3"
                                       << "/media/u/CORVIN4/"
                                       << R"(\home\u\b.mp3)";
    QTest::newRow("no root") << "/a/b"
                             << ""
                             << R"(\a\b)";
    QTest::newRow("empty") << ""
                           << "E:/"
                           << "";
}

void TestDevicePath::pcPathBecomesDevicePath()
{
    QFETCH(QString, pc);
    QFETCH(QString, root);
    QTEST(pcPathToDevicePath(pc, root), "device");
}

void TestDevicePath::bothWaysGiveTheSamePath_data()
{
    QTest::addColumn<QString>("pc");
    QTest::newRow("plain") << "E:/My Songs/song.mid";
    QTest::newRow("accents") << QStringLiteral("E:/Città/Perché.mid");
    QTest::newRow("quotes and apostrophes") << "E:/L'\"altra\"/a^1.mid";
}

void TestDevicePath::bothWaysGiveTheSamePath()
{
    QFETCH(QString, pc);
    QCOMPARE(devicePathToPc(pcPathToDevicePath(pc, kRoot), kRoot), pc);
}

QTEST_GUILESS_MAIN(TestDevicePath)
#include "tst_devicepath.moc"
