// What the batch file of a transfer does on Windows: the system folder and the start-up file become hidden and system
// files, and that is no obstacle to the next transfer.
#include "systemfixture.h"

#include "procedures/systemattributes.h"

#include <windows.h>

namespace {

constexpr DWORD kBoth = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;

struct Replacement : Maintenance
{
    Replacement() {
        putFile(pc.downloads("System/Corvin/Corvin.exe"_s), "new");
        putFile(pc.downloads("AUTOEXEC.BAT"_s), "new");
    }
    bool run() { return transferSystem(window, player.root(), pc.downloads()); }
    /// A file of the player as Windows names it.
    std::wstring wide(const QString &name) const { return QDir::toNativeSeparators(player.path(name)).toStdWString(); }
    DWORD attributes(const QString &name) const { return GetFileAttributesW(wide(name).c_str()) & kBoth; }
};

} // namespace

class TestWindowsAttributes : public QObject
{
    Q_OBJECT

private slots:
    void bothEntriesCarryTheAttributesAfterATransfer() {
        Replacement transfer;
        QVERIFY(transfer.run());
        QCOMPARE(transfer.attributes("System"_s), kBoth);
        QCOMPARE(transfer.attributes("AUTOEXEC.BAT"_s), kBoth);
        QCOMPARE(transfer.attributes("System/Corvin"_s), DWORD(0));
    }

    void attribIsAskedForBothAttributesOfBothEntries() {
        Replacement transfer;
        const QString record = transfer.pc.path("record"_s);
        transfer.programs.addStandIn("attrib"_s, {Does::record(record)});
        QVERIFY(transfer.run());
        QCOMPARE(QString::fromUtf8(contentOf(record)).split(QLatin1Char('\n'), Qt::SkipEmptyParts),
                 words("+H +S E:\\System +H +S E:\\AUTOEXEC.BAT"));
    }

    void batchFileInAFolderWithAnyNameIsRun_data() {
        columns<QString>("folder");
        row("blanks and brackets", "Mario Rossi/Temp (1)"_s);
        row("and", "Anna&Bob/Temp"_s);
        row("signs of the interpreter", "100% ^you! & co"_s);
    }
    void batchFileInAFolderWithAnyNameIsRun() {
        QFETCH(QString, folder);
        Replacement transfer;
        const QString record = transfer.pc.path("record"_s);
        transfer.programs.addStandIn("attrib"_s, {Does::record(record)});
        const QString batch =
            transfer.pc.addFile(folder + "/MATTRB.BAT"_s, attributeBatch(Player(transfer.player.root())));
        transfer.player.addFile("AUTOEXEC.BAT"_s);
        QVERIFY(runAttributeBatch(batch, Player(transfer.player.root())));
        QVERIFY(contentOf(record).contains("AUTOEXEC.BAT"));
    }

    void programBesideTheBatchFileIsNotRun() {
        if (QLibrary("ntdll"_s).resolve("wine_get_version"))
            QSKIP("Wine's command interpreter looks into its own folder first whatever it is told");
        Replacement transfer;
        const QString ran = transfer.pc.path("ran"_s);
        const QString beside = transfer.pc.downloads("attrib.exe"_s);
        transfer.programs.addStandIn("other"_s);
        QVERIFY(QFile::copy(transfer.programs.path("other"_s), beside));
        putFile(beside + ".does"_s, "make " + ran.toUtf8() + '\n');
        QVERIFY(transfer.run());
        QVERIFY(!QFile::exists(ran));
    }

    void attributesAreSetWhereNoBatchFileRuns() {
        Replacement transfer;
        transfer.player.addFile("System/a.exe"_s);
        transfer.player.addFile("AUTOEXEC.BAT"_s);
        QVERIFY(runAttributeBatch(transfer.pc.path("MATTRB.BAT"_s), Player(transfer.player.root())));
        QCOMPARE(transfer.attributes("System"_s), kBoth);
        QCOMPARE(transfer.attributes("AUTOEXEC.BAT"_s), kBoth);
    }

    void hiddenPartsAreReplaced() {
        Replacement transfer;
        transfer.player.addFile("System/old.exe"_s, "old");
        transfer.player.addFile("AUTOEXEC.BAT"_s, "old");
        for (const QString &name : words("System System/old.exe AUTOEXEC.BAT")) {
            QVERIFY(SetFileAttributesW(transfer.wide(name).c_str(), kBoth));
            QCOMPARE(transfer.attributes(name), kBoth);
        }
        QVERIFY(transfer.run());
        QCOMPARE(transfer.player.files(), words("AUTOEXEC.BAT System/Corvin/Corvin.exe"));
        QCOMPARE(transfer.player.content("AUTOEXEC.BAT"_s), QByteArray("new"));
    }

    void missingBatchFileWithNothingToHideIsAFailure() {
        Replacement transfer;
        QVERIFY(!runAttributeBatch(transfer.pc.path("MATTRB.BAT"_s), Player(transfer.player.root())));
    }
};

PAGE_TEST_MAIN(TestWindowsAttributes)
#include "tst_windowsattributes.moc"
