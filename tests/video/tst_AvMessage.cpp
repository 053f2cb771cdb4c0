#include "video/AvMessage.h"
#include "video/AvRequest.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace corvanta::video;

namespace {

AvMessage parsed(const QByteArray& json) {
    return parseAvMessage({json.constData(), static_cast<std::size_t>(json.size())});
}

} // namespace

class tst_AvMessage : public QObject {
    Q_OBJECT
private slots:
    void frameAddressIsExact_data();
    void frameAddressIsExact();
    void addressOfBothWidths_data();
    void addressOfBothWidths();
    void hostileFrameIsRefused_data();
    void hostileFrameIsRefused();
    void brokenTextIsAnEmptyReport_data();
    void brokenTextIsAnEmptyReport();
    void reportKind_data();
    void reportKind();
    void reportKeepsItsContent();
    void openingTexts_data();
    void openingTexts();
    void requestIsWhatTheServiceTakes();
    void maxOpenTime_data();
    void maxOpenTime();
    void mainStream_data();
    void mainStream();
};

void tst_AvMessage::frameAddressIsExact_data() {
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<quint64>("address");
    QTest::addColumn<unsigned>("width");
    QTest::addColumn<unsigned>("height");
    const auto message = [](const char* data) {
        return QByteArray(R"({"type":"decodevideodata","reqid":7,"data":)") + data + R"(,"w":640,"h":360})";
    };
    QTest::newRow("small") << message("4096") << quint64{4096} << 640U << 360U;
    QTest::newRow("upper half of 32 bits") << message("4026531841") << quint64{4026531841} << 640U << 360U;
    if (sizeof(void*) == 8) {
        QTest::newRow("odd, above 2^53") << message("9007199254740993") << quint64{9007199254740993} << 640U << 360U;
        QTest::newRow("top of user space") << message("140737488355327") << quint64{140737488355327} << 640U << 360U;
        QTest::newRow("2^63 - 1") << message("9223372036854775807") << quint64{9223372036854775807U} << 640U << 360U;
        QTest::newRow("negative") << message("-72057594037927937") << ~quint64{72057594037927936} << 640U << 360U;
    } else {
        QTest::newRow("negative") << message("-2") << quint64{0xFFFFFFFE} << 640U << 360U;
    }
    QTest::newRow("keys in another order, blanks, unknown keys")
        << QByteArray("\n{ \"h\" : 2 , \"x\":{\"type\":\"avclose\"}, \"data\": 64, \"w\":16384, \"type\":"
                      "\"decodevideodata\" }")
        << quint64{64} << 16384U << 2U;
    QTest::newRow("escaped type") << QByteArray(R"({"type":"decode\u0076ideodata","data":8,"w":2,"h":2})")
                                  << quint64{8} << 2U << 2U;
}

void tst_AvMessage::frameAddressIsExact() {
    QFETCH(QByteArray, json);
    QFETCH(quint64, address);
    QFETCH(unsigned, width);
    QFETCH(unsigned, height);
    const AvMessage message = parsed(json);
    const auto* frame = std::get_if<AvFrame>(&message);
    QVERIFY(frame);
    QCOMPARE(quint64{reinterpret_cast<std::uintptr_t>(frame->data)}, address);
    QCOMPARE(frame->size.width, width);
    QCOMPARE(frame->size.height, height);
}

void tst_AvMessage::addressOfBothWidths_data() {
    QTest::addColumn<qint64>("value");
    QTest::addColumn<int>("pointerBytes");
    QTest::addColumn<bool>("taken");
    QTest::addColumn<quint64>("address");
    QTest::newRow("32, plain") << qint64{0x7FFF0000} << 4 << true << quint64{0x7FFF0000};
    QTest::newRow("32, unsigned upper half") << qint64{0xC0000010} << 4 << true << quint64{0xC0000010};
    QTest::newRow("32, signed upper half") << qint64{-1073741808} << 4 << true << quint64{0xC0000010};
    QTest::newRow("32, lowest") << qint64{-2147483648LL} << 4 << true << quint64{0x80000000};
    QTest::newRow("32, highest") << qint64{0xFFFFFFFF} << 4 << true << quint64{0xFFFFFFFF};
    QTest::newRow("32, below") << qint64{-2147483649LL} << 4 << false << quint64{};
    QTest::newRow("32, above") << qint64{0x100000000} << 4 << false << quint64{};
    QTest::newRow("64, plain") << qint64{0x7F12345678901} << 8 << true << quint64{0x7F12345678901};
    QTest::newRow("64, signed upper half") << qint64{-1} << 8 << true << ~quint64{0};
}

void tst_AvMessage::addressOfBothWidths() {
    QFETCH(qint64, value);
    QFETCH(int, pointerBytes);
    QFETCH(bool, taken);
    QFETCH(quint64, address);
    const auto result = addressFromInteger(value, static_cast<std::size_t>(pointerBytes));
    QCOMPARE(result.has_value(), taken);
    QCOMPARE(quint64{result.value_or(0)}, address);
}

