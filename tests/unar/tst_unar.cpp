#include "support/files.h"
#include "support/testing.h"

namespace {

/// A folder for one archive, which is unpacked into its "deep/out". Paths are relative to that, with a closing slash.
struct Place : PcFolder
{
    /// Puts one of the archives of makearchives.py in place.
    explicit Place(const QString &name = {}) {
        if (!name.isEmpty() && !QFile::copy(QStringLiteral(UNAR_ARCHIVES "/") + name, archive))
            failTest("There is no archive "_s + name);
    }

    int run(const QStringList &arguments) const {
        QProcess tool;
        tool.start(QStringLiteral(UNAR_PROGRAM), arguments);
        return tool.waitForFinished() && tool.exitStatus() == QProcess::NormalExit ? tool.exitCode() : -1;
    }
    int unpack() const { return run({archive, "-o"_s, out, "-no-directory"_s}); }

    const QString archive = path("archive.c4"_s);
    const QString out = addFolder("deep/out"_s) + "/"_s;
};

} // namespace

class TestUnar : public QObject
{
    Q_OBJECT

private slots:
    void wholeZipIsUnpackedStraightIntoTheFolder() {
        const Place place("whole"_s);
        QCOMPARE(place.unpack(), 0);
        QCOMPARE(filesBelow(place.out), words("Canzoni/Perché.mid README System/.hidden System/Corvin/Corvin.exe"));
        QCOMPARE(place.files().size(), 5); // the archive too, and nothing beside it
        QCOMPARE(contentOf(place.out + "System/Corvin/Corvin.exe"_s), QByteArray("MZ").repeated(5000));
        QVERIFY(QFileInfo(place.out + "Empty"_s).isDir());
    }

    void pathsOfAnyLengthAreUnpacked() {
        Place place("whole"_s);
        QString folder = "deep"_s;
        for (int i = 0; i < 4; ++i)
            folder += "/"_s + QString(60, QLatin1Char(char('a' + i)));
        const QString out = place.addFolder(folder) + "/"_s;
        QCOMPARE(place.run({place.archive, "-o"_s, out, "-no-directory"_s}), 0);
        QCOMPARE(filesBelow(out), words("Canzoni/Perché.mid README System/.hidden System/Corvin/Corvin.exe"));
        QCOMPARE(contentOf(out + "System/Corvin/Corvin.exe"_s), QByteArray("MZ").repeated(5000));
    }

    void moreThanAThousandFilesAreUnpacked() {
        const Place place("many"_s);
        QCOMPARE(place.unpack(), 0);
        QCOMPARE(place.files().size(), 1 + 1200); // the archive too
        QCOMPARE(contentOf(place.out + "d3/f1011.txt"_s), QByteArray("1011"));
    }

    void formatIsTakenFromTheContentNotFromTheName() {
        const Place place("tar"_s);
        QCOMPARE(place.run({place.archive, "-o"_s, place.out}), 0);
        QCOMPARE(contentOf(place.out + "a/b.txt"_s), QByteArray("tar"));
    }

    void existingFilesAreOverwritten() {
        const Place place("new"_s);
        const QString file = putFile(place.out + "a.txt"_s, "a longer old content");
        QCOMPARE(place.unpack(), 0);
        QCOMPARE(contentOf(file), QByteArray("new"));
    }

    void entriesThatLeadOutsideAreRefusedAndTheRestIsUnpacked_data() {
        columns<QString>("name");
        for (const QString &name : words("parent parent-from-inside absolute drive-letter backslashes"))
            row(qPrintable(name), name);
    }

    void entriesThatLeadOutsideAreRefusedAndTheRestIsUnpacked() {
        QFETCH(QString, name);
        const Place place(name);
        QVERIFY(place.unpack() > 0);
        QCOMPARE(place.files(), words("archive.c4 deep/out/after.txt deep/out/before.txt"));
        QVERIFY(!QFileInfo::exists("/tmp/corvin-unar-evil"_s));
    }

    void linksAreRefused() {
        const Place place("links"_s);
        QVERIFY(place.unpack() > 0);
        QVERIFY(!QFileInfo(place.out + "way"_s).isSymLink());
        QVERIFY(!QFileInfo::exists(place.path("deep/evil"_s)));
        QVERIFY(!QFileInfo::exists(place.out + "hard"_s));
    }

    void cutArchiveFailsAndLeavesNoHalfFile() {
        const Place place("cut"_s);
        QVERIFY(place.unpack() > 0);
        QVERIFY(!QFileInfo::exists(place.out + "big.bin"_s));
    }

    void wrongChecksumFails() { QVERIFY(Place("checksum"_s).unpack() > 0); }

    void garbageFails() {
        Place place;
        putFile(place.archive, QByteArray(20000, 'x'));
        QVERIFY(place.unpack() > 0);
        QCOMPARE(place.files(), words("archive.c4"));
    }

    void textsThatOnlyTheLibraryTakesForArchivesFail_data() {
        columns<QByteArray>("content");
        row("list of files", QByteArray("#mtree\n./System type=dir\n./AUTOEXEC.BAT type=file size=0\n"));
        row("nothing", QByteArray());
        row("encoded text", QByteArray("begin 644 a.txt\n#86)C\n`\nend\n"));
    }
    void textsThatOnlyTheLibraryTakesForArchivesFail() {
        QFETCH(QByteArray, content);
        Place place;
        putFile(place.archive, content);
        QVERIFY(place.unpack() > 0);
        QCOMPARE(place.files(), words("archive.c4"));
    }

    void missingArchiveFails() { QVERIFY(Place().unpack() > 0); }

    void wrongCommandLineIsItsOwnExitCode() {
        const Place place;
        QCOMPARE(place.run({place.archive}), 2);
    }
};

QTEST_GUILESS_MAIN(TestUnar)
#include "tst_unar.moc"
