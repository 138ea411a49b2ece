#include "opentransfer.h"
#include "support/simulatedplayer.h"

#include <QLabel>
#include <QTableView>
#include <QtTest>

namespace {
const QString kNormal = QStringLiteral("border-style: dashed; border-color: #515151; border-width: 2px;"
                                       "background-color: rgb(221,221,221,127);");
const QString kHover = QStringLiteral("border-style: dashed; border-color: #515151; border-width: 2px;"
                                      "background-color: rgb(249,191,000,127);");
} // namespace

/// What a drag does before it is dropped, with events of the kind the system sends.
class TestTransferDrag : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void dragIsLetIn();
    void dragIsRefusedWhileBusy();
    void viewsLeaveDragsToThePage();
    void dropAreaIsHighlightedAndMeansTheCurrentFolder();
    void folderRowIsSelectedAndBecomesTheTarget();
    void folderRowInASubFolderIsJoinedWithASlash();
    void fileRowMeansTheCurrentFolder();
    void fileRowAfterAFolderRowForgetsTheFolder();
    void emptyPlaceOfTheTableMeansTheCurrentFolder();
    void headerAndOtherPlacesRefuse_data();
    void headerAndOtherPlacesRefuse();
    void moveAsProposedActionIsRefused_data();
    void moveAsProposedActionIsRefused();
    void dragWithBothActionsIsACopy();
    void dragMovesAreRefusedWhileBusy();
    void leavingRestoresEverything();
    void dragBeforeThePcButtonFindsNoPlaceToDrop();

private:
    QString style() const { return m_open->child<QLabel>("dropArea")->styleSheet(); }
    QStringList selected() const;
    Drag drag() const { return Drag(m_open->page, fileUrls({QStringLiteral("/tmp/song.mid")})); }

    QScopedPointer<SimulatedPlayer> m_player;
    QScopedPointer<OpenTransfer> m_open;
};

void TestTransferDrag::init()
{
    m_player.reset(new SimulatedPlayer);
    m_player->addFile(QStringLiteral("My Songs/Rock/a.mid"));
    m_player->addFile(QStringLiteral("My Songs/b.mid"));
    m_player->addFile(QStringLiteral("loose.mid"));
    m_open.reset(new OpenTransfer(m_player->root()));
    QVERIFY(m_open->row(QStringLiteral("My Songs")).isValid());
    QVERIFY(m_open->row(QStringLiteral("loose.mid")).isValid());
}

void TestTransferDrag::cleanup()
{
    m_open.reset();
    m_player.reset();
}

QStringList TestTransferDrag::selected() const
{
    QStringList names;
    const QModelIndexList rows = m_open->table()->selectionModel()->selectedRows();
    for (const QModelIndex &row : rows)
        names.append(row.data().toString());
    return names;
}

void TestTransferDrag::dragIsLetIn()
{
    QVERIFY(drag().enter(m_open->elsewhere()));
    QCOMPARE(style(), kNormal);
}

void TestTransferDrag::dragIsRefusedWhileBusy()
{
    m_open->page.busy = true;
    QVERIFY(!drag().enter(m_open->overDropArea()));
}

void TestTransferDrag::viewsLeaveDragsToThePage()
{
    QVERIFY(m_open->page.acceptDrops());
    const QList<QWidget *> children = m_open->page.findChildren<QWidget *>();
    QVERIFY(!children.isEmpty());
    for (const QWidget *child : children)
        QVERIFY2(!child->acceptDrops(), qPrintable(child->objectName()));
}

void TestTransferDrag::dropAreaIsHighlightedAndMeansTheCurrentFolder()
{
    QVERIFY(m_open->select({QStringLiteral("loose.mid")}));
    m_open->page.dropTarget = m_player->path(QStringLiteral("My Songs"));
    Drag moving = drag();
    QVERIFY(moving.enter(m_open->overDropArea()));
    QVERIFY(moving.move(m_open->overDropArea()));
    QCOMPARE(style(), kHover);
    QCOMPARE(selected(), QStringList());
    QCOMPARE(m_open->page.dropTarget, QString());
}

void TestTransferDrag::folderRowIsSelectedAndBecomesTheTarget()
{
    Drag moving = drag();
    QVERIFY(moving.enter(m_open->overDropArea()));
    QVERIFY(moving.move(m_open->overDropArea()));
    QVERIFY(moving.move(m_open->overRow(QStringLiteral("My Songs"))));
    QCOMPARE(style(), kNormal);
    QCOMPARE(m_open->page.dropTarget, m_player->path(QStringLiteral("My Songs")));
    QCOMPARE(selected(), QStringList{QStringLiteral("My Songs")});
}

void TestTransferDrag::folderRowInASubFolderIsJoinedWithASlash()
{
    m_open->page.on_tableView_doubleClicked(m_open->row(QStringLiteral("My Songs")));
    Drag moving = drag();
    QVERIFY(moving.enter(m_open->overDropArea()));
    QVERIFY(moving.move(m_open->overRow(QStringLiteral("Rock"))));
    QCOMPARE(m_open->page.dropTarget, m_player->path(QStringLiteral("My Songs/Rock")));
}

void TestTransferDrag::fileRowMeansTheCurrentFolder()
{
    Drag moving = drag();
    QVERIFY(moving.enter(m_open->overDropArea()));
    QVERIFY(moving.move(m_open->overRow(QStringLiteral("loose.mid"))));
    QCOMPARE(m_open->page.dropTarget, m_player->root());
    QCOMPARE(style(), kNormal);
}

