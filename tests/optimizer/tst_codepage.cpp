#include "optimizer/longname.h"
#include "optimizer/ottimizza.h"

#include "songfactory/songfactory.h"
#include "support/given.h"
#include "support/signalrecorder.h"
#include "support/simulatedplayer.h"
#include "support/widgets.h"

#include <qt_windows.h>

/// On a PC whose code page has one byte for each of its letters: what is counted in bytes counts characters there, and
/// songs whose names it cannot spell are looked after like all others.
class TestCodePage : public QObject
{
    Q_OBJECT

    const QChar kAccented = QChar(0xE8);
    const QChar kBeyond = QChar(0x416); // Cyrillic

    static QByteArray song(const QString &title) {
        SongInfo info;
        info.title = title;
        return SongFactory::midi(info);
    }
    /// Runs the optimisation and returns the import file.
    static QByteArray optimise(const SimulatedPlayer &player) {
        Ottimizza page;
        page.show();
        SignalRecorder recorder(page);
        click(page, "Btn_Opt_Ok");
        if (recorder.lines().last() != "backFromOttimizzaToEndOttimizza 0"_s)
            failTest("The run did not end well"_s);
        return player.content("CorvinImportDB.sql"_s);
    }

private slots:
    void initTestCase() { QCOMPARE(::GetACP(), UINT(1252)); } // Western Europe

    void everyCharacterCountsOnce_data() {
        columns<QString, bool>("base", "tooLong");
        row("95 letters with accents", QString(91, kAccented), false);
        row("96 letters with accents", QString(92, kAccented), true);
        row("95 characters it does not know", QString(91, kBeyond), false);
        row("96 characters it does not know", QString(92, kBeyond), true);
    }
    void everyCharacterCountsOnce() {
        QTEST(isPathTooLong("E:/My Songs/"_s + given<QString>("base") + ".mid"_s), "tooLong");
    }

    void namesBeyondTheCodePageStayAndAreListed() {
        SimulatedPlayer player;
        const QStringList names = {"日本の歌.mid"_s, "🎤 Perché.mid"_s};
        for (const QString &name : names)
            player.addFile("My Songs/"_s + name, song("One of two"_s));
        const QByteArray import = optimise(player);
        for (const QString &name : names) {
            QVERIFY(player.exists("My Songs/"_s + name));
            QVERIFY2(import.contains(name.toUtf8()), import.constData());
        }
        QVERIFY(!import.contains('\r'));
    }

    void overLongNameBeyondTheCodePageIsShortened() {
        SimulatedPlayer player;
        player.addFile("My Songs/"_s + QString(100, kBeyond) + ".mid"_s, song("Long"_s));
        const QByteArray import = optimise(player);
        // 104 bytes of such a code page are 14 too many.
        const QString shorter = QString(86, kBeyond) + "(0).mid"_s;
        QCOMPARE(player.files("My Songs"_s), QStringList("My Songs/"_s + shorter));
        QVERIFY2(import.contains(shorter.toUtf8()), import.constData());
    }

    void pathLongerThanOldProgramsKnowIsShortened() {
        SimulatedPlayer player;
        const QString folder = "My Songs"_s + ("/"_s + "d"_s.repeated(44)).repeated(4) + "/"_s;
        const QString name = "n"_s.repeated(90);
        player.addFile(folder + name + ".cdg"_s, "companion");
        QVERIFY(player.addFile(folder + name + ".mid"_s, song("Deep"_s)).size() > MAX_PATH);
        const QByteArray import = optimise(player);
        // "E:/", 188 characters of folders, a slash and 94 of the name are 46 more than 240.
        const QString shorter = name.chopped(46) + "(0)"_s;
        const QStringList files = {folder + shorter + ".cdg"_s, folder + shorter + ".mid"_s};
        QCOMPARE(player.files("My Songs"_s), files);
        QVERIFY2(import.contains(shorter.toLatin1() + ".mid"), import.constData());
    }
};

QTEST_MAIN(TestCodePage)
#include "tst_codepage.moc"
