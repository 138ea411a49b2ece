#include "opentransfer.h"
#include "support/boxanswerer.h"
#include "support/simulatedplayer.h"

#include <QAction>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>
#include <QTreeView>
#include <QtTest>

namespace {
const QString kTitle = QStringLiteral("Cancella file");
const QString kYes = QStringLiteral("Yes");

#ifdef Q_OS_WIN
/// While this lives the folder with the song cannot be removed: the song is open.
class Resistance
{
public:
    explicit Resistance(const QString &song) : m_song(song), m_good(m_song.open(QIODevice::ReadOnly)) {}
    bool isGood() const { return m_good; }

private:
    QFile m_song;
    bool m_good;
};
#else
/// While this lives the folder with the song cannot be removed, whoever asks: it holds a mounted volume.
class Resistance
{
public:
    explicit Resistance(const QString &song)
        : m_folder(QFileInfo(song).path()),
          m_good(QProcess::execute(QStringLiteral("mount"), {QStringLiteral("-t"), QStringLiteral("tmpfs"),
                                                             QStringLiteral("none"), m_folder}) == 0)
    {
    }
    ~Resistance()
    {
        if (m_good)
            QProcess::execute(QStringLiteral("umount"), {m_folder});
    }
    Resistance(const Resistance &) = delete;
    Resistance &operator=(const Resistance &) = delete;
    bool isGood() const { return m_good; }

private:
    QString m_folder;
    bool m_good;
};
#endif

} // namespace

class TestTransferDelete : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void questionIsAsAgreed();
    void everyOtherAnswerKeepsTheFiles_data();
    void everyOtherAnswerKeepsTheFiles();
    void deletionTellsItsStepsInOrder();
    void filesAndFoldersGoAndTheRestStays();
    void readOnlyAndHiddenContentGoesWithItsFolder();
    void linkGoesButNotWhatItPointsTo();
    void vanishedEntryStillCounts();
    void folderThatStaysIsTriedThreeTimes();
    void stopKeepsTheRest();
    void finishStaysAsItWas_data();
    void finishStaysAsItWas();
    void pageRefusesEverythingMeanwhile();
    void signalsAreBlockedMeanwhileAndTheTableFollowsAfterwards();
    void delKeyAndButtonDelete();
    void nothingSelectedDeletesNothing();
    void wholePlayerIsNeverDeleted();

private:
    QScopedPointer<SimulatedPlayer> m_player;
    QScopedPointer<OpenTransfer> m_open;
};

void TestTransferDelete::init()
{
    m_player.reset(new SimulatedPlayer);
    m_player->addFile(QStringLiteral("a.mid"));
    m_player->addFile(QStringLiteral("b.mid"));
    m_player->addFile(QStringLiteral("c.mid"));
    m_player->addFile(QStringLiteral("Old/deep/song.mid"));
    m_player->addFile(QStringLiteral("Kept/song.mid"));
    m_open.reset(new OpenTransfer(m_player->root()));
}

void TestTransferDelete::cleanup()
{
    m_open.reset();
    m_player.reset();
}

void TestTransferDelete::questionIsAsAgreed()
{
    QVERIFY(m_open->select({QStringLiteral("a.mid")}));
    BoxAnswerer answerer;
    answerer.answer(kTitle, QStringLiteral("No"));
    m_open->page.on_actionDeleteSelectedItems_triggered();
    QCOMPARE(answerer.seen().size(), 1);
    const BoxAnswerer::Seen box = answerer.seen().first();
    QCOMPARE(box.text, QStringLiteral("Cancellare gli elementi selezionati ?"));
    QCOMPARE(box.icon, QMessageBox::Question);
    QCOMPARE(QSet<QString>(box.buttons.cbegin(), box.buttons.cend()), (QSet<QString>{kYes, QStringLiteral("No")}));
}

