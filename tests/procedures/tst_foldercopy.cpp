#include "systemfixture.h"

#include "app/mainwindow.h"
#include "app/shared/sharedfonts.h"
#include "resources/resources.h"
#include "support/boxanswerer.h"
#include "support/platform.h"
#include "support/simulatedplayer.h"

#include <QDir>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString kExists = QStringLiteral("File Esistente");
const QString kFailed = QStringLiteral("Errore sulla copia");
const QString kYes = QStringLiteral("Si");
const QString kNo = QStringLiteral("No");
const QString kYesToAll = QStringLiteral("Si,Tutti");

} // namespace

class TestFolderCopy : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void emptyListIsDoneAndResetsTheBar();
    void filesAreCopiedWithTheirFolders();
    void barCountsTheFiles();
    void barShowsTheCountWhileItWorks();
    void sourcePrefixIsCutWithoutALook();
    void destinationWithoutASeparatorMakesNoFolder();
    void backslashWithABlankSplitsFolders();
    void plainBackslashesMakeNoFolder();
    void folderThatCannotBeMadeEndsTheCopy();
    void conflictQuestionReadsAsWritten();
    void singleAnswersToAConflict_data();
    void singleAnswersToAConflict();
    void yesToAllReplacesTheRestOfThisCallOnly();
    void refusedReplacementCountsAsCopied();
    void existingFileStaysWhenItsSuccessorCannotBeCopied();
    void fileThatWouldReplaceItselfStays();
    void fileThatWouldReplaceItselfByALinkStays();
    void copyErrorQuestionReadsAsWritten();
    void answersToACopyError_data();
    void answersToACopyError();
    void ignoredErrorsAreForgottenAfterTheCall();
    void outcomeIsTheLastFiles();
    void folderInTheListIsAskedAboutLikeAFile();
    void folderThatExistsAlreadyIsAConflictThenAnError();
    void stopEndsTheCopyAfterTheCurrentFile();
    void stopBeforeTheStartStillCopiesOneFile();
    void twoAnswersAreKeptApart();

private:
    QString source(const QString &name, const QByteArray &content = QByteArrayLiteral("new"));
    QString target(const QString &name) const { return m_to + name; }
    bool copy(const QStringList &sources);

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ProcedureWindow> m_procedure;
    std::unique_ptr<BoxAnswerer> m_boxes;
    QProgressBar *m_bar = nullptr;
    QString m_from;
    QString m_to;
};

void TestFolderCopy::initTestCase()
{
    SimulatedPlayer::disconnect();
    loadResources();
    registerEmbeddedFonts();
}

void TestFolderCopy::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_from = m_dir->path() + QStringLiteral("/from/");
    m_to = m_dir->path() + QStringLiteral("/to/");
    QVERIFY(QDir().mkpath(m_from) && QDir().mkpath(m_to));
    m_procedure = std::make_unique<ProcedureWindow>();
    m_bar = m_procedure->bar();
    m_boxes = std::make_unique<BoxAnswerer>();
}

void TestFolderCopy::cleanup()
{
    m_boxes.reset();
    m_procedure.reset();
    m_dir.reset();
}

/// Makes a file below the source root and returns its path.
QString TestFolderCopy::source(const QString &name, const QByteArray &content)
{
    putFile(m_from + name, content);
    return m_from + name;
}

bool TestFolderCopy::copy(const QStringList &sources)
{
    return (*m_procedure)->copyFileList(sources, m_to, m_from, m_bar);
}

void TestFolderCopy::emptyListIsDoneAndResetsTheBar()
{
    m_bar->setFormat(QStringLiteral("x"));
    m_bar->setValue(50);
    QVERIFY(copy({}));
    QCOMPARE(m_bar->maximum(), 0);
    QCOMPARE(m_bar->value(), 0);
    QCOMPARE(m_bar->format(), QStringLiteral("%p%"));
    QVERIFY(entriesBelow(m_to).isEmpty());
}

void TestFolderCopy::filesAreCopiedWithTheirFolders()
{
    const QStringList names = {QStringLiteral("a.mid"), QStringLiteral("My Songs/b.mid"),
                               QStringLiteral("My Songs/deep/er/c"), QString::fromUtf8("Canzoni di là/perché.mid"),
                               QStringLiteral(".hidden/d.mid")};
    QStringList sources;
    for (const QString &name : names)
        sources.append(source(name, name.toUtf8()));
    QVERIFY(copy(sources));
    for (const QString &name : names)
        QCOMPARE(contentOf(target(name)), name.toUtf8());
    QCOMPARE(entriesBelow(m_to), entriesBelow(m_from));
    QVERIFY((*m_procedure)->procedureOk);
}

