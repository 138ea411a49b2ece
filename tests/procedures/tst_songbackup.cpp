#include "systemfixture.h"

#include "app/mainwindow.h"
#include "app/shared/sharedfonts.h"
#include "resources/resources.h"
#include "support/boxanswerer.h"
#include "support/logcapture.h"
#include "support/simulatedplayer.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString kFull = QStringLiteral("Trovati alcuni files");
const QString kDone = QStringLiteral("Fatto");
const QString kError = QStringLiteral("ERRORE");
const QString kBackupError = QStringLiteral("Errore durante il BackUp");
const QString kFailed = QStringLiteral("Errore sulla copia");
const QString kExists = QStringLiteral("File Esistente");
const QString kStop = QStringLiteral("Interrompi Operazione");
const QString kSi = QStringLiteral("Si");
const QString kYes = QStringLiteral("Yes");
const QString kNo = QStringLiteral("No");
const QString kOk = QStringLiteral("OK");

QStringList shownStatus(const LogCapture &log)
{
    const QString prefix = QStringLiteral("MainWindow::on_updateLabelAction : ");
    QStringList texts = log.textsStartingWith(prefix);
    for (QString &text : texts)
        text = text.mid(prefix.size() + 1).chopped(1);
    return texts;
}

/// Makes a folder the user's home, where a variable says which one that is.
class OtherHome
{
public:
    explicit OtherHome(const QString &home) : m_before(qgetenv("HOME")) { qputenv("HOME", QFile::encodeName(home)); }
    ~OtherHome() { qputenv("HOME", m_before); }
    OtherHome(const OtherHome &) = delete;
    OtherHome &operator=(const OtherHome &) = delete;

private:
    QByteArray m_before;
};

} // namespace

class TestSongBackup : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void cancelledFolderChoiceEndsSilently_data();
    void cancelledFolderChoiceEndsSilently();
    void backupTakesTheSongsAndThePlaylists();
    void namesWithoutADotAreNotSaved();
    void folderWithADotIsAskedAboutAndItsSongsAreSaved();
    void playlistsAreFoundWhateverTheirCase();
    void backupTellsWhatItDoes();
    void fullDestinationIsDeletedWholeAfterAYes();
    void fullDestinationStaysWithoutAYes_data();
    void fullDestinationStaysWithoutAYes();
    void destinationIsNeverEmptiedUnasked_data();
    void destinationIsNeverEmptiedUnasked();
    void dangerousDestinationIsRefused_data();
    void dangerousDestinationIsRefused();
    void moreThanAThousandFilesAreAskedAbout_data();
    void moreThanAThousandFilesAreAskedAbout();
    void backupCanBeStopped_data();
    void backupCanBeStopped();
    void failedBackupTellsSo();

    void restoreCopiesEverythingBack();
    void restoreAsksBeforeReplacing();
    void restoreLeavesWhatHasNoDot();
    void restoreOntoItselfLosesNothing();
    void restoreCanBeStopped_data();
    void restoreCanBeStopped();
    void failedRestoreHasTheBackupsTexts();
    void backupThenRestoreBringsTheSongsBack();

private:
    void fillPlayer();
    void runBackup(const QString &destination);
    void runRestore(const QString &source);
    void expectBackupError();
    QStringList titles() const;

    std::unique_ptr<SimulatedPlayer> m_player;
    std::unique_ptr<QTemporaryDir> m_pc;
    std::unique_ptr<ProcedureWindow> m_procedure;
    std::unique_ptr<BoxAnswerer> m_boxes;
    QString m_destination;
};

void TestSongBackup::initTestCase()
{
    loadResources();
    registerEmbeddedFonts();
}

void TestSongBackup::init()
{
    m_player = std::make_unique<SimulatedPlayer>();
    m_pc = std::make_unique<QTemporaryDir>();
    m_destination = m_pc->path() + QStringLiteral("/backup");
    QVERIFY(QDir().mkdir(m_destination));
    m_procedure = std::make_unique<ProcedureWindow>();
    m_boxes = std::make_unique<BoxAnswerer>();
}

void TestSongBackup::cleanup()
{
    m_boxes.reset();
    m_procedure.reset();
    m_pc.reset();
    m_player.reset();
}

