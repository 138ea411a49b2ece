#include "app/shared/questionbox.h"

#include "app/shared/styles.h"
#include "support/answers.h"
#include "support/boxtexts.h"
#include "support/pagetest.h"

const QString kTitle = "Sovrascrivere?"_s;
const QString kText = "<b>un file</b> & più"_s;
const QString kLongLine = "Schalten Sie Corvin aus, trennen Sie ihn vom PC und warten"_s;
const Question kQuestion = {kTitle,
                            kText,
                            {{QMessageBox::Yes, "Si"_s},
                             {QMessageBox::YesToAll, "Si,Tutti"_s},
                             {QMessageBox::No, "No"_s},
                             {QMessageBox::NoToAll, "No,Tutti"_s}},
                            QMessageBox::YesToAll,
                            QMessageBox::No};

/// Writes down the title of each box that is brought to the front while this lives.
class RaiseWatch : public QObject
{
public:
    explicit RaiseWatch(QStringList &titles) : m_titles(titles) { qApp->installEventFilter(this); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override {
        const auto *box = qobject_cast<QMessageBox *>(watched);
        if (box && event->type() == QEvent::ZOrderChange)
            m_titles.append(box->windowTitle());
        return QObject::eventFilter(watched, event);
    }

private:
    QStringList &m_titles;
};

/// A language whose words for showing and hiding details are long.
class LongWords : public QTranslator
{
public:
    QString translate(const char *context, const char *source, const char *, int) const override {
        const QString shown = QString::fromLatin1(source);
        return qstrcmp(context, "QMessageBox") == 0 && shown.endsWith("Details..."_s) ? shown + "einblendung"_s
                                                                                      : QString();
    }
    bool isEmpty() const override { return false; }
};

class TestQuestionBox : public QObject
{
    Q_OBJECT

private slots:
    void eachAnswerIsReturnedByItsOwnCode_data() {
        columns<Answer, int>("answer", "code");
        row("yes", pressing("Si"_s), int(QMessageBox::Yes));
        row("yes to all", pressing("Si,Tutti"_s), int(QMessageBox::YesToAll));
        row("no", pressing("No"_s), int(QMessageBox::No));
        row("no to all", pressing("No,Tutti"_s), int(QMessageBox::NoToAll));
        row("Enter presses the default button", striking(Qt::Key_Return), int(QMessageBox::YesToAll));
        row("Escape counts as the escape button", striking(Qt::Key_Escape), int(QMessageBox::No));
        row("closing the box counts as the escape button", closing(), int(QMessageBox::No));
    }
    void eachAnswerIsReturnedByItsOwnCode() {
        QFETCH(Answer, answer);
        BoxAnswerer boxes;
        answer(boxes, kTitle);
        QTEST(int(askQuestion(nullptr, kQuestion)), "code");
    }

    void showsTitlePlainTextAndRelabelledButtons() {
        BoxAnswerer boxes;
        Qt::TextFormat format = Qt::AutoText;
        boxes.whenShown([&format](QMessageBox *box) { format = box->textFormat(); });
        boxes.answer(kTitle, Buttons::kNo);
        askQuestion(nullptr, kQuestion);
        const BoxAnswerer::Seen seen = boxes.seen().first();
        QCOMPARE(seen.title, kTitle);
        QCOMPARE(seen.text, kText);
        QCOMPARE(format, Qt::PlainText); // never taken for markup
        QCOMPARE(seen.icon, QMessageBox::Question);
        QCOMPARE(seen.defaultButton, Buttons::kSiTutti);
        QCOMPARE(seen.buttons.size(), 4);
        QVERIFY(!seen.hadParent);
    }

    void boxWithoutAParentIsBroughtToTheFront() {
        QStringList raised;
        const QStringList titles = {kTitle, "over a window"_s};
        QWidget window;
        window.show();
        for (const QString &title : titles) {
            BoxAnswerer boxes;
            boxes.answer(title, Buttons::kNo);
            RaiseWatch watch(raised);
            Question question = kQuestion;
            question.title = title;
            askQuestion(title == kTitle ? nullptr : &window, question);
        }
        QCOMPARE(raised, QStringList(kTitle));
    }

