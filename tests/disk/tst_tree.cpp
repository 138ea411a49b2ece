#include "disk/diskcalls.h"
#include "disk/tree.h"

#include "support/files.h"
#include "support/limits.h"
#include "support/platform.h"
#include "support/testing.h"

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace {

const QDir::Filters kShown = QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot;
const QDir::Filters kAll = kShown | QDir::Hidden | QDir::System;

/// Makes that a file cannot be deleted, and that it can. Returns whether that went well.
bool keep(const QString &path, bool kept) {
#ifdef Q_OS_WIN
    static QFile file; // one that is in use stays
    file.close();
    file.setFileName(path);
    return !kept || file.open(QIODevice::ReadOnly);
#else
    // Root may delete what is merely write-protected; an immutable file not even root.
    if (::geteuid() == 0)
        return runProgram("chattr"_s, {QLatin1String(kept ? "+i" : "-i"), path});
    const QFile::Permissions readable = QFile::ReadOwner | QFile::ExeOwner;
    return QFile::setPermissions(QFileInfo(path).path(), kept ? readable : readable | QFile::WriteOwner);
#endif
}

/// A folder with these files.
struct Folder : PcFolder
{
    explicit Folder(const QStringList &files = {}) {
        for (const QString &file : files)
            addFile(file);
    }
    QStringList entries() const { return entriesBelow(path()); }
};

/// A folder "f" full of what is hard to remove, and what lies beside it.
struct Tree : Folder
{
    Tree()
        : Folder({"f/a.mid"_s, "f/.hidden"_s, "f/.hiddenfolder/deep/no dot"_s, "f/perché/città.mid"_s, "f/system.bin"_s,
                  "beside/song.mid"_s}) {
        const QFile::Permissions readOnly = QFile::ReadOwner | QFile::ReadUser;
        bool made = QFile::setPermissions(path("f/system.bin"_s), readOnly);
        made = QFile::link(path("beside"_s), path("f/perché/folderlink"_s)) && made;
        made = QFile::link(path("beside/song.mid"_s), path("f/filelink"_s)) && made;
        made = QFile::link(path("nowhere"_s), path("f/broken"_s)) && made;
        made = QFile::link(path("f"_s), path("f/circle"_s)) && made;
#ifndef Q_OS_WIN // links are files of another kind there
        made = QFile::link(path("beside"_s), path("link"_s)) && made;
#endif
        if (!made)
            failTest("Cannot make the tree"_s);
    }
};

/// A folder with files of the names 0.mid, 1.mid, …
struct Numbered : Folder
{
    explicit Numbered(int count) {
        for (int i = 0; i < count; ++i)
            addFile("%1.mid"_s.arg(i));
    }
};

/// What listTree() finds, sorted, without the root it was given.
QStringList listed(const QString &root, QDir::Filters filters, const QStringList &names = {}) {
    QStringList found = listTree({root, filters, names});
    for (QString &path : found) {
        if (!path.startsWith(root))
            failTest(path + " is not below "_s + root);
        path.remove(0, root.size());
    }
    found.sort();
    return found;
}

} // namespace

class TestTree : public QObject
{
    Q_OBJECT

private slots:
    void foldersAreRemovedAndEmptied_data() {
        columns<bool, QString, bool, QStringList>("empty", "folder", "done", "left");
        const QStringList all = Tree().entries();
        const QStringList beside = all.filter(QRegularExpression("^(beside|link)"_s));
#ifndef Q_OS_WIN
        const QStringList noLink = all.filter(QRegularExpression("^(beside|f)"_s));
        row("folder that is a link loses the link alone", false, "link"_s, true, noLink);
        row("the same with a closing slash", false, "link/"_s, true, noLink);
#endif
        row("folder goes with everything in it, links are not followed", false, "f"_s, true, beside);
        row("closing slash is forgiven", false, "f/"_s, true, beside);
        row("folder that is not there counts as removed", false, "none"_s, true, all);
        row("nor is the one around it", false, "none/deeper/"_s, true, all);
        row("file is not a folder and stays", false, "beside/song.mid"_s, false, all);
        row("emptied folder is there and empty", true, "f"_s, true, beside + words("f"));
        row("emptied folder that was not there is made", true, "new/"_s, true, all + words("new"));
        row("emptying fails without a parent", true, "none/f"_s, false, all);
        row("emptying a file fails and leaves it", true, "beside/song.mid"_s, false, all);
    }

    void foldersAreRemovedAndEmptied() {
        QFETCH(bool, empty);
        QFETCH(QString, folder);
        QFETCH(bool, done);
        QFETCH(QStringList, left);
        const Tree root;
        QCOMPARE(empty ? emptyFolder(root.path(folder)) : removeTree(root.path(folder)), done);
        left.sort();
        QCOMPARE(root.entries(), left);
        QCOMPARE(QFileInfo(root.path(folder)).isDir(), empty && done);
        QVERIFY(QFileInfo(root.path("beside/song.mid"_s)).isFile());
    }

    void eventsAreProcessedAfterEveryEntry_data() {
        columns<bool, int>("remove", "files");
        row("many files are removed", true, 1200);
        row("files are listed", false, 50);
    }

