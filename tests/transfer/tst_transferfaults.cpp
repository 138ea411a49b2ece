#include "opentransfer.h"
#include "support/boxanswerer.h"
#include "support/exfatvolume.h"
#include "support/platform.h"
#include "support/simulatedplayer.h"

#include <QDirIterator>
#include <QStorageInfo>
#include <QTableView>
#include <QtTest>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace {

constexpr int kMegabyte = 1024 * 1024;
const QString kExists = QStringLiteral("File esistente");
const QString kEnd = QStringLiteral("label Se hai terminato clicca su FINE");

/// A mounted exFAT volume that the program takes for the player.
class MountedPlayer
{
public:
    explicit MountedPlayer(int megabytes) : volume(megabytes)
    {
        add(QStringLiteral(".windows-label"), "CORVIN4\n");
        qputenv("CORVIN_VOLUMES", QFile::encodeName(volume.root()));
    }
    ~MountedPlayer() { qputenv("CORVIN_VOLUMES", "/nonexistent"); }
    MountedPlayer(const MountedPlayer &) = delete;
    MountedPlayer &operator=(const MountedPlayer &) = delete;

    bool add(const QString &name, const QByteArray &content) const
    {
        QDir().mkpath(QFileInfo(volume.path(name)).absolutePath());
        QFile file(volume.path(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }
    QByteArray content(const QString &name) const
    {
        QFile file(volume.path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(missing)");
    }
    /// Leaves about @p bytes free.
    void fillUpTo(qint64 bytes) const
    {
        const qint64 room = QStorageInfo(volume.root()).bytesAvailable();
        QVERIFY(room > bytes);
        QVERIFY(add(QStringLiteral("filling.bin"), QByteArray(int(room - bytes), 'f')));
    }

    ExFatVolume volume;
};

QStringList everyFileBelow(const QString &folder)
{
    QStringList found;
    QDirIterator entries(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (entries.hasNext())
        found.append(QDir(folder).relativeFilePath(entries.next()));
    found.sort();
    return found;
}

} // namespace

/// What can go wrong with a disk, with files, and with where a drop leads: the program stays usable, the drop ends, and
/// no source is ever lost.
class TestTransferFaults : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void songsReachARealVolume();
    void playerPulledInTheMiddle();
    void playerPulledBeforeTheDrop();
    void playerPluggedInAgainTakesTheNextDrop();
    void playerPulledDuringTheQuestion();
    void playerPulledDuringADeletion();
    void fullVolumeHasNoHalfFile();
    void fullVolumeKeepsTheOldFileOfAnOverwrite();
    void overwriteThatFitsOnlyInPlaceOfTheOldFile();
    void namesThatTheVolumeRefusesAreSkipped_data();
    void namesThatTheVolumeRefusesAreSkipped();
    void otherCaseOfANameIsTheSameFileOnTheVolume();
    void ownFileInAnotherCaseIsNotLost();

    void unreadableFileIsCountedAndSkipped();
    void unreadableSourceKeepsTheFileItWouldOverwrite();
    void pipeDoesNotStopTheDrop();
    void fileDroppedOntoItselfStays();
    void folderDroppedOntoItselfStays();
    void folderDroppedIntoItsOwnSubFolderIsNotCopied();
    void rootDroppedOntoThePlayerIsNotCopied();
    void linkToAFolderAroundItIsNotEntered_data();
    void linkToAFolderAroundItIsNotEntered();
    void linkToThePlayerIsNotCopiedIntoIt();
    void droppedLinkToAFolderIsCopied();
    void linkThatPointsToItselfIsSkipped();
    void dropWithoutAPlayerWritesNowhere();
    void vanishedCurrentFolderIsSurvived();

private:
    void addSongs(int count, int size = 1000);
    bool needVolume(int megabytes);

    QScopedPointer<PcFolder> m_pc;
    QScopedPointer<SimulatedPlayer> m_player;
    QScopedPointer<MountedPlayer> m_mounted;
    QScopedPointer<OpenTransfer> m_open;
};

#define NEED_VOLUME(megabytes)                                                                                         \
    QString why;                                                                                                       \
    if (!ExFatVolume::isPossible(&why))                                                                                \
        QSKIP(qPrintable(QStringLiteral("no exFAT volume can be mounted: ") + why));                                   \
    QVERIFY(needVolume(megabytes))

void TestTransferFaults::init()
{
    m_pc.reset(new PcFolder);
    m_player.reset(new SimulatedPlayer);
    m_open.reset(new OpenTransfer(m_player->root()));
}

void TestTransferFaults::cleanup()
{
    m_open.reset();
    m_mounted.reset();
    m_player.reset();
    m_pc.reset();
}

bool TestTransferFaults::needVolume(int megabytes)
{
    m_open.reset();
    m_player.reset();
    m_mounted.reset(new MountedPlayer(megabytes));
    if (!m_mounted->volume.isMounted())
        qWarning("%s", qPrintable(m_mounted->volume.error()));
    m_open.reset(new OpenTransfer(m_mounted->volume.root()));
    return m_mounted->volume.isMounted();
}

void TestTransferFaults::addSongs(int count, int size)
{
    for (int i = 0; i < count; ++i)
        m_pc->addFile(QStringLiteral("album/song %1.mid").arg(i, 3, 10, QLatin1Char('0')), QByteArray(size, char(i)));
}

void TestTransferFaults::songsReachARealVolume()
{
    NEED_VOLUME(32);
    addSongs(20);
    m_open->drop({m_pc->path(QStringLiteral("album"))});
    QVERIFY(m_open->page.isFinishPending());
    // The label said so: all is on the medium, and the volume can go at once.
    m_open.reset();
    QVERIFY(m_mounted->volume.unmount());
    QVERIFY(m_mounted->volume.mount());
    for (int i = 0; i < 20; ++i)
        QCOMPARE(m_mounted->content(QStringLiteral("album/song %1.mid").arg(i, 3, 10, QLatin1Char('0'))),
                 QByteArray(1000, char(i)));
}

void TestTransferFaults::playerPulledInTheMiddle()
{
    NEED_VOLUME(32);
    addSongs(30);
    int seen = 0;
    connect(&m_open->page, &Transfer::increaseProgressBarVal, this, [&] {
        if (++seen == 10)
            m_mounted->volume.pull();
    });
    TransferRecorder recorder(m_open->page);
    m_open->drop({m_pc->path(QStringLiteral("album"))});
    QCOMPARE(seen, 30);
    QVERIFY(recorder.lines().contains(kEnd));
    QVERIFY(!m_open->page.busy);
    // Where the volume was is a folder of the PC: nothing was written there, and no source is gone.
    QCOMPARE(everyFileBelow(m_mounted->volume.root()), QStringList());
    QCOMPARE(everyFileBelow(m_pc->path(QStringLiteral("album"))).size(), 30);
    m_open->page.on_pushBtnBack_clicked();
    m_open.reset();
    QVERIFY(m_mounted->volume.mount());
    QCOMPARE(everyFileBelow(m_mounted->volume.path(QStringLiteral("album"))).size(), 9);
}

void TestTransferFaults::playerPulledBeforeTheDrop()
{
    NEED_VOLUME(32);
    addSongs(2);
    QVERIFY(m_mounted->volume.pull());
    TransferRecorder recorder(m_open->page);
    m_open->drop({m_pc->path(QStringLiteral("album"))});
    QCOMPARE(recorder.log().textsStartingWith(QStringLiteral("!QFile::copy - src :")).size(), 2);
    QCOMPARE(QDir(m_mounted->volume.root()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
}

void TestTransferFaults::playerPluggedInAgainTakesTheNextDrop()
{
    NEED_VOLUME(32);
    addSongs(2);
    QVERIFY(m_mounted->volume.pull());
    // Another volume takes the number that the player had.
    const ExFatVolume other(16, QStringLiteral("OTHER"));
    QVERIFY(m_mounted->volume.mount());
    m_open->drop({m_pc->path(QStringLiteral("album"))});
    QCOMPARE(everyFileBelow(m_mounted->volume.path(QStringLiteral("album"))).size(), 2);
}

void TestTransferFaults::playerPulledDuringTheQuestion()
{
    NEED_VOLUME(32);
    QVERIFY(m_mounted->add(QStringLiteral("a.mid"), "player"));
    BoxAnswerer answerer;
    answerer.answer(kExists, QStringLiteral("Si"));
    answerer.whenShown([this](QMessageBox *) { m_mounted->volume.pull(); });
    TransferRecorder recorder(m_open->page);
    m_open->drop({m_pc->addFile(QStringLiteral("a.mid"))});
    QVERIFY(recorder.lines().contains(kEnd));
    QCOMPARE(everyFileBelow(m_mounted->volume.root()), QStringList());
    m_open.reset();
    QVERIFY(m_mounted->volume.mount());
    QCOMPARE(m_mounted->content(QStringLiteral("a.mid")), QByteArrayLiteral("player"));
}

void TestTransferFaults::playerPulledDuringADeletion()
{
    NEED_VOLUME(32);
    QVERIFY(m_mounted->add(QStringLiteral("a.mid"), "player"));
    QVERIFY(m_open->select({QStringLiteral("a.mid")}));
    BoxAnswerer answerer;
    answerer.answer(QStringLiteral("Cancella file"), QStringLiteral("Yes"));
    answerer.whenShown([this](QMessageBox *) {
        m_mounted->volume.pull();
        // What now bears the name is the PC's.
        QVERIFY(m_mounted->add(QStringLiteral("a.mid"), "pc"));
    });
    TransferRecorder recorder(m_open->page);
    m_open->page.on_actionDeleteSelectedItems_triggered();
    QVERIFY(recorder.lines().contains(kEnd));
    QCOMPARE(m_mounted->content(QStringLiteral("a.mid")), QByteArrayLiteral("pc"));
    m_open.reset();
    QVERIFY(QFile::remove(m_mounted->volume.path(QStringLiteral("a.mid"))));
}

void TestTransferFaults::fullVolumeHasNoHalfFile()
{
    NEED_VOLUME(16);
    addSongs(12, 2 * kMegabyte);
    TransferRecorder recorder(m_open->page);
    m_open->drop({m_pc->path(QStringLiteral("album"))});
    QCOMPARE(recorder.count(QStringLiteral("increase")), 12);
    QVERIFY(recorder.lines().contains(kEnd));
    const QStringList arrived = everyFileBelow(m_mounted->volume.path(QStringLiteral("album")));
    QVERIFY(!arrived.isEmpty() && arrived.size() < 12);
    for (const QString &name : arrived) {
        QCOMPARE(QFileInfo(m_mounted->volume.path(QStringLiteral("album/") + name)).size(), qint64(2 * kMegabyte));
        QCOMPARE(m_mounted->content(QStringLiteral("album/") + name), m_pc->content(QStringLiteral("album/") + name));
    }
    QCOMPARE(recorder.log().textsStartingWith(QStringLiteral("!QFile::copy - src :")).size(), 12 - arrived.size());
}

void TestTransferFaults::fullVolumeKeepsTheOldFileOfAnOverwrite()
{
    NEED_VOLUME(16);
    const QByteArray old(kMegabyte, 'o');
    QVERIFY(m_mounted->add(QStringLiteral("a.mid"), old));
    m_mounted->fillUpTo(qint64(2) * kMegabyte);
    BoxAnswerer answerer;
    answerer.answer(kExists, QStringLiteral("Si"));
    TransferRecorder recorder(m_open->page);
    m_open->drop({m_pc->addFile(QStringLiteral("a.mid"), QByteArray(8 * kMegabyte, 'n'))});
    QVERIFY(recorder.lines().contains(kEnd));
    QCOMPARE(m_mounted->content(QStringLiteral("a.mid")), old);
    QCOMPARE(everyFileBelow(m_mounted->volume.root()),
             (QStringList{QStringLiteral(".windows-label"), QStringLiteral("a.mid"), QStringLiteral("filling.bin")}));
}

void TestTransferFaults::overwriteThatFitsOnlyInPlaceOfTheOldFile()
{
    NEED_VOLUME(16);
    QVERIFY(m_mounted->add(QStringLiteral("a.mid"), QByteArray(6 * kMegabyte, 'o')));
    m_mounted->fillUpTo(qint64(2) * kMegabyte);
    BoxAnswerer answerer;
    answerer.answer(kExists, QStringLiteral("Si"));
    const QByteArray fresh(6 * kMegabyte, 'n');
    m_open->drop({m_pc->addFile(QStringLiteral("a.mid"), fresh)});
    QCOMPARE(m_mounted->content(QStringLiteral("a.mid")), fresh);
    QCOMPARE(everyFileBelow(m_mounted->volume.root()).size(), 3);
}

void TestTransferFaults::namesThatTheVolumeRefusesAreSkipped_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("colon") << QStringLiteral("side a: one.mid");
    QTest::newRow("question mark") << QStringLiteral("why?.mid");
    QTest::newRow("asterisk") << QStringLiteral("*star*.mid");
    QTest::newRow("line end") << QStringLiteral("two\nlines.mid");
}

void TestTransferFaults::namesThatTheVolumeRefusesAreSkipped()
{
    QFETCH(QString, name);
    NEED_VOLUME(16);
    const QString refused = m_pc->addFile(QStringLiteral("album/") + name);
    m_pc->addFile(QStringLiteral("album/good.mid"));
    m_pc->addFile(QStringLiteral("album/") + name + QStringLiteral(" folder/song.mid"));
    TransferRecorder recorder(m_open->page);
    m_open->drop({m_pc->path(QStringLiteral("album"))});
    QCOMPARE(everyFileBelow(m_mounted->volume.path(QStringLiteral("album"))), QStringList{QStringLiteral("good.mid")});
    QCOMPARE(recorder.count(QStringLiteral("increase")), 3);
    QCOMPARE(recorder.log().textsStartingWith(QStringLiteral("!QFile::copy - src :")).size(), 2);
    QVERIFY(recorder.lines().contains(kEnd));
    QVERIFY(QFileInfo::exists(refused));
}

void TestTransferFaults::otherCaseOfANameIsTheSameFileOnTheVolume()
{
    NEED_VOLUME(16);
    QVERIFY(m_mounted->add(QStringLiteral("SONG.MID"), "player"));
    BoxAnswerer answerer;
    answerer.answer(kExists, QStringLiteral("Si"));
    m_open->drop({m_pc->addFile(QStringLiteral("song.mid"), "pc")});
    QCOMPARE(m_mounted->content(QStringLiteral("song.mid")), QByteArrayLiteral("pc"));
    QCOMPARE(everyFileBelow(m_mounted->volume.root()).size(), 2); // it and the label
}

void TestTransferFaults::ownFileInAnotherCaseIsNotLost()
{
    NEED_VOLUME(16);
    QVERIFY(m_mounted->add(QStringLiteral("Song.mid"), "only one"));
    BoxAnswerer answerer;
    answerer.answerAlways(kExists, QStringLiteral("Si,Tutti"));
    m_open->drop({m_mounted->volume.path(QStringLiteral("SONG.MID"))});
    QCOMPARE(m_mounted->content(QStringLiteral("song.mid")), QByteArrayLiteral("only one"));
    QCOMPARE(everyFileBelow(m_mounted->volume.root()).size(), 2);
}

void TestTransferFaults::unreadableFileIsCountedAndSkipped()
{
#ifdef Q_OS_WIN
    QSKIP("No file that opens and cannot be read here");
#endif
    // Root reads whatever the permissions say; the start of a process's memory nobody can read.
    TransferRecorder recorder(m_open->page);
    m_open->drop({QStringLiteral("/proc/self/mem"), m_pc->addFile(QStringLiteral("a.mid"))});
    QVERIFY(recorder.lines().contains(QStringLiteral("label Copia di 2 file su Corvin4 in corso ...")));
    QCOMPARE(recorder.count(QStringLiteral("increase")), 2);
    QCOMPARE(m_player->files(), QStringList{QStringLiteral("a.mid")});
    QVERIFY(recorder.log().contains(QtDebugMsg, QStringLiteral("!QFile::copy - src : \"/proc/self/mem\"")));
}

void TestTransferFaults::unreadableSourceKeepsTheFileItWouldOverwrite()
{
#ifdef Q_OS_WIN
    QSKIP("No file that opens and cannot be read here");
#endif
    m_player->addFile(QStringLiteral("mem"), "player");
    BoxAnswerer answerer;
    answerer.answer(kExists, QStringLiteral("Si"));
    m_open->drop({QStringLiteral("/proc/self/mem")});
    QCOMPARE(m_player->content(QStringLiteral("mem")), QByteArrayLiteral("player"));
    QCOMPARE(m_player->files().size(), 1);
}

void TestTransferFaults::pipeDoesNotStopTheDrop()
{
#ifdef Q_OS_UNIX
    const QString pipe = m_pc->path(QStringLiteral("pipe"));
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    m_open->drop({pipe, m_pc->addFile(QStringLiteral("a.mid"))});
    QCOMPARE(m_player->files(), QStringList{QStringLiteral("a.mid")});
#else
    QSKIP("Pipes are no files here");
#endif
}

void TestTransferFaults::fileDroppedOntoItselfStays()
{
    const QString own = m_player->addFile(QStringLiteral("a.mid"), "only one");
    TransferRecorder recorder(m_open->page);
    m_open->drop({own});
    QCOMPARE(m_player->content(QStringLiteral("a.mid")), QByteArrayLiteral("only one"));
    QCOMPARE(m_player->files(), QStringList{QStringLiteral("a.mid")});
    QVERIFY(recorder.log().contains(QStringLiteral("Transfer : File non copiato su se stesso : \"%1\"").arg(own)));
    QVERIFY(recorder.lines().contains(kEnd));
}

void TestTransferFaults::folderDroppedOntoItselfStays()
{
    m_player->addFile(QStringLiteral("album/a.mid"), "only one");
    TransferRecorder recorder(m_open->page);
    m_open->drop({m_player->path(QStringLiteral("album"))});
    QCOMPARE(m_player->files(), QStringList{QStringLiteral("album/a.mid")});
    QCOMPARE(m_player->content(QStringLiteral("album/a.mid")), QByteArrayLiteral("only one"));
    QVERIFY(recorder.log().contains(QStringLiteral("Transfer : Cartella non copiata in se stessa : \"%1\"")
                                        .arg(m_player->path(QStringLiteral("album")))));
    QVERIFY(recorder.lines().contains(kEnd));
}

void TestTransferFaults::folderDroppedIntoItsOwnSubFolderIsNotCopied()
{
    m_player->addFile(QStringLiteral("album/a.mid"));
    m_player->addFolder(QStringLiteral("album/sub"));
    m_open->page.on_tableView_doubleClicked(m_open->row(QStringLiteral("album")));
    m_open->dropAt(m_open->overRow(QStringLiteral("sub")), {m_player->path(QStringLiteral("album"))});
    QCOMPARE(m_open->page.currentFolder, m_player->path(QStringLiteral("album/sub")));
    QCOMPARE(m_player->files(), QStringList{QStringLiteral("album/a.mid")});
    QCOMPARE(m_player->folders(QStringLiteral("album/sub")), QStringList());
}

void TestTransferFaults::rootDroppedOntoThePlayerIsNotCopied()
{
    m_player->addFile(QStringLiteral("a.mid"));
    m_open->page.copyFolder(m_player->root(), m_player->path(QStringLiteral("copy")));
    m_open->drop({m_player->root()});
    QCOMPARE(m_player->files(), QStringList{QStringLiteral("a.mid")});
}

void TestTransferFaults::linkToAFolderAroundItIsNotEntered_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("its own folder") << QStringLiteral("album/deep");
    QTest::newRow("the dropped folder") << QStringLiteral("album");
    QTest::newRow("a folder around the dropped one") << QString();
}

void TestTransferFaults::linkToAFolderAroundItIsNotEntered()
{
    SKIP_ON_WINDOWS("links are files of another kind here");
    QFETCH(QString, target);
    m_pc->addFile(QStringLiteral("album/deep/a.mid"));
    m_pc->addFile(QStringLiteral("beside.mid"));
    const QString link = m_pc->path(QStringLiteral("album/deep/link"));
    QVERIFY(QFile::link(m_pc->path(target), link));
    TransferRecorder recorder(m_open->page);
    m_open->drop({m_pc->path(QStringLiteral("album"))});
    QCOMPARE(m_player->files(), QStringList{QStringLiteral("album/deep/a.mid")});
    QCOMPARE(m_player->folders(QStringLiteral("album/deep")), QStringList());
    QVERIFY(recorder.log().contains(QStringLiteral("Transfer : Cartella non copiata in se stessa : \"%1\"").arg(link)));
}

void TestTransferFaults::linkToThePlayerIsNotCopiedIntoIt()
{
    SKIP_ON_WINDOWS("links are files of another kind here");
    m_player->addFile(QStringLiteral("a.mid"));
    m_pc->addFile(QStringLiteral("album/b.mid"));
    QVERIFY(QFile::link(m_player->root(), m_pc->path(QStringLiteral("album/player"))));
    m_open->drop({m_pc->path(QStringLiteral("album"))});
    QCOMPARE(m_player->files(), (QStringList{QStringLiteral("a.mid"), QStringLiteral("album/b.mid")}));
}

void TestTransferFaults::droppedLinkToAFolderIsCopied()
{
    SKIP_ON_WINDOWS("links are files of another kind here");
    m_pc->addFile(QStringLiteral("album/b.mid"), "b");
    QVERIFY(QFile::link(m_pc->path(QStringLiteral("album")), m_pc->path(QStringLiteral("link"))));
    m_open->drop({m_pc->path(QStringLiteral("link"))});
    QCOMPARE(m_player->content(QStringLiteral("link/b.mid")), QByteArrayLiteral("b"));
}

void TestTransferFaults::linkThatPointsToItselfIsSkipped()
{
    SKIP_ON_WINDOWS("links are files of another kind here");
    m_pc->addFile(QStringLiteral("album/b.mid"));
    const QString link = m_pc->path(QStringLiteral("album/circle"));
    QVERIFY(QFile::link(link, link));
    TransferRecorder recorder(m_open->page);
    m_open->drop({m_pc->path(QStringLiteral("album")), link});
    QCOMPARE(m_player->files(), QStringList{QStringLiteral("album/b.mid")});
    QVERIFY(recorder.lines().contains(kEnd));
}

void TestTransferFaults::dropWithoutAPlayerWritesNowhere()
{
    const QString name = QStringLiteral("corvin4-test-%1.mid").arg(QCoreApplication::applicationPid());
    m_open.reset(new OpenTransfer(QString()));
    TransferRecorder recorder(m_open->page);
    m_open->drop({m_pc->addFile(name)});
    QVERIFY(!QFileInfo::exists(QLatin1Char('/') + name));
    QVERIFY(recorder.lines().contains(kEnd));
}

void TestTransferFaults::vanishedCurrentFolderIsSurvived()
{
    m_player->addFile(QStringLiteral("album/a.mid"));
    m_open->page.on_tableView_doubleClicked(m_open->row(QStringLiteral("album")));
    if (!QDir(m_player->path(QStringLiteral("album"))).removeRecursively())
        QSKIP("A folder that a window shows cannot be removed here");
    TransferRecorder recorder(m_open->page);
    m_open->drop({m_pc->addFile(QStringLiteral("b.mid"))});
    QCOMPARE(recorder.log().textsStartingWith(QStringLiteral("!QFile::copy - src :")).size(), 1);
    QVERIFY(recorder.lines().contains(kEnd));
    m_open->drop({m_pc->addFile(QStringLiteral("folder/b.mid")), m_pc->path(QStringLiteral("folder"))});
    QVERIFY(m_player->exists(QStringLiteral("album/folder/b.mid")));
}

QTEST_MAIN(TestTransferFaults)
#include "tst_transferfaults.moc"
