#include "disk/filecopy.h"

#include "support/platform.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#endif

namespace {

constexpr int kBlock = 1024 * 1024;

QByteArray pattern(int size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (int i = 0; i < size; ++i)
        bytes[i] = char((i * 31 + i / 251) & 0xff);
    return bytes;
}

} // namespace

class TestFileCopy : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void contentArrivesWhatever_data();
    void contentArrivesWhatever();
    void eventsAreProcessedBetweenBlocksOnly_data();
    void eventsAreProcessedBetweenBlocksOnly();
    void permissionsAreCopied();
    void existingDestinationIsNeverTouched();
    void existingDestinationComesBeforeAnUnreadableSource();
    void unreadableSourceLeavesNothing_data();
    void unreadableSourceLeavesNothing();
    void missingFolderCannotTakeAFile();
    void fullDiskLeavesNothingHalfWritten();
    void replacedFileHasTheNewContent();
    void readOnlyFileIsReplaced();
    void replacingLeavesNoOtherFile();
    void replacingPassesByNamesThatAreTaken();
    void longestNameCanBeReplaced();
    void replacingByAnUnreadableSourceKeepsTheOldFile();
    void folderIsNeverReplaced();
    void fileIsNeverReplacedByItself();
    void sameFileIsKnownThroughLinks();

private:
    QString path(const QString &name) const { return m_dir->filePath(name); }
    QString write(const QString &name, const QByteArray &content) const;
    QByteArray read(const QString &name) const;
    QStringList names() const { return QDir(m_dir->path()).entryList(QDir::Files, QDir::Name); }

    QScopedPointer<QTemporaryDir> m_dir;
};

void TestFileCopy::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
}

QString TestFileCopy::write(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        QTest::qFail("cannot write", __FILE__, __LINE__);
    return path(name);
}

QByteArray TestFileCopy::read(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(missing)");
}

void TestFileCopy::contentArrivesWhatever_data()
{
    QTest::addColumn<int>("size");
    const QList<int> sizes = {0, 1, kBlock - 1, kBlock, kBlock + 1, 2 * kBlock, 3 * kBlock + 7};
    for (int size : sizes)
        QTest::addRow("%d bytes", size) << size;
}

void TestFileCopy::contentArrivesWhatever()
{
    QFETCH(int, size);
    const QString source = write(QStringLiteral("source"), pattern(size));
    QCOMPARE(copyFile(source, path(QStringLiteral("copy"))), CopyResult::Copied);
    QCOMPARE(read(QStringLiteral("copy")), pattern(size));
    QCOMPARE(read(QStringLiteral("source")), pattern(size));
}

void TestFileCopy::eventsAreProcessedBetweenBlocksOnly_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("rounds");
    QTest::newRow("empty") << 0 << 0;
    QTest::newRow("one block") << kBlock << 0;
    QTest::newRow("two blocks") << kBlock + 1 << 1;
    QTest::newRow("three blocks") << 3 * kBlock << 2;
}

void TestFileCopy::eventsAreProcessedBetweenBlocksOnly()
{
    QFETCH(int, size);
    QFETCH(int, rounds);
    int seen = 0;
    const QString source = write(QStringLiteral("source"), pattern(size));
    QCOMPARE(copyFile(source, path(QStringLiteral("copy")), [&seen] { return ++seen > 0; }), CopyResult::Copied);
    QCOMPARE(seen, rounds);
}

void TestFileCopy::permissionsAreCopied()
{
    const QString source = write(QStringLiteral("source"), "x");
    const QFile::Permissions wanted = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    QVERIFY(QFile::setPermissions(source, wanted));
    QCOMPARE(copyFile(source, path(QStringLiteral("copy"))), CopyResult::Copied);
    QCOMPARE(QFile::permissions(path(QStringLiteral("copy"))), QFile::permissions(source));
}