void TestTransferDelete::everyOtherAnswerKeepsTheFiles_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("No") << QStringLiteral("No");
    QTest::newRow("Enter") << QStringLiteral("Enter");
    QTest::newRow("Escape") << QStringLiteral("Escape");
    QTest::newRow("closed") << QStringLiteral("closed");
}

void TestTransferDelete::everyOtherAnswerKeepsTheFiles()
{
    QFETCH(QString, how);
    QVERIFY(m_open->select({QStringLiteral("a.mid")}));
    const QStringList before = m_player->files();
    BoxAnswerer answerer;
    if (how == QLatin1String("No"))
        answerer.answer(kTitle, how);
    else if (how == QLatin1String("closed"))
        answerer.answerByClosing(kTitle);
    else
        answerer.answerByKey(kTitle, how == QLatin1String("Enter") ? Qt::Key_Return : Qt::Key_Escape);
    TransferRecorder recorder(m_open->page);
    m_open->page.on_actionDeleteSelectedItems_triggered();
    QCOMPARE(recorder.lines(), QStringList());
    QCOMPARE(m_player->files(), before);
    QVERIFY(!m_open->page.busy);
}

void TestTransferDelete::deletionTellsItsStepsInOrder()
{
    QVERIFY(m_open->select({QStringLiteral("a.mid"), QStringLiteral("Old")}));
    BoxAnswerer answerer;
    answerer.answer(kTitle, kYes);
    TransferRecorder recorder(m_open->page);
    m_open->page.on_actionDeleteSelectedItems_triggered();
    QCOMPARE(recorder.lines(),
             (QStringList{QStringLiteral("min 0"), QStringLiteral("max 0"), QStringLiteral("value 0"),
                          QStringLiteral("visible 1"), QStringLiteral("label Cancellazione in corso ..."),
                          QStringLiteral("log Transfer : Start Cancellazione"), QStringLiteral("max 2"),
                          QStringLiteral("increase"), QStringLiteral("increase"),
                          QStringLiteral("log Transfer : Fine Cancellazione"),
                          QStringLiteral("label Se hai terminato clicca su FINE"), QStringLiteral("stop 0")}));
    QVERIFY(recorder.log().contains(QtInfoMsg, QStringLiteral("Transfer : Start Cancellazione")));
}

void TestTransferDelete::filesAndFoldersGoAndTheRestStays()
{
    QVERIFY(m_open->select({QStringLiteral("a.mid"), QStringLiteral("c.mid"), QStringLiteral("Old")}));
    BoxAnswerer answerer;
    answerer.answer(kTitle, kYes);
    m_open->page.on_actionDeleteSelectedItems_triggered();
    QCOMPARE(m_player->files(), (QStringList{QStringLiteral("Kept/song.mid"), QStringLiteral("b.mid")}));
    QCOMPARE(m_player->folders(), QStringList{QStringLiteral("Kept")});
}

void TestTransferDelete::readOnlyAndHiddenContentGoesWithItsFolder()
{
    m_player->addFile(QStringLiteral("Old/.hidden"));
    QVERIFY(QFile::setPermissions(m_player->path(QStringLiteral("Old/deep/song.mid")), QFile::ReadOwner));
    QVERIFY(m_open->select({QStringLiteral("Old")}));
    BoxAnswerer answerer;
    answerer.answer(kTitle, kYes);
    m_open->page.on_actionDeleteSelectedItems_triggered();
    QVERIFY(!m_player->exists(QStringLiteral("Old")));
}

void TestTransferDelete::linkGoesButNotWhatItPointsTo()
{
    PcFolder pc;
    pc.addFile(QStringLiteral("songs/mine.mid"));
    QVERIFY(QFile::link(pc.path(QStringLiteral("songs")), m_player->path(QStringLiteral("link"))));
    QVERIFY(m_open->select({QStringLiteral("link")}));
    BoxAnswerer answerer;
    answerer.answer(kTitle, kYes);
    m_open->page.on_actionDeleteSelectedItems_triggered();
    QVERIFY(!QFileInfo(m_player->path(QStringLiteral("link"))).isSymLink());
    QVERIFY(QFileInfo::exists(pc.path(QStringLiteral("songs/mine.mid"))));
}