void TestFolderCopy::barCountsTheFiles()
{
    QStringList sources;
    for (int i = 0; i < 4; ++i)
        sources.append(source(QStringLiteral("%1.mid").arg(i)));
    QList<int> values;
    connect(m_bar, &QProgressBar::valueChanged, this, [&values](int value) { values.append(value); });
    QVERIFY(copy(sources));
    const QList<int> expected = {1, 2, 3, 4, 0};
    QCOMPARE(values.mid(values.indexOf(1)), expected);
    QCOMPARE(m_bar->maximum(), 4);
    QCOMPARE(m_bar->value(), 0);
    QCOMPARE(m_bar->format(), QStringLiteral("%p%"));
}

void TestFolderCopy::barShowsTheCountWhileItWorks()
{
    putFile(target(QStringLiteral("b.mid")));
    m_boxes->answer(kExists, kNo);
    bool looked = false;
    m_boxes->whenShown([&](QMessageBox *) {
        looked = true;
        QCOMPARE(m_bar->format(), QStringLiteral("%v"));
        QCOMPARE(m_bar->maximum(), 3);
        QCOMPARE(m_bar->value(), 1);
    });
    QVERIFY(copy({source(QStringLiteral("a.mid")), source(QStringLiteral("b.mid")), source(QStringLiteral("c.mid"))}));
    QVERIFY(looked);
}

void TestFolderCopy::sourcePrefixIsCutWithoutALook()
{
    const QString path = source(QStringLiteral("a.mid"));
    const QString other(m_from.size(), QLatin1Char('?'));
    QVERIFY((*m_procedure)->copyFileList({path}, m_to, other, m_bar));
    QVERIFY(QFileInfo::exists(target(QStringLiteral("a.mid"))));
    // One character less: the slash in front of the name is left over, and harmless.
    QVERIFY((*m_procedure)->copyFileList({path}, m_to + QStringLiteral("sub"), other.chopped(1), m_bar));
    QVERIFY(QFileInfo::exists(target(QStringLiteral("sub/a.mid"))));
}

void TestFolderCopy::destinationWithoutASeparatorMakesNoFolder()
{
    const QString path = source(QStringLiteral("a.mid"));
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_to));
    const bool copied = (*m_procedure)->copyFileList({path}, QString(), m_from, m_bar);
    QDir::setCurrent(before);
    QVERIFY(copied);
    QCOMPARE(entriesBelow(m_to), QStringList{QStringLiteral("a.mid")});
}

void TestFolderCopy::backslashWithABlankSplitsFolders()
{
    if (QDir::separator() != QLatin1Char('/'))
        QSKIP("A name with a backslash can be made where it separates nothing alone");
    const QString path = source(QStringLiteral("one\\ two/a.mid"));
    m_boxes->answer(kFailed, kYes);
    QVERIFY(!copy({path}));
    const QStringList expected = {QStringLiteral("one"), QStringLiteral("one/two")};
    QCOMPARE(entriesBelow(m_to), expected);
}

void TestFolderCopy::plainBackslashesMakeNoFolder()
{
    if (QDir::separator() != QLatin1Char('/'))
        QSKIP("A name with a backslash can be made where it separates nothing alone");
    const QString path = source(QStringLiteral("one\\two\\a.mid"));
    QVERIFY(copy({path}));
    QCOMPARE(entriesBelow(m_to), QStringList{QStringLiteral("one\\two\\a.mid")});
}

void TestFolderCopy::folderThatCannotBeMadeEndsTheCopy()
{
    putFile(target(QStringLiteral("sub")), "a file where a folder should be");
    m_boxes->answer(QStringLiteral("ERRORE"), QStringLiteral("OK"));
    QVERIFY(!copy(
        {source(QStringLiteral("a.mid")), source(QStringLiteral("sub/deep/b.mid")), source(QStringLiteral("c.mid"))}));
    QVERIFY(!(*m_procedure)->procedureOk);
    QCOMPARE(m_boxes->seen().size(), 1);
    QCOMPARE(m_boxes->seen().first().text, QStringLiteral("ERRORE"));
    QCOMPARE(m_boxes->seen().first().icon, QMessageBox::Information);
    QCOMPARE(m_boxes->seen().first().buttons, QStringList{QStringLiteral("OK")});
    const QStringList expected = {QStringLiteral("a.mid"), QStringLiteral("sub")};
    QCOMPARE(entriesBelow(m_to), expected);
    QCOMPARE(m_bar->format(), QStringLiteral("%v"));
    QCOMPARE(m_bar->value(), 1);
    QCOMPARE(m_bar->maximum(), 3);
}

