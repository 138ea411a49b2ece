#include "app/mainwindow.h"
#include "procedures/archivetool.h"

#include "support/boxanswerer.h"
#include "support/platform.h"
#include "support/simulatedplayer.h"
#include "systemfixture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProgressBar>
#include <QStandardPaths>
#include <QTest>

namespace {
constexpr int kLongWaitMs = 30000;
}

class TestExtraction : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void toolInTheProgramsFolderComesFirst();
    void systemsToolIsFound();
    void toolGetsFourArgumentsAndItsOwnFolder();
    void archiveIsDeletedWhateverTheToolMadeOfIt_data();
    void archiveIsDeletedWhateverTheToolMadeOfIt();
    void withoutAToolNothingIsUnpacked();
    void toolThatCannotBeStartedIsAFailure();
    void realZipIsUnpacked_data();
    void realZipIsUnpacked();
    void nothingLandsOutsideTheFolder_data();
    void nothingLandsOutsideTheFolder();
    void linksOfAToolGoAndWhatTheyPointToStays();
    void barIsBusyWhileTheToolRuns();
    void toolThatAsksIsNotWaitedForForEver();
    void stopEndsTheTool();

private:
    bool unpack() { return unpackArchive(*m_window, m_archive); }
    QStringList unpacked() const { return filesBelow(m_pc->path(QStringLiteral("deep/Corvin"))); }
    void useTool(const QString &tool);

    QScopedPointer<TemporaryPc> m_pc;
    QScopedPointer<ProgramFolder> m_programs;
    QScopedPointer<ProcedureWindow> m_window;
    QString m_archive;
};

void TestExtraction::init()
{
    SimulatedPlayer::disconnect();
    m_pc.reset(new TemporaryPc);
    m_programs.reset(new ProgramFolder);
    m_window.reset(new ProcedureWindow);
    m_archive = m_pc->path(QStringLiteral("deep/Corvin/CorvinUpdate.c4"));
    putFile(m_archive, "archive");
}

void TestExtraction::cleanup()
{
    m_window.reset();
    m_programs.reset();
    m_pc.reset();
}

/// "own" is the project's tool, "system" the one that the distribution brings.
void TestExtraction::useTool(const QString &tool)
{
    if (tool == QStringLiteral("own"))
        addUnar(*m_programs);
    else if (!QFile::exists(QStringLiteral("/usr/bin/unar")))
        QSKIP("unar is not installed");
    else
        addUnar(*m_programs, QStringLiteral("/usr/bin/unar"));
}

void TestExtraction::toolInTheProgramsFolderComesFirst()
{
    const QTemporaryDir folder;
    m_programs->addStandIn(QStringLiteral("unar"));
    putFile(folder.filePath(QStringLiteral("unar.exe")), "MZ");
    QCOMPARE(archiveTool(folder.path()), folder.filePath(QStringLiteral("unar.exe")));
    // Without any, the one that should be there is named.
    const QTemporaryDir empty;
    m_programs->hideOthers();
    m_programs->remove(QStringLiteral("unar"));
    QCOMPARE(archiveTool(empty.path()), empty.filePath(QStringLiteral("unar.exe")));
}

void TestExtraction::systemsToolIsFound()
{
    SKIP_ON_WINDOWS("the system has no such tool");
    const QTemporaryDir empty;
    m_programs->addStandIn(QStringLiteral("unar"));
    QCOMPARE(archiveTool(empty.path()), m_programs->path(QStringLiteral("unar")));
}

void TestExtraction::toolGetsFourArgumentsAndItsOwnFolder()
{
    const QString arguments = m_pc->path(QStringLiteral("arguments"));
    const QString folder = m_pc->path(QStringLiteral("folder"));
    m_programs->addStandIn(QStringLiteral("unar"), {Does::record(arguments), Does::recordFolder(folder)});
    QVERIFY(unpack());
    const QStringList expected = {m_archive, QStringLiteral("-o"), QFileInfo(m_archive).absolutePath(),
                                  QStringLiteral("-no-directory"), QString()};
    QCOMPARE(QString::fromUtf8(contentOf(arguments)).split(QLatin1Char('\n')), expected);
    const QString programs = QFileInfo(m_programs->path(QStringLiteral("unar"))).dir().canonicalPath();
    QCOMPARE(QString::fromUtf8(contentOf(folder)), programs + QLatin1Char('\n'));
}

void TestExtraction::archiveIsDeletedWhateverTheToolMadeOfIt_data()
{
    QTest::addColumn<QString>("ending");
    QTest::newRow("well") << Does::exitWith(0);
    // Deliberate: neither its exit code nor its death is looked at.
    QTest::newRow("failed") << Does::exitWith(3);
    QTest::newRow("killed") << Does::die();
}

void TestExtraction::archiveIsDeletedWhateverTheToolMadeOfIt()
{
    QFETCH(QString, ending);
    m_programs->addStandIn(QStringLiteral("unar"), {ending});
    QVERIFY(unpack());
    QVERIFY(!QFile::exists(m_archive));
}

void TestExtraction::withoutAToolNothingIsUnpacked()
{
    m_programs->hideOthers();
    QVERIFY(!unpack());
    QVERIFY(QFile::exists(m_archive));
}