void tst_AvMessage::hostileFrameIsRefused_data() {
    QTest::addColumn<QByteArray>("fields");
    QTest::newRow("no address") << QByteArray(R"("w":640,"h":360)");
    QTest::newRow("address 0") << QByteArray(R"("data":0,"w":640,"h":360)");
    QTest::newRow("address as text") << QByteArray(R"("data":"4096","w":640,"h":360)");
    QTest::newRow("address with a fraction") << QByteArray(R"("data":4096.5,"w":640,"h":360)");
    QTest::newRow("address beyond 64 bits") << QByteArray(R"("data":99999999999999999999,"w":640,"h":360)");
    QTest::newRow("address as object") << QByteArray(R"("data":{"data":4096},"w":640,"h":360)");
    QTest::newRow("address as truth value") << QByteArray(R"("data":true,"w":640,"h":360)");
    QTest::newRow("no width") << QByteArray(R"("data":4096,"h":360)");
    QTest::newRow("no height") << QByteArray(R"("data":4096,"w":640)");
    QTest::newRow("width 0") << QByteArray(R"("data":4096,"w":0,"h":360)");
    QTest::newRow("height 0") << QByteArray(R"("data":4096,"w":640,"h":0)");
    QTest::newRow("negative height") << QByteArray(R"("data":4096,"w":640,"h":-360)");
    QTest::newRow("odd width") << QByteArray(R"("data":4096,"w":641,"h":360)");
    QTest::newRow("odd height") << QByteArray(R"("data":4096,"w":640,"h":361)");
    QTest::newRow("too wide") << QByteArray(R"("data":4096,"w":16386,"h":2)");
    QTest::newRow("too high") << QByteArray(R"("data":4096,"w":2,"h":16386)");
    QTest::newRow("2^32 + 640") << QByteArray(R"("data":4096,"w":4294967936,"h":360)");
    QTest::newRow("width as text") << QByteArray(R"("data":4096,"w":"640","h":360)");
}

void tst_AvMessage::hostileFrameIsRefused() {
    QFETCH(QByteArray, fields);
    const AvMessage message = parsed(R"({"type":"decodevideodata",)" + fields + "}");
    const auto* refused = std::get_if<AvFrameRefused>(&message);
    QVERIFY(refused);
    QVERIFY(refused->reason.startsWith(QStringLiteral("picture refused: ")));
}

void tst_AvMessage::brokenTextIsAnEmptyReport_data() {
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut") << QByteArray(R"({"type":"decodevideodata","data":40)");
    QTest::newRow("array") << QByteArray(R"([{"type":"avclose"}])");
    QTest::newRow("no JSON") << QByteArray("decodevideodata");
    QTest::newRow("bytes that are no UTF-8") << QByteArray("\xff\xfe{\"type\":\"avopen\"}");
    QTest::newRow("deep") << QByteArray(5000, '[');
}

void tst_AvMessage::brokenTextIsAnEmptyReport() {
    QFETCH(QByteArray, json);
    const AvMessage message = parsed(json);
    const auto* report = std::get_if<AvReportMap>(&message);
    QVERIFY(report);
    QVERIFY(report->isEmpty());
    QCOMPARE(AvReport::fromMap(*report).kind, AvReport::Kind::Other);
}

void tst_AvMessage::reportKind_data() {
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<int>("kind");
    using Kind = AvReport::Kind;
    const auto row = [](const char* name, const char* json, Kind kind) {
        QTest::newRow(name) << QByteArray(json) << static_cast<int>(kind);
    };
    row("state", R"({"type":"avstate","state":1})", Kind::State);
    row("state with a code", R"({"type":"avstate","state":1,"retcode":3})", Kind::State);
    row("open", R"({"type":"avopen","reqid":5})", Kind::Open);
    row("close", R"({"type":"avclose","reqid":5,"retcode":2})", Kind::Close);
    row("close without a code", R"({"type":"avclose","reqid":5})", Kind::Close);
    row("unknown with a code", R"({"type":"urlreq","reqid":5,"retcode":1})", Kind::Close);
    row("unknown with a negative code", R"({"type":"urlreq","reqid":5,"retcode":-1})", Kind::Close);
    row("no type, with a code", R"({"retcode":1})", Kind::Close);
    row("unknown without a code", R"({"type":"urlreq","reqid":5,"retcode":0})", Kind::Other);
    row("type is no text", R"({"type":4,"retcode":0})", Kind::Other);
    row("type in other letters", R"({"type":"AvOpen"})", Kind::Other);
}

void tst_AvMessage::reportKind() {
    QFETCH(QByteArray, json);
    QFETCH(int, kind);
    const AvMessage message = parsed(json);
    const auto* map = std::get_if<AvReportMap>(&message);
    QVERIFY(map);
    QCOMPARE(static_cast<int>(AvReport::fromMap(toGuiMap(*map, QStringLiteral("cam"), 3)).kind), kind);
}

void tst_AvMessage::reportKeepsItsContent() {
    const AvMessage message =
        parsed(R"({"type":"avopen","reqid":12,"contype":"RTSP/TCP","index":99,"DeviceId":"forged",
        "avparam":{"framerate":25,"weidth":1280,"codec":"H264","audiolisten":1}})");
    const auto* map = std::get_if<AvReportMap>(&message);
    QVERIFY(map);
    const AvReport report = AvReport::fromMap(toGuiMap(*map, QStringLiteral("cam-1"), 63));
    QCOMPARE(report.deviceId, QStringLiteral("cam-1"));
    QCOMPARE(report.tileIndex, 63);
    QCOMPARE(report.requestId, 12);
    QCOMPARE(report.connectionType, QStringLiteral("RTSP/TCP"));
    QCOMPARE(report.parameters.size(), 4);
    QCOMPARE(report.parameters.value(QStringLiteral("weidth")).toInt(), 1280);

    const AvMessage wide = parsed(R"({"type":"avclose","reqid":4294967308,"retcode":"no"})");
    const AvReport beyond = AvReport::fromMap(std::get<AvReportMap>(wide));
    QCOMPARE(beyond.requestId, 0); // not 12, which a cut to 32 bits would make of it
    QCOMPARE(beyond.retcode, 0);
}