    void boxStaysInTheMiddleAndOnTheScreenWhenItsDetailsOpen_data() {
        columns<QPoint, bool>("corner", "hasRoom");
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        row("in the middle", screen.center() - QPoint(200, 150), true);
        row("at the lower right edge", screen.bottomRight() - QPoint(150, 120), false);
    }
    void boxStaysInTheMiddleAndOnTheScreenWhenItsDetailsOpen() {
        QFETCH(QPoint, corner);
        QWidget window;
        window.setGeometry(QRect(corner, QSize(400, 300)));
        window.show();
        QRect opened;
        BoxAnswerer boxes;
        boxes.whenShown([&opened](QMessageBox *box) {
            const QSize closed = box->size();
            for (QAbstractButton *button : box->buttons()) {
                if (box->buttonRole(button) == QMessageBox::ActionRole)
                    button->click();
            }
            QCoreApplication::processEvents();
            QVERIFY(box->height() > closed.height());
            opened = box->frameGeometry();
        });
        boxes.answer(kTitle, Buttons::kOk);
        tellUser(&window, QMessageBox::Information, kTitle, kText, QString(), "a.mid\nb.mid"_s);
        QVERIFY(QGuiApplication::primaryScreen()->availableGeometry().contains(opened));
        const QPoint away = opened.center() - window.geometry().center();
        QTEST(away.manhattanLength() <= 2, "hasRoom");
    }

    void detailedTextIsThereOnRequest() {
        BoxAnswerer boxes;
        QString details;
        boxes.whenShown([&details](QMessageBox *box) { details = box->detailedText(); });
        boxes.answer(kTitle, Buttons::kOk);
        tellUser(nullptr, QMessageBox::Information, kTitle, kText, QString(), "a.mid\nb.mid"_s);
        QCOMPARE(details, "a.mid\nb.mid"_s);
    }

    void detailsButtonHasRoomForEachOfItsTexts() {
        LongWords words;
        QCoreApplication::installTranslator(&words);
        BoxAnswerer boxes;
        QStringList cut;
        int texts = 0;
        boxes.whenShown([&](QMessageBox *box) {
            const QList<QAbstractButton *> buttons = box->buttons();
            for (QAbstractButton *button : buttons) {
                if (box->buttonRole(button) != QMessageBox::ActionRole)
                    continue;
                for (int shown = 0; shown < 2; ++shown, ++texts) {
                    if (button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width() + 24 > button->width())
                        cut.append(button->text());
                    button->click();
                }
            }
        });
        boxes.answer(kTitle, Buttons::kOk);
        tellUser(nullptr, QMessageBox::Information, kTitle, kText, QString(), "a.mid\nb.mid"_s);
        QCOMPARE(texts, 2);
        QCOMPARE(cut, QStringList());
    }

    void withoutAnEscapeButtonQtsRuleHolds() {
        BoxAnswerer boxes;
        boxes.answerByKey(kTitle, Qt::Key_Escape);
        // A single button is what Escape means.
        const Question question = {kTitle, kText, {{QMessageBox::Ok, "Va bene"_s}}, QMessageBox::Ok};
        QCOMPARE(askQuestion(nullptr, question), QMessageBox::Ok);
    }

    void everyBoxWearsTheSameClothesWhateverItsParentWears() {
        QStringList sheets;
        QStringList fonts;
        QList<QColor> grounds;
        QWidget window;
        QWidget page(&window);
        page.setStyleSheet("* {background-color: rgb(0, 0, 255); color: rgb(0, 255, 0); font-size: 30pt;}"_s);
        for (QWidget *parent : QList<QWidget *>{nullptr, &window, &page}) {
            BoxAnswerer boxes;
            boxes.whenShown([&](QMessageBox *box) {
                auto *label = box->findChild<QLabel *>("qt_msgbox_label"_s);
                sheets.append(box->styleSheet());
                fonts.append(label->font().family() + QString::number(label->font().pointSize()));
                grounds.append(box->grab().toImage().pixelColor(5, 5));
                QVERIFY(box->button(QMessageBox::Ok)->icon().isNull());
            });
            boxes.answer(kTitle, Buttons::kOk);
            tellUser(parent, QMessageBox::Information, kTitle, kText);
        }
        for (const QString &sheet : qAsConst(sheets))
            QCOMPARE(sheet, QString(Styles::kMessageBox));
        QCOMPARE(QSet<QString>(fonts.cbegin(), fonts.cend()), QSet<QString>({"Helvetica13"_s}));
        for (const QColor &ground : qAsConst(grounds))
            QCOMPARE(ground, QColor(51, 51, 51));
        QCOMPARE(grounds.size(), 3);
    }

