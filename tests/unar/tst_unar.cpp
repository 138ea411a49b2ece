#include <QDir>
#include <QDirIterator>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestUnar : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void wholeZipIsUnpackedStraightIntoTheFolder();
    void moreThanAThousandFilesAreUnpacked();
    void formatIsTakenFromTheContentNotFromTheName();
    void existingFilesAreOverwritten();
    void entriesThatLeadOutsideAreRefusedAndTheRestIsUnpacked_data();
    void entriesThatLeadOutsideAreRefusedAndTheRestIsUnpacked();
    void linksAreRefused();
    void cutArchiveFailsAndLeavesNoHalfFile();
    void wrongChecksumFails();
    void garbageFails();
    void missingArchiveFails();
    void wrongCommandLineIsItsOwnExitCode();

private:
    /// Puts one of the archives of makearchives.py in place.
    bool takeArchive(const QString &name) const;
    int unpack(const QStringList &extra = {QStringLiteral("-no-directory")});
    QStringList unpacked() const;
    QString target(const QString &name) const { return m_dir->filePath(QStringLiteral("deep/out/") + name); }

    QScopedPointer<QTemporaryDir> m_dir;
    QString m_archive;
};

void TestUnar::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("deep/out")));
    m_archive = m_dir->filePath(QStringLiteral("archive.c4"));
}

void TestUnar::cleanup()
{
    m_dir.reset();
}

bool TestUnar::takeArchive(const QString &name) const
{
    return QFile::copy(QStringLiteral(UNAR_ARCHIVES "/") + name, m_archive);
}

int TestUnar::unpack(const QStringList &extra)
{
    QProcess tool;
    tool.start(QStringLiteral(UNAR_PROGRAM), QStringList{m_archive, QStringLiteral("-o"), target(QString())} + extra);
    if (!tool.waitForFinished() || tool.exitStatus() != QProcess::NormalExit)
        return -1;
    return tool.exitCode();
}

QStringList TestUnar::unpacked() const
{
    QStringList names;
    QDirIterator files(m_dir->path(), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        if (path != m_archive)
            names.append(QDir(target(QString())).relativeFilePath(path));
    }
    names.sort();
    return names;
}

void TestUnar::wholeZipIsUnpackedStraightIntoTheFolder()
{
    QVERIFY(takeArchive(QStringLiteral("whole")));
    QCOMPARE(unpack(), 0);
    QCOMPARE(unpacked(), (QStringList{QStringLiteral("Canzoni/Perché.mid"), QStringLiteral("README"),
                                      QStringLiteral("System/.hidden"), QStringLiteral("System/Corvin/Corvin.exe")}));
    QCOMPARE(contentOf(target(QStringLiteral("System/Corvin/Corvin.exe"))), QByteArray("MZ").repeated(5000));
    QVERIFY(QFileInfo(target(QStringLiteral("Empty"))).isDir());
}

void TestUnar::moreThanAThousandFilesAreUnpacked()
{
    QVERIFY(takeArchive(QStringLiteral("many")));
    QCOMPARE(unpack(), 0);
    QCOMPARE(unpacked().size(), 1200);
    QCOMPARE(contentOf(target(QStringLiteral("d3/f1011.txt"))), QByteArray("1011"));
}

void TestUnar::formatIsTakenFromTheContentNotFromTheName()
{
    QVERIFY(takeArchive(QStringLiteral("tar")));
    QCOMPARE(unpack({}), 0);
    QCOMPARE(contentOf(target(QStringLiteral("a/b.txt"))), QByteArray("tar"));
}

void TestUnar::existingFilesAreOverwritten()
{
    QFile old(target(QStringLiteral("a.txt")));
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write("a longer old content") > 0);
    old.close();
    QVERIFY(takeArchive(QStringLiteral("new")));
    QCOMPARE(unpack(), 0);
    QCOMPARE(contentOf(target(QStringLiteral("a.txt"))), QByteArray("new"));
}

void TestUnar::entriesThatLeadOutsideAreRefusedAndTheRestIsUnpacked_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("parent") << QStringLiteral("parent");
    QTest::newRow("parent from inside") << QStringLiteral("parent-from-inside");
    QTest::newRow("absolute") << QStringLiteral("absolute");
    QTest::newRow("drive letter") << QStringLiteral("drive-letter");
    QTest::newRow("backslashes") << QStringLiteral("backslashes");
}

void TestUnar::entriesThatLeadOutsideAreRefusedAndTheRestIsUnpacked()
{
    QFETCH(QString, name);
    QVERIFY(takeArchive(name));
    QVERIFY(unpack() > 0);
    QCOMPARE(unpacked(), (QStringList{QStringLiteral("after.txt"), QStringLiteral("before.txt")}));
    QVERIFY(!QFileInfo::exists(QStringLiteral("/tmp/corvin-unar-evil")));
}

void TestUnar::linksAreRefused()
{
    QVERIFY(takeArchive(QStringLiteral("links")));
    QVERIFY(unpack() > 0);
    QVERIFY(!QFileInfo(target(QStringLiteral("way"))).isSymLink());
    QVERIFY(!QFileInfo::exists(m_dir->filePath(QStringLiteral("deep/evil"))));
    QVERIFY(!QFileInfo::exists(target(QStringLiteral("hard"))));
}

void TestUnar::cutArchiveFailsAndLeavesNoHalfFile()
{
    QVERIFY(takeArchive(QStringLiteral("cut")));
    QVERIFY(unpack() > 0);
    QVERIFY(!QFileInfo::exists(target(QStringLiteral("big.bin"))));
}

void TestUnar::wrongChecksumFails()
{
    QVERIFY(takeArchive(QStringLiteral("checksum")));
    QVERIFY(unpack() > 0);
}

void TestUnar::garbageFails()
{
    QFile file(m_archive);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(20000, 'x')) > 0);
    file.close();
    QVERIFY(unpack() > 0);
    QVERIFY(unpacked().isEmpty());
}

void TestUnar::missingArchiveFails()
{
    QVERIFY(unpack() > 0);
}

void TestUnar::wrongCommandLineIsItsOwnExitCode()
{
    QProcess tool;
    tool.start(QStringLiteral(UNAR_PROGRAM), {m_archive});
    QVERIFY(tool.waitForFinished());
    QCOMPARE(tool.exitCode(), 2);
}

QTEST_GUILESS_MAIN(TestUnar)
#include "tst_unar.moc"
