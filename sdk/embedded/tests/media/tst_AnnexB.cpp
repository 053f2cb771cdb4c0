#include "media/AnnexB.h"

extern "C" {
#include <libavcodec/avcodec.h>
}

#include <QtTest>

#include <cstdint>
#include <random>
#include <vector>

using ipncsdk::media::AnnexB;

namespace {

using Bytes = std::vector<std::uint8_t>;

// A parameter set's own number is its first Exp-Golomb code: a leading 1 bit stands for 0.
const char* const sps = "67 42 c0 1e 95 a0";
const char* const pps = "68 ce 3c 80";

Bytes fromHex(const QByteArray& hex) {
    const QByteArray raw = QByteArray::fromHex(hex);
    return {raw.begin(), raw.end()};
}

QByteArray toHex(std::span<const std::uint8_t> bytes) {
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<int>(bytes.size())).toHex(' ');
}

/// The output in words of the tests: nothing, or "K " (key frame) or "- " and the bytes.
QByteArray describe(const std::optional<AnnexB::AccessUnit>& unit) {
    return unit ? (unit->keyFrame ? "K " : "- ") + toHex(unit->bytes) : QByteArray("nothing");
}

/// Puts the sets in for "%1" and "%2".
QByteArray hex(const char* format, const char* first = "", const char* second = "") {
    return QByteArray(format).replace("%1", first).replace("%2", second);
}

} // namespace

class tst_AnnexB : public QObject {
    Q_OBJECT

private slots:
    void rewrites_data();
    void rewrites();
    void takesHeaders_data();
    void takesHeaders();
    void keepsEveryNumberedSet();
    void survivesNoise();
    void growsByNoMoreThanItsSets();
};

void tst_AnnexB::rewrites_data() {
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("expected");

    const QByteArray ordered = hex("K 00 00 00 01 %1 00 00 00 01 %2 00 00 00 01 65 88 84", sps, pps);
    QTest::newRow("as it should be") << ordered.mid(2) << ordered;
    QTest::newRow("short codes") << hex("00 00 01 %1 00 00 01 %2 00 00 01 65 88 84", sps, pps) << ordered;
    QTest::newRow("delimiter and filler") << hex("00 00 00 01 09 10 00 00 00 01 %1 00 00 01 %2 00 00 01 65 88 84 "
                                                 "00 00 01 0c ff ff 80",
                                                 sps, pps)
                                          << ordered;
    QTest::newRow("sets in the wrong order") << hex("00 00 01 %2 00 00 01 65 88 84 00 00 01 %1", sps, pps) << ordered;
    QTest::newRow("other reference class")
        << hex("00 00 01 27 42 c0 1e 95 a0 00 00 01 %2 00 00 01 65 88 84", sps, pps) << ordered;
    QTest::newRow("zeros round units")
        << hex("00 00 00 00 00 01 %1 00 00 00 00 00 01 %2 00 00 00 00 01 65 88 84 00 00", sps, pps) << ordered;
    QTest::newRow("garbage in front") << hex("ff 12 00 34 00 00 01 %1 00 00 01 %2 00 00 01 65 88 84", sps, pps)
                                      << ordered;
    QTest::newRow("forbidden bit and reserved types")
        << hex("00 00 01 %1 00 00 01 %2 00 00 01 e5 11 00 00 01 1e 22 00 00 01 60 33 00 00 01 65 88 84", sps, pps)
        << ordered;
    QTest::newRow("information unit stays")
        << hex("00 00 01 %1 00 00 01 %2 00 00 01 06 05 01 aa 80 00 00 01 65 88 84", sps, pps)
        << hex("K 00 00 00 01 %1 00 00 00 01 %2 00 00 00 01 06 05 01 aa 80 00 00 00 01 65 88 84", sps, pps);
    QTest::newRow("two slices") << hex("00 00 01 %1 00 00 01 %2 00 00 01 65 88 84 00 00 01 65 40 11", sps, pps)
                                << hex("K 00 00 00 01 %1 00 00 00 01 %2 00 00 00 01 65 88 84 00 00 00 01 65 40 11",
                                       sps, pps);
    QTest::newRow("plain picture") << QByteArray("00 00 01 41 9a 21") << QByteArray("- 00 00 00 01 41 9a 21");
    QTest::newRow("emulation prevention stays")
        << QByteArray("00 00 01 41 9a 00 00 03 01 21") << QByteArray("- 00 00 00 01 41 9a 00 00 03 01 21");
    QTest::newRow("key frame without sets") << QByteArray("00 00 01 65 88 84") << QByteArray("nothing");
    QTest::newRow("key frame with an SPS alone")
        << hex("00 00 01 %1 00 00 01 65 88 84", sps) << QByteArray("nothing");
    QTest::newRow("sets alone") << hex("00 00 01 %1 00 00 01 %2", sps, pps) << QByteArray("nothing");
    QTest::newRow("nothing at all") << QByteArray() << QByteArray("nothing");
    QTest::newRow("one byte") << QByteArray("65") << QByteArray("nothing");
    QTest::newRow("a bare code") << QByteArray("00 00 00 01") << QByteArray("nothing");
    QTest::newRow("codes without units")
        << QByteArray("00 00 01 00 00 01 00 00 00 01 00 00 01") << QByteArray("nothing");
    QTest::newRow("zeros") << QByteArray("00 00 00 00 00 00 00 00") << QByteArray("nothing");
    QTest::newRow("no code") << QByteArray("65 88 84 21 a0 00 00") << QByteArray("nothing");
    QTest::newRow("cut off sets") << QByteArray("00 00 01 67 00 00 01 68 00 00 01 65 88") << QByteArray("nothing");
    QTest::newRow("SPS without a number")
        << hex("00 00 01 67 42 c0 1e 00 01 00 00 01 %2 00 00 01 65 88", sps, pps) << QByteArray("nothing");
}

