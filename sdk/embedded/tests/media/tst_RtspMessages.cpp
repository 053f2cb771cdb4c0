#include "media/backchannel/BackChannelMedia.h"
#include "media/backchannel/RtpPacker.h"
#include "media/backchannel/RtspAuthorization.h"
#include "media/backchannel/RtspParser.h"

#include <QtTest>

#include <array>

using namespace ipncsdk::media;

/// The words that are exchanged with a camera about talking to it.
class tst_RtspMessages : public QObject {
    Q_OBJECT

private slots:
    void findsAnswers_data();
    void findsAnswers();
    void choosesMedia_data();
    void choosesMedia();
    void digests_data();
    void digests();
    void authorizes();
    void packs();
};

void tst_RtspMessages::findsAnswers_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("found"); ///< CSeq, status, header "x" and body of each answer, or what is wrong
    const QByteArray plain = "RTSP/1.0 200 OK\r\nCSeq: 3\r\nX:  a b \r\n\r\n";
    QTest::newRow("plain") << plain << QByteArray("3 200 a b||");
    QTest::newRow("two, media and line ends between them")
        << plain + QByteArray("$\0\0\5R\r\n\r\nx", 9).left(9) + "\r\n" + plain
        << QByteArray("3 200 a b||3 200 a b||");
    QTest::newRow("body") << QByteArray("RTSP/1.0 404\r\ncseq:4\r\nCONTENT-LENGTH: 5\r\n\r\n$\r\n\r\n") + plain
                          << QByteArray("4 404 |$\r\n\r\n|3 200 a b||");
    QTest::newRow("asked by the camera")
        << "OPTIONS * RTSP/1.0\r\nCSeq: 1\r\nContent-Length: 2\r\n\r\nab" + plain << QByteArray("3 200 a b||");
    QTest::newRow("unfinished") << plain.left(plain.size() - 1) << QByteArray();
    const auto bad = [](const char* name, const QByteArray& bytes, const char* complaint) {
        QTest::newRow(name) << bytes << QByteArray(complaint);
    };
    bad("web page", "HTTP/1.1 200 OK\r\nCSeq: 3\r\n\r\n", "it does not speak RTSP");
    bad("garbage", QByteArray("\0\1\2", 3), "it does not speak RTSP");
    bad("status", "RTSP/1.0 2x0 OK\r\nCSeq: 3\r\n\r\n", "it does not speak RTSP");
    bad("control character", "RTSP/1.0 200 OK\r\nCSeq: 3\r\nX: a\rb\r\n\r\n", "its headers are no headers");
    bad("no header", "RTSP/1.0 200 OK\r\nCSeq\r\n\r\n", "its headers are no headers");
    bad("no sequence", "RTSP/1.0 200 OK\r\n\r\n", "it answers without a sequence number");
    bad("length", "RTSP/1.0 200 OK\r\nCSeq: 3\r\nContent-Length: -1\r\n\r\n",
        "its answer has no length that can be taken");
    bad("long body", "RTSP/1.0 200 OK\r\nCSeq: 3\r\nContent-Length: 65537\r\n\r\n",
        "its answer has no length that can be taken");
    bad("long head", "RTSP/1.0 200 OK\r\n" + QByteArray("X: y\r\n").repeated(3000), "its headers are too long");
}

void tst_RtspMessages::findsAnswers() {
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, found);
    // However it is cut on its way.
    for (const int piece : {1, 3, 4096}) {
        RtspParser parser;
        QByteArray all;
        for (int at = 0; at < bytes.size(); at += piece) {
            const QByteArray part = bytes.mid(at, piece);
            parser.feed({part.constData(), static_cast<std::size_t>(part.size())});
            RtspResponse answer;
            while (parser.next(answer) == RtspParser::Found::Response) {
                all += QByteArray::number(answer.sequence) + ' ' + QByteArray::number(answer.status) + ' ' +
                       QByteArray::fromStdString(std::string(answer.header("x")) + '|' + answer.body) + '|';
            }
        }
        QCOMPARE(all + QByteArray::fromStdString(std::string(parser.complaint())), found);
    }
}

void tst_RtspMessages::choosesMedia_data() {
    QTest::addColumn<QByteArray>("description");
    QTest::addColumn<QByteArray>("found"); ///< payload type, rate, A-law, control, aggregate
    const QByteArray base = "rtsp://c/x";
    const auto row = [](const char* name, const QByteArray& description, const QByteArray& found) {
        QTest::newRow(name) << description << found;
    };
    row("beside video and the camera's own sound",
        "v=0\r\na=control:*\r\nm=video 0 RTP/AVP 96\r\na=control:v\r\nm=audio 0 RTP/AVP "
        "8\r\na=recvonly\r\na=control:a\r\n"
        "m=audio 0 RTP/AVP 0\r\na=control:b\r\na=sendonly\r\n",
        "0 8000 0 rtsp://c/x/b rtsp://c/x");
    row("mapped, absolute",
        "m=audio 0 RTP/AVP 101 97\na=rtpmap:101 OPUS/48000/2\na=rtpmap:97 pcma/16000/1\na=sendonly\n"
        "a=control:rtsp://d/y?z=1\n",
        "97 16000 1 rtsp://d/y?z=1 rtsp://c/x");
    row("aggregate", "a=control:rtsp://c/all/\nm=audio 0 RTP/AVP 8\na=sendonly\na=control:t\n",
        "8 8000 1 rtsp://c/x/t rtsp://c/all/");
    row("none to send", "m=audio 0 RTP/AVP 0\r\na=control:b\r\n", "");
    row("other codecs", "m=audio 0 RTP/AVP 97\r\na=rtpmap:97 MPEG4-GENERIC/16000\r\na=sendonly\r\n", "");
    row("two channels", "m=audio 0 RTP/AVP 97\r\na=rtpmap:97 PCMU/8000/2\r\na=sendonly\r\n", "");
    row("rate", "m=audio 0 RTP/AVP 97\r\na=rtpmap:97 PCMU/96000\r\na=sendonly\r\n", "");
    row("payload type", "m=audio 0 RTP/AVP 128\r\na=rtpmap:128 PCMU/8000\r\na=sendonly\r\n", "");
    row("encrypted", "m=audio 0 RTP/SAVP 0\r\na=sendonly\r\n", "");
    row("blank in the address", "m=audio 0 RTP/AVP 0\r\na=sendonly\r\na=control:a b\r\n", "");
    row("nothing", "", "");
}

