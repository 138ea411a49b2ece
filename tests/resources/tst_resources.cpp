#include "resources/resources.h"
#include "support/pictures.h"

#include <cstdlib>

const QColor kAmber(249, 191, 0);
const QString kFolder = ":/imgs/"_s;

/// The picture of this file name, one point for each of its pixels.
static QImage picture(const QString &name) {
    QImage image = QImage(kFolder + name).convertToFormat(QImage::Format_ARGB32);
    // Qt reads a ratio of 2 out of the name "...@2x", and would then draw the picture half as large.
    image.setDevicePixelRatio(1);
    return image;
}

/// The picture as it looks on @p ground.
static QImage on(const QColor &ground, const QImage &image) {
    QImage result(image.size(), QImage::Format_ARGB32);
    result.fill(ground);
    QPainter painter(&result);
    painter.drawImage(0, 0, image);
    return result;
}

static bool isNear(const QColor &colour, const QColor &wanted, int distance) {
    return std::abs(colour.red() - wanted.red()) <= distance && std::abs(colour.green() - wanted.green()) <= distance &&
           std::abs(colour.blue() - wanted.blue()) <= distance;
}

/// Size of what is drawn on a white ground.
static QSize inkOf(const QImage &image) {
    QRect ink;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (!isNear(image.pixelColor(x, y), Qt::white, 24))
                ink |= QRect(x, y, 1, 1);
    return ink.size();
}

/// Mean difference of grey between two pictures of the same size.
static double difference(const QImage &left, const QImage &right) {
    double sum = 0;
    for (int y = 0; y < left.height(); ++y)
        for (int x = 0; x < left.width(); ++x)
            sum += std::abs(qGray(left.pixel(x, y)) - qGray(right.pixel(x, y)));
    return sum / (left.width() * left.height());
}

