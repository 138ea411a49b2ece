#include "opentransfer.h"
#include "support/boxanswerer.h"
#include "support/simulatedplayer.h"

#include <QTableView>
#include <QtTest>

namespace {
const QString kExists = QStringLiteral("File esistente");
} // namespace

/// Drops of what the player has already: the question, its answers, and how long they are remembered.
class TestTransferConflicts : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void questionIsAsAgreed();
    void answersDecide_data();
    void answersDecide();
    void yesDoesNotSuppressTheNextQuestion();
    void yesToAllAsksNoMore();
    void noToAllLeavesAllLaterFilesForThisDropOnly();
    void enterAnswersNoToAll();
    void escapeAnswersNo();
    void skippedFilesCountToo();
    void conflictWithAFolderLeavesTheFolder();
    void folderDroppedOverAFileOfItsNameLeavesTheFile();
    void existingFoldersAreJoined();

private:
    QStringList filesOnPlayer() const { return m_player->files(); }

    QScopedPointer<SimulatedPlayer> m_player;
    QScopedPointer<PcFolder> m_pc;
    QScopedPointer<OpenTransfer> m_open;
};

void TestTransferConflicts::init()
{
    m_player.reset(new SimulatedPlayer);
    m_player->addFolder(QStringLiteral("My Songs/Rock"));
    m_pc.reset(new PcFolder);
    m_open.reset(new OpenTransfer(m_player->root()));
}

void TestTransferConflicts::cleanup()
{
    m_open.reset();
    m_pc.reset();
    m_player.reset();
}

void TestTransferConflicts::questionIsAsAgreed()
{
    m_player->addFile(QStringLiteral("My Songs/a.mid"), "player");
    m_open->page.on_tableView_doubleClicked(m_open->row(QStringLiteral("My Songs")));
    BoxAnswerer answerer;
    answerer.answer(kExists, QStringLiteral("No"));
    m_open->drop({m_pc->addFile(QStringLiteral("a.mid"))});
    QCOMPARE(answerer.seen().size(), 1);
    const BoxAnswerer::Seen box = answerer.seen().first();
    QCOMPARE(box.text, QStringLiteral("Il File ") + m_player->path(QStringLiteral("My Songs/a.mid")) +
                           QStringLiteral("\n\nE' già esistente. Sovrascrivo ?"));
    QCOMPARE(QSet<QString>(box.buttons.cbegin(), box.buttons.cend()),
             (QSet<QString>{QStringLiteral("Si"), QStringLiteral("Si,Tutti"), QStringLiteral("No"),
                            QStringLiteral("No,Tutti")}));
    QCOMPARE(box.buttons.size(), 4);
    QCOMPARE(box.defaultButton, QStringLiteral("No,Tutti"));
    QVERIFY(!box.hadParent);
}

void TestTransferConflicts::answersDecide_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<int>("remembered");
    QTest::addColumn<bool>("overwritten");
    QTest::newRow("Si") << QStringLiteral("Si") << int(QMessageBox::Yes) << true;
    QTest::newRow("Si,Tutti") << QStringLiteral("Si,Tutti") << int(QMessageBox::YesToAll) << true;
    QTest::newRow("No") << QStringLiteral("No") << int(QMessageBox::No) << false;
    QTest::newRow("No,Tutti") << QStringLiteral("No,Tutti") << int(QMessageBox::NoToAll) << false;
}

void TestTransferConflicts::answersDecide()
{
    QFETCH(QString, answer);
    QFETCH(int, remembered);
    QFETCH(bool, overwritten);
    m_player->addFile(QStringLiteral("a.mid"), "player");
    BoxAnswerer answerer;
    answerer.answer(kExists, answer);
    m_open->drop({m_pc->addFile(QStringLiteral("a.mid"), "pc")});
    QCOMPARE(m_open->page.overwriteAnswer, remembered);
    QCOMPARE(m_player->content(QStringLiteral("a.mid")), overwritten ? QByteArray("pc") : QByteArray("player"));
    QCOMPARE(m_pc->content(QStringLiteral("a.mid")), QByteArrayLiteral("pc"));
    QCOMPARE(filesOnPlayer(), QStringList{QStringLiteral("a.mid")});
}

void TestTransferConflicts::yesDoesNotSuppressTheNextQuestion()
{
    m_player->addFile(QStringLiteral("a.mid"), "player");
    m_player->addFile(QStringLiteral("b.mid"), "player");
    m_player->addFile(QStringLiteral("c.mid"), "player");
    BoxAnswerer answerer;
    answerer.answer(kExists, QStringLiteral("Si"));
    answerer.answer(kExists, QStringLiteral("No"));
    answerer.answer(kExists, QStringLiteral("Si"));
    m_open->drop({m_pc->addFile(QStringLiteral("a.mid")), m_pc->addFile(QStringLiteral("b.mid")),
                  m_pc->addFile(QStringLiteral("c.mid"))});
    QCOMPARE(m_player->content(QStringLiteral("a.mid")), QByteArrayLiteral("pc"));
    QCOMPARE(m_player->content(QStringLiteral("b.mid")), QByteArrayLiteral("player"));
    QCOMPARE(m_player->content(QStringLiteral("c.mid")), QByteArrayLiteral("pc"));
}