    void eventsAreProcessedAfterEveryEntry() {
        QFETCH(bool, remove);
        QFETCH(int, files);
        const Numbered root(files);
        int rounds = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&rounds] { ++rounds; });
        timer.start(0);
        if (remove)
            QVERIFY(removeTree(root.path()));
        else
            QCOMPARE(listTree({root.path(), kAll}).size(), files);
        QVERIFY2(rounds >= files, qPrintable(QString::number(rounds)));
        QCOMPARE(QFileInfo::exists(root.path()), !remove);
    }

    void emptyPathIsRefused() {
        const Folder root(words("a.mid"));
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(root.path()));
        const bool removed = removeTree(QString());
        const bool emptied = emptyFolder(QString());
        const QStringList found = listTree({QString(), kAll});
        QDir::setCurrent(before);
        QVERIFY(!removed);
        QVERIFY(!emptied);
        QVERIFY(found.isEmpty());
        QCOMPARE(root.entries(), words("a.mid"));
    }

    void entryThatCannotBeRemovedIsReported() {
        const Folder root(words("f/sub/kept.mid f/z.mid"));
        const QString kept = root.path("f/sub/kept.mid"_s);
        if (!keep(kept, true))
            QSKIP("This file system has no immutable files");
        const bool removed = removeTree(root.path("f"_s));
        const bool emptied = emptyFolder(root.path("f"_s));
        keep(kept, false);
        QVERIFY(!removed);
        QVERIFY(!emptied);
        QCOMPARE(root.files(), words("f/sub/kept.mid"));
    }

    void listingPasses_data() {
        columns<QStringList, bool, QString, QStringList>("files", "hidden", "filter", "found");
        row("name filter passes only names with a dot but walks all folders",
            QStringList{"a.mid"_s, "no dot"_s, "My Songs/b.mid"_s, "My Songs/nodot"_s, "Vol.1/inner/c.mid"_s}, true,
            "*.*"_s, QStringList{"/My Songs/b.mid"_s, "/Vol.1"_s, "/Vol.1/inner/c.mid"_s, "/a.mid"_s});
#ifndef Q_OS_WIN // no name ends in a dot there
        row("name that ends in a dot has a dot", words("c."), true, "*.*"_s, words("/c."));
#endif
        row("hidden entries not without their filter", words(".hidden .folder/a.mid"), false, QString(), QStringList());
        row("hidden entries with their filter", words(".hidden .folder/a.mid"), true, QString(),
            words("/.folder /.folder/a.mid /.hidden"));
    }

    void listingPasses() {
        QFETCH(QStringList, files);
        QFETCH(bool, hidden);
        QFETCH(QString, filter);
        QFETCH(QStringList, found);
        const Folder root(files);
        const QStringList filters = filter.isEmpty() ? QStringList() : QStringList{filter};
        QCOMPARE(listed(root.path(), hidden ? kAll : kShown, filters), found);
        found.replaceInStrings(QRegularExpression("^/"_s), QString()); // paths start with the root as it was given
        QCOMPARE(listed(root.path() + QLatin1Char('/'), hidden ? kAll : kShown, filters), found);
    }

    void linksToFoldersAreNotEntered() {
        Folder root(words("elsewhere/song.mid"));
        const QString folder = root.addFolder("f"_s);
        QVERIFY(QFile::link(root.path("elsewhere"_s), folder + "/link"_s));
        QCOMPARE(listed(folder, kAll), words("/link"));
    }

    void folderIsListable() {
        const Folder root({"perché/a.mid"_s, "b.mid"_s});
        QVERIFY(isListable(root.path()));
        QVERIFY(isListable(root.path("perché/"_s)));
        QVERIFY(!isListable(root.path("none"_s)));
        QVERIFY(!isListable(root.path("b.mid"_s)));
    }

#ifndef Q_OS_WIN
    void treeIsListableWhenAllItsFoldersAre() {
        const Folder root({"a/deep/b.mid"_s, "c.mid"_s, ".hidden/d.mid"_s});
        QVERIFY(QFile::link(root.path("none"_s), root.path("link"_s)));
        QVERIFY(isTreeListable(root.path()));
        QVERIFY(!isTreeListable(root.path("none"_s)));
        const QFile::Permissions owners = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
        QVERIFY(QFile::setPermissions(root.path(), owners | QFile::ReadGroup | QFile::ExeGroup));
        QVERIFY(QFile::setPermissions(root.path(".hidden"_s), owners));
        const NoRoot noRoot;
        if (isListable(root.path(".hidden"_s)))
            QSKIP("Not root: the folder stays readable");
        QVERIFY(!isTreeListable(root.path()));
        QVERIFY(isTreeListable(root.path(), QDir::Dirs | QDir::NoDotAndDotDot));
    }
#endif

    void missingRootHasNoEntries() {
        const QString none = Folder().path("none"_s);
        QVERIFY(listTree({none, kAll}).isEmpty());
        QVERIFY(walkTree({none, kAll}, [](const QFileInfo &) { return false; }));
    }

    void abortEndsTheListing() {
        const Numbered root(10);
        bool abort = false;
        QTimer::singleShot(0, this, [&abort] { abort = true; });
        QCOMPARE(listTree({root.path(), kAll}, [&abort] { return !abort; }).size(), 1);
        QVERIFY(listTree({root.path(), kAll}, [&abort] { return !abort; }).isEmpty());
    }

    void visitorEndsTheVisit() {
        const Numbered root(10);
        int visits = 0;
        QVERIFY(!walkTree({root.path(), kAll}, [&visits](const QFileInfo &) { return ++visits < 3; }));
        QCOMPARE(visits, 3);
    }
};

QTEST_GUILESS_MAIN(TestTree)
#include "tst_tree.moc"
