#include "optimizer/titleinitial.h"

#include <QTest>

class TestTitleInitial : public QObject
{
    Q_OBJECT

private slots:
    void titleHasInitial_data();
    void titleHasInitial();
    void everyInitialCanStandInAFileName();
    void everyAsciiLetterAndDigitIsItsOwnInitial();
    void titlesAreOrderedInUpperCase_data();
    void titlesAreOrderedInUpperCase();
};

void TestTitleInitial::titleHasInitial_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("initial");
    const auto row = [](const char *name, const QString &title, const QString &initial) {
        QTest::newRow(name) << title << initial;
    };
    row("capital", QStringLiteral("Azzurro"), QStringLiteral("A"));
    row("small letter", QStringLiteral("azzurro"), QStringLiteral("A"));
    row("last letter", QStringLiteral("zingara"), QStringLiteral("Z"));
    row("one letter", QStringLiteral("b"), QStringLiteral("B"));
    row("digit", QStringLiteral("99 Luftballons"), QStringLiteral("9"));
    row("zero", QStringLiteral("0"), QStringLiteral("0"));
    row("accented capital", QStringLiteral("\u00C9 la vita"), QStringLiteral("E"));
    row("accented small letter", QStringLiteral("\u00E8 lei"), QStringLiteral("E"));
    row("cedilla", QStringLiteral("\u00E7a va"), QStringLiteral("C"));
    row("letter with a separate accent", QStringLiteral("e\u0301"), QStringLiteral("E"));
    row("letter without an ASCII base", QStringLiteral("\u00F8l"), QStringLiteral("\u00D8"));
    row("sharp s has no single capital", QStringLiteral("\u00DF"), QStringLiteral("\u00DF"));
    row("Greek", QStringLiteral("\u03B1"), QStringLiteral("\u0391"));
    row("Cyrillic with a mark", QStringLiteral("\u0439"), QStringLiteral("\u0418"));
    row("ideograph", QStringLiteral("\u6B4C"), QStringLiteral("\u6B4C"));
    row("full-width letter", QStringLiteral("\uFF21"), QStringLiteral("A"));
    row("superscript digit", QStringLiteral("\u00B2"), QStringLiteral("2"));
    row("fraction", QStringLiteral("\u00BD"), QStringLiteral("1"));
    row("ligature", QStringLiteral("\uFB01re"), QStringLiteral("f"));
    row("apostrophe and letter", QStringLiteral("'Round Midnight"), QStringLiteral("R"));
    row("apostrophe and small letter", QStringLiteral("'na sera 'e maggio"), QStringLiteral("N"));
    row("parenthesis and letter", QStringLiteral("(I can't get no)"), QStringLiteral("I"));
    row("quote and letter", QStringLiteral("\"heroes\""), QStringLiteral("H"));
    row("apostrophe and digit", QStringLiteral("'39"), QStringLiteral("3"));
    row("apostrophe and accented letter", QStringLiteral("'\u00E9t\u00E9"), QStringLiteral("E"));
    row("apostrophe alone", QStringLiteral("'"), QStringLiteral("#"));
    row("parenthesis alone", QStringLiteral("("), QStringLiteral("#"));
    row("quote alone", QStringLiteral("\""), QStringLiteral("#"));
    row("two apostrophes", QStringLiteral("''A"), QStringLiteral("#"));
    row("parenthesis and blank", QStringLiteral("( A"), QStringLiteral("#"));
    row("closing parenthesis is not passed over", QStringLiteral(")A"), QStringLiteral("#"));
    row("typographic apostrophe is not passed over", QStringLiteral("\u2019A"), QStringLiteral("#"));
    row("hyphen is not passed over", QStringLiteral("-A"), QStringLiteral("#"));
    row("ellipsis character", QStringLiteral("\u2026ma"), QStringLiteral("#"));
    row("three dots", QStringLiteral("...ma"), QStringLiteral("#"));
    row("exclamation mark", QStringLiteral("!Ay"), QStringLiteral("#"));
    row("blank", QStringLiteral(" A"), QStringLiteral("#"));
    row("last ASCII character", QStringLiteral("\u007FA"), QStringLiteral("#"));
    row("neighbours of letters and digits: slash", QStringLiteral("/A"), QStringLiteral("#"));
    row("neighbours of letters and digits: colon", QStringLiteral(":A"), QStringLiteral("#"));
    row("neighbours of letters and digits: at", QStringLiteral("@A"), QStringLiteral("#"));
    row("neighbours of letters and digits: bracket", QStringLiteral("[A"), QStringLiteral("#"));
    row("neighbours of letters and digits: grave", QStringLiteral("`A"), QStringLiteral("#"));
    row("neighbours of letters and digits: brace", QStringLiteral("{A"), QStringLiteral("#"));
    row("control character", QStringLiteral("\u0085A"), QStringLiteral("#"));
    row("empty", QString(), QStringLiteral("#"));
    row("NUL", QString(QChar(u'\0')), QStringLiteral("#"));
    row("emoji", QStringLiteral("\U0001F3B5 song"), QStringLiteral("#"));
    row("letter outside the first plane", QStringLiteral("\U0001D400"), QStringLiteral("#"));
    row("apostrophe and letter outside the first plane", QStringLiteral("'\U0001D400"), QStringLiteral("#"));
    row("ideograph that decomposes into two units", QStringLiteral("\uFA6C"), QStringLiteral("#"));
    row("half a character", QString(QChar(0xD835)), QStringLiteral("#"));
}