    void linesOfATextAreNotBrokenWhileTheyFitTheScreen_data() {
        columns<QString, QString, QString>("text", "second", "label");
        row("the text", kLongLine + "\nkurz"_s, QString(), "qt_msgbox_label"_s);
        row("the second text", "kurz"_s, "kurz\n"_s + kLongLine, "qt_msgbox_informativelabel"_s);
    }
    void linesOfATextAreNotBrokenWhileTheyFitTheScreen() {
        QFETCH(QString, text);
        QFETCH(QString, second);
        QFETCH(QString, label);
        BoxAnswerer boxes;
        int wanted = 0;
        int given = 0;
        boxes.whenShown([&](QMessageBox *box) {
            const auto *lines = box->findChild<QLabel *>(label);
            // Letters of an unknown width may not fit a small screen.
            wanted = qMin(lines->fontMetrics().horizontalAdvance(kLongLine),
                          box->screen()->availableGeometry().width() * 3 / 4);
            given = lines->width();
        });
        boxes.answer(kTitle, Buttons::kOk);
        tellUser(nullptr, QMessageBox::Information, kTitle, text, second);
        QVERIFY(wanted > 0);
        QVERIFY2(given >= wanted, qPrintable("%1 of %2"_s.arg(given).arg(wanted)));
    }

    void everyKindOfBoxHasItsOwnPictureOfTheProgram_data() {
        columns<int, QString>("icon", "picture");
        row("question", int(QMessageBox::Question), "domanda"_s);
        row("information", int(QMessageBox::Information), "informazione"_s);
        row("warning", int(QMessageBox::Warning), "avviso"_s);
        row("error", int(QMessageBox::Critical), "avviso"_s);
    }
    void everyKindOfBoxHasItsOwnPictureOfTheProgram() {
        QFETCH(int, icon);
        QFETCH(QString, picture);
        BoxAnswerer boxes;
        QImage shown;
        boxes.whenShown([&shown](QMessageBox *box) {
            shown = box->findChild<QLabel *>("qt_msgboxex_icon_label"_s)->pixmap(Qt::ReturnByValue).toImage();
        });
        boxes.answer(kTitle, Buttons::kOk);
        tellUser(nullptr, QMessageBox::Icon(icon), kTitle, kText);
        const QImage own = QIcon(":/imgs/"_s + picture + ".png"_s).pixmap(48, 48).toImage();
        QVERIFY(!own.isNull());
        QCOMPARE(shown.convertToFormat(QImage::Format_ARGB32), own.convertToFormat(QImage::Format_ARGB32));
    }

    void edgeSetsABoxOffADarkPage() {
        BoxAnswerer boxes;
        QImage shown;
        boxes.whenShown([&shown](QMessageBox *box) { shown = box->grab().toImage(); });
        boxes.answer(kTitle, Buttons::kOk);
        tellUser(nullptr, QMessageBox::Information, kTitle, kText);
        const QPoint middle = shown.rect().center();
        for (const QPoint &point : {QPoint(0, middle.y()), QPoint(shown.width() - 1, middle.y()), QPoint(middle.x(), 0),
                                    QPoint(middle.x(), shown.height() - 1)})
            QVERIFY(shown.pixelColor(point).lightness() > 120);
    }

    void belongsToItsParent() {
        QWidget parent;
        BoxAnswerer boxes;
        boxes.answer(kTitle, Buttons::kNo);
        askQuestion(&parent, kQuestion);
        QVERIFY(boxes.seen().first().hadParent);
    }
};

PAGE_TEST_MAIN(TestQuestionBox)
#include "tst_questionbox.moc"