void TestTransferConflicts::yesToAllAsksNoMore()
{
    m_player->addFile(QStringLiteral("album/a.mid"), "player");
    m_player->addFile(QStringLiteral("b.mid"), "player");
    m_pc->addFile(QStringLiteral("album/a.mid"));
    BoxAnswerer answerer;
    answerer.answer(kExists, QStringLiteral("Si,Tutti"));
    m_open->drop({m_pc->path(QStringLiteral("album")), m_pc->addFile(QStringLiteral("b.mid"))});
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(m_player->content(QStringLiteral("album/a.mid")), QByteArrayLiteral("pc"));
    QCOMPARE(m_player->content(QStringLiteral("b.mid")), QByteArrayLiteral("pc"));
}

void TestTransferConflicts::noToAllLeavesAllLaterFilesForThisDropOnly()
{
    m_player->addFile(QStringLiteral("a.mid"), "player");
    m_player->addFile(QStringLiteral("b.mid"), "player");
    const QStringList dropped = {m_pc->addFile(QStringLiteral("a.mid")), m_pc->addFile(QStringLiteral("b.mid")),
                                 m_pc->addFile(QStringLiteral("new.mid"))};
    BoxAnswerer answerer;
    answerer.answer(kExists, QStringLiteral("No,Tutti"));
    m_open->drop(dropped);
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(m_player->content(QStringLiteral("a.mid")), QByteArrayLiteral("player"));
    QCOMPARE(m_player->content(QStringLiteral("b.mid")), QByteArrayLiteral("player"));
    QCOMPARE(m_player->content(QStringLiteral("new.mid")), QByteArrayLiteral("pc"));

    answerer.answer(kExists, QStringLiteral("Si,Tutti"));
    m_open->drop(dropped);
    QCOMPARE(answerer.seen().size(), 2);
    QCOMPARE(m_player->content(QStringLiteral("b.mid")), QByteArrayLiteral("pc"));
}

void TestTransferConflicts::enterAnswersNoToAll()
{
    m_player->addFile(QStringLiteral("a.mid"), "player");
    m_player->addFile(QStringLiteral("b.mid"), "player");
    BoxAnswerer answerer;
    answerer.answerByKey(kExists, Qt::Key_Return);
    m_open->drop({m_pc->addFile(QStringLiteral("a.mid")), m_pc->addFile(QStringLiteral("b.mid"))});
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(m_open->page.overwriteAnswer, int(QMessageBox::NoToAll));
    QCOMPARE(m_player->content(QStringLiteral("a.mid")), QByteArrayLiteral("player"));
}

void TestTransferConflicts::escapeAnswersNo()
{
    m_player->addFile(QStringLiteral("a.mid"), "player");
    m_player->addFile(QStringLiteral("b.mid"), "player");
    BoxAnswerer answerer;
    answerer.answerByKey(kExists, Qt::Key_Escape);
    answerer.answerByClosing(kExists);
    m_open->drop({m_pc->addFile(QStringLiteral("a.mid")), m_pc->addFile(QStringLiteral("b.mid"))});
    QCOMPARE(m_open->page.overwriteAnswer, int(QMessageBox::No));
    QCOMPARE(m_player->content(QStringLiteral("a.mid")), QByteArrayLiteral("player"));
    QCOMPARE(m_player->content(QStringLiteral("b.mid")), QByteArrayLiteral("player"));
}

void TestTransferConflicts::skippedFilesCountToo()
{
    m_player->addFile(QStringLiteral("a.mid"), "player");
    BoxAnswerer answerer;
    answerer.answer(kExists, QStringLiteral("No"));
    TransferRecorder recorder(m_open->page);
    m_open->drop({m_pc->addFile(QStringLiteral("a.mid")), m_pc->addFile(QStringLiteral("b.mid"))});
    QCOMPARE(recorder.count(QStringLiteral("increase")), 2);
}

void TestTransferConflicts::conflictWithAFolderLeavesTheFolder()
{
    m_player->addFile(QStringLiteral("album/song.mid"));
    BoxAnswerer answerer;
    answerer.answer(kExists, QStringLiteral("Si"));
    m_open->drop({m_pc->addFile(QStringLiteral("album"))});
    QCOMPARE(filesOnPlayer(), QStringList{QStringLiteral("album/song.mid")});
}

void TestTransferConflicts::folderDroppedOverAFileOfItsNameLeavesTheFile()
{
    m_player->addFile(QStringLiteral("album"), "player");
    m_pc->addFile(QStringLiteral("album/song.mid"));
    const QString song = m_pc->path(QStringLiteral("album")) + QDir::separator() + QStringLiteral("song.mid");
    TransferRecorder recorder(m_open->page);
    m_open->drop({m_pc->path(QStringLiteral("album"))});
    QCOMPARE(m_player->content(QStringLiteral("album")), QByteArrayLiteral("player"));
    QString logged;
    QDebug(&logged) << "!QFile::copy - src :" << song;
    QVERIFY(recorder.log().contains(QtDebugMsg, logged.trimmed()));
}

void TestTransferConflicts::existingFoldersAreJoined()
{
    m_player->addFile(QStringLiteral("album/old.mid"));
    m_pc->addFile(QStringLiteral("album/new.mid"));
    m_open->drop({m_pc->path(QStringLiteral("album"))});
    QCOMPARE(filesOnPlayer(), (QStringList{QStringLiteral("album/new.mid"), QStringLiteral("album/old.mid")}));
}

QTEST_MAIN(TestTransferConflicts)
#include "tst_transferconflicts.moc"
