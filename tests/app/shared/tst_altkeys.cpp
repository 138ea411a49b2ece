#include "app/shared/altkeys.h"
#include "app/shared/questionbox.h"
#include "support/given.h"
#include "support/pagetest.h"

class TestAltKeys : public QObject
{
    Q_OBJECT

    static QString keyOf(const QAbstractButton &button) { return button.shortcut().toString(); }
    /// Presses a key while a question is open that Escape answers with "No".
    static QMessageBox::StandardButton answerOf(Qt::Key key, Qt::KeyboardModifiers held) {
        QTimer::singleShot(0, qApp, [key, held] {
            QWidget *box = QApplication::activeModalWidget();
            QVERIFY(box && QTest::qWaitForWindowActive(box));
            QTest::keyClick(box, key, held);
            QCoreApplication::processEvents();
            if (box->isVisible())
                QTest::keyClick(box, Qt::Key_Escape);
        });
        const Question question = {"?"_s,
                                   "Sovrascrivo ?"_s,
                                   {{QMessageBox::Yes, "Si"_s},
                                    {QMessageBox::YesToAll, "Si,Tutti"_s},
                                    {QMessageBox::No, "No"_s},
                                    {QMessageBox::NoToAll, "No,Tutti"_s}},
                                   QMessageBox::NoToAll,
                                   QMessageBox::No};
        return askQuestion(nullptr, question);
    }

private slots:
    void firstFreeLetterIsTaken_data() {
        columns<QString, QString, QString>("text", "taken", "letter");
        row("the first", "FINE"_s, QString(), "F"_s);
        row("small letters count", "indietro"_s, QString(), "I"_s);
        row("the next", "FINE"_s, "fi"_s, "N"_s);
        row("an umlaut is on few keyboards", "ÜBER"_s, QString(), "B"_s);
        row("no sign, no digit", "4 - A"_s, QString(), "A"_s);
        row("all taken", "OK"_s, "XKO"_s, QString());
        row("no letter", "..."_s, QString(), QString());
        row("no text", QString(), QString(), QString());
    }
    void firstFreeLetterIsTaken() {
        const QChar letter = freeLetter(given<QString>("text"), given<QString>("taken"));
        QCOMPARE(letter.isNull() ? QString() : QString(letter), given<QString>("letter"));
    }

    void buttonsAndBoxesOfAPageGetLettersOfTheirTexts() {
        QWidget page;
        QPushButton first("FINE"_s, &page);
        QCheckBox second("Fermo"_s, &page);
        QPushButton silent(&page);
        givePageAltKeys(page);
        QCOMPARE(keyOf(first), "Alt+F"_s);
        QCOMPARE(first.toolTip(), "Alt+F"_s);
        QCOMPARE(first.text(), "FINE"_s);
        QCOMPARE(keyOf(second), "Alt+E"_s);
        QCOMPARE(keyOf(silent), QString());
        // The new text's letter is not the old text's, which is free again.
        first.setText("DONE"_s);
        second.setText("Fixed"_s);
        givePageAltKeys(page);
        QCOMPARE(keyOf(first), "Alt+D"_s);
        QCOMPARE(keyOf(second), "Alt+F"_s);
    }

    void lettersBesideThePagesAreLeftAloneThoseOfOtherPagesAreNot() {
        QWidget window;
        QPushButton stop("STOP"_s, &window);
        giveAltKeys({&stop});
        QWidget frame(&window);
        QWidget pages[] = {QWidget(&frame), QWidget(&frame)};
        for (QWidget &page : pages) {
            QPushButton button("SOPRA"_s, &page);
            givePageAltKeys(page);
            QCOMPARE(keyOf(button), "Alt+O"_s);
        }
        QCOMPARE(keyOf(stop), "Alt+S"_s);
    }

    void letterWithAltAnswersABoxWithoutAltItDoesNothing_data() {
        columns<int, int>("key", "answer");
        row("Si", int(Qt::Key_S), int(QMessageBox::Yes));
        row("Si,Tutti", int(Qt::Key_I), int(QMessageBox::YesToAll));
        row("No,Tutti", int(Qt::Key_O), int(QMessageBox::NoToAll));
    }
    void letterWithAltAnswersABoxWithoutAltItDoesNothing() {
        const auto key = Qt::Key(given<int>("key"));
        QCOMPARE(int(answerOf(key, Qt::AltModifier)), given<int>("answer"));
        QCOMPARE(int(answerOf(key, Qt::NoModifier)), int(QMessageBox::No));
    }
};

PAGE_TEST_MAIN(TestAltKeys)
#include "tst_altkeys.moc"
