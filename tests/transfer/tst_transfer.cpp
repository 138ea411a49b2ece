#include "opentransfer.h"
#include "resources/resources.h"
#include "support/simulatedplayer.h"

#include <QAction>
#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QMetaMethod>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QStandardPaths>
#include <QTableView>
#include <QToolButton>
#include <QTranslator>
#include <QTreeView>
#include <QtTest>

namespace {

/// Gives every text of the page a mark, as a language does.
class Marking : public QTranslator
{
public:
    QString translate(const char *, const char *source, const char *, int) const override
    {
        return QLatin1String("*") + QString::fromUtf8(source);
    }
    bool isEmpty() const override { return false; }
};

} // namespace

/// The transfer page apart from drags, copies and deletions: what it shows, its slots, how it is entered and left.
class TestTransfer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void startsHiddenWithFinishDisabled();
    void textsAreAsAgreed_data();
    void textsAreAsAgreed();
    void signalsAndSlotsComeInTheirOrder();
    void enteredPageShowsTheInstructionsAlone();
    void rootIsTheCurrentFolderAtFirst();
    void pcButtonOpensTheHomeFolder();
    void missingFileManagerIsOnlyALogLine();
    void pcButtonShowsTheTransferWidgets();
    void hiddenInstructionsTakeNoRoomFromTheTable();
    void treeHasThePlayerAsItsOnlyTopAndFoldersOnly();
    void ownFoldersAreHiddenOnlyDirectlyUnderTheRoot();
    void folderSpelledUnlikeAnOwnOneIsShown();
    void playerWithALowerCaseLabelIsNotShown();
    void tableShowsFourColumnsFoldersFirst();
    void severalRowsCanBeSelected();
    void clickInTheTreeMakesTheFolderCurrent();
    void clickOnThePlayerGoesBackToTheRoot();
    void anotherFolderClearsTheSelection();
    void doubleClickEntersAFolder();
    void doubleClickOnAFileDoesNothing();
    void deleteActionIsReachableByButtonAndKey();
    void stopSetsAborted();
    void backLeavesAndDeletesTheModels();
    void finishIsDisabledBeforeThePageIsLeft();
    void slotsReturnWhileBusy();
    void enteredAgainThePageIsNew();
    void newSongsAppearInTheTable();
    void pageWithoutAPlayerShowsNothing();
    void languageChangeKeepsTheFolderLabel();
    void languageChangeWhileBusyKeepsTheModels();

private:
    QScopedPointer<SimulatedPlayer> m_player;
};

void TestTransfer::initTestCase()
{
    loadResources();
}

void TestTransfer::init()
{
    m_player.reset(new SimulatedPlayer);
    m_player->addFile(QStringLiteral("My Songs/Rock/a.mid"));
    m_player->addFile(QStringLiteral("My Songs/b.mid"), "12345");
    m_player->addFile(QStringLiteral("a loose.mid"));
    m_player->addFolder(QStringLiteral("Videos"));
}

void TestTransfer::cleanup()
{
    m_player.reset();
}

void TestTransfer::startsHiddenWithFinishDisabled()
{
    QWidget parent;
    const Transfer page(&parent);
    QVERIFY(page.isHidden());
    QVERIFY(!page.isFinishPending());
    QVERIFY(!page.findChild<QPushButton *>(QStringLiteral("pushBtnForward"))->isEnabled());
    QVERIFY(page.findChild<QPushButton *>(QStringLiteral("pushBtnBack"))->isEnabled());
    QVERIFY(!page.busy && !page.aborted);
    QCOMPARE(page.overwriteAnswer, 0);
}

void TestTransfer::textsAreAsAgreed_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *text) {
        QTest::newRow(name) << QString::fromLatin1(name) << QString::fromUtf8(text);
    };
    row("labelFolder", "SELEZIONA LA CARTELLA DI DESTINAZIONE SUL CORVIN4");
    row("pButPc", "ESPLORA\nPC");
    row("pushBtnBack", "INDIETRO");
    row("pushBtnForward", "FINE");
    row("dropArea", "Trascina Qui File e Cartelle\nPer copiarli nel Corvin4");
    row("labelInstruction", "Clicca su \"ESPLORA PC\" ... e");
}