void tst_AvMessage::openingTexts_data() {
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("text");
    const QString loading = QStringLiteral("正在加载视频数据...");
    QTest::newRow("0") << QByteArray(R"({"type":"avstate","state":0})") << QStringLiteral("正在获取视频信息...");
    QTest::newRow("1") << QByteArray(R"({"type":"avstate","state":1})") << QStringLiteral("正在建立视频连接...");
    QTest::newRow("2") << QByteArray(R"({"type":"avstate","state":2})") << loading;
    QTest::newRow("7") << QByteArray(R"({"type":"avstate","state":7})") << loading;
    QTest::newRow("-1") << QByteArray(R"({"type":"avstate","state":-1})") << loading;
    QTest::newRow("none") << QByteArray(R"({"type":"avstate"})") << loading;
    QTest::newRow("no number") << QByteArray(R"({"type":"avstate","state":"x"})") << loading;
    QTest::newRow("2^32") << QByteArray(R"({"type":"avstate","state":4294967296})") << loading;
}

void tst_AvMessage::openingTexts() {
    QFETCH(QByteArray, json);
    QFETCH(QString, text);
    QCOMPARE(openingText(AvReport::fromMap(std::get<AvReportMap>(parsed(json))).state), text);
}

void tst_AvMessage::requestIsWhatTheServiceTakes() {
    const QVariantMap request = openVideoRequest(QStringLiteral("门口\"cam"), true, QStringLiteral("30"));
    const QByteArray json = QJsonDocument(QJsonObject::fromVariantMap(request)).toJson(QJsonDocument::Compact);
    const QByteArray wanted = R"({"avreq":{"hd":true,"ipncid":"门口\"cam","maxopentime":30,"recvdecodeavdata":true,)"
                              R"("reqtype":"avreq"}})";
    QCOMPARE(json, wanted);
}

void tst_AvMessage::maxOpenTime_data() {
    QTest::addColumn<QString>("setting");
    QTest::addColumn<int>("minutes");
    QTest::newRow("empty") << QString() << 0;
    QTest::newRow("unlimited") << QStringLiteral("不限") << 0;
    QTest::newRow("number") << QStringLiteral("10") << 10;
    QTest::newRow("decimal in spite of the 0") << QStringLiteral("010") << 10;
    QTest::newRow("no number") << QStringLiteral("ten") << 0;
}

void tst_AvMessage::maxOpenTime() {
    QFETCH(QString, setting);
    QTEST(corvanta::video::maxOpenTime(setting), "minutes");
}

void tst_AvMessage::mainStream_data() {
    QTest::addColumn<int>("zoom");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("tile");
    QTest::addColumn<bool>("main");
    QTest::newRow("tile 0 of 1 x 1") << -1 << 1 << 1 << 0 << true;
    QTest::newRow("tile 1 of 1 x 1") << -1 << 1 << 1 << 1 << false;
    QTest::newRow("tile 0 of 2 x 2") << -1 << 2 << 2 << 0 << false;
    QTest::newRow("tile 0 of 1 x 2") << -1 << 1 << 2 << 0 << false;
    QTest::newRow("shown alone") << 5 << 3 << 3 << 5 << true;
    QTest::newRow("another is shown alone") << 5 << 3 << 3 << 0 << false;
    QTest::newRow("no tile") << -1 << 8 << 8 << -1 << false;
}

void tst_AvMessage::mainStream() {
    QFETCH(int, zoom);
    QFETCH(int, rows);
    QFETCH(int, columns);
    QFETCH(int, tile);
    QTEST(wantsMainStream(zoom, rows, columns, tile), "main");
}

QTEST_GUILESS_MAIN(tst_AvMessage)
#include "tst_AvMessage.moc"