void TestTitleInitial::titleHasInitial()
{
    QFETCH(QString, title);
    QTEST(QString(titleInitial(title)), "initial");
}

void TestTitleInitial::everyInitialCanStandInAFileName()
{
    const QString forbidden = QStringLiteral("\\/:*?\"<>|.");
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        const QString character(QChar{static_cast<ushort>(unit)});
        const QString behindApostrophe = QLatin1Char('\'') + character;
        for (const QString &title : {character, behindApostrophe}) {
            const QChar initial = titleInitial(title);
            QVERIFY2(!initial.isSurrogate() && initial.unicode() >= 0x20 && !forbidden.contains(initial),
                     qPrintable(QStringLiteral("U+%1 gives U+%2").arg(unit, 4, 16).arg(initial.unicode(), 4, 16)));
        }
    }
}

void TestTitleInitial::everyAsciiLetterAndDigitIsItsOwnInitial()
{
    for (char c = '0'; c <= '9'; ++c)
        QCOMPARE(titleInitial(QString(QLatin1Char(c))), QChar(QLatin1Char(c)));
    for (char c = 'A'; c <= 'Z'; ++c) {
        QCOMPARE(titleInitial(QString(QLatin1Char(c))), QChar(QLatin1Char(c)));
        QCOMPARE(titleInitial(QString(QLatin1Char(c)).toLower()), QChar(QLatin1Char(c)));
    }
}

void TestTitleInitial::titlesAreOrderedInUpperCase_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("case does not matter") << "ABBA"
                                          << "abbey";
    QTest::newRow("small before capital by its letter") << "abba"
                                                        << "Beat";
    QTest::newRow("digits before letters") << "9"
                                           << "A";
    QTest::newRow("ASCII before accents, no locale") << "Zorro" << QStringLiteral("\u00C8 lei");
    QTest::newRow("underscore behind letters") << "z"
                                               << "_";
    QTest::newRow("sharp s counts as two letters") << QStringLiteral("\u00DF") << "ssa";
    QTest::newRow("folders first") << QString(QChar(u'\0')) << " ";
}

void TestTitleInitial::titlesAreOrderedInUpperCase()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QVERIFY(foldedTitle(first) < foldedTitle(second));
}

QTEST_GUILESS_MAIN(TestTitleInitial)
#include "tst_titleinitial.moc"