void TestTransfer::textsAreAsAgreed()
{
    QFETCH(QString, widget);
    QFETCH(QString, text);
    const Transfer page;
    QCOMPARE(page.findChild<QWidget *>(widget)->property("text").toString(), text);
}

void TestTransfer::signalsAndSlotsComeInTheirOrder()
{
    QStringList signalNames;
    QStringList slotNames;
    const QMetaObject &meta = Transfer::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        (method.methodType() == QMetaMethod::Signal ? signalNames : slotNames)
            .append(QString::fromLatin1(method.methodSignature()));
    }
    QCOMPARE(
        signalNames,
        (QStringList{QStringLiteral("setProgressBarVisible(bool)"), QStringLiteral("setProgressBarMinVal(int)"),
                     QStringLiteral("setProgressBarMaxVal(int)"), QStringLiteral("setProgressBarFormat(QString)"),
                     QStringLiteral("updateProgressBarVal(int)"), QStringLiteral("increaseProgressBarVal()"),
                     QStringLiteral("updateLabelAction(QString)"), QStringLiteral("setPushButtonStopVisible(bool)"),
                     QStringLiteral("backFromTransferToFirstMenu()"), QStringLiteral("backFromTransferToOttimizza()"),
                     QStringLiteral("startOttimizzaProcedure()")}));
    QCOMPARE(slotNames,
             (QStringList{QStringLiteral("on_pButPc_clicked()"), QStringLiteral("on_treeView_clicked(QModelIndex)"),
                          QStringLiteral("on_tableView_doubleClicked(QModelIndex)"),
                          QStringLiteral("on_actionDeleteSelectedItems_triggered()"),
                          QStringLiteral("on_pushBtnBack_clicked()"), QStringLiteral("on_pushBtnForward_clicked()"),
                          QStringLiteral("on_stopActionPressed()")}));
}

void TestTransfer::enteredPageShowsTheInstructionsAlone()
{
    Transfer page;
    page.prepare(m_player->root());
    page.show();
    QVERIFY(page.findChild<QWidget *>(QStringLiteral("istruzioniTransfer"))->isVisible());
    QVERIFY(page.findChild<QWidget *>(QStringLiteral("istruzioniTransfer"))->inherits("IstruzioniTransfer"));
    for (const char *name : {"pButPc", "labelInstruction", "pushBtnBack", "pushBtnForward"})
        QVERIFY2(page.findChild<QWidget *>(QLatin1String(name))->isVisible(), name);
    for (const char *name : {"dropArea", "treeView", "tableView", "labelFolder", "toolButtonDelete"})
        QVERIFY2(!page.findChild<QWidget *>(QLatin1String(name))->isVisible(), name);
}

void TestTransfer::rootIsTheCurrentFolderAtFirst()
{
    Transfer page;
    page.prepare(m_player->root());
    QCOMPARE(page.deviceRoot, m_player->root());
    QCOMPARE(page.currentFolder, m_player->root());
    QCOMPARE(page.dropTarget, QString());
}

void TestTransfer::pcButtonOpensTheHomeFolder()
{
    const FakeFileManager fileManager;
    Transfer page;
    page.prepare(m_player->root());
    page.show();
    TransferRecorder recorder(page);
    QTest::mouseClick(page.findChild<QPushButton *>(QStringLiteral("pButPc")), Qt::LeftButton);
    QCOMPARE(recorder.lines(), QStringList{QStringLiteral("log Transfer : Enter")});
    QTRY_COMPARE(fileManager.opened(),
                 QDir::toNativeSeparators(QStandardPaths::writableLocation(QStandardPaths::HomeLocation)));
}

void TestTransfer::missingFileManagerIsOnlyALogLine()
{
    const BrokenFileManager fileManager;
    Transfer page;
    page.prepare(m_player->root());
    page.show();
    TransferRecorder recorder(page);
    page.on_pButPc_clicked();
    QCOMPARE(recorder.lines(), (QStringList{QStringLiteral("log Transfer : Nessun file manager"),
                                            QStringLiteral("log Transfer : Enter")}));
    QVERIFY(page.findChild<QWidget *>(QStringLiteral("dropArea"))->isVisible());
}

