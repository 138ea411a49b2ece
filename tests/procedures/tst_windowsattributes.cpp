// What the batch file of a transfer does on Windows: the system folder and the start-up file become hidden and system
// files, and that is no obstacle to the next transfer.
#include "systemfixture.h"

#include "app/mainwindow.h"
#include "procedures/systemattributes.h"
#include "support/simulatedplayer.h"

#include <QDir>
#include <QTest>

#include <windows.h>

namespace {

constexpr DWORD kBoth = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;

const wchar_t *wide(const QString &text)
{
    return reinterpret_cast<const wchar_t *>(text.utf16());
}

DWORD attributesOf(const QString &path)
{
    return GetFileAttributesW(wide(QDir::toNativeSeparators(path))) & kBoth;
}

/// Of several attributes in one call Wine's own "attrib" sets only the last.
bool attribTakesSeveral()
{
    return !GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version");
}

} // namespace

class TestWindowsAttributes : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void bothEntriesCarryTheAttributesAfterATransfer();
    void attribIsAskedForBothAttributesOfBothEntries();
    void batchFileInAFolderWithBlanksIsRun();
    void hiddenPartsAreReplaced();
    void missingBatchFileIsAFailure();

private:
    bool transfer() { return transferSystem(*m_window, m_player->root(), m_pc->downloads()); }

    QScopedPointer<TemporaryPc> m_pc;
    QScopedPointer<SimulatedPlayer> m_player;
    QScopedPointer<ProcedureWindow> m_window;
};

void TestWindowsAttributes::init()
{
    m_pc.reset(new TemporaryPc);
    m_player.reset(new SimulatedPlayer);
    m_window.reset(new ProcedureWindow);
    putFile(m_pc->downloads() + QStringLiteral("/System/Corvin/Corvin.exe"), "new");
    putFile(m_pc->downloads() + QStringLiteral("/AUTOEXEC.BAT"), "new");
}

void TestWindowsAttributes::cleanup()
{
    m_window.reset();
    m_player.reset();
    m_pc.reset();
}

void TestWindowsAttributes::bothEntriesCarryTheAttributesAfterATransfer()
{
    QVERIFY(transfer());
    const DWORD expected = attribTakesSeveral() ? kBoth : FILE_ATTRIBUTE_SYSTEM;
    QCOMPARE(attributesOf(m_player->path(QStringLiteral("System"))), expected);
    QCOMPARE(attributesOf(m_player->path(QStringLiteral("AUTOEXEC.BAT"))), expected);
    QCOMPARE(attributesOf(m_player->path(QStringLiteral("System/Corvin"))), DWORD(0));
}

void TestWindowsAttributes::attribIsAskedForBothAttributesOfBothEntries()
{
    const QString record = m_pc->path(QStringLiteral("record"));
    ProgramFolder programs;
    programs.addStandIn(QStringLiteral("attrib"), {Does::record(record)});
    QVERIFY(transfer());
    QCOMPARE(QString::fromUtf8(contentOf(record)).split(QLatin1Char('\n'), Qt::SkipEmptyParts),
             (QStringList{QStringLiteral("+H"), QStringLiteral("+S"), QStringLiteral("E:\\System"),
                          QStringLiteral("+H"), QStringLiteral("+S"), QStringLiteral("E:\\AUTOEXEC.BAT")}));
}

void TestWindowsAttributes::batchFileInAFolderWithBlanksIsRun()
{
    const QString batch = m_pc->path(QStringLiteral("Mario Rossi/Temp (1)/MATTRB.BAT"));
    putFile(batch, attributeBatch(m_player->root()));
    m_player->addFile(QStringLiteral("AUTOEXEC.BAT"));
    QVERIFY(runAttributeBatch(batch, m_player->root()));
    QVERIFY(attributesOf(m_player->path(QStringLiteral("AUTOEXEC.BAT"))) & FILE_ATTRIBUTE_SYSTEM);
}

void TestWindowsAttributes::hiddenPartsAreReplaced()
{
    m_player->addFile(QStringLiteral("System/old.exe"), "old");
    m_player->addFile(QStringLiteral("AUTOEXEC.BAT"), "old");
    for (const QString &name :
         {QStringLiteral("System"), QStringLiteral("System/old.exe"), QStringLiteral("AUTOEXEC.BAT")}) {
        const QString path = m_player->path(name);
        QVERIFY(SetFileAttributesW(wide(QDir::toNativeSeparators(path)), kBoth));
        QCOMPARE(attributesOf(path), kBoth);
    }
    QVERIFY(transfer());
    QCOMPARE(m_player->files(),
             (QStringList{QStringLiteral("AUTOEXEC.BAT"), QStringLiteral("System/Corvin/Corvin.exe")}));
    QCOMPARE(m_player->content(QStringLiteral("AUTOEXEC.BAT")), QByteArray("new"));
}

void TestWindowsAttributes::missingBatchFileIsAFailure()
{
    QVERIFY(!runAttributeBatch(m_pc->path(QStringLiteral("MATTRB.BAT")), m_player->root()));
}

QTEST_MAIN(TestWindowsAttributes)
#include "tst_windowsattributes.moc"