void TestSongBackup::fillPlayer()
{
    m_player->addSystemFiles();
    m_player->addFile(QStringLiteral("root.mid"), "root");
    m_player->addFile(QStringLiteral("My Songs/a.mid"), "a");
    m_player->addFile(QStringLiteral("My Songs/deep/b.mp3"), "b");
    m_player->addFile(QStringLiteral("MyBridges/c.mid"), "c");
    m_player->addFile(QStringLiteral("Images/d.jpg"), "d");
    m_player->addFile(QStringLiteral("bridges/e.mid"), "e");
    m_player->addFile(QStringLiteral("My Songs/BRIDGES/f.mid"), "f");
    m_player->addFile(QStringLiteral("EFFECTS/g.fx"), "g");
    m_player->addFile(QStringLiteral("AUTOEXEC.BAT"), "h");
    m_player->addFile(QStringLiteral("My Songs/autoexec.bat"), "i");
    m_player->addFile(QStringLiteral("System/Corvin/data.fastDB"), "j");
    m_player->addFile(QStringLiteral("System/playlist/one.pls"), "k");
    m_player->addFile(QStringLiteral("System/playlist/nodot"), "l");
    m_player->addFile(QStringLiteral("System/playlist/.hidden.pls"), "m");
}

void TestSongBackup::runBackup(const QString &destination)
{
    const FolderDialogAnswerer dialogs(destination);
    m_procedure->run("makeSecurityCopyOfSongs");
    QCOMPARE(dialogs.captions(), QStringList{QStringLiteral("Scegli una cartella per il salvataggio dei files")});
    QVERIFY(m_procedure->bar()->isHidden());
    QVERIFY(m_procedure->stop()->isHidden());
    QCOMPARE(m_procedure->bar()->format(), QStringLiteral("%p%"));
}

void TestSongBackup::runRestore(const QString &source)
{
    const FolderDialogAnswerer dialogs(source);
    m_procedure->run("restoreSecurityCopyOfSongs");
    QCOMPARE(dialogs.captions(), QStringList{QStringLiteral("Scegli cartella da cui prendere i files salvati")});
    QVERIFY(m_procedure->bar()->isHidden());
    QVERIFY(m_procedure->stop()->isHidden());
    QCOMPARE(m_procedure->bar()->format(), QStringLiteral("%p%"));
}

