#include "opentransfer.h"
#include "support/platform.h"
#include "support/simulatedplayer.h"

#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTimer>
#include <QTreeView>
#include <QtTest>

namespace {

const QString kCounting = QStringLiteral("Conteggio numero file da trasferire ...");

QString copying(int files)
{
    return QStringLiteral("label Copia di %1 file su Corvin4 in corso ...").arg(files);
}

} // namespace

/// Drops, as a person makes them.
class TestTransferCopy : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void droppedFilesAndFoldersArrive();
    void dropTellsItsStepsInOrder();
    void styleIsNormalAgainAfterTheDrop();
    void dropOnAFolderRowGoesIntoThatFolder();
    void dropOnAFileRowGoesIntoTheCurrentFolder();
    void dropGoesIntoTheFolderChosenInTheTree();
    void namesOfAllKindsArrive_data();
    void namesOfAllKindsArrive();
    void droppedFolderMayEndWithASlash();
    void emptyFolderCountsNothingAndIsMade();
    void missingFileIsNoFileButATryOfItsOwn();
    void dropWithoutLocalFilesTellsNothing();
    void dropWithoutLocalFilesStillEntersTheFolderUnderTheCursor();
    void hiddenFilesAreLeftOut();
    void subFoldersComeBeforeFiles();

    void countOfAPath_data();
    void countOfAPath();
    void countIsNothingOnceAborted();
    void copyDoesNothingOnceAborted();
    void folderThatIsNotThereIsNotCopied();

    void stopWhileCountingHidesTheBar();
    void stopWhileCopyingKeepsTheBarAndTheRest();
    void stopInsideAFolderMakesNoFurtherFolders();
    void backDoesNothingDuringACopy();
    void slotsAndDragsAreRefusedDuringACopy();
    void signalsAreBlockedDuringACopy();
    void finishIsDisabledDuringTheCopyOnly();
    void tableAndTreeFollowAfterTheCopy();
    void windowAnswersDuringOneLargeFile();
    void linksInAFolderAreCopiedThoughNotCounted();

private:
    QStringList filesOnPlayer() const { return m_player->files(); }
    void stopAfter(int files);

    int m_filesSeen = 0;
    QScopedPointer<SimulatedPlayer> m_player;
    QScopedPointer<PcFolder> m_pc;
    QScopedPointer<OpenTransfer> m_open;
};

void TestTransferCopy::init()
{
    m_player.reset(new SimulatedPlayer);
    m_player->addFolder(QStringLiteral("My Songs/Rock"));
    m_pc.reset(new PcFolder);
    m_open.reset(new OpenTransfer(m_player->root()));
}

void TestTransferCopy::cleanup()
{
    m_open.reset();
    m_pc.reset();
    m_player.reset();
}

/// STOP is confirmed while the given file is being counted as copied.
void TestTransferCopy::stopAfter(int files)
{
    m_filesSeen = 0;
    connect(&m_open->page, &Transfer::increaseProgressBarVal, &m_open->page, [this, files] {
        if (++m_filesSeen == files)
            m_open->page.on_stopActionPressed();
    });
}

void TestTransferCopy::droppedFilesAndFoldersArrive()
{
    const QString folder = m_pc->addFolder(QStringLiteral("album"));
    m_pc->addFile(QStringLiteral("album/one.mid"), "1");
    m_pc->addFile(QStringLiteral("album/disc 2/two.mid"), "22");
    const QString loose = m_pc->addFile(QStringLiteral("loose.mp3"), "333");
    m_open->drop({folder, loose});
    QCOMPARE(filesOnPlayer(), (QStringList{QStringLiteral("album/disc 2/two.mid"), QStringLiteral("album/one.mid"),
                                           QStringLiteral("loose.mp3")}));
    QCOMPARE(m_player->content(QStringLiteral("album/one.mid")), QByteArrayLiteral("1"));
    QCOMPARE(m_player->content(QStringLiteral("album/disc 2/two.mid")), QByteArrayLiteral("22"));
    QCOMPARE(m_player->content(QStringLiteral("loose.mp3")), QByteArrayLiteral("333"));
    QCOMPARE(m_pc->content(QStringLiteral("loose.mp3")), QByteArrayLiteral("333"));
}

