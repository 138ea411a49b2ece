#include "handmadeplayer.h"

#include <QTest>

#include <functional>

namespace {

const QString kImport = QStringLiteral("CorvinImportDB.sql");
const QString kPlaylist = QStringLiteral("System/Playlist/p.pls");

QString path(const char *text)
{
    return QString::fromUtf8(text);
}

/// One way to spoil what was right, and the rule that must notice.
struct Wrong
{
    const char *name;
    const QString *rule;
    std::function<void(const HandmadePlayer &)> spoil;
};

void fill(const HandmadePlayer &player, const char *folder, int files)
{
    for (int i = 0; i < files; ++i)
        player.write(path("%1/more %2.dat").arg(path(folder)).arg(i), "more " + QByteArray::number(i));
}

QList<Wrong> wrongFiles()
{
    using P = const HandmadePlayer &;
    return {
        {"song lost", &Rules::kSongKept, [](P p) { p.remove(path("My Songs/Known.mid")); }},
        {"song there twice", &Rules::kSongKept,
         [](P p) { p.write(path("My Songs/copy.mid"), p.read(path("My Songs/Known.mid"))); }},
        {"song with a changed byte", &Rules::kSongKept,
         [](P p) { p.replace(path("My Songs/Known.mid"), "Known", "known"); }},
        {"song cut", &Rules::kSongKept, [](P p) { p.write(path("My Songs/Known.mid"), "MThd"); }},
        {"song in another folder", &Rules::kSongPlace,
         [](P p) { p.move(path("My Songs/Known.mid"), path("My Songs/Else/Known.mid")); }},
        {"song left in the split folder", &Rules::kSongPlace,
         [](P p) { p.move(path("My Songs/Big/T0/Song 5.mid"), path("My Songs/Big/Song 5.mid")); }},
        {"song under a wrong initial", &Rules::kSongInitial,
         [](P p) { p.move(path("My Songs/Big/T0/Song 5.mid"), path("My Songs/Big/E0/Song 5.mid")); }},
        {"song under a new name", &Rules::kSongName,
         [](P p) { p.move(path("My Songs/Known.mid"), path("My Songs/Renamed.mid")); }},
        {"long suffix left", &Rules::kSongName,
         [](P p) { p.move(path("My Songs/New.MID"), path("My Songs/New.MIDI")); }},
        {"long suffix repaired where nothing is", &Rules::kSongName,
         [](P p) { p.move(path("Bridges/Bridge.midi"), path("Bridges/Bridge.mid")); }},
        {"over-long name left", &Rules::kSongName,
         [](P p) {
             p.move(path("My Songs/%1(0).mid").arg(QString(86, QLatin1Char('l'))),
                    path("My Songs/%1.mid").arg(QString(116, QLatin1Char('l'))));
         }},
        {"broken song left", &Rules::kBrokenGone, [](P p) { p.write(path("My Songs/bad.mid"), "no song"); }},
        {"companion lost", &Rules::kCompanionKept, [](P p) { p.remove(path("My Songs/Big/T0/Song 5.dat")); }},
        {"companion left behind", &Rules::kCompanionBeside,
         [](P p) { p.move(path("My Songs/Big/T0/Song 5.dat"), path("My Songs/Big/E0/Song 5.dat")); }},
        {"companion under the old name", &Rules::kCompanionBeside,
         [](P p) { p.move(path("My Songs/New.cdg"), path("My Songs/New_1.cdg")); }},
        {"player's file changed", &Rules::kSystemUntouched,
         [](P p) { p.write(path("System/Corvin/Corvin.exe"), "MY"); }},
        {"player's text removed", &Rules::kSystemUntouched, [](P p) { p.remove(path("System/Corvin/readme.txt")); }},
        {"start-up script moved", &Rules::kSystemUntouched,
         [](P p) { p.move(path("AUTOEXEC.BAT"), path("My Songs/AUTOEXEC.BAT")); }},
        {"playlist's copy left", &Rules::kSystemUntouched, [](P p) { p.write(kPlaylist + path(".old"), "old"); }},
        {"image lost", &Rules::kMediaKept, [](P p) { p.remove(path("Images/cover_1.jpg")); }},
        {"image over another", &Rules::kMediaKept,
         [](P p) {
             p.remove(path("Images/cover.jpg"));
             p.move(path("Images/cover_1.jpg"), path("Images/cover.jpg"));
         }},
        {"image not moved", &Rules::kMediaPlace,
         [](P p) { p.move(path("Images/cover_1.jpg"), path("My Songs/cover.jpg")); }},
        {"image under a passing name", &Rules::kMediaPlace,
         [](P p) { p.move(path("Images/cover_1.jpg"), path("Images/4711.jpg")); }},
        {"video among images", &Rules::kMediaPlace,
         [](P p) { p.move(path("Videos/clip.avi"), path("Images/clip.avi")); }},
        {"text left", &Rules::kUnsupportedGone, [](P p) { p.write(path("My Songs/note.txt"), "note"); }},
        {"file without suffix left", &Rules::kUnsupportedGone, [](P p) { p.write(path("My Songs/note"), "note"); }},
        {"song left in the root", &Rules::kRootTidy,
         [](P p) { p.move(path("My Songs/loose_1.mid"), path("loose.mid")); }},
        {"hidden file removed", &Rules::kHiddenUntouched, [](P p) { p.remove(path("My Songs/.hidden.txt")); }},
        {"label removed", &Rules::kHiddenUntouched, [](P p) { p.remove(path(".windows-label")); }},
        {"folder too large", &Rules::kFolderSize, [](P p) { fill(p, "My Songs", 1000); }},
        {"sub-folder too large", &Rules::kFolderSize, [](P p) { fill(p, "My Songs/Big/T0", 903 - 4 * 127 + 1); }},
        {"old folder left", &Rules::kFolders, [](P p) { p.write(path("My Songs/Big.old/.keep"), "x"); }},
        {"file from nowhere", &Rules::kNothingNew, [](P p) { p.write(path("My Songs/new.dat"), "new"); }},
        {"playlist not rewritten", &Rules::kPlaylists, [](P p) { p.replace(kPlaylist, "My Songs\\loose_1", "loose"); }},
        {"playlist names a wrong place", &Rules::kPlaylists, [](P p) { p.replace(kPlaylist, "loose_1", "loose"); }},
        {"playlist lost a number", &Rules::kPlaylists, [](P p) { p.replace(kPlaylist, "^1^2", "^1"); }},
        {"other line of a playlist changed", &Rules::kPlaylists, [](P p) { p.replace(kPlaylist, "Known", "known"); }},
        {"line end of a playlist changed", &Rules::kPlaylists,
         [](P p) { p.replace(kPlaylist, "no song\r\n", "no song\n"); }},
        {"playlist emptied", &Rules::kPlaylists, [](P p) { p.write(kPlaylist, QByteArray()); }},
    };
}

QList<Wrong> wrongImports()
{
    using P = const HandmadePlayer &;
    return {
        {"no import file", &Rules::kImportRows, [](P p) { p.remove(kImport); }},
        {"byte-order mark", &Rules::kImportForm, [](P p) { p.write(kImport, "\xEF\xBB\xBF" + p.read(kImport)); }},
        {"CR before LF", &Rules::kImportForm, [](P p) { p.replace(kImport, "\n", "\r\n"); }},
        {"Latin-1", &Rules::kImportForm, [](P p) { p.replace(kImport, "\xC3\x89", "\xC9"); }},
        {"last line without end", &Rules::kImportForm, [](P p) { p.write(kImport, p.read(kImport).trimmed()); }},
        {"tables emptied though listed", &Rules::kImportForm,
         [](P p) { p.write(kImport, "DELETE FROM songs\n" + p.read(kImport)); }},
        {"other columns", &Rules::kImportForm, [](P p) { p.replace(kImport, "[key],marker", "marker,[key]"); }},
        {"deletion before insertions", &Rules::kImportForm,
         [](P p) {
             const QByteArray line = "DELETE FROM songs WHERE filename='\\sdmemory\\My Songs\\Gone.mid'\n";
             p.replace(kImport, line, QByteArray());
             p.write(kImport, line + p.read(kImport));
         }},
        {"quote not doubled", &Rules::kImportRuns, [](P p) { p.replace(kImport, "Rock ''n''", "Rock 'n'"); }},
        {"deletion of nothing", &Rules::kImportRuns, [](P p) { p.replace(kImport, "\\Gone.mid", "\\Went.mid"); }},
        {"deletion missing", &Rules::kImportRows,
         [](P p) { p.replace(kImport, "DELETE FROM songs WHERE filename='\\sdmemory\\My Songs\\Gone.mid'\n", ""); }},
        {"insertion missing", &Rules::kImportRows,
         [](P p) {
             const QByteArray all = p.read(kImport);
             p.write(kImport, all.mid(all.indexOf('\n') + 1));
         }},
        {"insertion twice", &Rules::kImportRows,
         [](P p) {
             const QByteArray all = p.read(kImport);
             p.write(kImport, all.left(all.indexOf('\n') + 1) + all);
         }},
        {"insertion of what is listed", &Rules::kImportRows,
         [](P p) { p.replace(kImport, "\\My Songs\\loose.mid'", "\\My Songs\\Known.mid'"); }},
        {"wrong file name", &Rules::kImportValues, [](P p) { p.replace(kImport, "'loose_1.mid'", "'loose.mid'"); }},
        {"wrong title", &Rules::kImportValues, [](P p) { p.replace(kImport, "'Loose'", "'loose'"); }},
        {"wrong artist", &Rules::kImportValues, [](P p) { p.replace(kImport, "'D''Amico'", "'<unknown>'"); }},
        {"wrong genre", &Rules::kImportValues, [](P p) { p.replace(kImport, "<unknown>','',", "','',"); }},
        {"wrong drive name", &Rules::kImportValues, [](P p) { p.replace(kImport, "'','0'", "'E:','0'"); }},
        {"wrong format", &Rules::kImportValues, [](P p) { p.replace(kImport, "'','0'", "'','1'"); }},
        {"wrong author", &Rules::kImportValues, [](P p) { p.replace(kImport, "<unknown>','120", "x','120"); }},
        {"wrong tempo", &Rules::kImportValues, [](P p) { p.replace(kImport, "'120'", "'0'"); }},
        {"wrong key", &Rules::kImportValues, [](P p) { p.replace(kImport, "'C','1'", "'C#','1'"); }},
        {"wrong marker", &Rules::kImportValues, [](P p) { p.replace(kImport, "'C','1'", "'C','0'"); }},
    };
}

bool names(const Verdict &verdict, const QString &rule)
{
    for (const Failure &failure : verdict.failures) {
        if (failure.rule == rule)
            return true;
    }
    return false;
}

} // namespace