void TestTransferDelete::vanishedEntryStillCounts()
{
    QVERIFY(m_open->select({QStringLiteral("a.mid"), QStringLiteral("b.mid")}));
    BoxAnswerer answerer;
    answerer.answer(kTitle, kYes);
    answerer.whenShown([this](QMessageBox *) { QFile::remove(m_player->path(QStringLiteral("a.mid"))); });
    TransferRecorder recorder(m_open->page);
    m_open->page.on_actionDeleteSelectedItems_triggered();
    QCOMPARE(recorder.count(QStringLiteral("increase")), 2);
    QVERIFY(!m_player->exists(QStringLiteral("b.mid")));
}

void TestTransferDelete::folderThatStaysIsTriedThreeTimes()
{
    const Resistance resistance(m_player->path(QStringLiteral("Old/deep/song.mid")));
    if (!resistance.isGood())
        QSKIP("No folder that resists can be made on this machine");
    QVERIFY(m_open->select({QStringLiteral("Old")}));
    BoxAnswerer answerer;
    answerer.answer(kTitle, kYes);
    TransferRecorder recorder(m_open->page);
    QElapsedTimer time;
    time.start();
    m_open->page.on_actionDeleteSelectedItems_triggered();
    const qint64 took = time.elapsed();
    // Three attempts have two pauses of 250 ms between them.
    QVERIFY2(took >= 500 && took < 2000, qPrintable(QString::number(took)));
    QCOMPARE(recorder.count(QStringLiteral("increase")), 1);
    QVERIFY(recorder.lines().contains(QStringLiteral("label Se hai terminato clicca su FINE")));
    QVERIFY(m_player->exists(QStringLiteral("Old")));
}

void TestTransferDelete::stopKeepsTheRest()
{
    QVERIFY(m_open->select({QStringLiteral("a.mid"), QStringLiteral("b.mid"), QStringLiteral("c.mid")}));
    BoxAnswerer answerer;
    answerer.answer(kTitle, kYes);
    m_open->page.aborted = true; // of an earlier stop: it is cleared
    TransferRecorder recorder(m_open->page);
    connect(&m_open->page, &Transfer::increaseProgressBarVal, &m_open->page, &Transfer::on_stopActionPressed);
    m_open->page.on_actionDeleteSelectedItems_triggered();
    QCOMPARE(recorder.count(QStringLiteral("increase")), 1);
    QCOMPARE(m_player->files().filter(QStringLiteral("mid")).size(), 4); // one of five is gone
    QCOMPARE(recorder.lines().last(), QStringLiteral("stop 0"));
    QVERIFY(!m_open->page.busy);
}

void TestTransferDelete::finishStaysAsItWas_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::newRow("nothing copied") << false;
    QTest::newRow("something copied before") << true;
}

void TestTransferDelete::finishStaysAsItWas()
{
    QFETCH(bool, enabled);
    m_open->child<QPushButton>("pushBtnForward")->setEnabled(enabled);
    QVERIFY(m_open->select({QStringLiteral("a.mid")}));
    BoxAnswerer answerer;
    answerer.answer(kTitle, kYes);
    TransferRecorder recorder(m_open->page);
    m_open->page.on_actionDeleteSelectedItems_triggered();
    QVERIFY(recorder.lines().contains(QStringLiteral("label Se hai terminato clicca su FINE")));
    QCOMPARE(m_open->page.isFinishPending(), enabled);
}