void TestTransferDrag::fileRowAfterAFolderRowForgetsTheFolder()
{
    Drag moving = drag();
    QVERIFY(moving.enter(m_open->overDropArea()));
    QVERIFY(moving.move(m_open->overRow(QStringLiteral("My Songs"))));
    QVERIFY(moving.move(m_open->overRow(QStringLiteral("loose.mid"))));
    QCOMPARE(m_open->page.dropTarget, m_player->root());
    QCOMPARE(selected(), QStringList());
}

void TestTransferDrag::emptyPlaceOfTheTableMeansTheCurrentFolder()
{
    Drag moving = drag();
    QVERIFY(moving.enter(m_open->overDropArea()));
    QVERIFY(moving.move(m_open->overRow(QStringLiteral("My Songs"))));
    QVERIFY(moving.move(m_open->overEmptyTable()));
    QCOMPARE(m_open->page.dropTarget, QString());
    QCOMPARE(selected(), QStringList());
}

void TestTransferDrag::headerAndOtherPlacesRefuse_data()
{
    QTest::addColumn<bool>("header");
    QTest::newRow("header of the table") << true;
    QTest::newRow("elsewhere") << false;
}

void TestTransferDrag::headerAndOtherPlacesRefuse()
{
    QFETCH(bool, header);
    Drag moving = drag();
    QVERIFY(moving.enter(m_open->overDropArea()));
    QVERIFY(moving.move(m_open->overRow(QStringLiteral("My Songs"))));
    QVERIFY(!moving.move(header ? m_open->overHeader() : m_open->elsewhere()));
    QCOMPARE(m_open->page.dropTarget, QString());
    QCOMPARE(selected(), QStringList());
    QVERIFY(moving.move(m_open->overDropArea()));
    QCOMPARE(style(), kHover);
    QVERIFY(!moving.move(header ? m_open->overHeader() : m_open->elsewhere()));
    QCOMPARE(style(), kNormal);
}

void TestTransferDrag::moveAsProposedActionIsRefused_data()
{
    QTest::addColumn<int>("actions");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("move is all the source offers") << int(Qt::MoveAction) << int(Qt::NoModifier);
    QTest::newRow("move is chosen by the shift key") << int(Qt::CopyAction | Qt::MoveAction) << int(Qt::ShiftModifier);
    QTest::newRow("link") << int(Qt::LinkAction) << int(Qt::NoModifier);
}

void TestTransferDrag::moveAsProposedActionIsRefused()
{
    QFETCH(int, actions);
    QFETCH(int, modifiers);
    Drag moving(m_open->page, fileUrls({m_player->path(QStringLiteral("loose.mid"))}), Qt::DropActions(actions),
                Qt::KeyboardModifiers(modifiers));
    moving.enter(m_open->overDropArea());
    QVERIFY(!moving.move(m_open->overDropArea()));
    QVERIFY(!moving.move(m_open->overRow(QStringLiteral("My Songs"))));
    QCOMPARE(style(), kNormal);
    QCOMPARE(m_open->page.dropTarget, QString());
    const QStringList before = m_player->files();
    TransferRecorder recorder(m_open->page);
    QVERIFY(!moving.drop(m_open->overDropArea()));
    QCOMPARE(recorder.lines(), QStringList());
    QCOMPARE(m_player->files(), before);
}

void TestTransferDrag::dragWithBothActionsIsACopy()
{
    Drag moving(m_open->page, fileUrls({QStringLiteral("/tmp/song.mid")}), Qt::CopyAction | Qt::MoveAction);
    QVERIFY(moving.enter(m_open->overDropArea()));
    QVERIFY(moving.move(m_open->overDropArea()));
}

void TestTransferDrag::dragMovesAreRefusedWhileBusy()
{
    Drag moving = drag();
    QVERIFY(moving.enter(m_open->overDropArea()));
    m_open->page.busy = true;
    QVERIFY(!moving.move(m_open->overDropArea()));
    QCOMPARE(style(), kNormal);
    TransferRecorder recorder(m_open->page);
    QVERIFY(!moving.drop(m_open->overDropArea()));
    QCOMPARE(recorder.lines(), QStringList());
}

void TestTransferDrag::leavingRestoresEverything()
{
    Drag moving = drag();
    QVERIFY(moving.enter(m_open->overDropArea()));
    QVERIFY(moving.move(m_open->overDropArea()));
    moving.leave();
    QCOMPARE(style(), kNormal);
    QVERIFY(moving.enter(m_open->overDropArea()));
    QVERIFY(moving.move(m_open->overRow(QStringLiteral("My Songs"))));
    moving.leave();
    QCOMPARE(m_open->page.dropTarget, QString());
    QCOMPARE(selected(), QStringList());
}

void TestTransferDrag::dragBeforeThePcButtonFindsNoPlaceToDrop()
{
    m_open->page.prepare(m_player->root());
    Drag moving = drag();
    QVERIFY(moving.enter(m_open->page.rect().center()));
    for (int y = 5; y < m_open->page.height(); y += 40)
        QVERIFY(!moving.move(QPoint(m_open->page.width() / 2, y)));
}

QTEST_MAIN(TestTransferDrag)
#include "tst_transferdrag.moc"
