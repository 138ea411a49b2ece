#include "systemfixture.h"

#include "procedures/archivetool.h"

namespace {

struct Extraction : Maintenance
{
    Extraction() : folder(pc.path("deep/Corvin"_s)), archive(putFile(folder + "/CorvinUpdate.c4"_s, "archive")) {}
    bool unpack() { return unpackArchive(window, archive); }

    const QString folder;
    const QString archive;
};

/// "own" is the project's tool, "system" the one that the distribution brings.
void addTools() {
    columns<QString>("tool");
    row("own", QStringLiteral(UNAR_PROGRAM));
#ifdef Q_OS_UNIX
    row("system", "/usr/bin/unar"_s);
#endif
}

} // namespace

class TestExtraction : public QObject
{
    Q_OBJECT

private slots:
    void toolInTheProgramsFolderComesBeforeTheSystems() {
        PcFolder folder;
        ProgramFolder programs;
        programs.addStandIn("unar"_s);
        // Windows has no such tool of its own.
#ifdef Q_OS_UNIX
        QCOMPARE(archiveTool(folder.path()), programs.path("unar"_s));
#endif
        folder.addFile("unar.exe"_s, "MZ");
        QCOMPARE(archiveTool(folder.path()), folder.path("unar.exe"_s));
        // Without any, the one that should be there is named.
        const PcFolder empty;
        programs.hideOthers();
        programs.remove("unar"_s);
        QCOMPARE(archiveTool(empty.path()), empty.path("unar.exe"_s));
    }

    void toolGetsFourArgumentsAndItsOwnFolder() {
        Extraction extraction;
        const QString arguments = extraction.pc.path("arguments"_s);
        const QString folder = extraction.pc.path("folder"_s);
        extraction.programs.addStandIn("unar"_s, {Does::record(arguments), Does::recordFolder(folder)});
        QVERIFY(extraction.unpack());
        const QStringList expected = {extraction.archive, "-o"_s, extraction.folder, "-no-directory"_s, QString()};
        QCOMPARE(QString::fromUtf8(contentOf(arguments)).split(QLatin1Char('\n')), expected);
        const QString programs = QFileInfo(extraction.programs.path("unar"_s)).dir().canonicalPath();
        QCOMPARE(QString::fromUtf8(contentOf(folder)), programs + QLatin1Char('\n'));
    }

    void archiveIsDeletedWhateverTheToolMadeOfIt_data() {
        columns<QString>("ending");
        row("well", Does::exitWith(0));
        // Deliberate: neither its exit code nor its death is looked at.
        row("failed", Does::exitWith(3));
        row("killed", Does::die());
    }
    void archiveIsDeletedWhateverTheToolMadeOfIt() {
        QFETCH(QString, ending);
        Extraction extraction;
        extraction.programs.addStandIn("unar"_s, {ending});
        QVERIFY(extraction.unpack());
        QVERIFY(!QFile::exists(extraction.archive));
    }

    void withoutAToolThatStartsNothingIsUnpacked() {
        Extraction extraction;
        extraction.programs.addBroken("unar"_s);
        QVERIFY(!extraction.unpack());
        extraction.hideTool();
        QVERIFY(!extraction.unpack());
        QVERIFY(QFile::exists(extraction.archive));
    }

    void realZipIsUnpacked_data() {
        addTools();
    }
    void realZipIsUnpacked() {
        QFETCH(QString, tool);
        NEEDS(QFile::exists(tool), "unar is not installed");
        Extraction extraction;
        addUnar(extraction.programs, tool);
        Entries entries = {{"CorvinUpdate/sub/folder/a.exe"_s, noise(5000)},
                           {"CorvinUpdate/.hidden"_s, "h"},
                           {"CorvinUpdate/README"_s, "no dot"},
                           {"CorvinUpdate/Perché così.txt"_s, "accents"}};
        for (int i = 0; i < 1100; ++i)
            entries.insert("CorvinUpdate/many/%1.dat"_s.arg(i), QByteArray::number(i));
        putFile(extraction.archive, zipOf(entries));
        QVERIFY(extraction.unpack());
        QCOMPARE(contentBelow(extraction.folder), entries);
    }

    void nothingLandsOutsideTheFolder_data() {
        addTools();
    }
    void nothingLandsOutsideTheFolder() {
        QFETCH(QString, tool);
        NEEDS(QFile::exists(tool), "unar is not installed");
        Extraction extraction;
        addUnar(extraction.programs, tool);
        const QString outside = extraction.pc.path("outside"_s);
        putFile(outside + "/kept.txt"_s);
        putFile(extraction.archive, zipOf({{"../evil.txt"_s, "evil"},
                                           {"../../evil.txt"_s, "evil"},
                                           {outside + "/evil.txt"_s, "evil"},
                                           {"CorvinUpdate/good.txt"_s, "good"}}));
        QVERIFY(extraction.unpack());
        QVERIFY(filesBelow(extraction.folder).contains("CorvinUpdate/good.txt"_s));
        QCOMPARE(filesBelow(outside), words("kept.txt"));
        QVERIFY(!QFile::exists(extraction.pc.path("evil.txt"_s)));
        QVERIFY(!QFile::exists(extraction.pc.path("deep/evil.txt"_s)));
    }

    void linksOfAToolGoAndWhatTheyPointToStays() {
        SKIP_ON_WINDOWS("the tool that is shipped makes no links, and there is no other");
        Extraction extraction;
        const QString outside = extraction.pc.path("outside"_s);
        putFile(outside + "/kept.txt"_s);
        extraction.programs.addScript("unar"_s, "ln -s '" + outside.toLocal8Bit() + "' \"$3/CorvinUpdate.d\"\n" +
                                                    "ln -s nowhere \"$3/dangling\"\n");
        QVERIFY(extraction.unpack());
        for (const QString &link : {"/CorvinUpdate.d"_s, "/dangling"_s})
            QVERIFY2(!QFileInfo(extraction.folder + link).isSymLink(), qPrintable(link));
        QCOMPARE(filesBelow(outside), words("kept.txt"));
    }

    void toolThatAsksIsNotWaitedForForEver() {
        Extraction extraction;
        const QString ended = extraction.pc.path("ended"_s);
        extraction.programs.addStandIn("unar"_s, {Does::readInput(), Does::make(ended)});
        QVERIFY(extraction.unpack());
        QVERIFY(QFile::exists(ended));
    }

    void barIsBusyWhileTheToolRunsAndStopEndsIt() {
        Extraction extraction;
        extraction.useSlowTool();
        QProgressBar *bar = extraction.window.bar();
        bar->setRange(0, 100);
        bar->setValue(100);
        announce(extraction.boxes, {Titles::kStop});
        const StopPresser stop(extraction.window, QString(), [bar] { return bar->maximum() == 0; });
        QElapsedTimer clock;
        clock.start();
        QVERIFY(extraction.unpack());
        QVERIFY(clock.elapsed() < kLongWaitMs);
        QVERIFY(!QFile::exists(extraction.archive));
    }
};

PAGE_TEST_MAIN(TestExtraction)
#include "tst_extraction.moc"