/// The judge against a disk optimised by hand, and against every way to spoil it.
class TestJudge : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_player.restore(); }

    void rightOutcomeIsAccepted();
    void everyWrongOutcomeIsRejected_data();
    void everyWrongOutcomeIsRejected();
    void untouchedDiskIsRejected();
    void withoutAManifestTextsAreNotJudgedAndTheVerdictSaysSo();
    void brokenSongThatThePlayerListsMayStay();
    void companionWithoutASongMayGoWithTheOldFolder();
    void emptyListNeedsEmptiedTables();
    void agreeingDiskNeedsNoImportFile();
    void verdictNamesRulesAndPaths();
    void allThatWasSpoiledWasPutRightAgain();

private:
    const HandmadePlayer m_player;
};

void TestJudge::rightOutcomeIsAccepted()
{
    const HandmadePlayer &player = m_player;
    const Verdict verdict = player.judge();
    QVERIFY2(verdict.isRight(), qPrintable(verdictText(verdict)));
    QVERIFY(verdict.notes.isEmpty());
}

void TestJudge::everyWrongOutcomeIsRejected_data()
{
    QTest::addColumn<int>("number");
    int number = 0;
    for (const Wrong &wrong : wrongFiles() + wrongImports())
        QTest::newRow(wrong.name) << number++;
}

