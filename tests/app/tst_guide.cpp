#include "app/guide.h"
#include "italianwindow.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"
#include "support/files.h"

#include <QDesktopServices>

/// Takes what would go to the browser.
class Browser : public QObject
{
    Q_OBJECT

public:
    Browser() { QDesktopServices::setUrlHandler("file"_s, this, "open"); }
    ~Browser() override { QDesktopServices::unsetUrlHandler("file"_s); }
    QList<QUrl> opened;

public slots:
    void open(const QUrl &url) { opened.append(url); }
};

class TestGuide : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() {
        startInItalian();
        for (const QString &code : words("it en"))
            putFile(folder() + code + ".html"_s, "<html></html>");
    }
    void cleanupTestCase() { QVERIFY(QDir(folder()).removeRecursively()); }

    void guideIsThatOfTheLanguageOrItalian() {
        QCOMPARE(guidePath("lang_en"_s), folder() + "en.html"_s);
        QCOMPARE(guidePath("lang_fr"_s), folder() + "it.html"_s);
        QCOMPARE(guidePath(QString()), folder() + "it.html"_s);
    }

    void helpKeyOpensIt() {
        Browser browser;
        MainWindow window;
        openGuideByKey(&window);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&window, Qt::Key_F1);
        QCOMPARE(browser.opened, QList<QUrl>{QUrl::fromLocalFile(folder() + "it.html"_s)});
    }

    void guideThatCannotBeOpenedIsTold() {
        QDesktopServices::unsetUrlHandler("file"_s);
        BoxAnswerer boxes;
        boxes.answer("Guida"_s, Buttons::kOk);
        MainWindow window;
        openGuideByKey(&window);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&window, Qt::Key_F1);
        QCOMPARE(boxes.seen().last().text, "La guida non si trova su questo PC."_s);
    }

private:
    /// Beside the program, which is this test.
    static QString folder() {
        return QFileInfo(QCoreApplication::applicationDirPath()).canonicalFilePath() + "/guide/"_s;
    }
};

PAGE_TEST_MAIN(TestGuide)
#include "tst_guide.moc"
