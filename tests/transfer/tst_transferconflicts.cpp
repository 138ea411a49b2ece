#include "opentransfer.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"

namespace {

/// The page for a player that has these files already.
struct Conflict : OpenForPlayer
{
    explicit Conflict(const QStringList &content) : OpenForPlayer(content) {}
    /// The contents on the player, "pc" or "player", in the order of the names.
    QByteArrayList contents() const { return contentBelow(player.root()).values(); }
    void answer(const QString &button) { answerer.answer(Titles::kTransferExists, button); }

    BoxAnswerer answerer;
};

} // namespace

/// Drops of what the player has already: the question, its answers, and how long they are remembered.
class TestTransferConflicts : public QObject
{
    Q_OBJECT

private slots:
    void questionIsAsAgreed() {
        Conflict conflict({"My Songs/a.mid"_s});
        conflict.enter("My Songs"_s);
        conflict.answer(Buttons::kNo);
        conflict.dropNew(words("a.mid"));
        QCOMPARE(conflict.answerer.seen().size(), 1);
        const BoxAnswerer::Seen box = conflict.answerer.seen().first();
        QCOMPARE(box.text,
                 "Il File %1\n\nE' già esistente. Sovrascrivo ?"_s.arg(conflict.player.path("My Songs/a.mid"_s)));
        QStringList buttons = box.buttons;
        buttons.sort();
        QCOMPARE(buttons, (QStringList{Buttons::kNo, Buttons::kNoTutti, Buttons::kSi, Buttons::kSiTutti}));
        QCOMPARE(box.defaultButton, Buttons::kNoTutti);
        QVERIFY(!box.hadParent);
    }

    void whatAnswersToNothingDuringACopyLooksSo() {
        Conflict conflict(words("a.mid"));
        QStringList enabled;
        const auto look = [&] {
            QString names;
            for (const char *name : {"pButPc", "pushBtnBack", "pushBtnForward", "toolButtonDelete"})
                names += child<QWidget>(conflict.page, name)->isEnabled() ? QLatin1String(name) : QLatin1String("-");
            enabled.append(names);
        };
        conflict.select(words("a.mid"));
        look();
        conflict.answerer.whenShown([&](QMessageBox *) { look(); });
        conflict.answer(Buttons::kNo);
        conflict.dropNew(words("a.mid"));
        look();
        QCOMPARE(enabled, words("pButPcpushBtnBack-toolButtonDelete ---- pButPcpushBtnBackpushBtnForward-"));
    }

    void answersDecide_data() {
        using Contents = QByteArrayList;
        columns<QString, QStringList, int, QByteArrayList>("there", "answers", "remembered", "contents");
        row("Si", "a"_s, words("Si"), int(QMessageBox::Yes), Contents{"pc"});
        row("Si,Tutti", "a"_s, words("Si,Tutti"), int(QMessageBox::YesToAll), Contents{"pc"});
        row("No", "a"_s, words("No"), int(QMessageBox::No), Contents{"player"});
        row("No,Tutti", "a"_s, words("No,Tutti"), int(QMessageBox::NoToAll), Contents{"player"});
        row("Si does not suppress the next question", "a b c"_s, words("Si No Si"), int(QMessageBox::Yes),
            Contents{"pc", "player", "pc"});
        row("Si,Tutti asks no more", "a/in b"_s, words("Si,Tutti"), int(QMessageBox::YesToAll), Contents{"pc", "pc"});
        row("Enter answers No,Tutti", "a b"_s, words("Enter"), int(QMessageBox::NoToAll), Contents{"player", "player"});
        row("Escape and closing answer No", "a b"_s, words("Escape closed"), int(QMessageBox::No),
            Contents{"player", "player"});
    }

    void answersDecide() {
        QFETCH(QString, there);
        QFETCH(QStringList, answers);
        QFETCH(int, remembered);
        QFETCH(QByteArrayList, contents);
        const QStringList files = there.split(QLatin1Char(' '));
        Conflict conflict(files);
        for (const QString &answer : qAsConst(answers)) {
            if (answer == "closed"_s)
                conflict.answerer.answerByClosing(Titles::kTransferExists);
            else if (answer == "Enter"_s || answer == "Escape"_s)
                conflict.answerer.answerByKey(Titles::kTransferExists,
                                              answer == "Enter"_s ? Qt::Key_Return : Qt::Key_Escape);
            else
                conflict.answer(answer);
        }
        conflict.dropNew(files, QString(there).remove("/in"_s).split(QLatin1Char(' ')));
        QCOMPARE(conflict.answerer.seen().size(), answers.size());
        QCOMPARE(conflict.page.overwriteAnswer, remembered);
        QCOMPARE(conflict.contents(), contents);
        QCOMPARE(conflict.player.files(), files);
        for (const QString &file : files)
            QCOMPARE(conflict.pc.content(file), QByteArray("pc"));
        QCOMPARE(conflict.recorder.count("increase"_s), files.size()); // skipped ones too
    }

    void noToAllLeavesAllLaterFilesForThisDropOnly() {
        Conflict conflict(words("a.mid b.mid"));
        conflict.answer(Buttons::kNoTutti);
        conflict.dropNew(words("a.mid b.mid new.mid"));
        QCOMPARE(conflict.answerer.seen().size(), 1);
        QCOMPARE(conflict.contents(), (QByteArrayList{"player", "player", "pc"}));

        conflict.answer(Buttons::kSiTutti);
        conflict.dropNew(words("a.mid b.mid new.mid"));
        QCOMPARE(conflict.answerer.seen().size(), 2);
        QCOMPARE(conflict.contents(), (QByteArrayList{"pc", "pc", "pc"}));
    }

    void conflictWithAFolderLeavesTheFolder() {
        Conflict conflict(words("album/song.mid"));
        conflict.answer(Buttons::kSi);
        conflict.answerer.answer(Titles::kNotAllCopied, Buttons::kOk);
        conflict.dropNew(words("album"));
        QCOMPARE(conflict.player.files(), words("album/song.mid"));
    }

    void existingFoldersAreJoined() {
        Conflict conflict(words("album/old.mid"));
        conflict.dropNew(words("album/new.mid"), words("album"));
        QCOMPARE(conflict.player.files(), words("album/new.mid album/old.mid"));
    }

    void folderDroppedOverAFileOfItsNameLeavesTheFile() {
        Conflict conflict(words("album"));
        conflict.answerer.answer(Titles::kNotAllCopied, Buttons::kOk);
        conflict.dropNew(words("album/song.mid"), words("album"));
        QCOMPARE(conflict.player.content("album"_s), QByteArray("player"));
        QString logged;
        QDebug(&logged) << "!QFile::copy - src :" << conflict.pc.path("album"_s) + QDir::separator() + "song.mid"_s;
        QVERIFY(conflict.recorder.log().contains(QtDebugMsg, logged.trimmed()));
    }
};

PAGE_TEST_MAIN(TestTransferConflicts)
#include "tst_transferconflicts.moc"
