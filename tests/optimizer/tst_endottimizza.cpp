#include "pagetranslator.h"

#include "optimizer/endottimizza.h"
#include "resources/resources.h"

#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

class tst_EndOttimizza : public QObject
{
    Q_OBJECT

private:
    static const QString kSuccessTitle;
    static const QString kSuccessText;
    static const QString kFailureTitle;
    static const QString kFailureText;

    static QString text(const EndOttimizza &page, const char *name)
    {
        return page.findChild<QLabel *>(QString::fromLatin1(name))->text();
    }
    static QString picture(const EndOttimizza &page)
    {
        return page.findChild<QLabel *>(QStringLiteral("label_image"))->styleSheet();
    }

private slots:
    void initTestCase() { loadResources(); }

    void newPageIsHidden()
    {
        QWidget window;
        EndOttimizza page(&window);
        window.show();
        QVERIFY(page.isHidden());
    }

    void codeDecidesPictureAndTexts_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<bool>("success");
        QTest::newRow("success") << 0 << true;
        QTest::newRow("no device") << 1 << false;
        QTest::newRow("no import file") << 2 << false;
        QTest::newRow("unknown") << -1 << false;
    }
    void codeDecidesPictureAndTexts()
    {
        QFETCH(int, code);
        QFETCH(bool, success);
        EndOttimizza page;
        page.setFailCodeAndShow(code);
        QVERIFY(page.isVisible());
        QCOMPARE(text(page, "label_titolo"), success ? kSuccessTitle : kFailureTitle);
        QCOMPARE(text(page, "label_descr"), success ? kSuccessText : kFailureText);
        QVERIFY(picture(page).contains(success ? QStringLiteral(":/imgs/ok.png") : QStringLiteral(":/imgs/ko.png")));
        QCOMPARE(page.findChild<QPushButton *>(QStringLiteral("pushButton"))->text(), QStringLiteral("OK"));
    }

    void languageChangeFollowsTheStoredCode()
    {
        EndOttimizza page;
        page.setFailCodeAndShow(0);
        {
            const PageTranslator translator("EndOttimizza");
            QCoreApplication::processEvents();
            QCOMPARE(text(page, "label_titolo"), QLatin1Char('[') + kSuccessTitle + QLatin1Char(']'));
            QCOMPARE(text(page, "label_descr"), QLatin1Char('[') + kSuccessText + QLatin1Char(']'));
            QCOMPARE(page.findChild<QPushButton *>(QStringLiteral("pushButton"))->text(), QStringLiteral("[OK]"));
            page.setFailCodeAndShow(2);
            QCOMPARE(text(page, "label_titolo"), QLatin1Char('[') + kFailureTitle + QLatin1Char(']'));
            // This one stays Italian.
            QCOMPARE(text(page, "label_descr"), kFailureText);
        }
        QCoreApplication::processEvents();
        QCOMPARE(text(page, "label_titolo"), kFailureTitle);
        QCOMPARE(text(page, "label_descr"), kFailureText);
        QCOMPARE(page.findChild<QPushButton *>(QStringLiteral("pushButton"))->text(), QStringLiteral("OK"));
    }

    void okButtonEmits()
    {
        EndOttimizza page;
        page.setFailCodeAndShow(0);
        QSignalSpy spy(&page, &EndOttimizza::backFromEndOttimizzaToFirstMenu);
        QTest::mouseClick(page.findChild<QPushButton *>(QStringLiteral("pushButton")), Qt::LeftButton);
        QCOMPARE(spy.size(), 1);
    }

    void pictureIsSeen_data()
    {
        QTest::addColumn<int>("code");
        QTest::newRow("ok") << 0;
        QTest::newRow("ko") << 1;
    }
    void pictureIsSeen()
    {
        QFETCH(int, code);
        constexpr QRgb kPicture = qRgb(220, 220, 220);
        EndOttimizza page;
        page.resize(1000, 640);
        page.setFailCodeAndShow(code);
        QImage image(page.size(), QImage::Format_RGB32);
        image.fill(kPicture);
        QPainter painter(&image);
        page.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
        painter.end();
        const QString shots = qEnvironmentVariable("CORVIN_SCREENSHOTS");
        if (!shots.isEmpty())
            QVERIFY(image.save(shots + QStringLiteral("/endottimizza%1.png").arg(code)));
        const QLabel *label = page.findChild<QLabel *>(QStringLiteral("label_image"));
        const QRect place(label->mapTo(&page, QPoint()), label->size());
        int painted = 0;
        for (int x = place.left(); x <= place.right(); ++x)
            painted += image.pixel(x, place.center().y()) != kPicture ? 1 : 0;
        QVERIFY(painted > place.width() / 4);
        const QLabel *title = page.findChild<QLabel *>(QStringLiteral("label_titolo"));
        QCOMPARE(image.pixel(title->mapTo(&page, QPoint(1, 1))), kPicture);
    }
};

const QString tst_EndOttimizza::kSuccessTitle = QStringLiteral("Ottimizzazione completata con successo");
const QString tst_EndOttimizza::kSuccessText =
    QStringLiteral("Scollegare il Corvin4 dalla porta USB\nSpegnerlo e riaccenderlo per completare la procedura");
const QString tst_EndOttimizza::kFailureTitle = QStringLiteral("Ottimizzazione non completata correttamente");
const QString tst_EndOttimizza::kFailureText = QStringLiteral("Riesegui la procedura di ottimizzazione");

QTEST_MAIN(tst_EndOttimizza)
#include "tst_endottimizza.moc"
