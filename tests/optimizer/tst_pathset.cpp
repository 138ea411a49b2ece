#include "optimizer/pathset.h"

#include "support/testing.h"

#include <random>

class TestPathSet : public QObject
{
    Q_OBJECT

    static constexpr uint kLastCharacter = 0x10FFFF;

    /// The character as text; a surrogate stands alone.
    static QString text(uint character) { return QString::fromUcs4(&character, 1); }
    static bool sameToAList(const QString &a, const QString &b) {
        return QStringList(a).contains(b, Qt::CaseInsensitive);
    }
    static bool sameToASet(const QString &a, const QString &b) {
        PathSet set;
        set.insert(a);
        return set.contains(b);
    }

private slots:
    void emptySetHoldsNothingAndPathsThatDifferInCaseCountOnce() {
        PathSet set;
        QCOMPARE(set.size(), 0);
        QVERIFY(!set.contains(QString()) && !set.contains("E:/a.mid"_s));
        set.reserve(3);
        for (const QString &path : words("E:/a.mid E:/A.MID E:/b.mid"))
            set.insert(path);
        QCOMPARE(set.size(), 2);
    }

    void pathsAreDroppedPieceByPiece() {
        PathSet set;
        QVERIFY(!set.drop(1));
        for (const QString &path : words("E:/a.mid E:/b.mid E:/c.mid"))
            set.insert(path);
        QVERIFY(set.drop(0) && set.size() == 3);
        QVERIFY(set.drop(2) && set.size() == 1);
        QVERIFY(!set.drop(2) && set.size() == 0);
    }

    void pathsAreFound_data() {
        columns<QString, QString, bool>("inserted", "asked", "found");
        const QString song = "E:/My Songs/Song.mid"_s;
        row("same", song, song, true);
        row("capitals", song, song.toUpper(), true);
        row("small letters", song, song.toLower(), true);
        row("other song", song, "E:/My Songs/Song2.mid"_s, false);
        row("start of the path", song, "E:/My Songs"_s, false);
        row("accents", "E:/\u00C8.mid"_s, "E:/\u00E8.mid"_s, true);
        row("with and without an accent", "E:/\u00E8.mid"_s, "E:/e.mid"_s, false);
        row("composed and decomposed", "\u00E8"_s, "e\u0300"_s, false);
        row("sharp s is not ss", "\u00DF"_s, "ss"_s, false);
        row("ligature is not its letters", "\uFB01"_s, "fi"_s, false);
        row("dotted capital I is not i", "\u0130"_s, "i"_s, false);
        row("final sigma", "\u03C2"_s, "\u03A3"_s, true);
        row("Kelvin sign", "\u212A"_s, "k"_s, true);
        row("letters outside the first plane", "\U00010400"_s, "\U00010428"_s, true);
        row("halves of characters", QString(QChar(0xD801)), QString(QChar(0xDC00)), false);
        row("empty in, null asked", ""_s, QString(), true);
        row("null in, empty asked", QString(), ""_s, true);
    }
    void pathsAreFound() {
        QFETCH(QString, inserted);
        QFETCH(QString, asked);
        QTEST(sameToAList(inserted, asked), "found");
        QTEST(sameToASet(inserted, asked), "found");
    }

    void everyCharacterEqualsItsCases() {
        for (uint character = 0; character <= kLastCharacter; ++character) {
            const QString one = text(character);
            for (const QString &other :
                 {text(QChar::toLower(character)), text(QChar::toUpper(character)), text(QChar::toTitleCase(character)),
                  text(QChar::toCaseFolded(character)), one.toLower(), one.toUpper(), one.toCaseFolded()}) {
                if (other != one && sameToASet(one, other) != sameToAList(one, other))
                    QFAIL(qPrintable("U+%1 and %2"_s.arg(character, 0, 16).arg(other)));
            }
        }
    }

    // Sorting by Qt's comparison puts the characters that a list takes for the same side by side. As many classes, and
    // nothing of one class apart in the set: then the set has exactly the same classes.
    void everyCharacterIsInTheSameClassAsInAList() {
        QVector<QString> characters;
        for (uint character = 0; character <= kLastCharacter; ++character)
            characters.append(text(character));
        std::sort(characters.begin(), characters.end(),
                  [](const QString &a, const QString &b) { return a.compare(b, Qt::CaseInsensitive) < 0; });

        PathSet set;
        int classes = 0;
        const QString *representative = nullptr;
        for (const QString &character : qAsConst(characters)) {
            if (!representative || representative->compare(character, Qt::CaseInsensitive) != 0) {
                representative = &character;
                ++classes;
                QVERIFY(!set.contains(character));
                set.insert(character);
            }
            QVERIFY(set.contains(character));
        }
        QCOMPARE(set.size(), classes);
    }

    void randomTextsGiveTheSameAnswerAsAList() {
        const QString alphabet = "aAsS\u00DF\u1E9E\u017F\u0130\u0131iI\u0307/"_s + QChar(0xD801) + QChar(0xDC00) +
                                 QChar(0xDC28) + QChar(0xD83A);
        // Seeded with a constant: the same texts in every run.
        std::minstd_rand random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp)
        const auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<uint>(limit)); };
        const auto randomText = [&] {
            QString made;
            for (int length = below(4); length > 0; --length)
                made += alphabet.at(below(alphabet.size()));
            return made;
        };
        for (int round = 0; round < 2000; ++round) {
            QStringList list;
            PathSet set;
            for (int i = 0; i < 20; ++i) {
                list.append(randomText());
                set.insert(list.constLast());
            }
            for (int i = 0; i < 20; ++i) {
                const QString asked = randomText();
                QCOMPARE(set.contains(asked), list.contains(asked, Qt::CaseInsensitive));
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestPathSet)
#include "tst_pathset.moc"