void TestJudge::everyWrongOutcomeIsRejected()
{
    QFETCH(int, number);
    const Wrong wrong = (wrongFiles() + wrongImports()).at(number);
    const HandmadePlayer &player = m_player;
    wrong.spoil(player);
    const Verdict verdict = player.judge();
    QVERIFY2(names(verdict, *wrong.rule), qPrintable(*wrong.rule + QLatin1Char('\n') + verdictText(verdict)));
}

void TestJudge::untouchedDiskIsRejected()
{
    const Verdict verdict = HandmadePlayer(HandmadePlayer::State::Untouched).judge();
    for (const QString &rule :
         {Rules::kSongPlace, Rules::kSongName, Rules::kBrokenGone, Rules::kMediaPlace, Rules::kUnsupportedGone,
          Rules::kRootTidy, Rules::kFolderSize, Rules::kPlaylists, Rules::kImportRows})
        QVERIFY2(names(verdict, rule), qPrintable(rule));
    QVERIFY(!names(verdict, Rules::kSongKept));
}

void TestJudge::withoutAManifestTextsAreNotJudgedAndTheVerdictSaysSo()
{
    const HandmadePlayer &player = m_player;
    player.replace(kImport, "'Loose'", "'loose'");
    const Verdict verdict = ::judge(player.before(), player.root());
    QVERIFY2(verdict.isRight(), qPrintable(verdictText(verdict)));
    QCOMPARE(verdict.notes.size(), 1);
    player.replace(kImport, "'loose_1.mid'", "'loose.mid'");
    QVERIFY(names(::judge(player.before(), player.root()), Rules::kImportValues));
}