void TestFolderCopy::conflictQuestionReadsAsWritten()
{
    putFile(target(QStringLiteral("My Songs/&lt;b&gt; a.mid")), "old");
    m_boxes->answer(kExists, kNo);
    m_boxes->whenShown([](QMessageBox *box) {
        // The same order on the screen is not asked for: the platform has its own.
        QCOMPARE(box->standardButton(box->defaultButton()), QMessageBox::Yes);
        QCOMPARE(box->button(QMessageBox::YesToAll)->text(), kYesToAll);
        QCOMPARE(box->textFormat(), Qt::PlainText);
    });
    QVERIFY(copy({source(QStringLiteral("My Songs/&lt;b&gt; a.mid"))}));
    const BoxAnswerer::Seen &box = m_boxes->seen().first();
    QCOMPARE(box.text, QStringLiteral("Il File\n") + target(QStringLiteral("My Songs/&lt;b&gt; a.mid")) +
                           QStringLiteral("\nEsiste già. Vuoi sostituirlo?"));
    QCOMPARE(box.icon, QMessageBox::Question);
    QCOMPARE(box.defaultButton, kYes);
    QVERIFY(!box.hadParent);
    QStringList buttons = box.buttons;
    buttons.sort();
    const QStringList expected = {kNo, kYes, kYesToAll};
    QCOMPARE(buttons, expected);
}

void TestFolderCopy::singleAnswersToAConflict_data()
{
    QTest::addColumn<QString>("means");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("yes") << "Si" << QByteArray("new");
    QTest::newRow("no") << "No" << QByteArray("old");
    QTest::newRow("enter") << "enter" << QByteArray("new");
    QTest::newRow("escape") << "escape" << QByteArray("old");
    QTest::newRow("closing") << "close" << QByteArray("old");
}

void TestFolderCopy::singleAnswersToAConflict()
{
    QFETCH(QString, means);
    QFETCH(QByteArray, content);
    // Two conflicts: a single answer is asked for again.
    const QStringList names = {QStringLiteral("a.mid"), QStringLiteral("b.mid")};
    QStringList sources;
    for (const QString &name : names) {
        putFile(target(name), "old");
        sources.append(source(name));
        if (means == QLatin1String("enter"))
            m_boxes->answerByKey(kExists, Qt::Key_Return);
        else if (means == QLatin1String("escape"))
            m_boxes->answerByKey(kExists, Qt::Key_Escape);
        else if (means == QLatin1String("close"))
            m_boxes->answerByClosing(kExists);
        else
            m_boxes->answer(kExists, means);
    }
    QVERIFY(copy(sources));
    QCOMPARE(m_boxes->seen().size(), 2);
    for (const QString &name : names)
        QCOMPARE(contentOf(target(name)), content);
}

void TestFolderCopy::yesToAllReplacesTheRestOfThisCallOnly()
{
    QStringList sources;
    for (int i = 0; i < 4; ++i) {
        putFile(target(QStringLiteral("%1.mid").arg(i)), "old");
        sources.append(source(QStringLiteral("%1.mid").arg(i)));
    }
    m_boxes->answer(kExists, kNo);
    m_boxes->answer(kExists, kYesToAll);
    QVERIFY(copy(sources));
    QCOMPARE(m_boxes->seen().size(), 2);
    QCOMPARE(contentOf(target(QStringLiteral("0.mid"))), QByteArray("old"));
    for (int i = 1; i < 4; ++i)
        QCOMPARE(contentOf(target(QStringLiteral("%1.mid").arg(i))), QByteArray("new"));
    m_boxes->answer(kExists, kNo);
    QVERIFY(copy({sources.last()}));
    QCOMPARE(m_boxes->seen().size(), 3);
}

void TestFolderCopy::refusedReplacementCountsAsCopied()
{
    putFile(target(QStringLiteral("b.mid")), "old");
    m_boxes->answer(kFailed, kYes);
    m_boxes->answer(kExists, kNo);
    QVERIFY(copy({m_from + QStringLiteral("missing.mid"), source(QStringLiteral("b.mid"))}));
}

