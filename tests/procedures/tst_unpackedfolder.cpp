#include "procedures/unpackedfolder.h"

#include "support/files.h"
#include "support/testing.h"

class TestUnpackedFolder : public QObject
{
    Q_OBJECT

private slots:
    void wrappingFolderIsLookedThrough_data() {
        columns<QStringList, QString>("files", "inner");
        row("content at the top", words("System/a.exe AUTOEXEC.BAT"), QString());
        row("one folder around all", words("CorvinAll/System/a.exe CorvinAll/AUTOEXEC.BAT"), "CorvinAll"_s);
        row("a file beside it", words("CorvinAll/System/a.exe read.me"), QString());
        row("a hidden file beside it", words("CorvinAll/System/a.exe .hidden"), QString());
        row("two folders", words("a/System/a.exe b/System/a.exe"), QString());
        for (const auto *own :
             {"System", "CorvinUpdate", "Bridges", "Effects", "My Songs", "Images", "Videos", "SYSTEM"})
            row(own, QStringList{QLatin1String(own) + "/a.exe"_s}, QString());
        row("one file", words("AUTOEXEC.BAT"), QString());
        row("nothing", QStringList(), QString());
    }
    void wrappingFolderIsLookedThrough() {
        QFETCH(QStringList, files);
        QFETCH(QString, inner);
        PcFolder dir;
        for (const QString &file : files)
            dir.addFile(file);
        QCOMPARE(unpackedFolder(dir.path()), dir.path(inner));
    }

    void linkIsNoWrappingFolder() {
        const PcFolder dir;
        const PcFolder elsewhere;
        QVERIFY(QFile::link(elsewhere.path(), dir.path("CorvinAll"_s)));
        QCOMPARE(unpackedFolder(dir.path()), dir.path());
    }

    void systemFilesAreNamesWithADot_data() {
        columns<QString, bool>("file", "counts");
        row("file", "a.exe"_s, true);
        row("file deep down", "System/Corvin/a.exe"_s, true);
        row("hidden file", "System/.a"_s, true);
        row("name without a dot", "System/README"_s, false);
        row("only the folder has a dot", "v1.0/README"_s, false);
        row("nothing", QString(), false);
    }
    void systemFilesAreNamesWithADot() {
        QFETCH(QString, file);
        PcFolder dir;
        if (!file.isEmpty())
            dir.addFile(file);
        QTEST(holdsSystemFiles(dir.path()), "counts");
    }
};

QTEST_GUILESS_MAIN(TestUnpackedFolder)
#include "tst_unpackedfolder.moc"