void TestTransferCopy::dropTellsItsStepsInOrder()
{
    const QString folder = m_pc->addFolder(QStringLiteral("album"));
    m_pc->addFile(QStringLiteral("album/one.mid"));
    const QString loose = m_pc->addFile(QStringLiteral("loose.mid"));
    TransferRecorder recorder(m_open->page);
    m_open->drop({folder, loose});
    QCOMPARE(recorder.lines(),
             (QStringList{QStringLiteral("min 0"), QStringLiteral("max 0"), QStringLiteral("value 0"),
                          QStringLiteral("visible 1"), QStringLiteral("label ") + kCounting,
                          QStringLiteral("log Transfer : Start trasferimento in  \"%1\"").arg(m_player->root()),
                          QStringLiteral("log Transfer : N. Files   2"), QStringLiteral("max 2"),
                          QStringLiteral("format %v"), copying(2), QStringLiteral("increase"),
                          QStringLiteral("increase"), QStringLiteral("log Transfer : Fine Copia"),
                          QStringLiteral("label Se hai terminato clicca su FINE"), QStringLiteral("stop 0")}));
    QVERIFY(recorder.log().contains(QtInfoMsg, QStringLiteral("Transfer : Fine Copia")));
    QVERIFY(!m_open->page.busy);
}

void TestTransferCopy::styleIsNormalAgainAfterTheDrop()
{
    const QString normal = m_open->child<QLabel>("dropArea")->styleSheet();
    m_open->drop({m_pc->addFile(QStringLiteral("a.mid"))});
    QCOMPARE(m_open->child<QLabel>("dropArea")->styleSheet(), normal);
}

void TestTransferCopy::dropOnAFolderRowGoesIntoThatFolder()
{
    m_open->dropAt(m_open->overRow(QStringLiteral("My Songs")), {m_pc->addFile(QStringLiteral("a.mid"))});
    QCOMPARE(filesOnPlayer(), QStringList{QStringLiteral("My Songs/a.mid")});
    QCOMPARE(m_open->page.currentFolder, m_player->path(QStringLiteral("My Songs")));
    QCOMPARE(m_open->page.dropTarget, QString());
    QCOMPARE(m_open->child<QLabel>("labelFolder")->text(), QStringLiteral("My Songs"));
    QTRY_COMPARE(m_open->names(), (QStringList{QStringLiteral("Rock"), QStringLiteral("a.mid")}));
    QCOMPARE(m_open->tree()->currentIndex().data().toString(), QStringLiteral("My Songs"));
    QVERIFY(!m_open->table()->selectionModel()->hasSelection());
}

void TestTransferCopy::dropOnAFileRowGoesIntoTheCurrentFolder()
{
    m_player->addFile(QStringLiteral("My Songs/there.mid"));
    m_open->page.on_tableView_doubleClicked(m_open->row(QStringLiteral("My Songs")));
    m_open->dropAt(m_open->overRow(QStringLiteral("there.mid")), {m_pc->addFile(QStringLiteral("a.mid"))});
    QCOMPARE(filesOnPlayer(), (QStringList{QStringLiteral("My Songs/a.mid"), QStringLiteral("My Songs/there.mid")}));
    QCOMPARE(m_open->page.currentFolder, m_player->path(QStringLiteral("My Songs")));
}

void TestTransferCopy::dropGoesIntoTheFolderChosenInTheTree()
{
    const QAbstractItemModel *model = m_open->tree()->model();
    QTRY_COMPARE(model->rowCount(model->index(0, 0)), 1);
    m_open->page.on_treeView_clicked(model->index(0, 0, model->index(0, 0)));
    m_open->drop({m_pc->addFile(QStringLiteral("a.mid"))});
    QCOMPARE(filesOnPlayer(), QStringList{QStringLiteral("My Songs/a.mid")});
}

void TestTransferCopy::namesOfAllKindsArrive_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << QStringLiteral("  la mia  canzone .mid");
    QTest::newRow("accents") << QString::fromUtf8("Perché è così – Größe.mid");
    QTest::newRow("percent signs") << QStringLiteral("100%25 %1 50%.mid");
#ifdef Q_OS_UNIX
    QTest::newRow("hash and question marks") << QStringLiteral("song #1?.mid");
    QTest::newRow("quotes") << QStringLiteral("l'amore \"vero\".mid");