void tst_AnnexB::rewrites() {
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, expected);
    AnnexB normaliser;
    QCOMPARE(describe(normaliser.normalise(fromHex(input))), expected);
}

void tst_AnnexB::takesHeaders_data() {
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<bool>("taken");
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("expected");

    const QByteArray ordered = hex("K 00 00 00 01 %1 00 00 00 01 %2 00 00 00 01 65 88 84", sps, pps);
    const QByteArray avcc = hex("01 42 c0 1e ff e1 00 06 %1 01 00 04 %2", sps, pps);
    QTest::newRow("avcC, four-byte lengths") << avcc << true << QByteArray("00 00 00 03 65 88 84") << ordered;
    QTest::newRow("avcC, two-byte lengths")
        << hex("01 42 c0 1e fd e1 00 06 %1 01 00 04 %2", sps, pps) << true << QByteArray("00 03 65 88 84") << ordered;
    QTest::newRow("avcC, one-byte lengths") << hex("01 42 c0 1e fc e1 00 06 %1 01 00 04 %2", sps, pps) << true
                                            << QByteArray("02 09 10 03 65 88 84") << ordered;
    QTest::newRow("Annex B") << hex("00 00 00 01 %1 00 00 01 %2", sps, pps) << true << QByteArray("00 00 01 65 88 84")
                             << ordered;
    QTest::newRow("length beyond the end") << avcc << true << QByteArray("ff ff ff ff 65 88 84") << ordered;
    QTest::newRow("length of nothing") << avcc << true << QByteArray("00 00 00 00 00 00 00 03 65 88 84") << ordered;
    QTest::newRow("length cut off") << avcc << true << QByteArray("00 00 03") << QByteArray("nothing");
    QTest::newRow("start code inside a unit")
        << avcc << true << QByteArray("00 00 00 08 65 88 84 00 00 01 41 22") << ordered + " 00 00 00 01 41 22";
    QTest::newRow("sets of the stream win") << hex("00 00 01 67 42 c0 1e ff 00 00 01 %2", sps, pps) << true
                                            << hex("00 00 01 %1 00 00 01 65 88 84", sps) << ordered;
    QTest::newRow("avcC cut off in a set") << hex("01 42 c0 1e ff e1 00 60 %1", sps) << true
                                           << QByteArray("00 00 00 03 65 88 84") << QByteArray("nothing");
    QTest::newRow("avcC that promises more") << hex("01 42 c0 1e ff ff 00 06 %1", sps) << true
                                             << QByteArray("00 00 00 03 65 88 84") << QByteArray("nothing");
    QTest::newRow("neither") << QByteArray("de ad be ef 00 11 22 33") << false << QByteArray("00 00 01 65 88 84")
                             << QByteArray("nothing");
    QTest::newRow("empty") << QByteArray() << false << QByteArray("00 00 01 41 88")
                           << QByteArray("- 00 00 00 01 41 88");
}

