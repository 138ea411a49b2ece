// What the batch file of a transfer does on Windows: the system folder and the start-up file become hidden and system
// files, and that is no obstacle to the next transfer.
#include "systemfixture.h"

#include "procedures/systemattributes.h"

#include <windows.h>

namespace {

constexpr DWORD kBoth = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;

/// Of several attributes in one call Wine's own "attrib" sets only the last.
bool attribTakesSeveral() {
    return !GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version");
}

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
        const DWORD expected = attribTakesSeveral() ? kBoth : FILE_ATTRIBUTE_SYSTEM;
        QCOMPARE(transfer.attributes("System"_s), expected);
        QCOMPARE(transfer.attributes("AUTOEXEC.BAT"_s), expected);
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

    void batchFileInAFolderWithBlanksIsRun() {
        Replacement transfer;
        const QString batch =
            transfer.pc.addFile("Mario Rossi/Temp (1)/MATTRB.BAT"_s, attributeBatch(Player(transfer.player.root())));
        transfer.player.addFile("AUTOEXEC.BAT"_s);
        QVERIFY(runAttributeBatch(batch, Player(transfer.player.root())));
        QVERIFY(transfer.attributes("AUTOEXEC.BAT"_s) & FILE_ATTRIBUTE_SYSTEM);
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

    void missingBatchFileIsAFailure() {
        Replacement transfer;
        QVERIFY(!runAttributeBatch(transfer.pc.path("MATTRB.BAT"_s), Player(transfer.player.root())));
    }
};

PAGE_TEST_MAIN(TestWindowsAttributes)
#include "tst_windowsattributes.moc"