void TestExtraction::toolThatCannotBeStartedIsAFailure()
{
    m_programs->addBroken(QStringLiteral("unar"));
    QVERIFY(!unpack());
    QVERIFY(QFile::exists(m_archive));
}

void TestExtraction::realZipIsUnpacked_data()
{
    QTest::addColumn<QString>("tool");
    QTest::newRow("own") << QStringLiteral("own");
#ifdef Q_OS_UNIX
    QTest::newRow("system") << QStringLiteral("system");
#endif
}

void TestExtraction::realZipIsUnpacked()
{
    QFETCH(QString, tool);
    useTool(tool);
    Entries entries = {{QStringLiteral("CorvinUpdate/sub/folder/a.exe"), noise(5000)},
                       {QStringLiteral("CorvinUpdate/.hidden"), "h"},
                       {QStringLiteral("CorvinUpdate/README"), "no dot"},
                       {QStringLiteral("CorvinUpdate/Perché così.txt"), "accents"}};
    for (int i = 0; i < 1100; ++i)
        entries.insert(QStringLiteral("CorvinUpdate/many/%1.dat").arg(i), QByteArray::number(i));
    putFile(m_archive, zipOf(entries));
    QVERIFY(unpack());
    QStringList expected = entries.keys();
    expected.sort();
    QCOMPARE(unpacked(), expected);
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
        QCOMPARE(contentOf(QFileInfo(m_archive).absolutePath() + QLatin1Char('/') + entry.key()), entry.value());
}

void TestExtraction::nothingLandsOutsideTheFolder_data()
{
    realZipIsUnpacked_data();
}

void TestExtraction::nothingLandsOutsideTheFolder()
{
    QFETCH(QString, tool);
    useTool(tool);
    const QString outside = m_pc->path(QStringLiteral("outside"));
    putFile(outside + QStringLiteral("/kept.txt"), "kept");
    putFile(m_archive, zipOf({{QStringLiteral("../evil.txt"), "evil"},
                              {QStringLiteral("../../evil.txt"), "evil"},
                              {outside + QStringLiteral("/evil.txt"), "evil"},
                              {QStringLiteral("CorvinUpdate/good.txt"), "good"}}));
    QVERIFY(unpack());
    QVERIFY(unpacked().contains(QStringLiteral("CorvinUpdate/good.txt")));
    QCOMPARE(filesBelow(outside), QStringList{QStringLiteral("kept.txt")});
    QVERIFY(!QFile::exists(m_pc->path(QStringLiteral("evil.txt"))));
    QVERIFY(!QFile::exists(m_pc->path(QStringLiteral("deep/evil.txt"))));
}

void TestExtraction::linksOfAToolGoAndWhatTheyPointToStays()
{
    SKIP_ON_WINDOWS("the tool that is shipped makes no links, and there is no other");
    const QString outside = m_pc->path(QStringLiteral("outside"));
    putFile(outside + QStringLiteral("/kept.txt"), "kept");
    m_programs->addScript(QStringLiteral("unar"), "ln -s '" + outside.toLocal8Bit() + "' \"$3/CorvinUpdate.d\"\n" +
                                                      "ln -s nowhere \"$3/dangling\"\n");
    QVERIFY(unpack());
    const QString folder = QFileInfo(m_archive).absolutePath();
    QVERIFY(!QFileInfo(folder + QStringLiteral("/CorvinUpdate.d")).isSymLink());
    QVERIFY(!QFileInfo(folder + QStringLiteral("/dangling")).isSymLink());
    QCOMPARE(filesBelow(outside), QStringList{QStringLiteral("kept.txt")});
}

void TestExtraction::barIsBusyWhileTheToolRuns()
{
    const QString go = m_pc->path(QStringLiteral("go"));
    m_programs->addStandIn(QStringLiteral("unar"), {Does::waitFor(go)});
    QProgressBar *bar = m_window->bar();
    bar->setRange(0, 100);
    bar->setValue(100);
    QTimer look;
    connect(&look, &QTimer::timeout, this, [&] {
        if (bar->maximum() == 0)
            putFile(go, "go");
    });
    look.start(5);
    // The tool only ends once the bar was seen busy.
    QVERIFY(unpack());
    QVERIFY(QFile::exists(go));
}

void TestExtraction::toolThatAsksIsNotWaitedForForEver()
{
    const QString ended = m_pc->path(QStringLiteral("ended"));
    m_programs->addStandIn(QStringLiteral("unar"), {Does::readInput(), Does::make(ended)});
    QVERIFY(unpack());
    QVERIFY(QFile::exists(ended));
}

void TestExtraction::stopEndsTheTool()
{
    m_programs->addStandIn(QStringLiteral("unar"), {Does::waitForever()});
    BoxAnswerer answers;
    answers.answer(QStringLiteral("Interrompi Operazione"), QStringLiteral("Si"));
    StopPresser stop(*m_window, QString(), [this] { return m_window->bar()->maximum() == 0; });
    QElapsedTimer clock;
    clock.start();
    QVERIFY(unpack());
    QVERIFY(stop.pressed);
    QVERIFY(clock.elapsed() < kLongWaitMs);
    QVERIFY(!QFile::exists(m_archive));
}

QTEST_MAIN(TestExtraction)
#include "tst_extraction.moc"