void tst_AnnexB::takesHeaders() {
    QFETCH(QByteArray, header);
    QFETCH(bool, taken);
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, expected);
    AnnexB normaliser;
    QCOMPARE(normaliser.setHeader(fromHex(header)), taken);
    QCOMPARE(describe(normaliser.normalise(fromHex(input))), expected);
}

void tst_AnnexB::keepsEveryNumberedSet() {
    // PPS numbers 0 and 1 ("ce" and "4e"): both must stand before each key frame, the newest content of each.
    AnnexB normaliser;
    normaliser.normalise(fromHex(hex("00 00 01 %1 00 00 01 68 4e 11 00 00 01 68 ce 22 00 00 01 65 88", sps)));
    normaliser.normalise(fromHex("00 00 01 68 4e 33 00 00 01 41 9a"));
    QCOMPARE(describe(normaliser.normalise(fromHex("00 00 01 65 99"))),
             hex("K 00 00 00 01 %1 00 00 00 01 68 ce 22 00 00 00 01 68 4e 33 00 00 00 01 65 99", sps));
    QCOMPARE(describe(normaliser.normalise(fromHex("00 00 01 41 77"), true)).left(2), QByteArray("K "));
}

void tst_AnnexB::survivesNoise() {
    // Every output must be one that an independent parser can walk; the bytes of the noise favour what matters.
    constexpr std::array<std::uint8_t, 12> favourites{0, 0, 0, 1, 1, 3, 0x65, 0x67, 0x68, 0x41, 0x09, 0xFF};
    std::mt19937 random(20240131);
    AVCodecParserContext* parser = av_parser_init(AV_CODEC_ID_H264);
    AVCodecContext* context = avcodec_alloc_context3(avcodec_find_decoder(AV_CODEC_ID_H264));
    int outputs = 0;
    for (int round = 0; round < 20000; ++round) {
        AnnexB normaliser;
        Bytes header(random() % 40);
        Bytes input(random() % 120);
        for (Bytes* bytes : {&header, &input}) {
            for (std::uint8_t& byte : *bytes) {
                byte = random() % 5 != 0 ? favourites[random() % favourites.size()]
                                         : static_cast<std::uint8_t>(random());
            }
        }
        if (!header.empty() && round % 2 == 0) {
            header[0] = 1;
        }
        normaliser.setHeader(header);
        const auto unit = normaliser.normalise(input, round % 3 == 0);
        if (!unit) {
            continue;
        }
        ++outputs;
        const QByteArray text = toHex(unit->bytes);
        QVERIFY2(text.startsWith(unit->keyFrame ? "00 00 00 01 67" : "00 00 00 01"), text.constData());
        Bytes padded(unit->bytes.begin(), unit->bytes.end());
        padded.resize(padded.size() + AV_INPUT_BUFFER_PADDING_SIZE);
        std::uint8_t* out = nullptr;
        int size = 0;
        av_parser_parse2(parser, context, &out, &size, padded.data(), static_cast<int>(unit->bytes.size()), 0, 0, 0);
    }
    avcodec_free_context(&context);
    av_parser_close(parser);
    QVERIFY(outputs > 1000);
}

void tst_AnnexB::growsByNoMoreThanItsSets() {
    // Sets as large as a hostile camera likes are not kept, and their numbers are limited.
    AnnexB normaliser;
    Bytes input = fromHex(hex("00 00 01 %1", sps));
    for (int set = 0; set < 400; ++set) {
        Bytes large = fromHex("00 00 01 68");
        large.resize(5000, static_cast<std::uint8_t>(set | 1));
        input.insert(input.end(), large.begin(), large.end());
    }
    QVERIFY(!normaliser.normalise(input));
    const Bytes key = fromHex(hex("00 00 01 %2 00 00 01 65 88", sps, pps));
    const auto unit = normaliser.normalise(key);
    QVERIFY(unit);
    QCOMPARE(unit->bytes.size(), std::size_t{4 + 6 + 4 + 4 + 4 + 2});
}

QTEST_APPLESS_MAIN(tst_AnnexB)
#include "tst_AnnexB.moc"