void tst_RtspMessages::choosesMedia() {
    QFETCH(QByteArray, description);
    QFETCH(QByteArray, found);
    const auto media = BackChannelMedia::choose(description.toStdString(), "rtsp://c/x");
    QByteArray text;
    if (media) {
        text = QByteArray::number(media->payloadType) + ' ' + QByteArray::number(media->rate) + ' ' +
               QByteArray::number(media->codec == AV_CODEC_ID_PCM_ALAW) + ' ' +
               QByteArray::fromStdString(media->control + ' ' + media->aggregate);
    }
    QCOMPARE(text, found);
}

void tst_RtspMessages::digests_data() {
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<QByteArray>("clientNonce");
    QTest::addColumn<QByteArray>("response");
    QTest::newRow("RFC 2617, 3.5") << QByteArray("GET") << QByteArray("0a4f113b")
                                   << QByteArray("6629fae49393a05397450978507c4ef1");
    QTest::newRow("without qop") << QByteArray("GET") << QByteArray()
                                 << QByteArray("670fd8c2df070c60b045671b8b24ff02");
}

void tst_RtspMessages::digests() {
    QFETCH(QByteArray, method);
    QFETCH(QByteArray, clientNonce);
    QFETCH(QByteArray, response);
    const DigestParts parts{"Mufasa",
                            "Circle Of Life",
                            "testrealm@host.com",
                            "dcd98b7102dd2f0e8b11d0f600bfb0c093",
                            {method.constData(), static_cast<std::size_t>(method.size())},
                            "/dir/index.html",
                            "00000001",
                            {clientNonce.constData(), static_cast<std::size_t>(clientNonce.size())}};
    QCOMPARE(QByteArray::fromStdString(digestResponse(parts)), response);
}

void tst_RtspMessages::authorizes() {
    const auto challenge = [](std::initializer_list<const char*> values) {
        RtspResponse response;
        response.status = 401;
        for (const char* value : values) {
            response.headers.emplace_back("www-authenticate", value);
        }
        return response;
    };
    RtspAuthorization basic("user", "pass");
    QVERIFY(basic.header("DESCRIBE", "rtsp://c/x").empty());
    QVERIFY(!basic.accept(challenge({})));
    QVERIFY(!basic.accept(challenge({"Digest realm=\"r\", nonce=\"n\", algorithm=SHA-256"})));
    QVERIFY(basic.accept(challenge({"Basic realm=\"r\""})));
    QCOMPARE(basic.header("DESCRIBE", "rtsp://c/x"), std::string("Basic dXNlcjpwYXNz"));
    QVERIFY(!basic.accept(challenge({"Basic realm=\"r\""}))); // it has been refused
    RtspAuthorization digest("us\"er", "pass");
    QVERIFY(digest.accept(challenge(
        {"Basic realm=\"r\"", "Digest realm=\"a \\\"b\\\", c\", nonce=\"n\", qop=\"auth-int,auth\", opaque=o"})));
    const QByteArray header = QByteArray::fromStdString(digest.header("PLAY", "rtsp://c/x"));
    QVERIFY(header.startsWith(
        "Digest username=\"us\\\"er\", realm=\"a \\\"b\\\", c\", nonce=\"n\", uri=\"rtsp://c/x\", response=\""));
    QVERIFY(header.contains(", opaque=\"o\", qop=auth, nc=00000001, cnonce=\""));
    QVERIFY(QByteArray::fromStdString(digest.header("PLAY", "rtsp://c/x")).contains("nc=00000002"));
    QVERIFY(!digest.accept(challenge({"Digest realm=\"r\", nonce=\"m\""})));
    QVERIFY(digest.accept(challenge({"Digest realm=\"r\", nonce=\"m\", stale=TRUE"})));
    RtspAuthorization nobody("", "");
    QVERIFY(!nobody.accept(challenge({"Basic realm=\"r\""})));
}

void tst_RtspMessages::packs() {
    RtpPacker packer(8, 2, {0xFFFF, 0xFFFFFFFE, 0x01020304});
    const std::array<std::uint8_t, 3> samples{0x0A, 0x0B, 0x0C};
    const auto next = [&] {
        return QByteArray::fromStdString(packer.pack(samples)).toHex();
    };
    QCOMPARE(next(), QByteArray("2402000f8088fffffffffffe010203040a0b0c"));
    QCOMPARE(next(), QByteArray("2402000f8008000000000001010203040a0b0c"));
    packer.pass(160);
    QCOMPARE(next(), QByteArray("2402000f80880001000000a4010203040a0b0c"));
}

QTEST_GUILESS_MAIN(tst_RtspMessages)
#include "tst_RtspMessages.moc"
