#include "pages/check.h"

#include "support/intactplayer.h"
#include "support/pagetest.h"

constexpr double kScale = 1.25;

/// The pages on a screen that is scaled by a quarter, as most notebooks are.
class TestFractionalScale : public QObject
{
    Q_OBJECT

private slots:
    void resultPictureHasTheResolutionOfTheScreen() {
        const IntactPlayer player;
        Check page;
        page.show();
        QCOMPARE(page.devicePixelRatioF(), kScale);
        page.runCheck(player.root());
        // Any other resolution is drawn without smoothing, with jagged edges.
        const QPixmap shown = child<QLabel>(page, "label_descr")->pixmap(Qt::ReturnByValue);
        QCOMPARE(shown.devicePixelRatioF(), kScale);
        QCOMPARE(shown.size(), QSize(200, 200));
    }
};

int main(int argc, char **argv) {
    // Read when the application object is made.
    qputenv("QT_SCALE_FACTOR", QByteArray::number(kScale));
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    loadResources();
    registerEmbeddedFonts();
    TestFractionalScale test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_fractionalscale.moc"
