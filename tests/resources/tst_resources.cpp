#include "app/shared/sharedfonts.h"
#include "resources/resources.h"

#include <QDir>
#include <QFontInfo>
#include <QIcon>
#include <QImage>
#include <QImageReader>
#include <QLabel>
#include <QPainter>
#include <QtTest>

#include <algorithm>
#include <cstdlib>

namespace {

const QColor kAmber(249, 191, 0);
const QColor kDarkGround(51, 51, 51);

/// The picture of this file name, one point for each of its pixels.
QImage picture(const QString &name)
{
    QImage image = QImage(QLatin1String(":/imgs/") + name).convertToFormat(QImage::Format_ARGB32);
    // Qt reads a ratio of 2 out of the name "...@2x", and would then draw the picture half as large.
    image.setDevicePixelRatio(1);
    return image;
}

/// The picture as it looks on @p ground.
QImage on(const QColor &ground, const QImage &image)
{
    QImage result(image.size(), QImage::Format_ARGB32);
    result.fill(ground);
    QPainter painter(&result);
    painter.drawImage(0, 0, image);
    return result;
}

/// Counts the pixels for which @p wanted holds.
template <typename Predicate> int countPixels(const QImage &image, Predicate wanted)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += wanted(image.pixelColor(x, y)) ? 1 : 0;
    return count;
}

bool isNear(const QColor &colour, const QColor &wanted, int distance)
{
    return std::abs(colour.red() - wanted.red()) <= distance && std::abs(colour.green() - wanted.green()) <= distance &&
           std::abs(colour.blue() - wanted.blue()) <= distance;
}

/// Smallest rectangle around everything that differs from @p ground.
QRect inkOf(const QImage &image, const QColor &ground)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (!isNear(image.pixelColor(x, y), ground, 24))
                ink |= QRect(x, y, 1, 1);
    return ink;
}

/// Mean difference of grey between two columns (or rows) of a picture.
double lineDifference(const QImage &image, int first, int second, bool columns)
{
    const int length = columns ? image.height() : image.width();
    double sum = 0;
    for (int i = 0; i < length; ++i) {
        const QRgb a = columns ? image.pixel(first, i) : image.pixel(i, first);
        const QRgb b = columns ? image.pixel(second, i) : image.pixel(i, second);
        sum += std::abs(qGray(a) - qGray(b));
    }
    return sum / length;
}

} // namespace

class TstResources : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void loadingTwiceChangesNothing();
    void pictureHasItsSizeAndGround_data();
    void pictureHasItsSizeAndGround();
    void highResolutionPictureIsTheSameTwiceAsLarge_data();
    void highResolutionPictureIsTheSameTwiceAsLarge();
    void everyDrawingHasItsPicture();
    void backgroundIsCalmAndLight();
    void backgroundRepeatsWithoutSeam_data();
    void backgroundRepeatsWithoutSeam();
    void resultPicturesDifferInShapeNotOnlyInColour();
    void closePictureIsLegibleWhenSmall_data();
    void closePictureIsLegibleWhenSmall();
    void connectPictureKeepsItsProportionsInASmallLabel();
    void windowIconIsTransparentAtItsCornersInEverySize();
    void windowsIconHoldsAllSizes();
    void familiesResolveBesideTheFontsOfTheSystem();
};

void TstResources::initTestCase()
{
    loadResources();
}

void TstResources::loadingTwiceChangesNothing()
{
    const QStringList before = QDir(QStringLiteral(":/imgs/")).entryList();
    loadResources();
    QCOMPARE(QDir(QStringLiteral(":/imgs/")).entryList(), before);
    QVERIFY(!before.isEmpty());
}

void TstResources::pictureHasItsSizeAndGround_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("transparent");
    QTest::newRow("sfondo_prog.png") << QSize(512, 512) << false;
    QTest::newRow("ok.png") << QSize(160, 160) << true;
    QTest::newRow("ko.png") << QSize(160, 160) << true;
    QTest::newRow("collega.png") << QSize(640, 260) << true;
    QTest::newRow("chiudi.png") << QSize(48, 48) << true;
    QTest::newRow("corvin88x60.png") << QSize(88, 60) << true;
    QTest::newRow("corvin4manager.png") << QSize(256, 256) << true;
}

