#include "optimizer/titleinitial.h"

#include "support/given.h"

class TestTitleInitial : public QObject
{
    Q_OBJECT

private slots:
    void titleHasInitial_data() {
        columns<QString, QString>("title", "initial");
        const auto row = [](const char *what, const QStringList &titles, const QString &initial) {
            for (const QString &title : titles)
                ::row(qPrintable("%1: %2"_s.arg(QLatin1String(what), title)), title, initial);
        };
        row("letter", words("Azzurro azzurro"), "A"_s);
        row("one letter", words("b"), "B"_s);
        row("last letter", words("Zorro zingara"), "Z"_s);
        row("digit", {"99 Luftballons"_s, "9"_s}, "9"_s);
        row("zero", {"0"_s}, "0"_s);
        row("accent", {"\u00C9 la vita"_s, "\u00E8 lei"_s, "e\u0301"_s, "'\u00E9t\u00E9"_s}, "E"_s);
        row("cedilla", {"\u00E7a va"_s}, "C"_s);
        row("letter without an ASCII base", {"\u00F8l"_s}, "\u00D8"_s);
        row("sharp s has no single capital", {"\u00DF"_s}, "\u00DF"_s);
        row("Greek", {"\u03B1"_s}, "\u0391"_s);
        row("Cyrillic with a mark", {"\u0439"_s}, "\u0418"_s);
        row("ideograph", {"\u6B4C"_s}, "\u6B4C"_s);
        row("full-width letter", {"\uFF21"_s}, "A"_s);
        row("superscript digit", {"\u00B2"_s}, "2"_s);
        row("fraction", {"\u00BD"_s}, "1"_s);
        row("ligature", {"\uFB01re"_s}, "f"_s);
        row("apostrophe and letter", {"'Round Midnight"_s}, "R"_s);
        row("apostrophe and small letter", {"'na sera 'e maggio"_s}, "N"_s);
        row("parenthesis and letter", {"(I can't get no)"_s}, "I"_s);
        row("quote and letter", {"\"heroes\""_s}, "H"_s);
        row("apostrophe and digit", {"'39"_s}, "3"_s);
        row("mark alone", words("' ( \""), "#"_s);
        row("mark and no letter", {"''A"_s, "( A"_s, "...ma"_s}, "#"_s);
        row("no letter", {QString(), "\0"_s, "\U0001F3B5 song"_s, QChar(0xD835)}, "#"_s);
        row("outside the first plane", {"\U0001D400"_s, "'\U0001D400"_s}, "#"_s);
        row("ideograph that decomposes into two units", {"\uFA6C"_s}, "#"_s);
        // Neighbours of letters and digits, what looks like the three marks that are passed over, and others.
        for (const QChar mark : "/:@[`{)\u2019-\u2026! \u007F\u0085"_s)
            row("not passed over", {mark + "A"_s}, "#"_s);
    }
    void titleHasInitial() { QTEST(QString(titleInitial(given<QString>("title"))), "initial"); }

    void everyInitialCanStandInAFileName() {
        for (int unit = 0; unit <= 0xFFFF; ++unit) {
            const QString character(QChar{static_cast<ushort>(unit)});
            for (const QString &title : {character, QLatin1Char('\'') + character}) {
                const QChar initial = titleInitial(title);
                if (initial.isSurrogate() || initial < QLatin1Char(' ') || "\\/:*?\"<>|."_s.contains(initial))
                    QFAIL(qPrintable("U+%1 gives U+%2"_s.arg(unit, 4, 16).arg(initial.unicode(), 4, 16)));
            }
        }
    }

    void everyAsciiLetterAndDigitIsItsOwnInitial() {
        for (const QChar own : "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"_s) {
            QCOMPARE(titleInitial(own), own);
            QCOMPARE(titleInitial(own.toLower()), own);
        }
    }

    void titlesAreOrderedInUpperCase() {
        // Folders first; case does not matter, nor does a locale; sharp s counts as two letters.
        const QStringList inOrder = {"\0"_s,     " "_s,   "9"_s, "A"_s,     "ABBA"_s, "abbey"_s,     "Beat"_s,
                                     "\u00DF"_s, "ssa"_s, "z"_s, "Zorro"_s, "_"_s,    "\u00C8 lei"_s};
        for (int i = 1; i < inOrder.size(); ++i)
            QVERIFY2(foldedTitle(inOrder.at(i - 1)) < foldedTitle(inOrder.at(i)), qPrintable(inOrder.at(i)));
    }
};

QTEST_GUILESS_MAIN(TestTitleInitial)
#include "tst_titleinitial.moc"
