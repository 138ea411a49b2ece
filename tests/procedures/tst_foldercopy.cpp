#include "systemfixture.h"

namespace {

/// Two folders of the PC, and the window that copies from one to the other.
struct Copying : Maintenance
{
    Copying() : from(pc.addFolder("from"_s) + QLatin1Char('/')), to(pc.addFolder("to"_s) + QLatin1Char('/')) {}
    /// Makes a file below the source root and returns its path.
    QString source(const QString &name, const QByteArray &content = "new") const {
        return putFile(from + name, content);
    }
    /// The same for several; one that begins with "?" is only named, not made.
    QStringList sources(const QStringList &names) const {
        QStringList paths;
        for (const QString &name : names)
            paths.append(name.startsWith(QLatin1Char('?')) ? from + name.mid(1) : source(name));
        return paths;
    }
    bool copy(const QStringList &paths, const QList<Answer> &answers = {}) {
        announce(boxes, answers);
        return window->copyFileList(paths, to, from, bar);
    }
    bool copyNamed(const char *names, const QList<Answer> &answers = {}) {
        return copy(sources(words(names)), answers);
    }
    QStringList entries() const { return entriesBelow(to); }
    bool isBar(const char *format, int value) const {
        return bar->format() == QLatin1String(format) && bar->value() == value;
    }

    const QString from;
    const QString to;
    QProgressBar *const bar = window.bar();
};

} // namespace

class TestFolderCopy : public QObject
{
    Q_OBJECT

private slots:
    void emptyListIsDoneAndResetsTheBar() {
        Copying c;
        c.bar->setFormat("x"_s);
        c.bar->setValue(50);
        QVERIFY(c.copy({}));
        QCOMPARE(c.bar->maximum(), 0);
        QVERIFY(c.isBar("%p%", 0));
        QVERIFY(c.entries().isEmpty());
    }

    void filesAreCopiedWithTheirFolders() {
        Copying c;
        QStringList paths;
        for (const QString &name :
             {"a.mid"_s, "My Songs/b.mid"_s, "My Songs/deep/er/c"_s, "Canzoni di là/perché.mid"_s, ".hidden/d.mid"_s})
            paths.append(c.source(name, name.toUtf8()));
        QVERIFY(c.copy(paths));
        QCOMPARE(contentBelow(c.to).size(), 5);
        QCOMPARE(contentBelow(c.to), contentBelow(c.from));
        QCOMPARE(c.entries(), entriesBelow(c.from));
        QVERIFY(c.window->procedureOk);
    }

    void barCountsTheFiles() {
        Copying c;
        QList<int> values;
        connect(c.bar, &QProgressBar::valueChanged, this, [&values](int value) { values.append(value); });
        QVERIFY(c.copyNamed("0.mid 1.mid 2.mid 3.mid"));
        QCOMPARE(values.mid(values.indexOf(1)), (QList<int>{1, 2, 3, 4, 0}));
        QCOMPARE(c.bar->maximum(), 4);
        QVERIFY(c.isBar("%p%", 0));
    }

    void sourcePrefixIsCutWithoutALook() {
        Copying c;
        const QString path = c.source("a.mid"_s);
        const QString other(c.from.size(), QLatin1Char('?'));
        QVERIFY(c.window->copyFileList({path}, c.to, other, c.bar));
        // One character less: the slash in front of the name is left over, and harmless.
        QVERIFY(c.window->copyFileList({path}, c.to + "sub"_s, other.chopped(1), c.bar));
        QCOMPARE(filesBelow(c.to), words("a.mid sub/a.mid"));
    }

