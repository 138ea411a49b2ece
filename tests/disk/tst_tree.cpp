#include "disk/tree.h"

#include "support/platform.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace {

const QDir::Filters kAll = QDir::Dirs | QDir::Files | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

QString write(const QString &path)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write("x") != 1)
        qFatal("Cannot write %s", qPrintable(path));
    return path;
}

QStringList below(const QStringList &paths, const QString &root)
{
    QStringList names;
    for (const QString &path : paths) {
        if (!path.startsWith(root))
            qFatal("%s is not below %s", qPrintable(path), qPrintable(root));
        names.append(path.mid(root.size()));
    }
    names.sort();
    return names;
}

/// A file that cannot be deleted while this lives.
class KeptFile
{
public:
    explicit KeptFile(const QString &path);
    ~KeptFile();
    KeptFile(const KeptFile &) = delete;
    KeptFile &operator=(const KeptFile &) = delete;
    bool isKept() const { return m_kept; }

private:
    QFile m_file;
    bool m_kept;
};

#ifdef Q_OS_WIN
// There a file that is in use stays.
KeptFile::KeptFile(const QString &path) : m_file(path), m_kept(m_file.open(QIODevice::ReadOnly)) {}

KeptFile::~KeptFile() = default;
#else
// Root may delete what is merely write-protected; an immutable file not even root.
bool setKept(const QString &path, bool kept)
{
    if (::geteuid() == 0)
        return QProcess::execute(QStringLiteral("chattr"), {QLatin1String(kept ? "+i" : "-i"), path}) == 0;
    const QFile::Permissions readable = QFile::ReadOwner | QFile::ExeOwner;
    return QFile::setPermissions(QFileInfo(path).path(), kept ? readable : readable | QFile::WriteOwner);
}

KeptFile::KeptFile(const QString &path) : m_file(path), m_kept(setKept(path, true)) {}

KeptFile::~KeptFile()
{
    setKept(m_file.fileName(), false);
}
#endif

} // namespace

class TestFolderTools : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void folderGoesWithEverythingInIt();
    void folderThatIsNotThereCountsAsRemoved();
    void closingSlashIsForgiven();
    void emptyPathIsRefused();
    void fileIsNotAFolderAndStays();
    void linksAreRemovedAndNotFollowed();
    void folderThatIsALinkLosesTheLinkAlone_data();
    void folderThatIsALinkLosesTheLinkAlone();
    void writeProtectedFileGoesToo();
    void entryThatCannotBeRemovedIsReported();
    void manyFilesAreRemovedWhileEventsAreProcessed();
    void emptiedFolderIsThereAndEmpty();
    void emptiedFolderThatWasNotThereIsMade();
    void emptyingFailsWithoutAParent();
    void emptyingAFileFailsAndLeavesIt();
    void nameFilterPassesOnlyNamesWithADotButWalksAllFolders();
    void nameThatEndsInADotHasADot();
    void hiddenEntriesNeedTheirFilter();
    void pathsStartWithTheRootAsItWasGiven();
    void linksToFoldersAreNotEntered();
    void missingRootHasNoEntries();
    void abortEndsTheListing();
    void visitorEndsTheVisit();
    void listingProcessesEvents();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_root;
};

void TestFolderTools::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_root = m_dir->path();
}

void TestFolderTools::folderGoesWithEverythingInIt()
{
    write(m_root + QStringLiteral("/f/a.mid"));
    write(m_root + QStringLiteral("/f/.hidden"));
    write(m_root + QStringLiteral("/f/.hiddenfolder/deep/no dot"));
    write(m_root + QString::fromUtf8("/f/perché/città.mid"));
    write(m_root + QStringLiteral("/beside.mid"));
    QVERIFY(removeTree(m_root + QStringLiteral("/f")));
    QVERIFY(!QFileInfo::exists(m_root + QStringLiteral("/f")));
    QVERIFY(QFileInfo::exists(m_root + QStringLiteral("/beside.mid")));
}

void TestFolderTools::folderThatIsNotThereCountsAsRemoved()
{
    QVERIFY(removeTree(m_root + QStringLiteral("/none")));
    QVERIFY(removeTree(m_root + QStringLiteral("/none/deeper/")));
}

void TestFolderTools::closingSlashIsForgiven()
{
    write(m_root + QStringLiteral("/f/a.mid"));
    QVERIFY(removeTree(m_root + QStringLiteral("/f/")));
    QVERIFY(!QFileInfo::exists(m_root + QStringLiteral("/f")));
}