void TestTransferDelete::pageRefusesEverythingMeanwhile()
{
    QVERIFY(m_open->select({QStringLiteral("a.mid")}));
    BoxAnswerer answerer;
    answerer.answer(kTitle, kYes);
    QSignalSpy back(&m_open->page, &Transfer::backFromTransferToFirstMenu);
    bool dragLetIn = true;
    connect(&m_open->page, &Transfer::increaseProgressBarVal, this, [&] {
        QVERIFY(m_open->page.busy);
        m_open->page.on_pushBtnBack_clicked();
        Drag drag(m_open->page, fileUrls({QStringLiteral("/tmp/x")}));
        dragLetIn = drag.enter(m_open->overDropArea());
    });
    m_open->page.on_actionDeleteSelectedItems_triggered();
    QCOMPARE(back.count(), 0);
    QVERIFY(!dragLetIn);
}

void TestTransferDelete::signalsAreBlockedMeanwhileAndTheTableFollowsAfterwards()
{
    QVERIFY(m_open->select({QStringLiteral("a.mid"), QStringLiteral("b.mid")}));
    BoxAnswerer answerer;
    answerer.answer(kTitle, kYes);
    int blocked = 0;
    connect(&m_open->page, &Transfer::increaseProgressBarVal, this, [&] {
        blocked += int(m_open->table()->signalsBlocked() && m_open->table()->model()->signalsBlocked() &&
                       m_open->tree()->signalsBlocked() && m_open->tree()->model()->signalsBlocked());
    });
    m_open->page.on_actionDeleteSelectedItems_triggered();
    QCOMPARE(blocked, 2);
    QVERIFY(!m_open->table()->signalsBlocked() && !m_open->table()->model()->signalsBlocked());
    QVERIFY(!m_open->tree()->signalsBlocked() && !m_open->tree()->model()->signalsBlocked());
    QTRY_COMPARE(m_open->names(),
                 (QStringList{QStringLiteral("Kept"), QStringLiteral("Old"), QStringLiteral("c.mid")}));
}

void TestTransferDelete::delKeyAndButtonDelete()
{
    BoxAnswerer answerer;
    answerer.answer(kTitle, kYes);
    answerer.answer(kTitle, kYes);
    QVERIFY(m_open->select({QStringLiteral("a.mid")}));
    m_open->page.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&m_open->page));
    m_open->table()->setFocus();
    QTest::keyClick(m_open->table(), Qt::Key_Delete);
    QVERIFY(!m_player->exists(QStringLiteral("a.mid")));
    QVERIFY(m_open->select({QStringLiteral("b.mid")}));
    QTest::mouseClick(m_open->child<QToolButton>("toolButtonDelete"), Qt::LeftButton);
    QVERIFY(!m_player->exists(QStringLiteral("b.mid")));
}

void TestTransferDelete::nothingSelectedDeletesNothing()
{
    const QStringList before = m_player->files();
    QTest::mouseClick(m_open->child<QToolButton>("toolButtonDelete"), Qt::LeftButton); // disabled: no question
    BoxAnswerer answerer;
    answerer.answer(kTitle, kYes);
    TransferRecorder recorder(m_open->page);
    m_open->page.on_actionDeleteSelectedItems_triggered();
    QCOMPARE(recorder.count(QStringLiteral("increase")), 0);
    QCOMPARE(m_player->files(), before);
}

void TestTransferDelete::wholePlayerIsNeverDeleted()
{
    // Without a folder to show, a view shows the top of its model: the player itself.
    m_open->table()->setRootIndex(QModelIndex());
    const QStringList before = m_player->files();
    const QModelIndex top = m_open->table()->model()->index(0, 0);
    QVERIFY(top.data().toString().contains(QStringLiteral("CORVIN4")));
    m_open->table()->selectionModel()->select(top, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    BoxAnswerer answerer;
    answerer.answer(kTitle, kYes);
    m_open->page.on_actionDeleteSelectedItems_triggered();
    QCOMPARE(m_player->files(), before);
}

QTEST_MAIN(TestTransferDelete)
#include "tst_transferdelete.moc"