void TestFileCopy::existingDestinationIsNeverTouched()
{
    const QString source = write(QStringLiteral("source"), "new");
    const QString old = write(QStringLiteral("old"), "old content");
    QCOMPARE(copyFile(source, old), CopyResult::DestinationExists);
    QCOMPARE(read(QStringLiteral("old")), QByteArrayLiteral("old content"));
    QVERIFY(QDir().mkpath(path(QStringLiteral("folder"))));
    QCOMPARE(copyFile(source, path(QStringLiteral("folder"))), CopyResult::DestinationExists);
}

void TestFileCopy::existingDestinationComesBeforeAnUnreadableSource()
{
    const QString old = write(QStringLiteral("old"), "old content");
    QCOMPARE(copyFile(path(QStringLiteral("missing")), old), CopyResult::DestinationExists);
    QCOMPARE(read(QStringLiteral("old")), QByteArrayLiteral("old content"));
}

void TestFileCopy::unreadableSourceLeavesNothing_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("missing") << QStringLiteral("missing");
    QTest::newRow("a folder") << QStringLiteral("folder");
#ifdef Q_OS_UNIX
    QTest::newRow("dangling link") << QStringLiteral("link");
    QTest::newRow("a pipe nobody writes to") << QStringLiteral("pipe");
    QTest::newRow("opens, but does not read") << QStringLiteral("memory");
#endif
}

void TestFileCopy::unreadableSourceLeavesNothing()
{
    QFETCH(QString, kind);
    QString source = path(kind);
    if (kind == QLatin1String("link"))
        QVERIFY(QFile::link(path(QStringLiteral("nothing")), source));
    else if (kind == QLatin1String("folder"))
        QVERIFY(QDir().mkpath(source));
#ifdef Q_OS_UNIX
    else if (kind == QLatin1String("pipe"))
        QCOMPARE(::mkfifo(QFile::encodeName(source).constData(), 0600), 0);
    else if (kind == QLatin1String("memory"))
        source = QStringLiteral("/proc/self/mem"); // a regular file whose first byte cannot be read
#endif
    QCOMPARE(copyFile(source, path(QStringLiteral("copy"))), CopyResult::SourceUnreadable);
    QVERIFY(!QFileInfo::exists(path(QStringLiteral("copy"))));
}

void TestFileCopy::missingFolderCannotTakeAFile()
{
    const QString source = write(QStringLiteral("source"), "x");
    QCOMPARE(copyFile(source, path(QStringLiteral("no folder/copy"))), CopyResult::NotCreated);
    QVERIFY(!QFileInfo::exists(path(QStringLiteral("no folder"))));
}