void TestTransfer::pcButtonShowsTheTransferWidgets()
{
    const OpenTransfer open(m_player->root());
    QCOMPARE(open.child<QStackedWidget>("stackedWidget")->currentIndex(), 0);
    for (const char *name : {"dropArea", "treeView", "tableView", "labelFolder", "toolButtonDelete", "pushBtnBack",
                             "pushBtnForward", "pButPc"})
        QVERIFY2(open.child<QWidget>(name)->isVisible(), name);
    for (const char *name : {"istruzioniTransfer", "labelInstruction"})
        QVERIFY2(!open.child<QWidget>(name)->isVisible(), name);
    QCOMPARE(open.child<QLabel>("labelFolder")->text(), QString());
    QVERIFY(open.tree()->isExpanded(open.tree()->model()->index(0, 0)));
}

void TestTransfer::hiddenInstructionsTakeNoRoomFromTheTable()
{
    const OpenTransfer open(m_player->root());
    QTRY_VERIFY(open.child<QLabel>("dropArea")->width() < open.child<QWidget>("widgetDevice")->width());
    QVERIFY2(open.page.minimumSizeHint().width() <= 1000,
             qPrintable(QString::number(open.page.minimumSizeHint().width())));
}

void TestTransfer::treeHasThePlayerAsItsOnlyTopAndFoldersOnly()
{
    const OpenTransfer open(m_player->root());
    const QAbstractItemModel *model = open.tree()->model();
    QCOMPARE(model->rowCount(), 1);
    QVERIFY(model->index(0, 0).data().toString().contains(QStringLiteral("CORVIN4")));
    QTRY_COMPARE(model->rowCount(model->index(0, 0)), 2);
    QCOMPARE(model->index(0, 0, model->index(0, 0)).data().toString(), QStringLiteral("My Songs"));
    QCOMPARE(model->index(1, 0, model->index(0, 0)).data().toString(), QStringLiteral("Videos"));
    QVERIFY(open.tree()->isColumnHidden(1));
}

void TestTransfer::ownFoldersAreHiddenOnlyDirectlyUnderTheRoot()
{
    m_player->addFile(QStringLiteral("System/Playlist/p.pls"));
    m_player->addFolder(QStringLiteral("CorvinUpdate"));
    m_player->addFolder(QStringLiteral("My Songs/System"));
    m_player->addFolder(QStringLiteral("My Songs/CorvinUpdate"));
    OpenTransfer open(m_player->root());
    QVERIFY(open.row(QStringLiteral("My Songs")).isValid());
    QVERIFY(!open.names().contains(QStringLiteral("System")));
    QVERIFY(!open.names().contains(QStringLiteral("CorvinUpdate")));
    const QAbstractItemModel *folders = open.tree()->model();
    QTRY_COMPARE(folders->rowCount(folders->index(0, 0)), 2); // My Songs, Videos
    open.page.on_tableView_doubleClicked(open.row(QStringLiteral("My Songs")));
    QVERIFY(open.row(QStringLiteral("System")).isValid());
    QVERIFY(open.row(QStringLiteral("CorvinUpdate")).isValid());
}

void TestTransfer::folderSpelledUnlikeAnOwnOneIsShown()
{
    m_player->addFolder(QStringLiteral("system"));
    const OpenTransfer open(m_player->root());
    QVERIFY(open.row(QStringLiteral("system")).isValid());
    const QAbstractItemModel *folders = open.tree()->model();
    QTRY_COMPARE(folders->rowCount(folders->index(0, 0)), 3); // My Songs, Videos, system
}

void TestTransfer::playerWithALowerCaseLabelIsNotShown()
{
    m_player.reset(new SimulatedPlayer(QStringLiteral("corvin4")));
    m_player->addFile(QStringLiteral("song.mid"));
    const OpenTransfer open(m_player->root());
    QCOMPARE(open.tree()->model()->rowCount(), 0);
    QCOMPARE(open.table()->model()->rowCount(open.table()->rootIndex()), 0);
}