void TestFolderTools::emptyPathIsRefused()
{
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_root));
    write(m_root + QStringLiteral("/a.mid"));
    const bool removed = removeTree(QString());
    const bool emptied = emptyFolder(QString());
    const QStringList listed = listTree({QString(), kAll, {}});
    QDir::setCurrent(before);
    QVERIFY(!removed);
    QVERIFY(!emptied);
    QVERIFY(listed.isEmpty());
    QVERIFY(QFileInfo::exists(m_root + QStringLiteral("/a.mid")));
}

void TestFolderTools::fileIsNotAFolderAndStays()
{
    const QString file = write(m_root + QStringLiteral("/a.mid"));
    QVERIFY(!removeTree(file));
    QVERIFY(QFileInfo::exists(file));
}

void TestFolderTools::linksAreRemovedAndNotFollowed()
{
    const QString song = write(m_root + QStringLiteral("/elsewhere/song.mid"));
    const QString folder = m_root + QStringLiteral("/f");
    write(folder + QStringLiteral("/sub/a.mid"));
    QVERIFY(QFile::link(m_root + QStringLiteral("/elsewhere"), folder + QStringLiteral("/sub/folderlink")));
    QVERIFY(QFile::link(song, folder + QStringLiteral("/filelink")));
    QVERIFY(QFile::link(m_root + QStringLiteral("/nowhere"), folder + QStringLiteral("/broken")));
    QVERIFY(QFile::link(folder, folder + QStringLiteral("/circle")));
    QVERIFY(removeTree(folder));
    QVERIFY(!QFileInfo::exists(folder));
    QVERIFY(QFileInfo::exists(song));
}

void TestFolderTools::folderThatIsALinkLosesTheLinkAlone_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::newRow("plain") << QString();
    QTest::newRow("with a closing slash") << QStringLiteral("/");
}

void TestFolderTools::folderThatIsALinkLosesTheLinkAlone()
{
    SKIP_ON_WINDOWS("links are files of another kind here");
    QFETCH(QString, suffix);
    const QString song = write(m_root + QStringLiteral("/elsewhere/song.mid"));
    const QString link = m_root + QStringLiteral("/link");
    QVERIFY(QFile::link(m_root + QStringLiteral("/elsewhere"), link));
    QVERIFY(removeTree(link + suffix));
    QVERIFY(!QFileInfo(link).isSymLink());
    QVERIFY(QFileInfo::exists(song));
}

void TestFolderTools::writeProtectedFileGoesToo()
{
    const QString file = write(m_root + QStringLiteral("/f/system.bin"));
    QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadUser));
    QVERIFY(removeTree(m_root + QStringLiteral("/f")));
    QVERIFY(!QFileInfo::exists(file));
}

void TestFolderTools::entryThatCannotBeRemovedIsReported()
{
    const QString kept = write(m_root + QStringLiteral("/f/sub/kept.mid"));
    const QString other = write(m_root + QStringLiteral("/f/z.mid"));
    bool removed = true;
    bool emptied = true;
    {
        const KeptFile file(kept);
        if (!file.isKept())
            QSKIP("This file system has no immutable files");
        removed = removeTree(m_root + QStringLiteral("/f"));
        emptied = emptyFolder(m_root + QStringLiteral("/f"));
    }
    QVERIFY(!removed);
    QVERIFY(!emptied);
    QVERIFY(QFileInfo::exists(kept));
    QVERIFY(!QFileInfo::exists(other));
}

void TestFolderTools::manyFilesAreRemovedWhileEventsAreProcessed()
{
    constexpr int kFiles = 1200;
    for (int i = 0; i < kFiles; ++i)
        write(m_root + QStringLiteral("/f/%1.mid").arg(i));
    int rounds = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&rounds] { ++rounds; });
    timer.start(0);
    QVERIFY(removeTree(m_root + QStringLiteral("/f")));
    QVERIFY2(rounds >= kFiles, qPrintable(QString::number(rounds)));
    QVERIFY(!QFileInfo::exists(m_root + QStringLiteral("/f")));
}

void TestFolderTools::emptiedFolderIsThereAndEmpty()
{
    write(m_root + QStringLiteral("/f/sub/.hidden"));
    QVERIFY(emptyFolder(m_root + QStringLiteral("/f")));
    QVERIFY(QFileInfo(m_root + QStringLiteral("/f")).isDir());
    QVERIFY(QDir(m_root + QStringLiteral("/f")).isEmpty(kAll));
}

void TestFolderTools::emptiedFolderThatWasNotThereIsMade()
{
    QVERIFY(emptyFolder(m_root + QStringLiteral("/f/")));
    QVERIFY(QFileInfo(m_root + QStringLiteral("/f")).isDir());
}