void TestSongBackup::expectBackupError()
{
    QVERIFY(!m_boxes->seen().isEmpty());
    const BoxAnswerer::Seen box = m_boxes->seen().last();
    QCOMPARE(box.title, kBackupError);
    QCOMPARE(box.text, QStringLiteral("C'è stato durante il salvataggio delle basi.\nOperazione annullata"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QStringList{kOk});
}

QStringList TestSongBackup::titles() const
{
    QStringList titles;
    for (const BoxAnswerer::Seen &box : m_boxes->seen())
        titles.append(box.title);
    return titles;
}

void TestSongBackup::cancelledFolderChoiceEndsSilently_data()
{
    QTest::addColumn<bool>("backup");
    QTest::newRow("backup") << true;
    QTest::newRow("restore") << false;
}

void TestSongBackup::cancelledFolderChoiceEndsSilently()
{
    QFETCH(bool, backup);
    fillPlayer();
    const QStringList before = m_player->files();
    if (backup)
        runBackup(QString());
    else
        runRestore(QString());
    QVERIFY(m_boxes->seen().isEmpty());
    QCOMPARE(m_player->files(), before);
}

void TestSongBackup::backupTakesTheSongsAndThePlaylists()
{
    fillPlayer();
    const QStringList before = m_player->files();
    m_boxes->answer(kDone, kOk);
    runBackup(m_destination);
    QCOMPARE(m_boxes->seen().first().text, kDone);
    QCOMPARE(m_boxes->seen().first().icon, QMessageBox::Information);
    const QStringList expected = {QStringLiteral("Images"),
                                  QStringLiteral("Images/d.jpg"),
                                  QStringLiteral("My Songs"),
                                  QStringLiteral("My Songs/a.mid"),
                                  QStringLiteral("My Songs/deep"),
                                  QStringLiteral("My Songs/deep/b.mp3"),
                                  QStringLiteral("MyBridges"),
                                  QStringLiteral("MyBridges/c.mid"),
                                  QStringLiteral("System"),
                                  QStringLiteral("System/playlist"),
                                  QStringLiteral("System/playlist/.hidden.pls"),
                                  QStringLiteral("System/playlist/nodot"),
                                  QStringLiteral("System/playlist/one.pls"),
                                  QStringLiteral("root.mid")};
    QCOMPARE(entriesBelow(m_destination), expected);
    QCOMPARE(contentOf(m_destination + QStringLiteral("/My Songs/deep/b.mp3")), QByteArray("b"));
    QCOMPARE(m_player->files(), before);
}

void TestSongBackup::namesWithoutADotAreNotSaved()
{
    m_player->addFile(QStringLiteral("Songs/a.mid"));
    m_player->addFile(QStringLiteral("Songs/nodot"));
    m_player->addFile(QStringLiteral("Songs/inner/b.mid"));
    m_player->addFile(QStringLiteral("Songs/.hidden.mid"));
    m_player->addFile(QStringLiteral(".hiddenfolder/c.mid"));
    m_player->addFolder(QStringLiteral("Empty"));
    m_boxes->answer(kDone, kOk);
    runBackup(m_destination);
    const QStringList expected = {QStringLiteral("Songs"), QStringLiteral("Songs/a.mid"), QStringLiteral("Songs/inner"),
                                  QStringLiteral("Songs/inner/b.mid")};
    QCOMPARE(entriesBelow(m_destination), expected);
}

void TestSongBackup::folderWithADotIsAskedAboutAndItsSongsAreSaved()
{
    m_player->addFile(QStringLiteral("Vol.1/a.mid"));
    // The folder stands in the list before what is in it.
    m_boxes->answer(kFailed, kSi);
    m_boxes->answer(kDone, kOk);
    runBackup(m_destination);
    QCOMPARE(m_boxes->seen().first().text,
             QStringLiteral("Il File\n") + m_destination + QDir::separator() +
                 QStringLiteral("Vol.1\nnon è stato copiato. Vuoi continuare a copiare?"));
    const QStringList expected = {QStringLiteral("Vol.1"), QStringLiteral("Vol.1/a.mid")};
    QCOMPARE(entriesBelow(m_destination), expected);
}

void TestSongBackup::playlistsAreFoundWhateverTheirCase()
{
    m_player->addFile(QStringLiteral("SYSTEM/Playlist/one.pls"));
    m_player->addFile(QStringLiteral("SYSTEM/GuiProc/GuiProc.exe"));
    m_boxes->answer(kDone, kOk);
    runBackup(m_destination);
    // Where a name is found however it is spelled, nobody asks how the disk spells it.
    const bool ignoresCase = m_player->exists(QStringLiteral("System/playlist"));
    const QString system = ignoresCase ? QStringLiteral("System") : QStringLiteral("SYSTEM");
    const QString playlists = system + (ignoresCase ? QStringLiteral("/playlist") : QStringLiteral("/Playlist"));
    const QStringList expected = {system, playlists, playlists + QStringLiteral("/one.pls")};
    QCOMPARE(entriesBelow(m_destination), expected);
}

void TestSongBackup::backupTellsWhatItDoes()
{
    fillPlayer();
    m_boxes->answer(kDone, kOk);
    const LogCapture log;
    runBackup(m_destination);
    const QString looking = QStringLiteral("Cerco se Corvin4 è connesso via USB...");
    const QStringList expected = {looking, looking, QStringLiteral("Lettura del contenuto di Corvin..."),
                                  QStringLiteral("Copia di backup dei files sul PC...")};
    QCOMPARE(shownStatus(log), expected);
}

void TestSongBackup::fullDestinationIsDeletedWholeAfterAYes()
{
    m_player->addFile(QStringLiteral("a.mid"), "new");
    putFile(m_destination + QStringLiteral("/a.mid"), "old");
    putFile(m_destination + QStringLiteral("/sub/old.mid"));
    putFile(m_destination + QStringLiteral("/sub/.hidden"));
    m_boxes->answer(kFull, kYes);
    m_boxes->answer(kDone, kOk);
    runBackup(m_destination);
    const BoxAnswerer::Seen &box = m_boxes->seen().first();
    QCOMPARE(box.text, QStringLiteral("ATTENZIONE! Il contenuto della cartella di destinazione verrà "
                                      "cancellato.\n\nVuoi continuare ?"));
    QCOMPARE(box.icon, QMessageBox::Question);
    QStringList buttons = box.buttons;
    buttons.sort();
    const QStringList expectedButtons = {kNo, kYes};
    QCOMPARE(buttons, expectedButtons);
    QCOMPARE(entriesBelow(m_destination), QStringList{QStringLiteral("a.mid")});
    QCOMPARE(contentOf(m_destination + QStringLiteral("/a.mid")), QByteArray("new"));
}

void TestSongBackup::fullDestinationStaysWithoutAYes_data()
{
    QTest::addColumn<QString>("means");
    QTest::newRow("no") << "no";
    QTest::newRow("enter") << "enter";
    QTest::newRow("escape") << "escape";
    QTest::newRow("closing") << "close";
}

void TestSongBackup::fullDestinationStaysWithoutAYes()
{
    QFETCH(QString, means);
    m_player->addFile(QStringLiteral("a.mid"));
    putFile(m_destination + QStringLiteral("/old.mid"));
    if (means == QLatin1String("no"))
        m_boxes->answer(kFull, kNo);
    else if (means == QLatin1String("close"))
        m_boxes->answerByClosing(kFull);
    else
        m_boxes->answerByKey(kFull, means == QLatin1String("enter") ? Qt::Key_Return : Qt::Key_Escape);
    m_boxes->answer(kBackupError, kOk);
    runBackup(m_destination);
    expectBackupError();
    QCOMPARE(entriesBelow(m_destination), QStringList{QStringLiteral("old.mid")});
}

void TestSongBackup::destinationIsNeverEmptiedUnasked_data()
{
    QTest::addColumn<QString>("held");
    QTest::newRow("name with a dot") << "old.mid";
    QTest::newRow("name without a dot") << "precious";
    QTest::newRow("folder without a dot") << "folder/old.mid";
    QTest::newRow("hidden file") << ".precious";
    QTest::newRow("hidden folder") << ".folder/old.mid";
}

void TestSongBackup::destinationIsNeverEmptiedUnasked()
{
    QFETCH(QString, held);
    m_player->addFile(QStringLiteral("a.mid"));
    putFile(m_destination + QLatin1Char('/') + held);
    m_boxes->answer(kFull, kNo);
    m_boxes->answer(kBackupError, kOk);
    runBackup(m_destination);
    QVERIFY(QFileInfo::exists(m_destination + QLatin1Char('/') + held));
}

void TestSongBackup::dangerousDestinationIsRefused_data()
{
    QTest::addColumn<QString>("which");
    QTest::newRow("the player") << "player";
    QTest::newRow("a folder on the player") << "songs";
    QTest::newRow("an empty folder on the player") << "empty";
    QTest::newRow("what holds the player") << "media";
    QTest::newRow("the home folder") << "home";
    QTest::newRow("what holds the home folder") << "homes";
    QTest::newRow("the program's folder") << "program";
}

void TestSongBackup::dangerousDestinationIsRefused()
{
    QFETCH(QString, which);
    m_player->addFile(QStringLiteral("Songs/a.mid"));
    m_player->addFolder(QStringLiteral("Empty"));
    const QString other = m_pc->path() + QStringLiteral("/homes/anna");
    putFile(other + QStringLiteral("/letter.txt"));
    const OtherHome otherHome(other);
    // Windows keeps to the real one. An unexpected question, whether to empty it, would be closed.
    const QString home = QDir::homePath();
    const QStringList atHome = QDir(home).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    const QMap<QString, QString> folders = {
        {QStringLiteral("player"), m_player->root()},
        {QStringLiteral("songs"), m_player->path(QStringLiteral("Songs"))},
        {QStringLiteral("empty"), m_player->path(QStringLiteral("Empty"))},
        {QStringLiteral("media"), QFileInfo(QDir::cleanPath(m_player->root())).path()},
        {QStringLiteral("home"), home},
        {QStringLiteral("homes"), QFileInfo(home).path()},
        {QStringLiteral("program"), QCoreApplication::applicationDirPath()}};
    const QStringList before = m_player->files();
    m_boxes->answer(kError, kYes);
    m_boxes->answer(kBackupError, kOk);
    const QString folder = folders.value(which);
    runBackup(folder);
    QCOMPARE(m_boxes->seen().first().text, kError);
    QCOMPARE(m_boxes->seen().first().icon, QMessageBox::Question);
    QCOMPARE(m_boxes->seen().first().buttons, QStringList{kYes});
    expectBackupError();
    QCOMPARE(m_player->files(), before);
    QVERIFY(QFileInfo(m_player->path(QStringLiteral("Empty"))).isDir());
    QCOMPARE(QDir(home).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), atHome);
    QVERIFY(!atHome.isEmpty());
    QVERIFY(QFileInfo::exists(QCoreApplication::applicationFilePath()));
}