#endif
    QTest::newRow("outside the basic plane") << QString::fromUtf8("🎤 karaoke.mid");
    QTest::newRow("no extension") << QStringLiteral("README");
}

void TestTransferCopy::namesOfAllKindsArrive()
{
    QFETCH(QString, name);
    m_pc->addFile(QStringLiteral("folder/") + name, "in a folder");
    m_open->drop({m_pc->addFile(name, "loose"), m_pc->path(QStringLiteral("folder"))});
    QCOMPARE(m_player->content(name), QByteArrayLiteral("loose"));
    QCOMPARE(m_player->content(QStringLiteral("folder/") + name), QByteArrayLiteral("in a folder"));
}

void TestTransferCopy::droppedFolderMayEndWithASlash()
{
    m_pc->addFile(QStringLiteral("album/one.mid"));
    m_open->drop({m_pc->path(QStringLiteral("album")) + QLatin1Char('/')});
    QCOMPARE(filesOnPlayer(), QStringList{QStringLiteral("album/one.mid")});
}

void TestTransferCopy::emptyFolderCountsNothingAndIsMade()
{
    TransferRecorder recorder(m_open->page);
    m_open->drop({m_pc->addFolder(QStringLiteral("empty"))});
    QVERIFY(QFileInfo(m_player->path(QStringLiteral("empty"))).isDir());
    QVERIFY(recorder.lines().contains(copying(0)));
    QCOMPARE(recorder.count(QStringLiteral("max 0")), 2);
    QCOMPARE(recorder.count(QStringLiteral("increase")), 0);
    QVERIFY(m_open->page.isFinishPending());
}

void TestTransferCopy::missingFileIsNoFileButATryOfItsOwn()
{
    const QString missing = m_pc->path(QStringLiteral("missing.mid"));
    TransferRecorder recorder(m_open->page);
    m_open->drop({missing, m_pc->addFile(QStringLiteral("a.mid"))});
    QVERIFY(recorder.lines().contains(copying(1)));
    QCOMPARE(recorder.count(QStringLiteral("increase")), 2);
    QVERIFY(recorder.log().contains(QtDebugMsg, QStringLiteral("!QFile::copy - src : \"%1\"").arg(missing)));
    QCOMPARE(filesOnPlayer(), QStringList{QStringLiteral("a.mid")});
}

void TestTransferCopy::dropWithoutLocalFilesTellsNothing()
{
    TransferRecorder recorder(m_open->page);
    Drag drag(m_open->page, {QUrl(QStringLiteral("https://example.org/song.mid"))});
    QVERIFY(drag.enter(m_open->overDropArea()));
    QVERIFY(drag.drop(m_open->overDropArea()));
    Drag text(m_open->page, {});
    QVERIFY(text.enter(m_open->overDropArea()));
    text.drop(m_open->overDropArea());
    QCOMPARE(recorder.lines(), QStringList());
    QVERIFY(!m_open->page.busy);
    QVERIFY(!m_open->table()->signalsBlocked() && !m_open->table()->model()->signalsBlocked());
    QVERIFY(!m_open->page.isFinishPending());
}

void TestTransferCopy::dropWithoutLocalFilesStillEntersTheFolderUnderTheCursor()
{
    Drag drag(m_open->page, {QUrl(QStringLiteral("https://example.org/song.mid"))});
    const QPoint row = m_open->overRow(QStringLiteral("My Songs"));
    QVERIFY(drag.enter(row) && drag.move(row) && drag.drop(row));
    QCOMPARE(m_open->page.currentFolder, m_player->path(QStringLiteral("My Songs")));
}

void TestTransferCopy::hiddenFilesAreLeftOut()
{
    m_pc->addFile(QStringLiteral("album/.hidden"));
    m_pc->addFile(QStringLiteral("album/one.mid"));
    TransferRecorder recorder(m_open->page);
    m_open->drop({m_pc->path(QStringLiteral("album"))});
    QVERIFY(recorder.lines().contains(copying(1)));
    QCOMPARE(filesOnPlayer(), QStringList{QStringLiteral("album/one.mid")});
}

