#include "songfiles/byteview.h"
#include "songfiles/cuttext.h"

#include "bytes.h"

#include <limits>

class TestByteView : public QObject
{
    Q_OBJECT

private slots:
    void onlyBytesThatExistAreRead() {
        const qint64 most = std::numeric_limits<qint64>::max();
        same("inside", ByteView::bytesAt("abcd", 1, 2), "bc"_b);
        same("all", ByteView::bytesAt("abcd", 0, 4), "abcd"_b);
        same("past the end", ByteView::bytesAt("abcd", 2, 9), "cd"_b);
        same("huge count", ByteView::bytesAt("abcd", 1, most), "bcd"_b);
        same("nothing", ByteView::bytesAt("abcd", 1, 0), ""_b);
        same("negative count", ByteView::bytesAt("abcd", 1, -1), ""_b);
        same("most negative count", ByteView::bytesAt("abcd", 1, -most - 1), ""_b);
        same("at the end", ByteView::bytesAt("abcd", 4, 1), ""_b);
        same("huge offset", ByteView::bytesAt("abcd", most, most), ""_b);
        same("negative offset", ByteView::bytesAt("abcd", -1, 3), ""_b);
    }

    void missingByteReadsAsZero() {
        QCOMPARE(ByteView::byteAt("\xFE", 0), quint8(0xFE));
        QCOMPARE(ByteView::byteAt("\xFE", 1), quint8(0));
        QCOMPARE(ByteView::byteAt("\xFE", -1), quint8(0));
        QCOMPARE(ByteView::byteAt(QByteArray(), 0), quint8(0));
    }

    void textEndsAtTheFirstZeroByteAndIsTrimmed() {
        const QByteArray bytes = "xx \t\xE8 a \0 b\0"_b;
        QCOMPARE(ByteView::textAt(bytes, 2, 9), "è a"_s);
        QCOMPARE(ByteView::textAt(bytes, 2, 100), "è a"_s);
        QCOMPARE(ByteView::textAt(bytes, 0, 1), "x"_s);
        QCOMPARE(ByteView::textAt(bytes, 8, 4), QString());
        QCOMPARE(ByteView::textAt(bytes, 0, -3), QString());
    }

    void cutLeavesNoHalfCharacter() {
        const QString note = "\U0001D11E"_s; // one character, two UTF-16 units
        QCOMPARE(cutText("ab"_s + note, 4), "ab"_s + note);
        QCOMPARE(cutText("ab"_s + note, 3), "ab"_s);
        QCOMPARE(cutText("ab"_s + note, 2), "ab"_s);
        QCOMPARE(cutText(note, 1), QString());
        QCOMPARE(cutText("abc"_s, 0), QString());
        QCOMPARE(cutText(QString(), 5), QString());
        // Half a pair that was there before is not ours to repair.
        QCOMPARE(cutText(note.left(1), 5), note.left(1));
    }
};

QTEST_GUILESS_MAIN(TestByteView)
#include "tst_byteview.moc"