void TstResources::pictureHasItsSizeAndGround()
{
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

void TstResources::highResolutionPictureIsTheSameTwiceAsLarge_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"ok", "ko", "collega", "chiudi", "corvin88x60"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TstResources::highResolutionPictureIsTheSameTwiceAsLarge()
{
    QFETCH(QString, name);
    const QImage small = picture(name + QLatin1String(".png"));
    const QImage large = picture(name + QLatin1String("@2x.png"));
    QCOMPARE(large.size(), small.size() * 2);
    const QImage shrunk = large.scaled(small.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QImage left = on(Qt::white, small);
    const QImage right = on(Qt::white, shrunk);
    double sum = 0;
    for (int y = 0; y < left.height(); ++y)
        for (int x = 0; x < left.width(); ++x)
            sum += std::abs(qGray(left.pixel(x, y)) - qGray(right.pixel(x, y)));
    QVERIFY(sum / (left.width() * left.height()) < 4);
}

void TstResources::everyDrawingHasItsPicture()
{
    const QDir folder(QStringLiteral(CORVIN_PICTURE_FOLDER));
    const QStringList drawings = folder.entryList({QStringLiteral("*.svg")}, QDir::Files);
    QStringList pictures = QDir(QStringLiteral(":/imgs/")).entryList({QStringLiteral("*.png")}, QDir::Files);
    QVERIFY(!drawings.isEmpty());
    for (const QString &drawing : drawings) {
        const QString name = drawing.chopped(4);
        QVERIFY2(pictures.removeAll(name + QLatin1String(".png")) == 1, qPrintable(name));
        pictures.removeAll(name + QLatin1String("@2x.png"));
    }
    QCOMPARE(pictures, QStringList());
}

void TstResources::backgroundIsCalmAndLight()
{
    const QImage image = picture(QStringLiteral("sfondo_prog.png"));
    // Light enough for black text and for dark buttons, dark enough not to dazzle, and without strong marks.
    const int outside = countPixels(image, [](const QColor &colour) {
        const int grey = qGray(colour.rgb());
        return grey < 195 || grey > 240;
    });
    QCOMPARE(outside, 0);
}

void TstResources::backgroundRepeatsWithoutSeam_data()
{
    QTest::addColumn<bool>("columns");
    QTest::newRow("sideways") << true;
    QTest::newRow("downwards") << false;
}

void TstResources::backgroundRepeatsWithoutSeam()
{
    QFETCH(bool, columns);
    const QImage image = picture(QStringLiteral("sfondo_prog.png"));
    const int last = (columns ? image.width() : image.height()) - 1;
    double worstInside = 0;
    for (int i = 0; i < last; ++i)
        worstInside = std::max(worstInside, lineDifference(image, i, i + 1, columns));
    const double atTheSeam = lineDifference(image, last, 0, columns);
    QVERIFY2(atTheSeam <= worstInside * 1.1, qPrintable(QString::number(atTheSeam)));
}

void TstResources::resultPicturesDifferInShapeNotOnlyInColour()
{
    const QImage good = picture(QStringLiteral("ok.png"));
    const QImage bad = picture(QStringLiteral("ko.png"));
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

void TstResources::closePictureIsLegibleWhenSmall_data()
{
    QTest::addColumn<QColor>("ground");
    QTest::newRow("on dark") << kDarkGround;
    QTest::newRow("on light") << QColor(217, 217, 217);
}

void TstResources::closePictureIsLegibleWhenSmall()
{
    QFETCH(QColor, ground);
    const QPixmap small = QIcon(QStringLiteral(":/imgs/chiudi.png")).pixmap(24, 24);
    QCOMPARE(small.size(), QSize(24, 24));
    const QImage shown = on(ground, small.toImage());
    // The cross stays a clear amber, and its four arms do not run together.
    QVERIFY(countPixels(shown, [](const QColor &colour) { return isNear(colour, kAmber, 60); }) >= 40);
    const auto dark = [&shown](int x, int y) { return qGray(shown.pixel(x, y)) < 90; };
    QVERIFY(dark(12, 5));
    QVERIFY(dark(12, 18));
    QVERIFY(dark(5, 12));
    QVERIFY(dark(18, 12));
}

void TstResources::connectPictureKeepsItsProportionsInASmallLabel()
{
    QLabel label;
    label.setStyleSheet(QStringLiteral("background-color: rgb(255, 255, 255); image: url(:/imgs/collega.png);"));
    label.resize(320, 300);
    const QImage shown = label.grab().toImage().convertToFormat(QImage::Format_ARGB32);
    const QRect whole = inkOf(on(Qt::white, picture(QStringLiteral("collega.png"))), Qt::white);
    const QRect ink = inkOf(shown, Qt::white);
    QVERIFY(!ink.isEmpty());
    QVERIFY(std::abs(ink.width() - whole.width() / 2) <= 4);
    QVERIFY(std::abs(ink.height() - whole.height() / 2) <= 4);
}

void TstResources::windowIconIsTransparentAtItsCornersInEverySize()
{
    const QIcon icon(QStringLiteral(":/imgs/corvin4manager.png"));
    for (const int width : {16, 24, 32, 48, 64, 128, 256}) {
        const QImage image = icon.pixmap(width, width).toImage().convertToFormat(QImage::Format_ARGB32);
        QCOMPARE(image.width(), width);
        QVERIFY(qAlpha(image.pixel(0, 0)) < 32);
        QVERIFY(countPixels(image, [](const QColor &colour) { return isNear(colour, kAmber, 60); }) > width);
    }
}

void TstResources::windowsIconHoldsAllSizes()
{
    QImageReader reader(QStringLiteral(CORVIN_PICTURE_FOLDER "/corvin4manager.ico"));
    QList<int> widths;
    for (int i = 0; i < reader.imageCount(); ++i) {
        QVERIFY(reader.jumpToImage(i));
        widths.append(reader.read().width());
    }
    std::sort(widths.begin(), widths.end());
    QCOMPARE(widths, QList<int>({16, 24, 32, 48, 64, 128, 256}));
}

void TstResources::familiesResolveBesideTheFontsOfTheSystem()
{
    registerEmbeddedFonts();
    QCOMPARE(QFontInfo(QFont(QStringLiteral("Helvetica"), 10)).family(), QStringLiteral("Liberation Sans"));
    const QFontInfo bold(QFont(QStringLiteral("Helvetica"), 10, QFont::Bold));
    QCOMPARE(bold.family(), QStringLiteral("Liberation Sans"));
    QVERIFY(bold.bold());
    QCOMPARE(QFontInfo(QFont(QStringLiteral("Bebas Neue"), 18)).family(), QStringLiteral("Bebas Neue"));
}

QTEST_MAIN(TstResources)

#include "tst_resources.moc"