void TestTransferCopy::subFoldersComeBeforeFiles()
{
    m_pc->addFile(QStringLiteral("album/a.mid"));
    m_pc->addFile(QStringLiteral("album/z/in z.mid"));
    QStringList atEachFile;
    connect(&m_open->page, &Transfer::increaseProgressBarVal, this,
            [&] { atEachFile.append(filesOnPlayer().join(QLatin1Char('|'))); });
    m_open->drop({m_pc->path(QStringLiteral("album"))});
    QCOMPARE(atEachFile, (QStringList{QString(), QStringLiteral("album/z/in z.mid")}));
}

void TestTransferCopy::countOfAPath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("files");
    QTest::newRow("missing") << QStringLiteral("nothing") << 0;
    QTest::newRow("file") << QStringLiteral("tree/a.mid") << 1;
#ifdef Q_OS_UNIX
    QTest::newRow("link to a file") << QStringLiteral("link") << 1;
#endif
    QTest::newRow("empty folder") << QStringLiteral("tree/empty") << 0;
    QTest::newRow("tree without its links and hidden files") << QStringLiteral("tree") << 3;
}

void TestTransferCopy::countOfAPath()
{
    QFETCH(QString, path);
    QFETCH(int, files);
    const QString file = m_pc->addFile(QStringLiteral("tree/a.mid"));
    m_pc->addFile(QStringLiteral("tree/b/b.mid"));
    m_pc->addFile(QStringLiteral("tree/b/c/c.mid"));
    m_pc->addFile(QStringLiteral("tree/.hidden"));
    m_pc->addFolder(QStringLiteral("tree/empty"));
#ifdef Q_OS_UNIX // elsewhere a link is a file
    QVERIFY(QFile::link(file, m_pc->path(QStringLiteral("link"))));
    QVERIFY(QFile::link(file, m_pc->path(QStringLiteral("tree/link to a file"))));
    QVERIFY(QFile::link(m_pc->path(QStringLiteral("tree/b")), m_pc->path(QStringLiteral("tree/link to a folder"))));
#else
    Q_UNUSED(file)
#endif
    QCOMPARE(m_open->page.countFiles(m_pc->path(path)), files);
}

void TestTransferCopy::countIsNothingOnceAborted()
{
    m_open->page.aborted = true;
    QCOMPARE(m_open->page.countFiles(m_pc->addFile(QStringLiteral("a.mid"))), 0);
}

void TestTransferCopy::copyDoesNothingOnceAborted()
{
    const QString file = m_pc->addFile(QStringLiteral("album/a.mid"));
    TransferRecorder recorder(m_open->page);
    m_open->page.aborted = true;
    m_open->page.copyOneFile(file, m_player->path(QStringLiteral("a.mid")));
    m_open->page.copyFolder(m_pc->path(QStringLiteral("album")), m_player->path(QStringLiteral("My Songs")));
    QCOMPARE(recorder.lines(), QStringList());
    QCOMPARE(filesOnPlayer(), QStringList());
}

void TestTransferCopy::folderThatIsNotThereIsNotCopied()
{
    TransferRecorder recorder(m_open->page);
    m_open->page.copyFolder(m_pc->path(QStringLiteral("nothing")), m_player->path(QStringLiteral("My Songs")));
    QCOMPARE(recorder.lines(), QStringList());
}

void TestTransferCopy::stopWhileCountingHidesTheBar()
{
    for (int i = 0; i < 20; ++i)
        m_pc->addFile(QStringLiteral("album/%1.mid").arg(i));
    connect(&m_open->page, &Transfer::updateLabelAction, this, [this](const QString &text) {
        if (text == kCounting)
            QTimer::singleShot(0, &m_open->page, &Transfer::on_stopActionPressed);
    });
    TransferRecorder recorder(m_open->page);
    m_open->drop({m_pc->path(QStringLiteral("album"))});
    QCOMPARE(recorder.lines(),
             (QStringList{QStringLiteral("min 0"), QStringLiteral("max 0"), QStringLiteral("value 0"),
                          QStringLiteral("visible 1"), QStringLiteral("label ") + kCounting,
                          QStringLiteral("log Transfer : Start trasferimento in  \"%1\"").arg(m_player->root()),
                          QStringLiteral("visible 0")}));
    QCOMPARE(filesOnPlayer(), QStringList());
    QVERIFY(!m_player->exists(QStringLiteral("album")));
    QVERIFY(!m_open->page.busy);
    QVERIFY(!m_open->table()->signalsBlocked());
    QVERIFY(!m_open->page.isFinishPending());
}

