#include "handmadeplayer.h"

using namespace Rules;

/// One way to spoil what was right.
using P = HandmadePlayer &;
using Spoil = std::function<void(P)>;
Q_DECLARE_METATYPE(Spoil)

/// The judge against a disk optimised by hand, and against every way to spoil it.
class TestJudge : public QObject
{
    Q_OBJECT

    using Text = const char *;
    using Change = std::function<QByteArray(QByteArray)>;

    const QString kImport = "CorvinImportDB.sql"_s;
    const QString kList = "System/Corvin/data.fastDB"_s;
    const QByteArray kGone = "DELETE FROM songs WHERE filename='\\sdmemory\\My Songs\\Gone.mid'\n";

    HandmadePlayer player;

    static QString path(Text text) { return QString::fromUtf8(text); }
    static Spoil remove(Text file) {
        return [=](P p) { p.remove(path(file)); };
    }
    static Spoil move(Text from, Text to) {
        return [=](P p) { p.move(path(from), path(to)); };
    }
    static Spoil write(Text file, Text content) {
        return [=](P p) { p.write(path(file), content); };
    }
    static Spoil replace(Text file, Text from, Text to) {
        return [=](P p) { p.replace(path(file), from, to); };
    }
    static Spoil playlist(Text from, Text to) { return replace("System/Playlist/p.pls", from, to); }
    static Spoil import(Text from, Text to) { return replace("CorvinImportDB.sql", from, to); }
    Spoil imported(const Change &as) const {
        return [=](P p) { p.write(kImport, as(p.read(kImport))); };
    }
    static Spoil fill(Text folder, int files) {
        return [=](P p) {
            for (int i = 0; i < files; ++i)
                p.write("%1/more %2.dat"_s.arg(path(folder)).arg(i), "more " + QByteArray::number(i));
        };
    }

    static bool names(const Verdict &verdict, const QString &rule) {
        const auto isOfRule = [&](const Failure &failure) { return failure.rule == rule; };
        return std::any_of(verdict.failures.cbegin(), verdict.failures.cend(), isOfRule);
    }
    bool isWrong(const QString &rule) const { return names(player.judge(), rule); }
    Verdict judged(const Snapshot &before) const { return judge(before, player.root, player.manifest); }
    static void verifyRight(const Verdict &verdict) { QVERIFY2(verdict.isRight(), qPrintable(verdictText(verdict))); }

