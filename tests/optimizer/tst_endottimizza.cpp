#include "support/formsheets.h"
#include "support/given.h"
#include "support/languages.h"
#include "support/pagepicture.h"
#include "support/pagetest.h"

#include "optimizer/endottimizza.h"

/// Takes what the program wants to be opened, in place of the desktop.
class OpenedUrls : public QObject
{
    Q_OBJECT

public:
    OpenedUrls() { QDesktopServices::setUrlHandler("file"_s, this, "open"); }
    ~OpenedUrls() override { QDesktopServices::unsetUrlHandler("file"_s); }
    QList<QUrl> urls;

public slots:
    void open(const QUrl &url) { urls.append(url); }
};

class TestEndOttimizza : public QObject
{
    Q_OBJECT

    const QStringList kSuccess = {
        "Ottimizzazione completata con successo"_s,
        "Scollegare il Corvin4 dalla porta USB\nSpegnerlo e riaccenderlo per completare la procedura"_s, "OK"_s};
    const QStringList kFailure = {"Ottimizzazione non completata correttamente"_s,
                                  "Riesegui la procedura di ottimizzazione"_s, "OK"_s};

    static QStringList texts(const EndOttimizza &page) {
        return {textOf(page, "label_titolo"), textOf(page, "label_descr"), textOf(page, "pushButton")};
    }

private slots:
    void newPageIsHidden() {
        QWidget window;
        const EndOttimizza page(&window);
        window.show();
        QVERIFY(page.isHidden());
    }

    void buttonAndLabelsLookLikeThoseOfTheForms() {
        const EndOttimizza page;
        QCOMPARE(button(page, "pushButton")->styleSheet(), FormSheets::kPage);
        QCOMPARE(button(page, "pushButton")->cursor().shape(), Qt::PointingHandCursor);
        for (const char *name : {"label_titolo", "label_descr"})
            QCOMPARE(child<QLabel>(page, name)->styleSheet(), FormSheets::kTransparentLabel);
    }

    void codeDecidesPictureAndTexts_data() {
        columns<int, bool>("code", "success");
        row("success", 0, true);
        row("no device", 1, false);
        row("no import file", 2, false);
        row("unknown", -1, false);
    }
    void codeDecidesPictureAndTexts() {
        QFETCH(bool, success);
        EndOttimizza page;
        page.resize(1000, 640);
        page.setFailCodeAndShow(given<int>("code"));
        QVERIFY(page.isVisible());
        QCOMPARE(texts(page), success ? kSuccess : kFailure);
        const auto *image = child<QLabel>(page, "label_image");
        QVERIFY(image->styleSheet().contains(success ? ":/imgs/ok.png"_s : ":/imgs/ko.png"_s));
        // It is seen.
        const QImage picture = pictureOf(page);
        const QRect place = placeOn(page, *image);
        int painted = 0;
        for (int x = place.left(); x <= place.right(); ++x)
            painted += picture.pixel(x, place.center().y()) != kGround ? 1 : 0;
        QVERIFY(painted > place.width() / 4);
        const QPoint title = placeOn(page, *child<QLabel>(page, "label_titolo")).topLeft();
        QCOMPARE(picture.pixel(title + QPoint(1, 1)), kGround);
    }

    void languageChangeFollowsTheStoredCode() {
        EndOttimizza page;
        page.setFailCodeAndShow(0);
        {
            const MarkedTexts marked("EndOttimizza");
            QCoreApplication::processEvents();
            QCOMPARE(texts(page), QStringList({"[%1]"_s.arg(kSuccess[0]), "[%1]"_s.arg(kSuccess[1]), "[OK]"_s}));
            page.setFailCodeAndShow(2);
            // The second one stays Italian.
            QCOMPARE(texts(page), QStringList({"[%1]"_s.arg(kFailure[0]), kFailure[1], "[OK]"_s}));
        }
        QCoreApplication::processEvents();
        QCOMPARE(texts(page), kFailure);
    }

    void keptFilesAreNamedByALinkThatOpensTheirFolder() {
        EndOttimizza page;
        page.setFailCodeAndShow(0);
        auto *line = child<QLabel>(page, "label_kept");
        QVERIFY(!line->isVisible());
        const QString folder = QDir::homePath() + "/Anna & co/removed"_s;
        page.setKeptFolder(folder);
        page.setFailCodeAndShow(1);
        QVERIFY(line->isVisible());
        const QString text = "I file rimossi dal Corvin4 sono conservati in:"_s;
        QVERIFY(line->text().startsWith(text));
        QTextDocument shown;
        shown.setHtml(line->text());
        QVERIFY(shown.toPlainText().endsWith(QDir::toNativeSeparators(folder)));
        {
            const MarkedTexts marked("EndOttimizza");
            QCoreApplication::processEvents();
            QVERIFY(line->text().startsWith("[%1]"_s.arg(text)));
            QVERIFY(line->text().contains("removed"_s));
        }
        OpenedUrls opened;
        QMetaObject::invokeMethod(line, "linkActivated", Q_ARG(QString, "kept"_s));
        QCOMPARE(opened.urls, QList<QUrl>({QUrl::fromLocalFile(folder)}));
        // The next run has kept nothing.
        page.setFailCodeAndShow(0);
        QVERIFY(!line->isVisible());
    }

    void linkIsReachedByTheMouse() {
        EndOttimizza page;
        page.resize(1000, 640);
        page.setKeptFolder("/removed"_s);
        page.setFailCodeAndShow(0);
        QCoreApplication::processEvents();
        auto *line = child<QLabel>(page, "label_kept");
        const OpenedUrls opened;
        // The folder stands in the second line, in the middle.
        QTest::mouseClick(line, Qt::LeftButton, {}, QPoint(line->width() / 2, line->height() * 3 / 4));
        QCOMPARE(opened.urls, QList<QUrl>({QUrl::fromLocalFile("/removed"_s)}));
    }

    void pictureStandsInTheMiddle() {
        EndOttimizza page;
        page.resize(1000, 640);
        page.setFailCodeAndShow(0);
        const QRect place = placeOn(page, *child<QLabel>(page, "label_image"));
        QVERIFY(std::abs(place.center().x() - page.rect().center().x()) <= 1);
    }

    void escapeIsOk() {
        EndOttimizza page;
        page.setFailCodeAndShow(0);
        QVERIFY(QTest::qWaitForWindowActive(&page));
        const QSignalSpy spy(&page, &EndOttimizza::backFromEndOttimizzaToFirstMenu);
        QTest::keyClick(&page, Qt::Key_Escape);
        QCOMPARE(spy.size(), 1);
    }

    void okButtonEmits() {
        EndOttimizza page;
        page.setFailCodeAndShow(0);
        const QSignalSpy spy(&page, &EndOttimizza::backFromEndOttimizzaToFirstMenu);
        click(page, "pushButton");
        QCOMPARE(spy.size(), 1);
    }
};

PAGE_TEST_MAIN(TestEndOttimizza)
#include "tst_endottimizza.moc"