void TestTransferCopy::stopWhileCopyingKeepsTheBarAndTheRest()
{
    stopAfter(2);
    QStringList dropped;
    for (int i = 0; i < 5; ++i)
        dropped.append(m_pc->addFile(QStringLiteral("%1.mid").arg(i)));
    TransferRecorder recorder(m_open->page);
    m_open->drop(dropped);
    // The file during which STOP came is finished.
    QCOMPARE(filesOnPlayer(), (QStringList{QStringLiteral("0.mid"), QStringLiteral("1.mid")}));
    QCOMPARE(recorder.count(QStringLiteral("increase")), 2);
    QVERIFY(!recorder.lines().contains(QStringLiteral("visible 0")));
    QCOMPARE(recorder.lines().last(), QStringLiteral("stop 0"));
    QVERIFY(recorder.log().contains(QStringLiteral("Transfer : Fine Copia")));
    QVERIFY(m_open->page.isFinishPending());

    // The next drop starts afresh.
    m_open->page.disconnect(&m_open->page);
    m_open->drop({m_pc->path(QStringLiteral("4.mid"))});
    QVERIFY(m_player->exists(QStringLiteral("4.mid")));
}

void TestTransferCopy::stopInsideAFolderMakesNoFurtherFolders()
{
    stopAfter(1);
    m_pc->addFile(QStringLiteral("album/a/1.mid"));
    m_pc->addFile(QStringLiteral("album/a/2.mid"));
    m_pc->addFile(QStringLiteral("album/b/3.mid"));
    m_pc->addFile(QStringLiteral("album/4.mid"));
    m_open->drop({m_pc->path(QStringLiteral("album")), m_pc->addFile(QStringLiteral("5.mid"))});
    QCOMPARE(filesOnPlayer(), QStringList{QStringLiteral("album/a/1.mid")});
    QVERIFY(!m_player->exists(QStringLiteral("album/b")));
}

void TestTransferCopy::backDoesNothingDuringACopy()
{
    QSignalSpy back(&m_open->page, &Transfer::backFromTransferToFirstMenu);
    connect(&m_open->page, &Transfer::increaseProgressBarVal, this,
            [this] { QTest::mouseClick(m_open->child<QPushButton>("pushBtnBack"), Qt::LeftButton); });
    m_open->drop({m_pc->addFile(QStringLiteral("a.mid"))});
    QCOMPARE(back.count(), 0);
    QVERIFY(m_open->table()->model());
    QVERIFY(m_player->exists(QStringLiteral("a.mid")));
    QTest::mouseClick(m_open->child<QPushButton>("pushBtnBack"), Qt::LeftButton);
    QCOMPARE(back.count(), 1);
}

void TestTransferCopy::slotsAndDragsAreRefusedDuringACopy()
{
    const QString other = m_pc->addFile(QStringLiteral("other.mid"));
    bool letIn = true;
    connect(&m_open->page, &Transfer::increaseProgressBarVal, this, [&] {
        m_open->page.on_treeView_clicked(m_open->tree()->model()->index(0, 0));
        m_open->page.on_actionDeleteSelectedItems_triggered();
        m_open->page.on_pButPc_clicked();
        Drag drag(m_open->page, fileUrls({other}));
        letIn = drag.enter(m_open->overDropArea());
        drag.move(m_open->overDropArea());
        drag.drop(m_open->overDropArea());
    });
    m_open->dropAt(m_open->overRow(QStringLiteral("My Songs")), {m_pc->addFile(QStringLiteral("a.mid"))});
    QVERIFY(!letIn);
    QCOMPARE(filesOnPlayer(), QStringList{QStringLiteral("My Songs/a.mid")});
    QCOMPARE(m_open->page.currentFolder, m_player->path(QStringLiteral("My Songs")));
}

void TestTransferCopy::signalsAreBlockedDuringACopy()
{
    bool blocked = false;
    connect(&m_open->page, &Transfer::increaseProgressBarVal, this, [&] {
        blocked = m_open->table()->signalsBlocked() && m_open->tree()->signalsBlocked() &&
                  m_open->table()->model()->signalsBlocked() && m_open->tree()->model()->signalsBlocked();
    });
    m_open->drop({m_pc->addFile(QStringLiteral("a.mid"))});
    QVERIFY(blocked);
    QVERIFY(!m_open->table()->signalsBlocked() && !m_open->tree()->signalsBlocked());
    QVERIFY(!m_open->table()->model()->signalsBlocked() && !m_open->tree()->model()->signalsBlocked());
}