void TestSongBackup::moreThanAThousandFilesAreAskedAbout_data()
{
    QTest::addColumn<int>("files");
    QTest::addColumn<QString>("answer");
    QTest::newRow("exactly a thousand") << 1000 << QString();
    QTest::newRow("one more, yes") << 1001 << "Yes";
    QTest::newRow("one more, no") << 1001 << "No";
}

void TestSongBackup::moreThanAThousandFilesAreAskedAbout()
{
    QFETCH(int, files);
    QFETCH(QString, answer);
    // Songs and playlists count together.
    m_player->addFile(QStringLiteral("System/playlist/nodot"));
    for (int i = 1; i < files; ++i)
        m_player->addFile(QStringLiteral("Songs/%1.mid").arg(i));
    if (!answer.isEmpty())
        m_boxes->answer(QStringLiteral("BackUp"), answer);
    m_boxes->answer(kBackupError, kOk);
    QString format;
    int maximum = -1;
    m_boxes->whenShown([&](const QMessageBox *box) {
        if (box->windowTitle() != QLatin1String("BackUp"))
            return;
        format = m_procedure->bar()->format();
        maximum = m_procedure->bar()->maximum();
    });
    // One file is enough to see that the copy began, and how many it has before it.
    int toCopy = 0;
    connect(m_procedure->bar(), &QProgressBar::valueChanged, this, [&](int value) {
        if (m_procedure->status() != QLatin1String("Copia di backup dei files sul PC...") || value != 1)
            return;
        toCopy = m_procedure->bar()->maximum();
        (*m_procedure)->abortRequested = true;
    });
    runBackup(m_destination);
    QCOMPARE(toCopy, answer == kNo ? 0 : files);
    QCOMPARE(entriesBelow(m_destination).isEmpty(), answer == kNo);
    if (!answer.isEmpty()) {
        QCOMPARE(m_boxes->seen().first().text, QStringLiteral("Saranno copiati 1001 files\n\nVuoi continuare ?"));
        QCOMPARE(m_boxes->seen().first().icon, QMessageBox::Question);
        // Busy while the player was read.
        QCOMPARE(format, QStringLiteral("%v"));
        QCOMPARE(maximum, 0);
    }
}