    void addWrongSongs() {
        row("song lost", kSongKept, remove("My Songs/Known.mid"));
        row("song there twice", kSongKept,
            Spoil([](P p) { p.write("My Songs/copy.mid"_s, p.read("My Songs/Known.mid"_s)); }));
        row("song with a changed byte", kSongKept, replace("My Songs/Known.mid", "Known", "known"));
        row("song cut", kSongKept, write("My Songs/Known.mid", "MThd"));
        row("song in another folder", kSongPlace, move("My Songs/Known.mid", "My Songs/Else/Known.mid"));
        row("song left in the split folder", kSongPlace, move("My Songs/Big/T0/Song 5.mid", "My Songs/Big/Song 5.mid"));
        row("song under a wrong initial", kSongInitial,
            move("My Songs/Big/T0/Song 5.mid", "My Songs/Big/E0/Song 5.mid"));
        row("song under a new name", kSongName, move("My Songs/Known.mid", "My Songs/Renamed.mid"));
        row("long suffix left", kSongName, move("My Songs/New.MID", "My Songs/New.MIDI"));
        row("long suffix repaired where nothing is", kSongName, move("Bridges/Bridge.midi", "Bridges/Bridge.mid"));
        row("over-long name left", kSongName, Spoil([](P p) {
                p.move("My Songs/%1(0).mid"_s.arg(QString(86, QLatin1Char('l'))),
                       "My Songs/%1.mid"_s.arg(QString(116, QLatin1Char('l'))));
            }));
        row("broken song left", kBrokenGone, write("My Songs/bad.mid", "no song"));
        row("companion lost", kCompanionKept, remove("My Songs/Big/T0/Song 5.dat"));
        row("companion left behind", kCompanionBeside,
            move("My Songs/Big/T0/Song 5.dat", "My Songs/Big/E0/Song 5.dat"));
        row("companion under the old name", kCompanionBeside, move("My Songs/New.cdg", "My Songs/New_1.cdg"));
    }
    void addWrongFiles() {
        row("player's file changed", kSystemUntouched, write("System/Corvin/Corvin.exe", "MY"));
        row("player's text removed", kSystemUntouched, remove("System/Corvin/readme.txt"));
        row("start-up script moved", kSystemUntouched, move("AUTOEXEC.BAT", "My Songs/AUTOEXEC.BAT"));
        row("playlist's copy left", kSystemUntouched, write("System/Playlist/p.pls.old", "old"));
        row("image lost", kMediaKept, remove("Images/cover_1.jpg"));
        row("image over another", kMediaKept, Spoil([](P p) {
                p.remove("Images/cover.jpg"_s);
                p.move("Images/cover_1.jpg"_s, "Images/cover.jpg"_s);
            }));
        row("image not moved", kMediaPlace, move("Images/cover_1.jpg", "My Songs/cover.jpg"));
        row("image under a passing name", kMediaPlace, move("Images/cover_1.jpg", "Images/4711.jpg"));
        row("video among images", kMediaPlace, move("Videos/clip.avi", "Images/clip.avi"));
        row("text left", kUnsupportedGone, write("My Songs/note.txt", "note"));
        row("file without suffix left", kUnsupportedGone, write("My Songs/note", "note"));
        row("song left in the root", kRootTidy, move("My Songs/loose_1.mid", "loose.mid"));
        row("hidden file removed", kHiddenUntouched, remove("My Songs/.hidden.txt"));
        row("label removed", kHiddenUntouched, remove(".windows-label"));
        row("folder too large", kFolderSize, fill("My Songs", 1000));
        row("sub-folder too large", kFolderSize, fill("My Songs/Big/T0", 903 - 4 * 127 + 1));
        row("old folder left", kFolders, write("My Songs/Big.old/.keep", "x"));
        row("file from nowhere", kNothingNew, write("My Songs/new.dat", "new"));
    }
    void addWrongPlaylistsAndStatements() {
        row("playlist not rewritten", kPlaylists, playlist("My Songs\\loose_1", "loose"));
        row("playlist names a wrong place", kPlaylists, playlist("loose_1", "loose"));
        row("playlist lost a number", kPlaylists, playlist("^1^2", "^1"));
        row("other line of a playlist changed", kPlaylists, playlist("Known", "known"));
        row("line end of a playlist changed", kPlaylists, playlist("no song\r\n", "no song\n"));
        row("playlist emptied", kPlaylists, write("System/Playlist/p.pls", ""));
        row("no import file", kImportRows, remove("CorvinImportDB.sql"));
        row("byte-order mark", kImportForm, imported([](const QByteArray &all) { return "\xEF\xBB\xBF" + all; }));
        row("CR before LF", kImportForm, import("\n", "\r\n"));
        row("Latin-1", kImportForm, import("\xC3\x89", "\xC9"));
        row("last line without end", kImportForm, imported([](const QByteArray &all) { return all.trimmed(); }));
        row("tables emptied though listed", kImportForm,
            imported([](const QByteArray &all) { return "DELETE FROM songs\n" + all; }));
        row("other columns", kImportForm, import("[key],marker", "marker,[key]"));
        row("deletion before insertions", kImportForm,
            imported([this](QByteArray all) { return kGone + all.replace(kGone, ""); }));
        row("quote not doubled", kImportRuns, import("Rock ''n''", "Rock 'n'"));
        row("deletion of nothing", kImportRuns, import("\\Gone.mid", "\\Went.mid"));
        row("deletion missing", kImportRows, imported([this](QByteArray all) { return all.replace(kGone, ""); }));
        row("insertion missing", kImportRows,
            imported([](const QByteArray &all) { return all.mid(all.indexOf('\n') + 1); }));
        row("insertion twice", kImportRows,
            imported([](const QByteArray &all) { return all.left(all.indexOf('\n') + 1) + all; }));
        row("insertion of what is listed", kImportRows, import("\\My Songs\\loose.mid'", "\\My Songs\\Known.mid'"));
    }
    void addWrongValues() {
        row("wrong file name", kImportValues, import("'loose_1.mid'", "'loose.mid'"));
        row("wrong title", kImportValues, import("'Loose'", "'loose'"));
        row("wrong artist", kImportValues, import("'D''Amico'", "'<unknown>'"));
        row("wrong genre", kImportValues, import("<unknown>','',", "','',"));
        row("wrong drive name", kImportValues, import("'','0'", "'E:','0'"));
        row("wrong format", kImportValues, import("'','0'", "'','1'"));
        row("wrong author", kImportValues, import("<unknown>','120", "x','120"));
        row("wrong tempo", kImportValues, import("'120'", "'0'"));
        row("wrong key", kImportValues, import("'C','1'", "'C#','1'"));
        row("wrong marker", kImportValues, import("'C','1'", "'C','0'"));
    }

private slots:
    void cleanup() { player.restore(); }

    void rightOutcomeIsAccepted() {
        const Verdict verdict = player.judge();
        verifyRight(verdict);
        QVERIFY(verdict.notes.isEmpty());
    }