void TestTransferCopy::finishIsDisabledDuringTheCopyOnly()
{
    m_open->child<QPushButton>("pushBtnForward")->setEnabled(true);
    bool pendingWhileCounting = false;
    bool pendingWhileCopying = true;
    bool pendingAtTheEnd = false;
    connect(&m_open->page, &Transfer::updateLabelAction, this, [&](const QString &text) {
        if (text == kCounting)
            pendingWhileCounting = m_open->page.isFinishPending();
        else if (text == QLatin1String("Se hai terminato clicca su FINE"))
            pendingAtTheEnd = m_open->page.isFinishPending();
        else
            pendingWhileCopying = m_open->page.isFinishPending();
    });
    m_open->drop({m_pc->addFile(QStringLiteral("a.mid"))});
    QVERIFY(pendingWhileCounting);
    QVERIFY(!pendingWhileCopying);
    QVERIFY(pendingAtTheEnd);
}

void TestTransferCopy::tableAndTreeFollowAfterTheCopy()
{
    const QModelIndex songs = m_open->row(QStringLiteral("My Songs"));
    QVERIFY(songs.isValid());
    m_pc->addFile(QStringLiteral("New album/one.mid"));
    m_open->drop({m_pc->path(QStringLiteral("New album")), m_pc->addFile(QStringLiteral("z.mid"))});
    QTRY_COMPARE(m_open->names(),
                 (QStringList{QStringLiteral("My Songs"), QStringLiteral("New album"), QStringLiteral("z.mid")}));
    const QAbstractItemModel *model = m_open->tree()->model();
    QVERIFY(m_open->tree()->isExpanded(model->index(0, 0)));
    QTRY_COMPARE(model->rowCount(model->index(0, 0)), 2);
}

void TestTransferCopy::windowAnswersDuringOneLargeFile()
{
    const QString video = m_pc->addFile(QStringLiteral("video.mp4"), QByteArray(24 * 1024 * 1024, 'v'));
    int ticks = 0;
    QTimer timer;
    bool copied = false;
    connect(&timer, &QTimer::timeout, this, [&] {
        if (!copied)
            ++ticks;
    });
    connect(&m_open->page, &Transfer::increaseProgressBarVal, this, [&] { timer.start(0); });
    connect(&m_open->page, &Transfer::updateLabelAction, this,
            [&](const QString &text) { copied = text == QLatin1String("Se hai terminato clicca su FINE"); });
    m_open->drop({video});
    QCOMPARE(m_player->content(QStringLiteral("video.mp4")), QByteArray(24 * 1024 * 1024, 'v'));
    QVERIFY2(ticks >= 20, qPrintable(QString::number(ticks))); // once a block
}

void TestTransferCopy::linksInAFolderAreCopiedThoughNotCounted()
{
    SKIP_ON_WINDOWS("links are files of another kind here");
    const QString target = m_pc->addFile(QStringLiteral("elsewhere/linked.mid"), "linked");
    m_pc->addFile(QStringLiteral("album/one.mid"));
    QVERIFY(QFile::link(target, m_pc->path(QStringLiteral("album/two.mid"))));
    QVERIFY(QFile::link(m_pc->path(QStringLiteral("elsewhere")), m_pc->path(QStringLiteral("album/more"))));
    TransferRecorder recorder(m_open->page);
    m_open->drop({m_pc->path(QStringLiteral("album"))});
    QVERIFY(recorder.lines().contains(copying(1)));
    QCOMPARE(recorder.count(QStringLiteral("increase")), 3);
    QCOMPARE(m_player->content(QStringLiteral("album/two.mid")), QByteArrayLiteral("linked"));
    QCOMPARE(m_player->content(QStringLiteral("album/more/linked.mid")), QByteArrayLiteral("linked"));
    QVERIFY(!QFileInfo(m_player->path(QStringLiteral("album/two.mid"))).isSymLink());
}

QTEST_MAIN(TestTransferCopy)
#include "tst_transfercopy.moc"
