#pragma once

#include "app/shared/pagebutton.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"
#include "support/formsheets.h"
#include "support/languages.h"
#include "support/ownlines.h"
#include "support/pagetest.h"
#include "support/simulatedplayer.h"

/// The window that the pages were made for.
constexpr QSize kPageSize(1000, 600);
constexpr int kSmallScreenWidth = 1366;

/// What holds for every page of buttons that need the player: the test of such a page inherits it.
class MenuPageTest : public QObject
{
    Q_OBJECT

protected:
    struct Button
    {
        const char *row;
        QByteArray name;
        QString text;
        QString signal;
        QString style = FormSheets::kPage;
        bool needsPlayer = true;
    };
    using PagePointer = std::unique_ptr<QWidget>;

    virtual PagePointer newPage(QWidget *parent) const = 0;
    virtual QList<Button> buttons() const = 0;
    /// In this language: the page's title and the text of its last button.
    virtual QStringList textsIn(const QString &language) const = 0;

    PagePointer shownPage() const {
        PagePointer page = newPage(nullptr);
        page->resize(kPageSize);
        page->show();
        return page;
    }
    /// Rows of "button", "signal": those that need the player.
    void addButtonsThatNeedThePlayer() const {
        columns<QByteArray, QString>("button", "signal");
        const QList<Button> all = buttons();
        for (const Button &button : all)
            if (button.needsPlayer)
                row(button.row, button.name, button.signal);
    }

private slots:
    void pageIsHiddenWhenConstructed() {
        QWidget window;
        const PagePointer page = newPage(&window);
        window.show();
        QVERIFY(page->isHidden());
    }

    void textsAndLookAreThoseOfTheForm_data() {
        columns<QByteArray, QString, QString>("name", "text", "style");
        const QList<Button> all = buttons();
        for (const Button &button : all)
            row(button.row, button.name, button.text, button.style);
    }
    void textsAndLookAreThoseOfTheForm() {
        QFETCH(QByteArray, name);
        const PagePointer page = newPage(nullptr);
        const QPushButton *shown = button(*page, name.constData());
        QTEST(shown->text(), "text");
        QTEST(shown->styleSheet(), "style");
        QCOMPARE(shown->cursor().shape(), Qt::PointingHandCursor);
        QVERIFY(hasFont(*shown, sharedFonts().fontTitle18));
        QVERIFY(shown->isEnabled());
    }

    void everyChoiceHasAPictureAndALineThatSaysWhatItDoes_data() { addButtonsThatNeedThePlayer(); }
    void everyChoiceHasAPictureAndALineThatSaysWhatItDoes() {
        QFETCH(QByteArray, button);
        for (const QString &code : words("it en de")) {
            const Language language(code);
            const PagePointer page = shownPage();
            const auto *shown = child<PageButton>(*page, button.constData());
            QVERIFY(!shown->icon().isNull());
            QVERIFY(!shown->icon().pixmap(40, 40).isNull());
            QVERIFY(!shown->description().isEmpty());
            QCOMPARE(shown->accessibleDescription(), shown->description());
            QVERIFY2(shown->width() >= shown->sizeHint().width(), qPrintable(code + shown->description()));
            QVERIFY2(shown->height() >= shown->sizeHint().height(), qPrintable(code + shown->description()));
        }
    }

    void titleIsBlackTextOnTheWindow() {
        const PagePointer page = newPage(nullptr);
        const auto *title = child<QLabel>(*page, "labelDescr");
        QCOMPARE(title->styleSheet(), FormSheets::kTransparentLabel);
        QVERIFY(hasFont(*title, sharedFonts().fontTitle18));
    }

    void buttonWithoutThePlayerShowsTheMessageAndNothingElseHappens_data() { addButtonsThatNeedThePlayer(); }
    void buttonWithoutThePlayerShowsTheMessageAndNothingElseHappens() {
        QFETCH(QByteArray, button);
        SimulatedPlayer::disconnect();
        const PagePointer page = shownPage();
        BoxAnswerer boxes;
        boxes.answer(Titles::kNotConnected, Buttons::kOk);
        const auto allButtonsAreEnabled = [&page] {
            const auto all = page->findChildren<QPushButton *>();
            return std::all_of(all.begin(), all.end(), [](const QPushButton *one) { return one->isEnabled(); });
        };
        boxes.whenShown([&](QMessageBox *) { QVERIFY(allButtonsAreEnabled()); });
        SignalRecorder recorder(*page);
        click(*page, button.constData());
        QCOMPARE(boxes.seen().size(), 1);
        const BoxAnswerer::Seen box = boxes.seen().first();
        QCOMPARE(box.text, Texts::kReconnect);
        QCOMPARE(box.buttons, QStringList(Buttons::kOk));
        QCOMPARE(box.icon, QMessageBox::Information);
        QVERIFY(box.hadParent);
        QCOMPARE(ownLines(recorder), QStringList());
        QVERIFY(page->isVisible());
        QVERIFY(allButtonsAreEnabled());
    }

    void textsAndMessageFollowTheLanguageAndFit_data() {
        columns<QString, QString, QString>("code", "boxTitle", "boxText");
        row("it", "it"_s, Titles::kNotConnected, Texts::kReconnect);
        row("en", "en"_s, "Corvin4 not connected"_s, "Reconnect Corvin4 to the USB port."_s);
        row("de", "de"_s, "Corvin4 nicht verbunden"_s, "Schließen Sie Corvin4 wieder an den USB-Anschluss an."_s);
    }
    void textsAndMessageFollowTheLanguageAndFit() {
        QFETCH(QString, code);
        QFETCH(QString, boxTitle);
        SimulatedPlayer::disconnect();
        const PagePointer page = shownPage();
        const Language language(code);
        QVERIFY(page->isVisible());
        const QByteArray last = buttons().last().name;
        QCOMPARE(QStringList({textOf(*page, "labelDescr"), textOf(*page, last.constData())}), textsIn(code));
        QTRY_VERIFY(allButtonsShowTheirWholeText(*page));
        QVERIFY(page->minimumSizeHint().width() < kSmallScreenWidth);
        BoxAnswerer boxes;
        boxes.answer(boxTitle, Buttons::kOk);
        click(*page, buttons().first().name.constData());
        QTEST(boxes.seen().first().text, "boxText");
    }
};