void TestSongBackup::backupCanBeStopped_data()
{
    QTest::addColumn<QString>("status");
    QTest::addColumn<bool>("copied");
    QTest::newRow("while the player is read") << "Lettura del contenuto di Corvin..." << false;
    QTest::newRow("while the files are copied") << "Copia di backup dei files sul PC..." << true;
}

void TestSongBackup::backupCanBeStopped()
{
    QFETCH(QString, status);
    QFETCH(bool, copied);
    for (int i = 0; i < 10; ++i)
        m_player->addFile(QStringLiteral("Songs/%1.mid").arg(i));
    m_boxes->answer(kStop, kSi);
    m_boxes->answer(kBackupError, kOk);
    const StopPresser stop(*m_procedure, [&] { return m_procedure->status() == status; });
    runBackup(m_destination);
    QVERIFY(stop.pressed);
    expectBackupError();
    const int saved = entriesBelow(m_destination).filter(QStringLiteral(".mid")).size();
    QCOMPARE(saved, copied ? 1 : 0);
}

void TestSongBackup::failedBackupTellsSo()
{
    // A folder with a dot and nothing in it: the last of the list cannot be copied as a file.
    m_player->addFolder(QStringLiteral("Vol.1"));
    m_boxes->answer(kFailed, kSi);
    m_boxes->answer(kBackupError, kOk);
    runBackup(m_destination);
    expectBackupError();
}

void TestSongBackup::restoreCopiesEverythingBack()
{
    putFile(m_destination + QStringLiteral("/a.mid"), "a");
    putFile(m_destination + QStringLiteral("/My Songs/deep/b.mid"), "b");
    putFile(m_destination + QStringLiteral("/System/playlist/one.pls"), "c");
    putFile(m_destination + QStringLiteral("/bridges/d.mid"), "d");
    m_player->addFile(QStringLiteral("other.mid"), "other");
    m_boxes->answer(kDone, kOk);
    const LogCapture log;
    runRestore(m_destination);
    QCOMPARE(m_boxes->seen().first().text, kDone);
    const QStringList expected = {QStringLiteral("My Songs/deep/b.mid"), QStringLiteral("System/playlist/one.pls"),
                                  QStringLiteral("a.mid"), QStringLiteral("bridges/d.mid"),
                                  QStringLiteral("other.mid")};
    QCOMPARE(m_player->files(), expected);
    QCOMPARE(m_player->content(QStringLiteral("My Songs/deep/b.mid")), QByteArray("b"));
    const QStringList status = {QStringLiteral("Cerco se Corvin4 è connesso via USB..."),
                                QStringLiteral("Ripristino copia di backup sul Corvin...")};
    QCOMPARE(shownStatus(log), status);
}