    void everyWrongOutcomeIsRejected_data() {
        columns<QString, Spoil>("rule", "spoil");
        addWrongSongs();
        addWrongFiles();
        addWrongPlaylistsAndStatements();
        addWrongValues();
    }
    void everyWrongOutcomeIsRejected() {
        QFETCH(QString, rule);
        QFETCH(Spoil, spoil);
        spoil(player);
        const Verdict verdict = player.judge();
        QVERIFY2(names(verdict, rule), qPrintable(rule + "\n"_s + verdictText(verdict)));
    }

    void untouchedDiskIsRejected() {
        const Verdict verdict = HandmadePlayer(false).judge();
        for (const QString &rule : {kSongPlace, kSongName, kBrokenGone, kMediaPlace, kUnsupportedGone, kRootTidy,
                                    kFolderSize, kPlaylists, kImportRows})
            QVERIFY2(names(verdict, rule), qPrintable(rule));
        QVERIFY(!names(verdict, kSongKept));
    }

    void withoutAManifestTextsAreNotJudgedAndTheVerdictSaysSo() {
        player.replace(kImport, "'Loose'", "'loose'");
        const Verdict verdict = ::judge(player.before, player.root);
        verifyRight(verdict);
        QCOMPARE(verdict.notes.size(), 1);
        player.replace(kImport, "'loose_1.mid'", "'loose.mid'");
        QVERIFY(names(::judge(player.before, player.root), kImportValues));
    }

    void brokenSongThatThePlayerListsMayStay() {
        player.write("My Songs/bad.mid"_s, "no song");
        QVERIFY(isWrong(kBrokenGone));
        player.write(kList, player.read(kList) + QByteArrayLiteral("\\sdmemory\\My Songs\\bad.mid\0"));
        QVERIFY(!isWrong(kBrokenGone));
    }

    void companionWithoutASongMayGoWithTheOldFolder() {
        Snapshot before = player.before;
        before.files.insert("My Songs/Big/alone.dat"_s, {1, "x", false});
        QVERIFY(judged(before).isRight());
        before.files.insert("My Songs/alone.dat"_s, {1, "y", false});
        QVERIFY(names(judged(before), kCompanionKept));
    }

    void emptyListNeedsEmptiedTables() {
        Snapshot before = player.before;
        before.files.remove(kList);
        player.remove(kList);
        QByteArray all = player.read(kImport);
        all.truncate(all.indexOf("DELETE FROM"));
        all.prepend("DELETE FROM songs\nDELETE FROM artists\nDELETE FROM genres\n");
        QByteArray more = all.mid(all.indexOf("INSERT"));
        more.truncate(more.indexOf('\n') + 1);
        const int from = more.indexOf("\\sdmemory");
        more.replace(from, more.indexOf(",'<unknown>'") - from, "\\sdmemory\\My Songs\\Known.mid','Known.mid','Known'");
        player.write(kImport, all + more);
        verifyRight(judged(before));
        player.write(kImport, (all + more).mid(all.indexOf("INSERT")));
        QVERIFY(names(judged(before), kImportForm));
    }

    void agreeingDiskNeedsNoImportFile() {
        QByteArray list;
        for (const QString &song : Snapshot::take(player.root).files.keys()) {
            if (song.startsWith("My Songs/"_s))
                list += "\\sdmemory\\" + QString(song).replace(QLatin1Char('/'), QLatin1Char('\\')).toUtf8() + '\0';
        }
        player.remove(kImport);
        player.write(kList, list);
        // The companions in the list are no songs on the disk: only songs keep it from agreeing.
        QVERIFY(isWrong(kImportRows));
        QByteArray songs;
        for (const QByteArray &entry : list.split('\0')) {
            if (entry.toLower().endsWith("mid"))
                songs += entry + '\0';
        }
        player.write(kList, songs);
        QVERIFY(!isWrong(kImportRows));
        player.write(kImport, "DELETE FROM songs\n");
        QVERIFY(isWrong(kImportRows));
    }

    void verdictNamesRulesAndPaths() {
        QVERIFY(verdictText(player.judge()).startsWith("RIGHT"_s));
        player.remove("My Songs/Known.mid"_s);
        const QString text = verdictText(player.judge());
        QVERIFY(text.contains(kSongKept));
        QVERIFY(text.contains("My Songs/Known.mid"_s));
        QVERIFY(text.contains("\nWRONG: "_s));
    }

    void allThatWasSpoiledWasPutRightAgain() { verifyRight(player.judge()); }
};

QTEST_GUILESS_MAIN(TestJudge)
#include "tst_judge.moc"
