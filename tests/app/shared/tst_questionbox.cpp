#include "app/shared/questionbox.h"

#include "support/boxanswerer.h"

#include <QTest>
#include <QWidget>

namespace {

Question overwriteQuestion()
{
    Question question;
    question.title = QStringLiteral("Sovrascrivere?");
    question.text = QStringLiteral("<b>un file</b> & più");
    question.buttons = {{QMessageBox::Yes, QStringLiteral("Si")},
                        {QMessageBox::YesToAll, QStringLiteral("Si,Tutti")},
                        {QMessageBox::No, QStringLiteral("No")},
                        {QMessageBox::NoToAll, QStringLiteral("No,Tutti")}};
    question.defaultButton = QMessageBox::YesToAll;
    question.escapeButton = QMessageBox::No;
    return question;
}

} // namespace

class TestQuestionBox : public QObject
{
    Q_OBJECT

private slots:
    void eachButtonIsReturnedByItsOwnCode_data();
    void eachButtonIsReturnedByItsOwnCode();
    void showsTitleTextAndRelabelledButtons();
    void textIsNeverTakenForMarkup();
    void enterPressesTheDefaultButton();
    void escapeCountsAsTheEscapeButton();
    void closingTheBoxCountsAsTheEscapeButton();
    void withoutAnEscapeButtonQtsRuleHolds();
    void belongsToItsParent();
};

void TestQuestionBox::eachButtonIsReturnedByItsOwnCode_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("code");
    QTest::newRow("yes") << QStringLiteral("Si") << int(QMessageBox::Yes);
    QTest::newRow("yes to all") << QStringLiteral("Si,Tutti") << int(QMessageBox::YesToAll);
    QTest::newRow("no") << QStringLiteral("No") << int(QMessageBox::No);
    QTest::newRow("no to all") << QStringLiteral("No,Tutti") << int(QMessageBox::NoToAll);
}

void TestQuestionBox::eachButtonIsReturnedByItsOwnCode()
{
    QFETCH(QString, text);
    QFETCH(int, code);
    BoxAnswerer answerer;
    answerer.answer(QStringLiteral("Sovrascrivere?"), text);
    QCOMPARE(int(askQuestion(nullptr, overwriteQuestion())), code);
}

void TestQuestionBox::showsTitleTextAndRelabelledButtons()
{
    BoxAnswerer answerer;
    answerer.answer(QStringLiteral("Sovrascrivere?"), QStringLiteral("No"));
    askQuestion(nullptr, overwriteQuestion());
    const BoxAnswerer::Seen seen = answerer.seen().first();
    QCOMPARE(seen.title, QStringLiteral("Sovrascrivere?"));
    QCOMPARE(seen.text, QStringLiteral("<b>un file</b> & più"));
    QCOMPARE(seen.icon, QMessageBox::Question);
    QCOMPARE(seen.defaultButton, QStringLiteral("Si,Tutti"));
    QCOMPARE(seen.buttons.size(), 4);
    QVERIFY(!seen.hadParent);
}

void TestQuestionBox::textIsNeverTakenForMarkup()
{
    BoxAnswerer answerer;
    Qt::TextFormat format = Qt::AutoText;
    answerer.whenShown([&format](QMessageBox *box) { format = box->textFormat(); });
    answerer.answer(QStringLiteral("Sovrascrivere?"), QStringLiteral("No"));
    askQuestion(nullptr, overwriteQuestion());
    QCOMPARE(format, Qt::PlainText);
}

void TestQuestionBox::enterPressesTheDefaultButton()
{
    BoxAnswerer answerer;
    answerer.answerByKey(QStringLiteral("Sovrascrivere?"), Qt::Key_Return);
    QCOMPARE(askQuestion(nullptr, overwriteQuestion()), QMessageBox::YesToAll);
}

void TestQuestionBox::escapeCountsAsTheEscapeButton()
{
    BoxAnswerer answerer;
    answerer.answerByKey(QStringLiteral("Sovrascrivere?"), Qt::Key_Escape);
    QCOMPARE(askQuestion(nullptr, overwriteQuestion()), QMessageBox::No);
}

void TestQuestionBox::closingTheBoxCountsAsTheEscapeButton()
{
    BoxAnswerer answerer;
    answerer.answerByClosing(QStringLiteral("Sovrascrivere?"));
    QCOMPARE(askQuestion(nullptr, overwriteQuestion()), QMessageBox::No);
}

void TestQuestionBox::withoutAnEscapeButtonQtsRuleHolds()
{
    Question question = overwriteQuestion();
    question.buttons = {{QMessageBox::Ok, QStringLiteral("Va bene")}};
    question.defaultButton = QMessageBox::Ok;
    question.escapeButton = QMessageBox::NoButton;
    BoxAnswerer answerer;
    answerer.answerByKey(QStringLiteral("Sovrascrivere?"), Qt::Key_Escape);
    // A single button is what Escape means.
    QCOMPARE(askQuestion(nullptr, question), QMessageBox::Ok);
}

void TestQuestionBox::belongsToItsParent()
{
    QWidget parent;
    BoxAnswerer answerer;
    answerer.answer(QStringLiteral("Sovrascrivere?"), QStringLiteral("No"));
    askQuestion(&parent, overwriteQuestion());
    QVERIFY(answerer.seen().first().hadParent);
}

QTEST_MAIN(TestQuestionBox)
#include "tst_questionbox.moc"