void TestFolderTools::emptyingFailsWithoutAParent()
{
    QVERIFY(!emptyFolder(m_root + QStringLiteral("/none/f")));
    QVERIFY(!QFileInfo::exists(m_root + QStringLiteral("/none")));
}

void TestFolderTools::emptyingAFileFailsAndLeavesIt()
{
    const QString file = write(m_root + QStringLiteral("/a.mid"));
    QVERIFY(!emptyFolder(file));
    QVERIFY(QFileInfo(file).isFile());
}

void TestFolderTools::nameFilterPassesOnlyNamesWithADotButWalksAllFolders()
{
    write(m_root + QStringLiteral("/a.mid"));
    write(m_root + QStringLiteral("/no dot"));
    write(m_root + QStringLiteral("/My Songs/b.mid"));
    write(m_root + QStringLiteral("/My Songs/nodot"));
    write(m_root + QStringLiteral("/Vol.1/inner/c.mid"));
    const QStringList expected = {QStringLiteral("/My Songs/b.mid"), QStringLiteral("/Vol.1"),
                                  QStringLiteral("/Vol.1/inner/c.mid"), QStringLiteral("/a.mid")};
    QCOMPARE(below(listTree({m_root, kAll, {QStringLiteral("*.*")}}), m_root), expected);
}

void TestFolderTools::nameThatEndsInADotHasADot()
{
    SKIP_ON_WINDOWS("no name ends in a dot here");
    write(m_root + QStringLiteral("/c."));
    QCOMPARE(below(listTree({m_root, kAll, {QStringLiteral("*.*")}}), m_root), QStringList{QStringLiteral("/c.")});
}

void TestFolderTools::hiddenEntriesNeedTheirFilter()
{
    write(m_root + QStringLiteral("/.hidden"));
    write(m_root + QStringLiteral("/.folder/a.mid"));
    QVERIFY(listTree({m_root, QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot}).isEmpty());
    const QStringList expected = {QStringLiteral("/.folder"), QStringLiteral("/.folder/a.mid"),
                                  QStringLiteral("/.hidden")};
    QCOMPARE(below(listTree({m_root, kAll, {}}), m_root), expected);
}

void TestFolderTools::pathsStartWithTheRootAsItWasGiven()
{
    write(m_root + QStringLiteral("/s/a.mid"));
    const QStringList expected = {QStringLiteral("s"), QStringLiteral("s/a.mid")};
    QCOMPARE(below(listTree({m_root + QLatin1Char('/'), kAll, {}}), m_root + QLatin1Char('/')), expected);
}

void TestFolderTools::linksToFoldersAreNotEntered()
{
    write(m_root + QStringLiteral("/elsewhere/song.mid"));
    QVERIFY(QDir().mkpath(m_root + QStringLiteral("/f")));
    QVERIFY(QFile::link(m_root + QStringLiteral("/elsewhere"), m_root + QStringLiteral("/f/link")));
    QCOMPARE(listTree({m_root + QStringLiteral("/f"), kAll, {}}), QStringList{m_root + QStringLiteral("/f/link")});
}

void TestFolderTools::missingRootHasNoEntries()
{
    QVERIFY(listTree({m_root + QStringLiteral("/none"), kAll, {}}).isEmpty());
    QVERIFY(walkTree({m_root + QStringLiteral("/none"), kAll}, [](const QFileInfo &) { return false; }));
}

void TestFolderTools::abortEndsTheListing()
{
    for (int i = 0; i < 10; ++i)
        write(m_root + QStringLiteral("/%1.mid").arg(i));
    bool abort = false;
    QTimer::singleShot(0, this, [&abort] { abort = true; });
    QCOMPARE(listTree({m_root, kAll}, [&abort] { return !abort; }).size(), 1);
    QVERIFY(listTree({m_root, kAll}, [&abort] { return !abort; }).isEmpty());
}

void TestFolderTools::visitorEndsTheVisit()
{
    for (int i = 0; i < 10; ++i)
        write(m_root + QStringLiteral("/%1.mid").arg(i));
    int visits = 0;
    QVERIFY(!walkTree({m_root, kAll}, [&visits](const QFileInfo &) { return ++visits < 3; }));
    QCOMPARE(visits, 3);
}

void TestFolderTools::listingProcessesEvents()
{
    constexpr int kFiles = 50;
    for (int i = 0; i < kFiles; ++i)
        write(m_root + QStringLiteral("/%1.mid").arg(i));
    int rounds = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&rounds] { ++rounds; });
    timer.start(0);
    QCOMPARE(listTree({m_root, kAll, {}}).size(), kFiles);
    QVERIFY2(rounds >= kFiles, qPrintable(QString::number(rounds)));
}

QTEST_GUILESS_MAIN(TestFolderTools)
#include "tst_tree.moc"