class TestResources : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { loadResources(); }

    void loadingTwiceChangesNothing() {
        const QStringList before = QDir(kFolder).entryList();
        loadResources();
        QCOMPARE(QDir(kFolder).entryList(), before);
        QVERIFY(!before.isEmpty());
    }

    void pictureHasItsSizeAndGround_data() {
        columns<QSize, bool>("size", "transparent");
        row("sfondo_prog.png", QSize(512, 512), false);
        row("ok.png", QSize(160, 160), true);
        row("ko.png", QSize(160, 160), true);
        row("collega.png", QSize(640, 260), true);
        row("chiudi.png", QSize(48, 48), true);
        row("domanda.png", QSize(48, 48), true);
        row("informazione.png", QSize(48, 48), true);
        row("avviso.png", QSize(48, 48), true);
        row("corvin88x60.png", QSize(88, 60), true);
        row("corvin4manager.png", QSize(256, 256), true);
    }
    void pictureHasItsSizeAndGround() {
        QFETCH(QSize, size);
        QFETCH(bool, transparent);
        const QImage image = picture(QLatin1String(QTest::currentDataTag()));
        QCOMPARE(image.size(), size);
        QCOMPARE(qAlpha(image.pixel(0, 0)), transparent ? 0 : 255);
        QCOMPARE(qAlpha(image.pixel(size.width() - 1, size.height() - 1)), transparent ? 0 : 255);
        // Nothing of the drawing is cut off at the edges, and it is not empty.
        const int solid = countPixels(image, [](const QColor &colour) { return colour.alpha() == 255; });
        QVERIFY(solid > size.width() * size.height() / 4);
    }

    void highResolutionPictureIsTheSameTwiceAsLarge() {
        for (const QString &name : words("ok ko collega chiudi corvin88x60 domanda informazione avviso")) {
            const QImage small = picture(name + ".png"_s);
            const QImage large = picture(name + "@2x.png"_s);
            QVERIFY2(large.size() == small.size() * 2, qPrintable(name));
            const QImage shrunk = large.scaled(small.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            QVERIFY2(difference(on(Qt::white, small), on(Qt::white, shrunk)) < 4, qPrintable(name));
        }
    }

    void everyDrawingHasItsPicture() {
        const QDir folder(QStringLiteral(CORVIN_PICTURE_FOLDER));
        const QStringList drawings = folder.entryList({"*.svg"_s}, QDir::Files);
        QStringList pictures = QDir(kFolder).entryList({"*.png"_s}, QDir::Files);
        QVERIFY(!drawings.isEmpty());
        for (const QString &drawing : drawings) {
            const QString name = drawing.chopped(4);
            QVERIFY2(pictures.removeAll(name + ".png"_s) == 1, qPrintable(name));
            pictures.removeAll(name + "@2x.png"_s);
        }
        QCOMPARE(pictures, QStringList());
    }

    void backgroundIsCalmAndLight() {
        // Light enough for black text and for dark buttons, dark enough not to dazzle, and without strong marks.
        const auto isOutside = [](const QColor &colour) {
            const int grey = qGray(colour.rgb());
            return grey < 195 || grey > 240;
        };
        QCOMPARE(countPixels(picture("sfondo_prog.png"_s), isOutside), 0);
    }

    void backgroundRepeatsWithoutSeam_data() {
        columns<bool>("columns");
        row("sideways", true);
        row("downwards", false);
    }
    void backgroundRepeatsWithoutSeam() {
        QFETCH(bool, columns);
        const QImage image = picture("sfondo_prog.png"_s);
        const auto lineAt = [&](int i) {
            return columns ? image.copy(i, 0, 1, image.height()) : image.copy(0, i, image.width(), 1);
        };
        const int last = (columns ? image.width() : image.height()) - 1;
        double worstInside = 0;
        for (int i = 0; i < last; ++i)
            worstInside = std::max(worstInside, difference(lineAt(i), lineAt(i + 1)));
        const double atTheSeam = difference(lineAt(last), lineAt(0));
        QVERIFY2(atTheSeam <= worstInside * 1.1, qPrintable(QString::number(atTheSeam)));
    }

    void resultPicturesDifferInShapeNotOnlyInColour() {
        const QImage good = picture("ok.png"_s);
        const QImage bad = picture("ko.png"_s);
        const auto isMark = [](const QColor &colour) {
            return colour.alpha() == 255 && colour.red() > 215 && colour.green() > 215 && colour.blue() > 215;
        };
        int onlyOne = 0;
        for (int y = 0; y < good.height(); ++y)
            for (int x = 0; x < good.width(); ++x)
                onlyOne += isMark(good.pixelColor(x, y)) != isMark(bad.pixelColor(x, y)) ? 1 : 0;
        QVERIFY(countPixels(good, isMark) > 500);
        QVERIFY(countPixels(bad, isMark) > 500);
        QVERIFY(onlyOne > 500);
        // The disc beside the mark: green says good, red says bad.
        const QColor goodDisc = good.pixelColor(80, 125);
        const QColor badDisc = bad.pixelColor(80, 125);
        QVERIFY(goodDisc.green() > goodDisc.red() + 40);
        QVERIFY(badDisc.red() > badDisc.green() + 40);
    }

    void closePictureIsLegibleWhenSmall_data() {
        columns<QColor>("ground");
        row("on dark", QColor(51, 51, 51));
        row("on light", QColor(217, 217, 217));
    }
    void closePictureIsLegibleWhenSmall() {
        QFETCH(QColor, ground);
        const QPixmap small = QIcon(":/imgs/chiudi.png"_s).pixmap(24, 24);
        QCOMPARE(small.size(), QSize(24, 24));
        const QImage shown = on(ground, small.toImage());
        // The cross stays a clear amber, and its four arms do not run together.
        QVERIFY(countPixels(shown, [](const QColor &colour) { return isNear(colour, kAmber, 60); }) >= 40);
        for (const QPoint &between : {QPoint(12, 5), QPoint(12, 18), QPoint(5, 12), QPoint(18, 12)})
            QVERIFY(qGray(shown.pixel(between)) < 90);
    }

    void picturesOfTheBoxesAreAmberAndNoTwoAlike() {
        const QStringList names = words("domanda informazione avviso");
        for (const QString &name : names) {
            const QImage one = picture(name + ".png"_s);
            QVERIFY(countPixels(one, [](const QColor &colour) { return isNear(colour, kAmber, 60); }) > 200);
            for (const QString &other : names)
                QVERIFY2(name == other || difference(one, picture(other + ".png"_s)) > 10, qPrintable(name + other));
        }
    }

    void connectPictureKeepsItsProportionsInASmallLabel() {
        QLabel label;
        label.setStyleSheet("background-color: rgb(255, 255, 255); image: url(:/imgs/collega.png);"_s);
        label.resize(320, 300);
        const QSize ink = inkOf(label.grab().toImage().convertToFormat(QImage::Format_ARGB32));
        const QSize whole = inkOf(on(Qt::white, picture("collega.png"_s)));
        QVERIFY(!ink.isEmpty());
        QVERIFY(std::abs(ink.width() - whole.width() / 2) <= 4);
        QVERIFY(std::abs(ink.height() - whole.height() / 2) <= 4);
    }

    void windowIconIsTransparentAtItsCornersInEverySize() {
        const QIcon icon(":/imgs/corvin4manager.png"_s);
        for (const int width : {16, 24, 32, 48, 64, 128, 256}) {
            const QImage image = icon.pixmap(width, width).toImage().convertToFormat(QImage::Format_ARGB32);
            QCOMPARE(image.width(), width);
            QVERIFY(qAlpha(image.pixel(0, 0)) < 32);
            QVERIFY(countPixels(image, [](const QColor &colour) { return isNear(colour, kAmber, 60); }) > width);
        }
    }

    void windowsIconHoldsAllSizes() {
        QImageReader reader(QStringLiteral(CORVIN_PICTURE_FOLDER "/corvin4manager.ico"));
        QList<int> widths;
        for (int i = 0; i < reader.imageCount(); ++i) {
            QVERIFY(reader.jumpToImage(i));
            widths.append(reader.read().width());
        }
        std::sort(widths.begin(), widths.end());
        QCOMPARE(widths, QList<int>({16, 24, 32, 48, 64, 128, 256}));
    }
};

QTEST_MAIN(TestResources)
#include "tst_resources.moc"