void TestTransfer::tableShowsFourColumnsFoldersFirst()
{
    const OpenTransfer open(m_player->root());
    QTRY_COMPARE(open.names(),
                 (QStringList{QStringLiteral("My Songs"), QStringLiteral("Videos"), QStringLiteral("a loose.mid")}));
    QCOMPARE(open.table()->model()->columnCount(open.table()->rootIndex()), 4);
    for (int column = 0; column < 4; ++column)
        QVERIFY(!open.table()->isColumnHidden(column));
    QVERIFY(!open.row(QStringLiteral("a loose.mid")).siblingAtColumn(1).data().toString().isEmpty());
    QVERIFY(!open.row(QStringLiteral("a loose.mid")).siblingAtColumn(3).data().toString().isEmpty());
}

void TestTransfer::severalRowsCanBeSelected()
{
    const OpenTransfer open(m_player->root());
    const QModelIndex first = open.row(QStringLiteral("My Songs"));
    const QModelIndex last = open.row(QStringLiteral("a loose.mid"));
    QTest::mouseClick(open.table()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      open.table()->visualRect(first).center());
    QTest::mouseClick(open.table()->viewport(), Qt::LeftButton, Qt::ControlModifier,
                      open.table()->visualRect(last).center());
    QCOMPARE(open.table()->selectionModel()->selectedRows().size(), 2);
}

void TestTransfer::clickInTheTreeMakesTheFolderCurrent()
{
    const OpenTransfer open(m_player->root());
    const QAbstractItemModel *model = open.tree()->model();
    QTRY_COMPARE(model->rowCount(model->index(0, 0)), 2);
    const QModelIndex songs = model->index(0, 0, model->index(0, 0));
    QTRY_VERIFY(!open.tree()->visualRect(songs).isEmpty());
    QTest::mouseClick(open.tree()->viewport(), Qt::LeftButton, Qt::NoModifier, open.tree()->visualRect(songs).center());
    QCOMPARE(open.page.currentFolder, m_player->path(QStringLiteral("My Songs")));
    QCOMPARE(open.child<QLabel>("labelFolder")->text(), QStringLiteral("My Songs"));
    QTRY_COMPARE(open.names(), (QStringList{QStringLiteral("Rock"), QStringLiteral("b.mid")}));
}

void TestTransfer::clickOnThePlayerGoesBackToTheRoot()
{
    OpenTransfer open(m_player->root());
    open.page.on_tableView_doubleClicked(open.row(QStringLiteral("My Songs")));
    open.page.on_treeView_clicked(open.tree()->model()->index(0, 0));
    QCOMPARE(open.page.currentFolder, m_player->root());
    QCOMPARE(open.child<QLabel>("labelFolder")->text(), QString());
    QVERIFY(open.row(QStringLiteral("a loose.mid")).isValid());
}

void TestTransfer::anotherFolderClearsTheSelection()
{
    OpenTransfer open(m_player->root());
    QVERIFY(open.select({QStringLiteral("a loose.mid")}));
    open.page.on_treeView_clicked(open.tree()->model()->index(0, 0)); // the current folder already
    QVERIFY(open.table()->selectionModel()->hasSelection());
    open.page.on_tableView_doubleClicked(open.row(QStringLiteral("My Songs")));
    QVERIFY(!open.table()->selectionModel()->hasSelection());
}