void TestFolderCopy::existingFileStaysWhenItsSuccessorCannotBeCopied()
{
    putFile(target(QStringLiteral("a.mid")), "old");
    m_boxes->answer(kExists, kYes);
    m_boxes->answer(kFailed, kYes);
    QVERIFY(!copy({m_from + QStringLiteral("a.mid")}));
    QCOMPARE(contentOf(target(QStringLiteral("a.mid"))), QByteArray("old"));
}

void TestFolderCopy::fileThatWouldReplaceItselfStays()
{
    const QString path = source(QStringLiteral("a.mid"), "precious");
    QVERIFY((*m_procedure)->copyFileList({path}, m_from, m_from, m_bar));
    QVERIFY(m_boxes->seen().isEmpty());
    QCOMPARE(contentOf(path), QByteArray("precious"));
}

void TestFolderCopy::fileThatWouldReplaceItselfByALinkStays()
{
    SKIP_ON_WINDOWS("links are files of another kind here");
    const QString path = source(QStringLiteral("a.mid"), "precious");
    QVERIFY(QFile::link(m_from.chopped(1), m_dir->path() + QStringLiteral("/link")));
    QVERIFY((*m_procedure)->copyFileList({path}, m_dir->path() + QStringLiteral("/link/"), m_from, m_bar));
    QVERIFY(m_boxes->seen().isEmpty());
    QCOMPARE(contentOf(path), QByteArray("precious"));
}

void TestFolderCopy::copyErrorQuestionReadsAsWritten()
{
    m_boxes->answer(kFailed, kYes);
    m_boxes->whenShown([](QMessageBox *box) {
        QCOMPARE(box->standardButton(box->defaultButton()), QMessageBox::Yes);
        QCOMPARE(box->button(QMessageBox::Cancel)->text(), kYesToAll);
    });
    QVERIFY(!copy({m_from + QStringLiteral("sub/missing.mid")}));
    const BoxAnswerer::Seen &box = m_boxes->seen().first();
    QCOMPARE(box.text, QStringLiteral("Il File\n") + target(QStringLiteral("sub/missing.mid")) +
                           QStringLiteral("\nnon è stato copiato. Vuoi continuare a copiare?"));
    QCOMPARE(box.icon, QMessageBox::Question);
    QCOMPARE(box.defaultButton, kYes);
    QVERIFY(!box.hadParent);
    QStringList buttons = box.buttons;
    buttons.sort();
    const QStringList expected = {kNo, kYes, kYesToAll};
    QCOMPARE(buttons, expected);
}

void TestFolderCopy::answersToACopyError_data()
{
    QTest::addColumn<QString>("means");
    QTest::addColumn<int>("questions");
    QTest::addColumn<bool>("lastCopied");
    QTest::newRow("yes") << "Si" << 2 << true;
    QTest::newRow("yes to all") << "Si,Tutti" << 1 << true;
    QTest::newRow("escape is yes to all") << "escape" << 1 << true;
    QTest::newRow("closing is yes to all") << "close" << 1 << true;
    QTest::newRow("no") << "No" << 1 << false;
}

void TestFolderCopy::answersToACopyError()
{
    QFETCH(QString, means);
    QFETCH(int, questions);
    QFETCH(bool, lastCopied);
    for (int i = 0; i < questions; ++i) {
        if (means == QLatin1String("escape"))
            m_boxes->answerByKey(kFailed, Qt::Key_Escape);
        else if (means == QLatin1String("close"))
            m_boxes->answerByClosing(kFailed);
        else
            m_boxes->answer(kFailed, means);
    }
    const QStringList sources = {source(QStringLiteral("a.mid")), m_from + QStringLiteral("missing1.mid"),
                                 m_from + QStringLiteral("missing2.mid"), source(QStringLiteral("z.mid"))};
    QCOMPARE(copy(sources), lastCopied);
    QCOMPARE(m_boxes->seen().size(), questions);
    QCOMPARE(QFileInfo::exists(target(QStringLiteral("z.mid"))), lastCopied);
    QVERIFY((*m_procedure)->procedureOk);
    if (!lastCopied) {
        // Given up: the bar stays where it was.
        QCOMPARE(m_bar->format(), QStringLiteral("%v"));
        QCOMPARE(m_bar->value(), 1);
    }
}

