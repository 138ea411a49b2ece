#include "runrecorder.h"
#include "songfactory/songfactory.h"
#include "support/simulatedplayer.h"

#include "optimizer/longname.h"

#include <QPushButton>
#include <QTest>

#include <qt_windows.h>

/// On a PC whose code page has one byte for each of its letters: what is counted in bytes counts characters there, and
/// songs whose names it cannot spell are looked after like all others.
class TestCodePage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyCharacterCountsOnce_data();
    void everyCharacterCountsOnce();
    void namesBeyondTheCodePageStayAndAreListed();
    void overLongNameBeyondTheCodePageIsShortened();
    void pathLongerThanOldProgramsKnowIsShortened();

private:
    static QByteArray optimise(const SimulatedPlayer &player);
};

namespace {

constexpr UINT kWesternEurope = 1252;
const QString kImport = QStringLiteral("CorvinImportDB.sql");
const QChar kAccented(0xE8);
const QChar kBeyond(0x416); // Cyrillic

SongInfo titled(const QString &title)
{
    SongInfo info;
    info.title = title;
    return info;
}

} // namespace

void TestCodePage::initTestCase()
{
    QCOMPARE(::GetACP(), kWesternEurope);
}

void TestCodePage::everyCharacterCountsOnce_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("tooLong");
    const QString suffix = QStringLiteral(".mid");
    QTest::newRow("95 letters with accents") << QString(91, kAccented) + suffix << false;
    QTest::newRow("96 letters with accents") << QString(92, kAccented) + suffix << true;
    QTest::newRow("95 characters it does not know") << QString(91, kBeyond) + suffix << false;
    QTest::newRow("96 characters it does not know") << QString(92, kBeyond) + suffix << true;
}

void TestCodePage::everyCharacterCountsOnce()
{
    QFETCH(QString, name);
    QTEST(isPathTooLong(QStringLiteral("E:/My Songs/") + name), "tooLong");
}

QByteArray TestCodePage::optimise(const SimulatedPlayer &player)
{
    Ottimizza page;
    page.show();
    RunRecorder recorder(page);
    QTest::mouseClick(page.findChild<QPushButton *>(QStringLiteral("Btn_Opt_Ok")), Qt::LeftButton);
    if (recorder.lines().last() != QLatin1String("end 0"))
        QTest::qFail("The run did not end well", __FILE__, __LINE__);
    return player.content(kImport);
}

void TestCodePage::namesBeyondTheCodePageStayAndAreListed()
{
    SimulatedPlayer player;
    const QString japanese = QString::fromUtf8("My Songs/日本の歌.mid");
    const QString microphone = QString::fromUtf8("My Songs/🎤 Perché.mid");
    player.addFile(japanese, SongFactory::midi(titled(QStringLiteral("One"))));
    player.addFile(microphone, SongFactory::midi(titled(QStringLiteral("Two"))));
    const QByteArray import = optimise(player);
    QVERIFY(player.exists(japanese));
    QVERIFY(player.exists(microphone));
    QVERIFY2(import.contains("日本の歌.mid"), import.constData());
    QVERIFY2(import.contains("🎤 Perché.mid"), import.constData());
    QVERIFY(!import.contains('\r'));
}

void TestCodePage::overLongNameBeyondTheCodePageIsShortened()
{
    SimulatedPlayer player;
    const QString longName = QStringLiteral("My Songs/") + QString(100, kBeyond);
    player.addFile(longName + QStringLiteral(".mid"), SongFactory::midi(titled(QStringLiteral("Long"))));
    const QByteArray import = optimise(player);
    // 104 bytes of such a code page are 14 too many.
    const QString shorter = longName.chopped(14) + QStringLiteral("(0).mid");
    QCOMPARE(player.files(QStringLiteral("My Songs")), QStringList{shorter});
    QVERIFY2(import.contains(shorter.section(QLatin1Char('/'), 1).toUtf8()), import.constData());
}

void TestCodePage::pathLongerThanOldProgramsKnowIsShortened()
{
    SimulatedPlayer player;
    QString folder = QStringLiteral("My Songs");
    for (int level = 0; level < 4; ++level)
        folder += QLatin1Char('/') + QString(44, QLatin1Char('d'));
    const QString name(90, QLatin1Char('n'));
    const QString song = folder + QLatin1Char('/') + name;
    player.addFile(song + QStringLiteral(".mid"), SongFactory::midi(titled(QStringLiteral("Deep"))));
    player.addFile(song + QStringLiteral(".cdg"), "companion");
    QVERIFY(player.path(song).size() > MAX_PATH);
    const QByteArray import = optimise(player);
    // "E:/", 188 characters of folders, a slash and 94 of the name are 46 more than 240.
    const QString shorter = folder + QLatin1Char('/') + name.chopped(46) + QStringLiteral("(0)");
    QCOMPARE(player.files(QStringLiteral("My Songs")),
             (QStringList{shorter + QStringLiteral(".cdg"), shorter + QStringLiteral(".mid")}));
    QVERIFY2(import.contains(shorter.section(QLatin1Char('/'), -1).toLatin1() + ".mid"), import.constData());
}

QTEST_MAIN(TestCodePage)
#include "tst_codepage.moc"
