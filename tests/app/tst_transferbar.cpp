#include "app/pacedbar.h"
#include "italianwindow.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"
#include "support/pictures.h"
#include "transfer/opentransfer.h"

namespace {

constexpr int kManySongs = 1500;
constexpr int kPaintIntervalMs = 40;
const QColor kChunk(0xf9, 0xbf, 0x00);

/// Counts how often a widget is painted while this lives.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget *widget) { widget->installEventFilter(this); }
    int paints = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override {
        paints += int(event->type() == QEvent::Paint);
        return QObject::eventFilter(watched, event);
    }
};

/// The window on the screen, with the transfer page open.
struct Filmed
{
    Filmed() {
        for (QTimer *timer : window.findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly))
            timer->stop();
        window.show();
        window.on_gotoTransfer();
    }
    /// How many pixels of the bar are filled on the screen, not in a picture made for the test.
    int filled() const {
        QPixmap screen = window.screen()->grabWindow(window.winId());
        const QImage picture = screen.copy(QRect(bar->mapTo(&window, QPoint(0, 0)), bar->size())).toImage();
        int count = 0;
        for (int x = 0; x < picture.width(); ++x)
            count += int(picture.pixelColor(x, picture.height() / 4) == kChunk);
        return count;
    }
    void drop(const QString &folder) const { Drag(*pageOf<Transfer>(window), fileUrls({folder})).bring(QPoint(5, 5)); }

    const SimulatedPlayer player;
    MainWindow window;
    QProgressBar *const bar = child<QProgressBar>(window, "progressBar");
};

} // namespace

class TestTransferBar : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { startInItalian(); }

    void barIsSeenToFillDuringATransfer_data() {
        columns<int, int>("files", "msEach");
        row("a fast disk", kManySongs, 0);
        // Each file takes longer than the pause between two paintings.
        row("a slow disk", 60, kPaintIntervalMs + 10);
    }
    void barIsSeenToFillDuringATransfer() {
        QFETCH(int, files);
        QFETCH(int, msEach);
        PcFolder pc;
        for (int i = 0; i < files; ++i)
            pc.addFile("album/%1.mid"_s.arg(i));
        const Filmed film;
        QList<int> frames;
        int copied = 0;
        connect(pageOf<Transfer>(film.window), &Transfer::increaseProgressBarVal, this, [&] {
            if (++copied % (files / 60) == 0)
                frames.append(film.filled());
            QThread::msleep(static_cast<unsigned long>(msEach));
        });
        film.drop(pc.path("album"_s));
        QCOMPARE(frames.size(), 60);
        QVERIFY2(frames.last() > frames.first(), qPrintable(QString::number(frames.last())));
        // It moved in small steps, not once; how many depends on how fast the disk is.
        QVERIFY(QSet<int>(frames.begin(), frames.end()).size() >= (msEach > 0 ? 20 : 3));
    }

    void barIsPaintedAtMostEvery40MsDuringATransfer() {
        PcFolder pc;
        for (int i = 0; i < kManySongs; ++i)
            pc.addFile("album/%1.mid"_s.arg(i));
        const Filmed film;
        const PaintCounter counter(film.bar);
        QElapsedTimer time;
        time.start();
        film.drop(pc.path("album"_s));
        // A few more: shown, given its maximum, its format.
        const qint64 most = time.elapsed() / kPaintIntervalMs + 8;
        QVERIFY2(counter.paints <= most, qPrintable("%1 times, not %2"_s.arg(counter.paints).arg(most)));
    }

    void pacedBarShowsItsLastValueAndLeavesTheBarAsItWas() {
        QProgressBar bar;
        bar.setRange(0, 1000);
        bar.show();
        QVERIFY(QTest::qWaitForWindowExposed(&bar));
        const PaintCounter counter(&bar);
        {
            PacedBar paced(bar);
            for (int i = 1; i <= 500; ++i)
                paced.setValue(i);
            paced.paint(); // not yet
            QCOMPARE(bar.value(), 500);
            const int atOnce = counter.paints;
            QTRY_VERIFY(counter.paints > atOnce);
            // Of two values that come at once the second is held back; a busy machine may part them.
            for (int value = 1; value < 400 && bar.updatesEnabled(); ++value)
                paced.setValue(value);
            QVERIFY(!bar.updatesEnabled());
        }
        QVERIFY(bar.updatesEnabled());
    }

    void manyValuesReachThePacedBarWhenTheyArePainted() {
        QProgressBar bar;
        bar.setRange(0, 5000);
        bar.show();
        QVERIFY(QTest::qWaitForWindowExposed(&bar));
        PacedBar paced(bar);
        QSignalSpy changes(&bar, &QProgressBar::valueChanged);
        QElapsedTimer time;
        time.start();
        for (int i = 1; i < 4000; ++i)
            paced.setValue(i);
        QCOMPARE(paced.value(), 3999);
        const qint64 most = 1000 + time.elapsed() / kPaintIntervalMs + 2;
        QVERIFY2(changes.size() <= most, qPrintable(QString::number(changes.size())));
        QTRY_COMPARE(bar.value(), 3999);
        QTRY_VERIFY(bar.updatesEnabled());

        paced.setValue(4500);
        paced.setValue(4501);
        paced.setValue(5001); // beyond the end
        QCOMPARE(paced.value(), 4501);
        paced.settle();
        QCOMPARE(bar.value(), 4501);
        paced.setValue(4502);
        QCOMPARE(bar.value(), 4502); // the first of the next thousand
        paced.setValue(5000);
        QCOMPARE(bar.value(), 5000);
    }

    void endIsGivenToTheBarAtOnceAndTheLastValueWhenThePacedBarGoes() {
        QProgressBar bar;
        bar.setRange(0, 5000);
        {
            PacedBar paced(bar);
            for (int i = 1; i <= 5000; ++i)
                paced.setValue(i);
            QCOMPARE(bar.value(), 5000);
            paced.setValue(3);
            paced.setValue(4);
        }
        QCOMPARE(bar.value(), 4);
    }

    void barOfTheWindowKeepsUpWithThousandsOfValues() {
        MainWindow window;
        const auto *bar = child<QProgressBar>(window, "progressBar");
        window.on_setProgressBarVisible(true);
        window.on_setProgressBarMaxVal(3000);
        for (int i = 0; i < 2000; ++i)
            window.on_increaseProgressBarVal();
        // What was counted is not lost where the bar gets another end.
        window.on_setProgressBarMaxVal(2500);
        QCOMPARE(bar->value(), 2000);
        for (int i = 0; i < 600; ++i)
            window.on_increaseProgressBarVal();
        QCOMPARE(bar->value(), 2500);
        window.on_setProgressBarMaxVal(4000);
        for (int i = 2500; i < 3900; ++i)
            window.on_updateProgressBarVal(i);
        window.on_setProgressBarVisible(false);
        QCOMPARE(bar->value(), 0);
        QTest::qWait(2 * kPaintIntervalMs);
        QCOMPARE(bar->value(), 0);
    }
};

PAGE_TEST_MAIN(TestTransferBar)
#include "tst_transferbar.moc"
