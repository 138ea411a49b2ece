#include "songfiles/huffmantree.h"

#include "songfiles/bitstream.h"

#include <QTest>
#include <QVector>

#include <random>
#include <utility>

namespace {

const int kSymbols = 283;

/// Symbols whose frequencies grow as the numbers of Fibonacci do, beginning below where the 283 symbols of a
/// new tree together stand: close to the worst case for the length of a code. At the end one symbol that never came
/// before.
QVector<int> worstCase()
{
    QVector<int> symbols;
    int count = 175;
    int before = 108;
    for (int symbol = 0; symbols.size() + count < 32000; ++symbol) {
        symbols += QVector<int>(count, symbol);
        before = std::exchange(count, count + before);
    }
    symbols.append(kSymbols - 1);
    return symbols;
}

QVector<int> atRandom(int size)
{
    std::minstd_rand generator(5);
    QVector<int> symbols;
    for (int i = 0; i < size; ++i)
        symbols.append(static_cast<int>((generator() >> 8) % kSymbols));
    return symbols;
}

} // namespace

class TestHuffmanTree : public QObject
{
    Q_OBJECT

private slots:
    void symbolsComeBackInOrder_data()
    {
        QTest::addColumn<QVector<int>>("symbols");
        QTest::newRow("every symbol once, downwards") << [] {
            QVector<int> all;
            for (int symbol = kSymbols - 1; symbol >= 0; --symbol)
                all.append(symbol);
            return all;
        }();
        QTest::newRow("worst case") << worstCase();
        // The frequencies are halved when they add up to 32768: after 32485 symbols, and again later.
        QTest::newRow("up to the first halving") << atRandom(32485);
        QTest::newRow("one behind the first halving") << atRandom(32486);
        QTest::newRow("many halvings") << atRandom(100000);
        QTest::newRow("one symbol") << QVector<int>(200000, 282);
        QTest::newRow("worst case, twice halved") << worstCase() + QVector<int>(40000, 1) + worstCase();
    }
    void symbolsComeBackInOrder()
    {
        QFETCH(QVector<int>, symbols);
        HuffmanTree tree(kSymbols);
        tree.start(kSymbols);
        QByteArray bits;
        BitWriter writer(bits);
        for (const int symbol : qAsConst(symbols))
            tree.encode(symbol, writer);
        writer.flush();
        tree.start(kSymbols);
        BitReader reader(bits, 0);
        for (const int symbol : qAsConst(symbols))
            QCOMPARE(tree.decode(reader), symbol);
    }

    void codesGrowBeyondSixteenBits()
    {
        const QVector<int> symbols = worstCase();
        HuffmanTree tree(kSymbols);
        tree.start(kSymbols);
        QByteArray before;
        BitWriter dropped(before);
        for (int i = 0; i < symbols.size() - 1; ++i)
            tree.encode(symbols.at(i), dropped);
        QByteArray last;
        BitWriter writer(last);
        tree.encode(symbols.last(), writer);
        writer.flush();
        QVERIFY2(last.size() > 2, last.toHex().constData());
    }

    void anyBitsLeadToASymbol()
    {
        for (const char byte : {'\x00', '\x55', '\xAA', '\xFF'}) {
            HuffmanTree tree(1278);
            tree.start(kSymbols);
            const QByteArray bits(1000, byte);
            BitReader reader(bits, 0);
            for (int i = 0; i < 50000; ++i) { // far past the end of the bits
                const int symbol = tree.decode(reader);
                QVERIFY(symbol >= 0 && symbol < kSymbols);
            }
        }
    }

    void bitsAreWrittenFromTheHighestAndFilledUpWithZeros()
    {
        QByteArray bytes;
        BitWriter writer(bytes);
        writer.putBits(0x5, 3);
        writer.putBit(1);
        writer.flush();
        QCOMPARE(bytes.toHex(), QByteArray("b0"));
        writer.putBits(0x1234, 16);
        writer.flush();
        QCOMPARE(bytes.toHex(), QByteArray("b01234"));
        BitReader reader(bytes, 1);
        QCOMPARE(reader.bits(12), 0x123U);
        QCOMPARE(reader.bits(12), 0x400U); // what is missing counts as zero
    }
};

QTEST_GUILESS_MAIN(TestHuffmanTree)
#include "tst_huffmantree.moc"