void TestTransfer::doubleClickEntersAFolder()
{
    const OpenTransfer open(m_player->root());
    QTRY_COMPARE(open.names().size(), 3);
    QTRY_COMPARE(open.names().first(), QStringLiteral("My Songs"));
    const QModelIndex songs = open.row(QStringLiteral("My Songs"));
    const auto doubleClick = [&open](const QModelIndex &index) {
        const QPoint where = open.table()->visualRect(index).center();
        QTest::mouseClick(open.table()->viewport(), Qt::LeftButton, Qt::NoModifier, where);
        QTest::mouseDClick(open.table()->viewport(), Qt::LeftButton, Qt::NoModifier, where);
    };
    doubleClick(songs);
    QCOMPARE(open.page.currentFolder, m_player->path(QStringLiteral("My Songs")));
    const QModelIndex rock = open.row(QStringLiteral("Rock"));
    doubleClick(rock.siblingAtColumn(3));
    QCOMPARE(open.page.currentFolder, m_player->path(QStringLiteral("My Songs/Rock")));
    QCOMPARE(open.child<QLabel>("labelFolder")->text(), QStringLiteral("My Songs/Rock"));
    QCOMPARE(open.tree()->currentIndex().data().toString(), QStringLiteral("Rock"));
}

void TestTransfer::doubleClickOnAFileDoesNothing()
{
    OpenTransfer open(m_player->root());
    open.page.on_tableView_doubleClicked(open.row(QStringLiteral("a loose.mid")));
    open.page.on_tableView_doubleClicked(QModelIndex());
    open.page.on_treeView_clicked(QModelIndex());
    QCOMPARE(open.page.currentFolder, m_player->root());
}

void TestTransfer::deleteActionIsReachableByButtonAndKey()
{
    OpenTransfer open(m_player->root());
    auto *action = open.child<QAction>("actionDeleteSelectedItems");
    QCOMPARE(action->toolTip(), QStringLiteral("Elimina i file e cartelle selezionate"));
    QVERIFY(!action->icon().isNull());
    QCOMPARE(action->icon().pixmap(32, 32).toImage(),
             QIcon(QStringLiteral(":/imgs/chiudi.png")).pixmap(32, 32).toImage());
    QCOMPARE(open.child<QToolButton>("toolButtonDelete")->defaultAction(), action);
    QVERIFY(!action->isEnabled()); // nothing is selected
    QVERIFY(open.select({QStringLiteral("a loose.mid")}));
    QVERIFY(action->isEnabled());
    QCOMPARE(action->shortcut(), QKeySequence(Qt::Key_Delete));
    QVERIFY(open.page.actions().contains(action));
}

void TestTransfer::stopSetsAborted()
{
    Transfer page;
    page.on_stopActionPressed();
    QVERIFY(page.aborted);
}

void TestTransfer::backLeavesAndDeletesTheModels()
{
    const OpenTransfer open(m_player->root());
    const QPointer<QAbstractItemModel> folders = open.tree()->model();
    const QPointer<QAbstractItemModel> entries = open.table()->model();
    QVERIFY(folders && entries);
    QSignalSpy back(&open.page, &Transfer::backFromTransferToFirstMenu);
    QTest::mouseClick(open.child<QPushButton>("pushBtnBack"), Qt::LeftButton);
    QCOMPARE(back.count(), 1);
    QVERIFY(!folders && !entries);
    QVERIFY(!open.tree()->model() && !open.table()->model());
}

void TestTransfer::finishIsDisabledBeforeThePageIsLeft()
{
    OpenTransfer open(m_player->root());
    auto *finish = open.child<QPushButton>("pushBtnForward");
    finish->setEnabled(true);
    QVERIFY(open.page.isFinishPending());
    const QPointer<QAbstractItemModel> entries = open.table()->model();
    bool wasLeftClean = false;
    connect(&open.page, &Transfer::backFromTransferToOttimizza, this,
            [&] { wasLeftClean = !open.page.isFinishPending() && !entries; });
    TransferRecorder recorder(open.page);
    QTest::mouseClick(finish, Qt::LeftButton);
    QCOMPARE(recorder.lines(), (QStringList{QStringLiteral("optimise page"), QStringLiteral("optimise")}));
    QVERIFY(wasLeftClean);
}

