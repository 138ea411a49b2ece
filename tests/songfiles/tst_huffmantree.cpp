#include "songfiles/huffmantree.h"

#include "bytes.h"
#include "songfiles/bitstream.h"

#include <numeric>
#include <random>
#include <utility>

using Symbols = QVector<int>;

class TestHuffmanTree : public QObject
{
    Q_OBJECT

private slots:
    void symbolsComeBackInOrder_data() {
        columns<Symbols>("symbols");
        Symbols downwards(kSymbols);
        std::iota(downwards.rbegin(), downwards.rend(), 0);
        row("every symbol once, downwards", downwards);
        row("worst case", worstCase());
        // The frequencies are halved when they add up to 32768: after 32485 symbols, and again later.
        row("up to the first halving", atRandom(32485));
        row("one behind the first halving", atRandom(32486));
        row("many halvings", atRandom(100000));
        row("one symbol", Symbols(200000, 282));
        row("worst case, twice halved", worstCase() + Symbols(40000, 1) + worstCase());
    }
    void symbolsComeBackInOrder() {
        QFETCH(Symbols, symbols);
        HuffmanTree tree(kSymbols);
        tree.start(kSymbols);
        const QByteArray bits = encoded(tree, symbols);
        tree.start(kSymbols);
        BitReader reader(bits, 0);
        for (const int symbol : qAsConst(symbols))
            QCOMPARE(tree.decode(reader), symbol);
    }

    void codesGrowBeyondSixteenBits() {
        const Symbols symbols = worstCase();
        HuffmanTree tree(kSymbols);
        tree.start(kSymbols);
        encoded(tree, symbols.mid(0, symbols.size() - 1));
        const QByteArray last = encoded(tree, {symbols.last()});
        QVERIFY2(last.size() > 2, last.toHex().constData());
    }

    void anyBitsLeadToASymbol() {
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

    void bitsAreWrittenFromTheHighestAndFilledUpWithZeros() {
        QByteArray bytes;
        BitWriter writer(bytes);
        writer.putBits(0x5, 3);
        writer.putBit(1);
        writer.flush();
        QCOMPARE(bytes, "b0"_hex);
        writer.putBits(0x1234, 16);
        writer.flush();
        QCOMPARE(bytes, "b01234"_hex);
        BitReader reader(bytes, 1);
        QCOMPARE(reader.bits(12), 0x123U);
        QCOMPARE(reader.bits(12), 0x400U); // what is missing counts as zero
    }

private:
    static constexpr int kSymbols = 283;

    static QByteArray encoded(HuffmanTree &tree, const Symbols &symbols) {
        QByteArray bits;
        BitWriter writer(bits);
        for (const int symbol : symbols)
            tree.encode(symbol, writer);
        writer.flush();
        return bits;
    }

    /// Symbols whose frequencies grow as the numbers of Fibonacci do, beginning below where the 283 symbols of a new
    /// tree together stand: close to the worst case for the length of a code. At the end one symbol that never came
    /// before.
    static Symbols worstCase() {
        Symbols symbols;
        int count = 175;
        int before = 108;
        for (int symbol = 0; symbols.size() + count < 32000; ++symbol) {
            symbols += Symbols(count, symbol);
            before = std::exchange(count, count + before);
        }
        symbols.append(kSymbols - 1);
        return symbols;
    }

    static Symbols atRandom(int size) {
        std::minstd_rand generator(5);
        Symbols symbols;
        for (int i = 0; i < size; ++i)
            symbols.append(static_cast<int>((generator() >> 8) % kSymbols));
        return symbols;
    }
};

QTEST_GUILESS_MAIN(TestHuffmanTree)
#include "tst_huffmantree.moc"