void TestJudge::brokenSongThatThePlayerListsMayStay()
{
    const HandmadePlayer &player = m_player;
    const QString list = path("System/Corvin/data.fastDB");
    player.write(path("My Songs/bad.mid"), "no song");
    QVERIFY(names(player.judge(), Rules::kBrokenGone));
    player.write(list, player.read(list) + QByteArrayLiteral("\\sdmemory\\My Songs\\bad.mid\0"));
    QVERIFY(!names(player.judge(), Rules::kBrokenGone));
}

void TestJudge::companionWithoutASongMayGoWithTheOldFolder()
{
    const HandmadePlayer &player = m_player;
    Snapshot before = player.before();
    before.files.insert(path("My Songs/Big/alone.dat"), {1, "x", false});
    QVERIFY(::judge(before, player.root(), player.manifest).isRight());
    before.files.insert(path("My Songs/alone.dat"), {1, "y", false});
    QVERIFY(names(::judge(before, player.root(), player.manifest), Rules::kCompanionKept));
}

void TestJudge::emptyListNeedsEmptiedTables()
{
    const HandmadePlayer &player = m_player;
    Snapshot before = player.before();
    const QString list = path("System/Corvin/data.fastDB");
    before.files.remove(list);
    player.remove(list);
    QByteArray import = player.read(kImport);
    import.truncate(import.indexOf("DELETE FROM"));
    import.prepend("DELETE FROM songs\nDELETE FROM artists\nDELETE FROM genres\n");
    QByteArray more = import.mid(import.indexOf("INSERT"));
    more.truncate(more.indexOf('\n') + 1);
    const int from = more.indexOf("\\sdmemory");
    more.replace(from, more.indexOf(",'<unknown>'") - from, "\\sdmemory\\My Songs\\Known.mid','Known.mid','Known'");
    player.write(kImport, import + more);
    const Verdict verdict = ::judge(before, player.root(), player.manifest);
    QVERIFY2(verdict.isRight(), qPrintable(verdictText(verdict)));
    player.write(kImport, (import + more).mid(import.indexOf("INSERT")));
    QVERIFY(names(::judge(before, player.root(), player.manifest), Rules::kImportForm));
}

void TestJudge::agreeingDiskNeedsNoImportFile()
{
    const HandmadePlayer &player = m_player;
    QByteArray list;
    for (const QString &song : Snapshot::take(player.root()).files.keys()) {
        if (song.startsWith(path("My Songs/")))
            list += "\\sdmemory\\" + QString(song).replace(QLatin1Char('/'), QLatin1Char('\\')).toUtf8() + '\0';
    }
    player.remove(kImport);
    player.write(path("System/Corvin/data.fastDB"), list);
    const Verdict verdict = player.judge();
    // The companions in the list are no songs on the disk: only songs keep it from agreeing.
    QVERIFY(names(verdict, Rules::kImportRows));
    QByteArray songs;
    for (const QByteArray &entry : list.split('\0')) {
        if (entry.toLower().endsWith("mid"))
            songs += entry + '\0';
    }
    player.write(path("System/Corvin/data.fastDB"), songs);
    QVERIFY(!names(player.judge(), Rules::kImportRows));
    player.write(kImport, "DELETE FROM songs\n");
    QVERIFY(names(player.judge(), Rules::kImportRows));
}

void TestJudge::verdictNamesRulesAndPaths()
{
    const HandmadePlayer &player = m_player;
    QVERIFY(verdictText(player.judge()).startsWith(path("RIGHT")));
    player.remove(path("My Songs/Known.mid"));
    const QString text = verdictText(player.judge());
    QVERIFY(text.contains(Rules::kSongKept));
    QVERIFY(text.contains(path("My Songs/Known.mid")));
    QVERIFY(text.contains(path("\nWRONG: ")));
}

void TestJudge::allThatWasSpoiledWasPutRightAgain()
{
    const Verdict verdict = m_player.judge();
    QVERIFY2(verdict.isRight(), qPrintable(verdictText(verdict)));
}

QTEST_GUILESS_MAIN(TestJudge)
#include "tst_judge.moc"
