#include "songfiles/byteview.h"
#include "songfiles/cuttext.h"

#include <QTest>

#include <limits>

class TestByteView : public QObject
{
    Q_OBJECT

private slots:
    void onlyBytesThatExistAreRead_data()
    {
        QTest::addColumn<qint64>("offset");
        QTest::addColumn<qint64>("count");
        QTest::addColumn<QByteArray>("expected");
        const qint64 huge = std::numeric_limits<qint64>::max();
        QTest::newRow("inside") << qint64(1) << qint64(2) << QByteArray("bc");
        QTest::newRow("all") << qint64(0) << qint64(4) << QByteArray("abcd");
        QTest::newRow("past the end") << qint64(2) << qint64(9) << QByteArray("cd");
        QTest::newRow("huge count") << qint64(1) << huge << QByteArray("bcd");
        QTest::newRow("nothing") << qint64(1) << qint64(0) << QByteArray();
        QTest::newRow("negative count") << qint64(1) << qint64(-1) << QByteArray();
        QTest::newRow("most negative count") << qint64(1) << std::numeric_limits<qint64>::min() << QByteArray();
        QTest::newRow("at the end") << qint64(4) << qint64(1) << QByteArray();
        QTest::newRow("huge offset") << huge << huge << QByteArray();
        QTest::newRow("negative offset") << qint64(-1) << qint64(3) << QByteArray();
    }
    void onlyBytesThatExistAreRead()
    {
        QFETCH(qint64, offset);
        QFETCH(qint64, count);
        QFETCH(QByteArray, expected);
        QCOMPARE(ByteView::bytesAt("abcd", offset, count), expected);
    }

    void missingByteReadsAsZero()
    {
        QCOMPARE(ByteView::byteAt("\xFE", 0), quint8(0xFE));
        QCOMPARE(ByteView::byteAt("\xFE", 1), quint8(0));
        QCOMPARE(ByteView::byteAt("\xFE", -1), quint8(0));
        QCOMPARE(ByteView::byteAt(QByteArray(), 0), quint8(0));
    }

    void textEndsAtTheFirstZeroByteAndIsTrimmed()
    {
        const QByteArray bytes("xx \t\xE8 a \0 b", 12);
        QCOMPARE(ByteView::textAt(bytes, 2, 9), QStringLiteral("\u00E8 a"));
        QCOMPARE(ByteView::textAt(bytes, 2, 100), QStringLiteral("\u00E8 a"));
        QCOMPARE(ByteView::textAt(bytes, 0, 1), QStringLiteral("x"));
        QCOMPARE(ByteView::textAt(bytes, 8, 4), QString());
        QCOMPARE(ByteView::textAt(bytes, 0, -3), QString());
    }

    void cutLeavesNoHalfCharacter()
    {
        const QString note = QString::fromUtf8("\xF0\x9D\x84\x9E"); // one character, two UTF-16 units
        QCOMPARE(cutText(QStringLiteral("ab") + note, 4), QStringLiteral("ab") + note);
        QCOMPARE(cutText(QStringLiteral("ab") + note, 3), QStringLiteral("ab"));
        QCOMPARE(cutText(QStringLiteral("ab") + note, 2), QStringLiteral("ab"));
        QCOMPARE(cutText(note, 1), QString());
        QCOMPARE(cutText(QStringLiteral("abc"), 0), QString());
        QCOMPARE(cutText(QString(), 5), QString());
        // Half a pair that was there before is not ours to repair.
        QCOMPARE(cutText(note.left(1), 5), note.left(1));
    }
};

QTEST_GUILESS_MAIN(TestByteView)
#include "tst_byteview.moc"