void TestFileCopy::fullDiskLeavesNothingHalfWritten()
{
#ifdef Q_OS_UNIX
    const QString source = write(QStringLiteral("source"), pattern(3 * kBlock));
    rlimit before = {};
    QCOMPARE(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto oldHandler = ::signal(SIGXFSZ, SIG_IGN);
    rlimit small = before;
    small.rlim_cur = rlim_t(2) * kBlock;
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const CopyResult result = copyFile(source, path(QStringLiteral("copy")));
    ::setrlimit(RLIMIT_FSIZE, &before);
    ::signal(SIGXFSZ, oldHandler);
    QCOMPARE(result, CopyResult::NotWritten);
    QCOMPARE(names(), QStringList{QStringLiteral("source")});
#else
    QSKIP("No limit on the size of a file here");
#endif
}

void TestFileCopy::replacedFileHasTheNewContent()
{
    const QString source = write(QStringLiteral("source"), pattern(2 * kBlock));
    const QString old = write(QStringLiteral("old"), "old");
    QCOMPARE(replaceFile(source, old), CopyResult::Copied);
    QCOMPARE(read(QStringLiteral("old")), pattern(2 * kBlock));
    QCOMPARE(read(QStringLiteral("source")), pattern(2 * kBlock));
}

void TestFileCopy::readOnlyFileIsReplaced()
{
    const QString source = write(QStringLiteral("source"), "new");
    const QString old = write(QStringLiteral("old"), "old");
    QVERIFY(QFile::setPermissions(old, QFileDevice::ReadOwner | QFileDevice::ReadUser));
    QCOMPARE(replaceFile(source, old), CopyResult::Copied);
    QCOMPARE(read(QStringLiteral("old")), QByteArray("new"));
}

void TestFileCopy::replacingLeavesNoOtherFile()
{
    const QString source = write(QStringLiteral("source"), "new");
    QCOMPARE(replaceFile(source, write(QStringLiteral("old"), "old")), CopyResult::Copied);
    QCOMPARE(names(), (QStringList{QStringLiteral("old"), QStringLiteral("source")}));
}

void TestFileCopy::replacingPassesByNamesThatAreTaken()
{
    write(QStringLiteral("corvin4-copy0.tmp"), "left over");
    const QString source = write(QStringLiteral("source"), "new");
    QCOMPARE(replaceFile(source, write(QStringLiteral("old"), "old")), CopyResult::Copied);
    QCOMPARE(read(QStringLiteral("old")), QByteArrayLiteral("new"));
    QCOMPARE(read(QStringLiteral("corvin4-copy0.tmp")), QByteArrayLiteral("left over"));
}

void TestFileCopy::longestNameCanBeReplaced()
{
    const QString name = QString(251, QLatin1Char('n')) + QStringLiteral(".mid");
    const QString source = write(QStringLiteral("source"), "new");
    QCOMPARE(replaceFile(source, write(name, "old")), CopyResult::Copied);
    QCOMPARE(read(name), QByteArrayLiteral("new"));
}

void TestFileCopy::replacingByAnUnreadableSourceKeepsTheOldFile()
{
    const QString old = write(QStringLiteral("old"), "old");
    QCOMPARE(replaceFile(path(QStringLiteral("missing")), old), CopyResult::SourceUnreadable);
#ifdef Q_OS_UNIX
    QCOMPARE(replaceFile(QStringLiteral("/proc/self/mem"), old), CopyResult::SourceUnreadable);
#endif
    QCOMPARE(read(QStringLiteral("old")), QByteArrayLiteral("old"));
    QCOMPARE(names(), QStringList{QStringLiteral("old")});
}

void TestFileCopy::folderIsNeverReplaced()
{
    const QString source = write(QStringLiteral("source"), "new");
    QVERIFY(QDir().mkpath(path(QStringLiteral("folder"))));
    QCOMPARE(replaceFile(source, path(QStringLiteral("folder"))), CopyResult::DestinationExists);
    QVERIFY(QFileInfo(path(QStringLiteral("folder"))).isDir());
    QCOMPARE(names(), QStringList{QStringLiteral("source")});
}

void TestFileCopy::fileIsNeverReplacedByItself()
{
    SKIP_ON_WINDOWS("links are files of another kind here");
    const QString file = write(QStringLiteral("file"), "only one");
    QVERIFY(QFile::link(file, path(QStringLiteral("link"))));
    QCOMPARE(replaceFile(file, file), CopyResult::DestinationExists);
    QCOMPARE(replaceFile(path(QStringLiteral("link")), file), CopyResult::DestinationExists);
    QCOMPARE(read(QStringLiteral("file")), QByteArrayLiteral("only one"));
}

void TestFileCopy::sameFileIsKnownThroughLinks()
{
    SKIP_ON_WINDOWS("links are files of another kind here");
    const QString file = write(QStringLiteral("file"), "x");
    const QString other = write(QStringLiteral("other"), "x");
    QVERIFY(QFile::link(file, path(QStringLiteral("link"))));
    QVERIFY(isSameFile(file, file));
    QVERIFY(isSameFile(path(QStringLiteral("link")), file));
    QVERIFY(isSameFile(m_dir->path() + QStringLiteral("/./file"), file));
    QVERIFY(!isSameFile(file, other));
    QVERIFY(!isSameFile(path(QStringLiteral("missing")), path(QStringLiteral("missing"))));
}

QTEST_GUILESS_MAIN(TestFileCopy)
#include "tst_filecopy.moc"
