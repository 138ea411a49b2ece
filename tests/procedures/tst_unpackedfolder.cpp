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

    void systemIsWholeWithItsThreeFilesInAnyCase_data() {
        columns<QStringList, bool>("files", "whole");
        row("as they are", words("AUTOEXEC.BAT System/Corvin/Corvin.exe System/GuiProc/GuiProc.exe"), true);
        row("in another case", words("autoexec.bat SYSTEM/CORVIN/corvin.EXE system/guiproc/guiproc.exe"), true);
        row("two", words("AUTOEXEC.BAT System/Corvin/Corvin.exe"), false);
        row("one at another place", words("System/AUTOEXEC.BAT System/Corvin/Corvin.exe System/GuiProc/GuiProc.exe"),
            false);
        row("a folder for a file", words("AUTOEXEC.BAT System/Corvin/Corvin.exe/x System/GuiProc/GuiProc.exe"), false);
        row("nothing", QStringList(), false);
    }
    void systemIsWholeWithItsThreeFilesInAnyCase() {
        QFETCH(QStringList, files);
        PcFolder dir;
        for (const QString &file : files)
            dir.addFile(file);
        QTEST(holdsWholeSystem(dir.path()), "whole");
    }

    void programInPlaceOfTheSystemsIsSeen_data() {
        columns<QString, bool>("file", "rival");
        for (const auto *rival : {"ATTRIB.EXE", "attrib.com", "Cmd.bat", "format.CMD", "attrib.js", "attrib.odd"})
            row(rival, QString(QLatin1String(rival)), true);
        for (const auto *harmless :
             {"AUTOEXEC.BAT", "attrib.txt", "attrib", "attrib.exe.txt", "myattrib.exe", "System/attrib.exe"})
            row(harmless, QString(QLatin1String(harmless)), false);
    }
    void programInPlaceOfTheSystemsIsSeen() {
        QFETCH(QString, file);
        PcFolder dir;
        dir.addFile(file);
        const QByteArray before = qgetenv("PATHEXT");
        qputenv("PATHEXT", ".COM;.EXE;.ODD");
        const bool seen = holdsRivalProgram(dir.path());
        before.isNull() ? qunsetenv("PATHEXT") : qputenv("PATHEXT", before);
        QTEST(seen, "rival");
    }

    void copyIsWholeWithEveryFileInItsSize() {
        PcFolder dir;
        const QStringList source = {dir.addFile("a/x.d/1.txt"_s, "12"), dir.path("a/x.d"_s),
                                    dir.addFile("a/2.txt"_s, "1")};
        dir.addFile("b/x.d/1.txt"_s, "34");
        QVERIFY(!areWholeAt(dir.path("b"_s), source, dir.path("a"_s)));
        const QString second = dir.addFile("b/2.txt"_s, "");
        QVERIFY(!areWholeAt(dir.path("b"_s), source, dir.path("a"_s)));
        putFile(second, "5");
        QVERIFY(areWholeAt(dir.path("b"_s), source, dir.path("a"_s)));
        // One that has vanished cannot be compared any more.
        QVERIFY(QFile::remove(source.last()));
        QVERIFY(!areWholeAt(dir.path("b"_s), source, dir.path("a"_s)));
    }
};

QTEST_GUILESS_MAIN(TestUnpackedFolder)
#include "tst_unpackedfolder.moc"