void TestFolderCopy::ignoredErrorsAreForgottenAfterTheCall()
{
    m_boxes->answer(kFailed, kYesToAll);
    QVERIFY(!copy({m_from + QStringLiteral("missing1.mid"), m_from + QStringLiteral("missing2.mid")}));
    m_boxes->answer(kFailed, kYes);
    QVERIFY(!copy({m_from + QStringLiteral("missing1.mid")}));
    QCOMPARE(m_boxes->seen().size(), 2);
}

void TestFolderCopy::outcomeIsTheLastFiles()
{
    m_boxes->answer(kFailed, kYes);
    QVERIFY(copy({m_from + QStringLiteral("missing.mid"), source(QStringLiteral("a.mid"))}));
    m_boxes->answer(kFailed, kYes);
    QVERIFY(!copy({source(QStringLiteral("b.mid")), m_from + QStringLiteral("missing.mid")}));
    QVERIFY(QFileInfo::exists(target(QStringLiteral("b.mid"))));
    // Also when errors are passed over in silence.
    m_boxes->answer(kFailed, kYesToAll);
    QVERIFY(!copy({m_from + QStringLiteral("missing.mid"), source(QStringLiteral("c.mid")),
                   m_from + QStringLiteral("missing.mid")}));
    // The bar is reset all the same: the list was worked through.
    QCOMPARE(m_bar->format(), QStringLiteral("%p%"));
    QCOMPARE(m_bar->value(), 0);
}

void TestFolderCopy::folderInTheListIsAskedAboutLikeAFile()
{
    const QString song = source(QStringLiteral("Vol.1/a.mid"));
    m_boxes->answer(kFailed, kYes);
    QVERIFY(copy({m_from + QStringLiteral("Vol.1"), song}));
    QCOMPARE(m_boxes->seen().first().text, QStringLiteral("Il File\n") + target(QStringLiteral("Vol.1")) +
                                               QStringLiteral("\nnon è stato copiato. Vuoi continuare a copiare?"));
    const QStringList expected = {QStringLiteral("Vol.1"), QStringLiteral("Vol.1/a.mid")};
    QCOMPARE(entriesBelow(m_to), expected);
}

void TestFolderCopy::folderThatExistsAlreadyIsAConflictThenAnError()
{
    const QString song = source(QStringLiteral("Vol.1/a.mid"));
    m_boxes->answer(kExists, kYes);
    m_boxes->answer(kFailed, kYes);
    QVERIFY(!copy({song, m_from + QStringLiteral("Vol.1")}));
    // A folder is not removed like a file.
    QVERIFY(QFileInfo::exists(target(QStringLiteral("Vol.1/a.mid"))));
}

void TestFolderCopy::stopEndsTheCopyAfterTheCurrentFile()
{
    QStringList sources;
    for (int i = 0; i < 5; ++i)
        sources.append(source(QStringLiteral("%1.mid").arg(i)));
    m_boxes->answer(QStringLiteral("Interrompi Operazione"), kYes);
    const StopPresser stop(*m_procedure, [this] { return m_bar->value() == 2; });
    QVERIFY(!copy(sources));
    QVERIFY(stop.pressed);
    const QStringList expected = {QStringLiteral("0.mid"), QStringLiteral("1.mid")};
    QCOMPARE(entriesBelow(m_to), expected);
    QVERIFY((*m_procedure)->procedureOk);
    QCOMPARE(m_bar->format(), QStringLiteral("%v"));
    QCOMPARE(m_bar->value(), 2);
}

void TestFolderCopy::stopBeforeTheStartStillCopiesOneFile()
{
    // Looked at after each file, not before.
    (*m_procedure)->abortRequested = true;
    QVERIFY(!copy({source(QStringLiteral("a.mid")), source(QStringLiteral("b.mid"))}));
    QCOMPARE(entriesBelow(m_to), QStringList{QStringLiteral("a.mid")});
}

void TestFolderCopy::twoAnswersAreKeptApart()
{
    putFile(target(QStringLiteral("b.mid")), "old");
    m_boxes->answer(kFailed, kYesToAll);
    m_boxes->answer(kExists, kYesToAll);
    QVERIFY(copy({m_from + QStringLiteral("missing.mid"), source(QStringLiteral("b.mid"))}));
    QCOMPARE(contentOf(target(QStringLiteral("b.mid"))), QByteArray("new"));
}

QTEST_MAIN(TestFolderCopy)
#include "tst_foldercopy.moc"