    void destinationWithoutASeparatorMakesNoFolder() {
        Copying c;
        const QString path = c.source("a.mid"_s);
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(c.to));
        const bool copied = c.window->copyFileList({path}, QString(), c.from, c.bar);
        QDir::setCurrent(before);
        QVERIFY(copied);
        QCOMPARE(c.entries(), words("a.mid"));
    }

    void backslashSplitsFoldersOnlyBeforeABlank() {
        SKIP_ON_WINDOWS("A name with a backslash can be made where it separates nothing alone");
        Copying c;
        QVERIFY(c.copyNamed("one\\two\\a.mid"));
        QCOMPARE(c.entries(), words("one\\two\\a.mid"));
        Copying blank;
        QVERIFY(!blank.copy({blank.source("one\\ two/a.mid"_s)}, {Titles::kCopyFailed}));
        QCOMPARE(blank.entries(), words("one one/two"));
    }

    void folderThatCannotBeMadeEndsTheCopy() {
        Copying c;
        putFile(c.to + "sub"_s, "a file where a folder should be");
        QVERIFY(!c.copyNamed("a.mid sub/deep/b.mid c.mid", {Titles::kError}));
        QVERIFY(!c.window->procedureOk);
        expectLook(c.lastBox(), QMessageBox::Information, Titles::kError);
        QCOMPARE(c.entries(), words("a.mid sub"));
        QVERIFY(c.isBar("%v", 1));
        QCOMPARE(c.bar->maximum(), 3);
    }

    void questionsReadAsWritten() {
        const QString name = "My Songs/&lt;b&gt; a.mid"_s;
        Copying c;
        c.source("Vol.1/a.mid"_s);
        putFile(c.to + name, "old");
        c.boxes.whenShown([&](QMessageBox *box) {
            // The same order on the screen is not asked for: the platform has its own.
            const auto all = box->windowTitle() == Titles::kCopyExists ? QMessageBox::YesToAll : QMessageBox::Cancel;
            QCOMPARE(box->button(all)->text(), Buttons::kSiTutti);
            QCOMPARE(box->standardButton(box->defaultButton()), QMessageBox::Yes);
            QCOMPARE(box->textFormat(), Qt::PlainText);
            QVERIFY(c.isBar("%v", c.boxes.seen().size() - 1));
            QCOMPARE(c.bar->maximum(), 3);
        });
        QVERIFY(!c.copy({c.source(name), c.from + "sub/missing.mid"_s, c.from + "Vol.1"_s},
                        {{Titles::kCopyExists, Buttons::kNo}, Titles::kCopyFailed, Titles::kCopyFailed}));
        const QString failed = "Il File\n%1\non è stato copiato. Vuoi continuare a copiare?"_s;
        const QStringList texts = {"Il File\n%1\nEsiste già. Vuoi sostituirlo?"_s.arg(c.to + name),
                                   failed.arg(c.to + "sub/missing.mid"_s), failed.arg(c.to + "Vol.1"_s)};
        for (int i = 0; i < texts.size(); ++i) {
            const BoxAnswerer::Seen box = c.boxes.seen().value(i);
            expectLook(box, QMessageBox::Question, texts.at(i), {Buttons::kNo, Buttons::kSi, Buttons::kSiTutti});
            QCOMPARE(box.defaultButton, Buttons::kSi);
            QVERIFY(!box.hadParent);
            QVERIFY(box.hadFixedSize);
        }
    }

    void answersDecideWhatIsCopied_data() {
        // Files that exist already; those of the list, some missing ("?"); the boxes that come ("E" for one that
        // exists, "F" for a failed copy) and their answers; the outcome; what then lies at the destination.
        columns<QString, QString, QString, bool, QString>("old", "list", "boxes", "good", "after");
        row("conflict, yes", "a b"_s, "a b"_s, "E:Si E:Si"_s, true, "a=new b=new"_s);
        row("conflict, no", "a b"_s, "a b"_s, "E:No E:No"_s, true, "a=old b=old"_s);
        row("conflict, enter", "a b"_s, "a b"_s, "E:enter E:enter"_s, true, "a=new b=new"_s);
        row("conflict, escape", "a b"_s, "a b"_s, "E:escape E:escape"_s, true, "a=old b=old"_s);
        row("conflict, closing", "a b"_s, "a b"_s, "E:close E:close"_s, true, "a=old b=old"_s);
        row("conflict, yes to the rest", "a b c"_s, "a b c"_s, "E:No E:Si,Tutti"_s, true, "a=old b=new c=new"_s);
        row("refused replacement counts as copied", "b"_s, "?a b"_s, "F:Si E:No"_s, true, "b=old"_s);
        row("existing file stays when its successor cannot be copied", "a"_s, "?a"_s, "E:Si F:Si"_s, false, "a=old"_s);
        row("error, yes", QString(), "a ?x ?y z"_s, "F:Si F:Si"_s, true, "a=new z=new"_s);
        row("error, yes to all", QString(), "a ?x ?y z"_s, "F:Si,Tutti"_s, true, "a=new z=new"_s);
        row("error, escape is yes to all", QString(), "a ?x ?y z"_s, "F:escape"_s, true, "a=new z=new"_s);
        row("error, closing is yes to all", QString(), "a ?x ?y z"_s, "F:close"_s, true, "a=new z=new"_s);
        row("error, no", QString(), "a ?x ?y z"_s, "F:No"_s, false, "a=new"_s);
        row("outcome is the last file's, good", QString(), "?x a"_s, "F:Si"_s, true, "a=new"_s);
        row("outcome is the last file's, failed", QString(), "b ?x"_s, "F:Si"_s, false, "b=new"_s);
        row("outcome is the last file's, in silence", QString(), "?x c ?y"_s, "F:Si,Tutti"_s, false, "c=new"_s);
        row("two answers are kept apart", "b"_s, "?x b"_s, "F:Si,Tutti E:Si,Tutti"_s, true, "b=new"_s);
        // A folder is not removed like a file.
        row("existing folder, a conflict, then an error", "v/a"_s, "?v"_s, "E:Si F:Si"_s, false, "v/a=old"_s);
    }
    void answersDecideWhatIsCopied() {
        QFETCH(QString, old);
        QFETCH(QString, list);
        QFETCH(QString, boxes);
        QFETCH(bool, good);
        Copying c;
        for (const QString &name : old.split(QLatin1Char(' '), Qt::SkipEmptyParts))
            putFile(c.to + name, "old");
        QList<Answer> answers;
        for (const QString &box : boxes.split(QLatin1Char(' ')))
            answers.append(Answer(box[0] == QLatin1Char('E') ? Titles::kCopyExists : Titles::kCopyFailed, box.mid(2)));
        QCOMPARE(c.copy(c.sources(list.split(QLatin1Char(' '))), answers), good);
        QStringList after;
        const QMap<QString, QByteArray> files = contentBelow(c.to);
        for (auto file = files.begin(); file != files.end(); ++file)
            after.append(file.key() + QLatin1Char('=') + QString::fromUtf8(file.value()));
        QTEST(after.join(QLatin1Char(' ')), "after");
        QVERIFY(c.window->procedureOk);
        // Given up, the bar stays where it was; a list that was worked through resets it, copied or not.
        QVERIFY(boxes == "F:No"_s ? c.isBar("%v", 1) : c.isBar("%p%", 0));
    }

    void answersToAllAreForgottenAfterTheCall() {
        Copying c;
        QVERIFY(!c.copyNamed("?1.mid ?2.mid", {{Titles::kCopyFailed, Buttons::kSiTutti}}));
        QVERIFY(!c.copyNamed("?1.mid", {Titles::kCopyFailed}));
        QVERIFY(c.copyNamed("a.mid b.mid"));
        QVERIFY(c.copyNamed("a.mid b.mid", {{Titles::kCopyExists, Buttons::kSiTutti}}));
        QVERIFY(c.copyNamed("a.mid", {{Titles::kCopyExists, Buttons::kNo}}));
        QCOMPARE(c.boxes.seen().size(), 4);
    }

    void fileThatWouldReplaceItselfStaysAlsoByALink() {
        Copying c;
        const QString path = c.source("a.mid"_s, "precious");
        QVERIFY(c.window->copyFileList({path}, c.from, c.from, c.bar));
        QCOMPARE(contentOf(path), QByteArray("precious"));
        SKIP_ON_WINDOWS("links are files of another kind here");
        QVERIFY(QFile::link(c.from.chopped(1), c.pc.path("link"_s)));
        QVERIFY(c.window->copyFileList({path}, c.pc.path("link/"_s), c.from, c.bar));
        QCOMPARE(contentOf(path), QByteArray("precious"));
    }

    void stopEndsTheCopyAfterTheCurrentFile() {
        Copying c;
        const StopPresser stop(c.window, QString(), [&] { return c.bar->value() == 2; });
        QVERIFY(!c.copyNamed("0.mid 1.mid 2.mid 3.mid 4.mid", {Titles::kStop}));
        QCOMPARE(c.entries(), words("0.mid 1.mid"));
        QVERIFY(c.window->procedureOk);
        QVERIFY(c.isBar("%v", 2));
    }

    void stopBeforeTheStartStillCopiesOneFile() {
        // Looked at after each file, not before.
        Copying c;
        c.window->abortRequested = true;
        QVERIFY(!c.copyNamed("a.mid b.mid"));
        QCOMPARE(c.entries(), words("a.mid"));
    }
};

PAGE_TEST_MAIN(TestFolderCopy)
#include "tst_foldercopy.moc"