void TestSongBackup::restoreAsksBeforeReplacing()
{
    putFile(m_destination + QStringLiteral("/a.mid"), "saved");
    putFile(m_destination + QStringLiteral("/b.mid"), "saved");
    m_player->addFile(QStringLiteral("a.mid"), "on the player");
    m_player->addFile(QStringLiteral("b.mid"), "on the player");
    m_boxes->answer(kExists, kNo);
    m_boxes->answer(kExists, kSi);
    m_boxes->answer(kDone, kOk);
    runRestore(m_destination);
    const QList<QByteArray> contents = {m_player->content(QStringLiteral("a.mid")),
                                        m_player->content(QStringLiteral("b.mid"))};
    QCOMPARE(contents.count(QByteArrayLiteral("saved")), 1);
    QCOMPARE(contents.count(QByteArrayLiteral("on the player")), 1);
}

void TestSongBackup::restoreLeavesWhatHasNoDot()
{
    putFile(m_destination + QStringLiteral("/Songs/a.mid"));
    putFile(m_destination + QStringLiteral("/Songs/nodot"));
    putFile(m_destination + QStringLiteral("/Songs/.hidden.mid"));
    m_boxes->answer(kDone, kOk);
    runRestore(m_destination);
    QCOMPARE(m_player->files(), QStringList{QStringLiteral("Songs/a.mid")});
}

void TestSongBackup::restoreOntoItselfLosesNothing()
{
    m_player->addFile(QStringLiteral("Songs/a.mid"), "precious");
    m_boxes->answer(kDone, kOk);
    runRestore(QDir::cleanPath(m_player->root()));
    QCOMPARE(titles(), QStringList{kDone});
    QCOMPARE(m_player->content(QStringLiteral("Songs/a.mid")), QByteArray("precious"));
}

void TestSongBackup::restoreCanBeStopped_data()
{
    QTest::addColumn<bool>("copying");
    QTest::newRow("while the backup is listed") << false;
    QTest::newRow("while the files are copied") << true;
}

void TestSongBackup::restoreCanBeStopped()
{
    QFETCH(bool, copying);
    for (int i = 0; i < 10; ++i)
        putFile(m_destination + QStringLiteral("/%1.mid").arg(i));
    m_boxes->answer(kStop, kSi);
    m_boxes->answer(kBackupError, kOk);
    // The copy shows its count; the folder choice has no STOP to press.
    const StopPresser stop(*m_procedure, [&] {
        return m_procedure->status().startsWith(QStringLiteral("Ripristino")) && !QApplication::activeModalWidget() &&
               (m_procedure->bar()->format() == QLatin1String("%v")) == copying;
    });
    runRestore(m_destination);
    QVERIFY(stop.pressed);
    expectBackupError();
    QCOMPARE(m_player->files().size(), copying ? 1 : 0);
}

void TestSongBackup::failedRestoreHasTheBackupsTexts()
{
    putFile(m_destination + QStringLiteral("/Songs/a.mid"));
    m_player->addFile(QStringLiteral("Songs"), "a file where a folder should be");
    m_boxes->answer(kError, kOk);
    m_boxes->answer(kBackupError, kOk);
    runRestore(m_destination);
    QVERIFY(!(*m_procedure)->procedureOk);
    expectBackupError();
}

void TestSongBackup::backupThenRestoreBringsTheSongsBack()
{
    fillPlayer();
    m_boxes->answer(kDone, kOk);
    runBackup(m_destination);
    const QStringList saved = entriesBelow(m_destination);
    // Another one, new and empty; the first is unplugged before it comes.
    m_player.reset();
    m_player = std::make_unique<SimulatedPlayer>();
    m_boxes->answer(kDone, kOk);
    runRestore(m_destination);
    QStringList back = entriesBelow(m_player->root());
    back.removeOne(QStringLiteral(".windows-label"));
    // Hidden names and those without a dot are saved among the playlists, and not brought back.
    QStringList expected = saved;
    expected.removeOne(QStringLiteral("System/playlist/.hidden.pls"));
    expected.removeOne(QStringLiteral("System/playlist/nodot"));
    QCOMPARE(back, expected);
}

QTEST_MAIN(TestSongBackup)
#include "tst_songbackup.moc"
