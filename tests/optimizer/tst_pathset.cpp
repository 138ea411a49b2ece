#include "optimizer/pathset.h"

#include <QStringList>
#include <QTest>
#include <QVector>
#include <algorithm>
#include <random>

namespace {

constexpr uint kLastCharacter = 0x10FFFF;

/// The character as text; a surrogate stands alone.
QString text(uint character)
{
    return QString::fromUcs4(&character, 1);
}

bool sameToAList(const QString &a, const QString &b)
{
    return QStringList(a).contains(b, Qt::CaseInsensitive);
}

bool sameToASet(const QString &a, const QString &b)
{
    PathSet set;
    set.insert(a);
    return set.contains(b);
}

} // namespace

class TestPathSet : public QObject
{
    Q_OBJECT

private slots:
    void emptySetHoldsNothing();
    void pathsAreFound_data();
    void pathsAreFound();
    void pathsThatDifferInCaseCountOnce();
    void everyCharacterEqualsItsCases();
    void everyCharacterIsInTheSameClassAsInAList();
    void randomTextsGiveTheSameAnswerAsAList();
};

void TestPathSet::emptySetHoldsNothing()
{
    const PathSet set;
    QCOMPARE(set.size(), 0);
    QVERIFY(!set.contains(QString()));
    QVERIFY(!set.contains(QStringLiteral("E:/a.mid")));
}

void TestPathSet::pathsAreFound_data()
{
    QTest::addColumn<QString>("inserted");
    QTest::addColumn<QString>("asked");
    QTest::addColumn<bool>("found");
    const auto row = [](const char *name, const QString &inserted, const QString &asked, bool found) {
        QTest::newRow(name) << inserted << asked << found;
    };
    const QString song = QStringLiteral("E:/My Songs/Song.mid");
    row("same", song, song, true);
    row("capitals", song, song.toUpper(), true);
    row("small letters", song, song.toLower(), true);
    row("other song", song, QStringLiteral("E:/My Songs/Song2.mid"), false);
    row("start of the path", song, QStringLiteral("E:/My Songs"), false);
    row("accents", QStringLiteral("E:/\u00C8.mid"), QStringLiteral("E:/\u00E8.mid"), true);
    row("with and without an accent", QStringLiteral("E:/\u00E8.mid"), QStringLiteral("E:/e.mid"), false);
    row("composed and decomposed", QStringLiteral("\u00E8"), QStringLiteral("e\u0300"), false);
    row("sharp s is not ss", QStringLiteral("\u00DF"), QStringLiteral("ss"), false);
    row("ligature is not its letters", QStringLiteral("\uFB01"), QStringLiteral("fi"), false);
    row("dotted capital I is not i", QStringLiteral("\u0130"), QStringLiteral("i"), false);
    row("final sigma", QStringLiteral("\u03C2"), QStringLiteral("\u03A3"), true);
    row("Kelvin sign", QStringLiteral("\u212A"), QStringLiteral("k"), true);
    row("letters outside the first plane", QStringLiteral("\U00010400"), QStringLiteral("\U00010428"), true);
    row("halves of characters", QString(QChar(0xD801)), QString(QChar(0xDC00)), false);
    row("empty in, null asked", QStringLiteral(""), QString(), true);
    row("null in, empty asked", QString(), QStringLiteral(""), true);
}

void TestPathSet::pathsAreFound()
{
    QFETCH(QString, inserted);
    QFETCH(QString, asked);
    QFETCH(bool, found);
    QCOMPARE(sameToAList(inserted, asked), found);
    QCOMPARE(sameToASet(inserted, asked), found);
}

void TestPathSet::pathsThatDifferInCaseCountOnce()
{
    PathSet set;
    set.reserve(3);
    set.insert(QStringLiteral("E:/a.mid"));
    set.insert(QStringLiteral("E:/A.MID"));
    set.insert(QStringLiteral("E:/b.mid"));
    QCOMPARE(set.size(), 2);
}

void TestPathSet::everyCharacterEqualsItsCases()
{
    for (uint character = 0; character <= kLastCharacter; ++character) {
        const QString one = text(character);
        for (const uint other : {QChar::toLower(character), QChar::toUpper(character), QChar::toTitleCase(character),
                                 QChar::toCaseFolded(character)}) {
            if (other != character && sameToASet(one, text(other)) != sameToAList(one, text(other)))
                QFAIL(qPrintable(QStringLiteral("U+%1 and U+%2").arg(character, 0, 16).arg(other, 0, 16)));
        }
        for (const QString &other : {one.toLower(), one.toUpper(), one.toCaseFolded()}) {
            if (other != one && sameToASet(one, other) != sameToAList(one, other))
                QFAIL(qPrintable(QStringLiteral("U+%1 and %2").arg(character, 0, 16).arg(other)));
        }
    }
}

// Sorting by Qt's comparison puts the characters that a list takes for the same side by side. As many classes, and
// nothing of one class apart in the set: then the set has exactly the same classes.
void TestPathSet::everyCharacterIsInTheSameClassAsInAList()
{
    QVector<QString> characters;
    characters.reserve(kLastCharacter + 1);
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

void TestPathSet::randomTextsGiveTheSameAnswerAsAList()
{
    constexpr int kRounds = 2000;
    constexpr int kTexts = 20;
    constexpr int kLongest = 3;
    const QVector<QString> alphabet = {QStringLiteral("a"),      QStringLiteral("A"),      QStringLiteral("s"),
                                       QStringLiteral("S"),      QStringLiteral("\u00DF"), QStringLiteral("\u1E9E"),
                                       QStringLiteral("\u017F"), QStringLiteral("\u0130"), QStringLiteral("\u0131"),
                                       QStringLiteral("i"),      QStringLiteral("I"),      QStringLiteral("\u0307"),
                                       QStringLiteral("/"),      QString(QChar(0xD801)),   QString(QChar(0xDC00)),
                                       QString(QChar(0xDC28)),   QString(QChar(0xD83A))};
    // Seeded with a constant: the same texts in every run.
    std::minstd_rand random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp)
    const auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<uint>(limit)); };
    const auto randomText = [&] {
        QString made;
        for (int length = below(kLongest + 1); length > 0; --length)
            made += alphabet.at(below(alphabet.size()));
        return made;
    };
    for (int round = 0; round < kRounds; ++round) {
        QStringList list;
        PathSet set;
        for (int i = 0; i < kTexts; ++i) {
            list.append(randomText());
            set.insert(list.constLast());
        }
        for (int i = 0; i < kTexts; ++i) {
            const QString asked = randomText();
            QCOMPARE(set.contains(asked), list.contains(asked, Qt::CaseInsensitive));
        }
    }
}

QTEST_GUILESS_MAIN(TestPathSet)
#include "tst_pathset.moc"