void TestTransfer::slotsReturnWhileBusy()
{
    OpenTransfer open(m_player->root());
    QVERIFY(open.select({QStringLiteral("a loose.mid")}));
    open.child<QPushButton>("pushBtnForward")->setEnabled(true);
    open.page.prepare(m_player->root());
    open.page.busy = true;
    TransferRecorder recorder(open.page);
    open.page.on_pButPc_clicked();
    open.page.on_treeView_clicked(open.tree()->model()->index(0, 0));
    open.page.on_tableView_doubleClicked(open.row(QStringLiteral("My Songs")));
    open.page.on_actionDeleteSelectedItems_triggered();
    open.page.on_pushBtnBack_clicked();
    open.page.on_pushBtnForward_clicked();
    QCOMPARE(recorder.lines(), QStringList());
    QVERIFY(!open.child<QWidget>("dropArea")->isVisible());
    QCOMPARE(open.page.currentFolder, m_player->root());
    QVERIFY(m_player->exists(QStringLiteral("a loose.mid")));
    QVERIFY(open.table()->model());
    QVERIFY(open.page.isFinishPending());
    open.page.busy = false;
}

void TestTransfer::enteredAgainThePageIsNew()
{
    OpenTransfer open(m_player->root());
    open.page.on_tableView_doubleClicked(open.row(QStringLiteral("My Songs")));
    open.page.on_pushBtnBack_clicked();
    m_player->addFile(QStringLiteral("new.mid"));
    open.page.prepare(m_player->root());
    QCOMPARE(open.page.currentFolder, m_player->root());
    QVERIFY(!open.child<QWidget>("dropArea")->isVisible());
    QVERIFY(open.child<QWidget>("istruzioniTransfer")->isVisible());
    open.page.on_pButPc_clicked();
    QCOMPARE(open.child<QLabel>("labelFolder")->text(), QString());
    QVERIFY(open.row(QStringLiteral("new.mid")).isValid());
}

void TestTransfer::newSongsAppearInTheTable()
{
    const OpenTransfer open(m_player->root());
    QVERIFY(open.row(QStringLiteral("a loose.mid")).isValid());
    m_player->addFile(QStringLiteral("new.mid"));
    QVERIFY(open.row(QStringLiteral("new.mid")).isValid());
}

void TestTransfer::pageWithoutAPlayerShowsNothing()
{
    SimulatedPlayer::disconnect();
    OpenTransfer open{QString()};
    QCOMPARE(open.tree()->model()->rowCount(), 0);
    QCOMPARE(open.table()->model()->rowCount(), 0);
    open.page.on_tableView_doubleClicked(QModelIndex());
    open.page.on_pushBtnBack_clicked();
}

void TestTransfer::languageChangeKeepsTheFolderLabel()
{
    OpenTransfer open(m_player->root());
    open.page.on_tableView_doubleClicked(open.row(QStringLiteral("My Songs")));
    Marking marking;
    QVERIFY(QCoreApplication::installTranslator(&marking));
    QCoreApplication::processEvents();
    QCOMPARE(open.child<QPushButton>("pushBtnForward")->text(), QStringLiteral("*FINE"));
    QCOMPARE(open.child<QAction>("actionDeleteSelectedItems")->toolTip(),
             QStringLiteral("*Elimina i file e cartelle selezionate"));
    QVERIFY(open.child<QLabel>("labelText1")->text().startsWith(QLatin1Char('*')));
    QCOMPARE(open.child<QLabel>("labelFolder")->text(), QStringLiteral("My Songs"));
    QVERIFY(open.row(QStringLiteral("b.mid")).isValid());
    QCOMPARE(open.tree()->currentIndex().data().toString(), QStringLiteral("My Songs"));
    QCoreApplication::removeTranslator(&marking);
    QCoreApplication::processEvents();
    QCOMPARE(open.child<QPushButton>("pushBtnForward")->text(), QStringLiteral("FINE"));
}

void TestTransfer::languageChangeWhileBusyKeepsTheModels()
{
    OpenTransfer open(m_player->root());
    const QPointer<QAbstractItemModel> entries = open.table()->model();
    open.page.busy = true;
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&open.page, &change);
    QVERIFY(entries);
    open.page.busy = false;
    QCoreApplication::sendEvent(&open.page, &change);
    QVERIFY(!entries);
    QVERIFY(open.table()->model());
}

QTEST_MAIN(TestTransfer)
#include "tst_transfer.moc"
