#include <QDir>
#include <QDirIterator>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString kPython = QStringLiteral("/usr/bin/python3");

/// Runs a few lines of Python with the archive's path as first argument; they write it with its standard library.
bool makeArchive(const QString &path, const QString &lines)
{
    QProcess python;
    python.start(kPython, {QStringLiteral("-c"), QStringLiteral("import sys, zipfile, tarfile, io\n") + lines, path});
    python.waitForFinished();
    if (python.exitCode() != 0)
        qWarning() << python.readAllStandardError();
    return python.exitStatus() == QProcess::NormalExit && python.exitCode() == 0;
}

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
    QVERIFY(makeArchive(m_archive, QStringLiteral(R"(
z = zipfile.ZipFile(sys.argv[1], 'w', zipfile.ZIP_DEFLATED)
z.writestr('System/Corvin/Corvin.exe', b'MZ' * 5000)
z.writestr('System/.hidden', b'h')
z.writestr('README', b'no dot')
z.writestr('Canzoni/Perch\u00e9.mid', b'MThd')
z.writestr('Empty/', b'')
z.close())")));
    QCOMPARE(unpack(), 0);
    QCOMPARE(unpacked(), (QStringList{QStringLiteral("Canzoni/Perché.mid"), QStringLiteral("README"),
                                      QStringLiteral("System/.hidden"), QStringLiteral("System/Corvin/Corvin.exe")}));
    QCOMPARE(contentOf(target(QStringLiteral("System/Corvin/Corvin.exe"))), QByteArray("MZ").repeated(5000));
    QVERIFY(QFileInfo(target(QStringLiteral("Empty"))).isDir());
}

void TestUnar::moreThanAThousandFilesAreUnpacked()
{
    QVERIFY(makeArchive(m_archive, QStringLiteral(R"(
z = zipfile.ZipFile(sys.argv[1], 'w')
for i in range(1200): z.writestr('d%d/f%d.txt' % (i % 7, i), b'%d' % i)
z.close())")));
    QCOMPARE(unpack(), 0);
    QCOMPARE(unpacked().size(), 1200);
    QCOMPARE(contentOf(target(QStringLiteral("d3/f1011.txt"))), QByteArray("1011"));
}

void TestUnar::formatIsTakenFromTheContentNotFromTheName()
{
    QVERIFY(makeArchive(m_archive, QStringLiteral(R"(
t = tarfile.open(sys.argv[1], 'w:gz')
info = tarfile.TarInfo('a/b.txt'); info.size = 3
t.addfile(info, io.BytesIO(b'tar'))
t.close())")));
    QCOMPARE(unpack({}), 0);
    QCOMPARE(contentOf(target(QStringLiteral("a/b.txt"))), QByteArray("tar"));
}

void TestUnar::existingFilesAreOverwritten()
{
    QFile old(target(QStringLiteral("a.txt")));
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write("a longer old content") > 0);
    old.close();
    QVERIFY(makeArchive(
        m_archive, QStringLiteral("z = zipfile.ZipFile(sys.argv[1], 'w'); z.writestr('a.txt', b'new'); z.close()")));
    QCOMPARE(unpack(), 0);
    QCOMPARE(contentOf(target(QStringLiteral("a.txt"))), QByteArray("new"));
}

void TestUnar::entriesThatLeadOutsideAreRefusedAndTheRestIsUnpacked_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("parent") << QStringLiteral("../evil");
    QTest::newRow("parent from inside") << QStringLiteral("a/../../evil");
    QTest::newRow("absolute") << QStringLiteral("/tmp/corvin-unar-evil");
    QTest::newRow("drive letter") << QStringLiteral("C:/evil");
    QTest::newRow("backslashes") << QStringLiteral("..\\\\..\\\\evil");
}

void TestUnar::entriesThatLeadOutsideAreRefusedAndTheRestIsUnpacked()
{
    QFETCH(QString, name);
    QVERIFY(makeArchive(m_archive, QStringLiteral(R"(
z = zipfile.ZipFile(sys.argv[1], 'w')
z.writestr('before.txt', b'1')
z.writestr('%1', b'evil')
z.writestr('after.txt', b'2')
z.close())")
                                       .arg(name)));
    QVERIFY(unpack() > 0);
    QCOMPARE(unpacked(), (QStringList{QStringLiteral("after.txt"), QStringLiteral("before.txt")}));
    QVERIFY(!QFileInfo::exists(QStringLiteral("/tmp/corvin-unar-evil")));
}

void TestUnar::linksAreRefused()
{
    QVERIFY(makeArchive(m_archive, QStringLiteral(R"(
t = tarfile.open(sys.argv[1], 'w')
link = tarfile.TarInfo('way'); link.type = tarfile.SYMTYPE; link.linkname = '..'
t.addfile(link)
info = tarfile.TarInfo('way/evil'); info.size = 4
t.addfile(info, io.BytesIO(b'evil'))
hard = tarfile.TarInfo('hard'); hard.type = tarfile.LNKTYPE; hard.linkname = '/etc/hostname'
t.addfile(hard)
t.close())")));
    QVERIFY(unpack() > 0);
    QVERIFY(!QFileInfo(target(QStringLiteral("way"))).isSymLink());
    QVERIFY(!QFileInfo::exists(m_dir->filePath(QStringLiteral("deep/evil"))));
    QVERIFY(!QFileInfo::exists(target(QStringLiteral("hard"))));
}

void TestUnar::cutArchiveFailsAndLeavesNoHalfFile()
{
    QVERIFY(makeArchive(m_archive, QStringLiteral(R"(
import os
z = zipfile.ZipFile(sys.argv[1], 'w', zipfile.ZIP_DEFLATED)
z.writestr('big.bin', os.urandom(200000))
z.close()
open(sys.argv[1], 'r+b').truncate(100000))")));
    QVERIFY(unpack() > 0);
    QVERIFY(!QFileInfo::exists(target(QStringLiteral("big.bin"))));
}

void TestUnar::wrongChecksumFails()
{
    QVERIFY(makeArchive(m_archive, QStringLiteral(R"(
z = zipfile.ZipFile(sys.argv[1], 'w')
z.writestr('a.txt', b'AAAAAAAAAAAAAAAA')
z.close()
data = open(sys.argv[1], 'rb').read().replace(b'AAAAAAAAAAAAAAAA', b'AAAAAAAABAAAAAAA')
open(sys.argv[1], 'wb').write(data))")));
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
