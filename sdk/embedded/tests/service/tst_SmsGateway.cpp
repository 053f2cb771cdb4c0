#include "TestSdk.h"

#include <QProcess>
#include <QtTest>

#include <filesystem>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// Text messages that leave by HTTP, judged by the server that takes them.
class tst_SmsGateway final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void messageArrives();
    void answers_data();
    void answers();
    void addressesWithAMistake_data();
    void addressesWithAMistake();
    void othersGoOnMeanwhile();

private:
    /// The next request that the server has seen.
    Json seen();
    void configure(TestSdk& sdk, const std::string& url, const std::string& token = {}) const;
    [[nodiscard]] std::string url(const std::string& path) const {
        return "http://127.0.0.1:" + port_.toStdString() + path;
    }

    QProcess server_;
    QString port_;
};

namespace {

const Json number = {{"countrycode", "852"}, {"phonenumber", "61234567"}};

} // namespace

void tst_SmsGateway::init() {
    // Nothing between the test and its server.
    for (const char* name : {"http_proxy", "https_proxy", "all_proxy", "HTTPS_PROXY", "ALL_PROXY"})
        qunsetenv(name);
    server_.start(QStringLiteral("python3"), {QStringLiteral(SMS_GATEWAY)});
    QVERIFY(server_.waitForStarted(60000));
    while (!server_.canReadLine())
        QVERIFY(server_.waitForReadyRead(60000));
    port_ = QString::fromUtf8(server_.readLine()).trimmed();
}

void tst_SmsGateway::cleanup() {
    server_.closeWriteChannel();
    QVERIFY(server_.waitForFinished(60000));
}

Json tst_SmsGateway::seen() {
    while (!server_.canReadLine()) {
        if (!server_.waitForReadyRead(60000))
            return {};
    }
    return Json::parse(server_.readLine().toStdString());
}

void tst_SmsGateway::configure(TestSdk& sdk, const std::string& url, const std::string& token) const {
    Json gateway = {{"url", url}};
    if (!token.empty())
        gateway["token"] = token;
    sdk.write("config/service.json", toText({{"smsgateway", gateway}}));
}

void tst_SmsGateway::messageArrives() {
    TestSdk sdk;
    configure(sdk, url("/200"), "t0ken \"quoted\"");
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(codeOf(sdk.askAccount("logincode", number)), 0);
    const Json request = seen();
    QCOMPARE(request.at("type"), Json("application/json"));
    QCOMPARE(request.at("authorization"), Json("Bearer t0ken \"quoted\""));
    const Json body = Json::parse(request.at("body").get<std::string>());
    QCOMPARE(body.size(), std::size_t{3});
    QCOMPARE(body.at("phonenumber"), Json("61234567"));
    QCOMPARE(body.at("countrycode"), Json("852"));
    const QRegularExpression text(QStringLiteral("^【监控平台】验证码：(\\d{6})，60秒内有效，请勿告诉他人。$"));
    const auto match = text.match(QString::fromStdString(body.at("text").get<std::string>()));
    QVERIFY(match.hasMatch());
    QCOMPARE(codeOf(sdk.askAccount("checkmessagecode",
                                   {{"phonenumber", "61234567"}, {"checkcode", match.captured(1).toStdString()}})),
             0);
    // The account is written to under its own country later on.
    QCOMPARE(codeOf(sdk.askAccount("loginphone", {{"phonenumber", "61234567"}, {"phonepassword", "secret-1234"}})),
             0);
    sdk.clock->advance(std::chrono::seconds(60));
    QCOMPARE(codeOf(sdk.askAccount("changepascode", {{"phonenumber", "61234567"}})), 0);
    QCOMPARE(Json::parse(seen().at("body").get<std::string>()).at("countrycode"), Json("852"));
    // Nothing is shown here, and nothing kept.
    sdk.settle();
    QVERIFY(sdk.client.ofType("sms").empty());
    QVERIFY(!std::filesystem::exists(sdk.path("service/outbox.jsonl")));
}

void tst_SmsGateway::answers_data() {
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<int>("code");
    QTest::newRow("taken") << QByteArray("/202") << 0;
    QTest::newRow("without content") << QByteArray("/204") << 0;
    QTest::newRow("server error") << QByteArray("/500") << 21;
    QTest::newRow("not allowed") << QByteArray("/401") << 21;
    QTest::newRow("redirected") << QByteArray("/redirect") << 21;
    QTest::newRow("not HTTP") << QByteArray("/garbage") << 21;
    QTest::newRow("cut off") << QByteArray("/cut") << 21;
    QTest::newRow("silence") << QByteArray("/hang") << 21;
}

void tst_SmsGateway::answers() {
    QFETCH(QByteArray, path);
    QFETCH(int, code);
    TestSdk sdk;
    configure(sdk, url(path.toStdString()));
    QCOMPARE(sdk.start(), emSuccess);
    const Json response = sdk.askAccount("logincode", number);
    QCOMPARE(codeOf(response), code);
    QCOMPARE(response.at("clienttype"), Json("logincode"));
    QCOMPARE(seen().at("path"), Json(path.toStdString()));
    if (path == "/hang")
        return;
    // A message that was not taken does not count.
    QCOMPARE(codeOf(sdk.askAccount("logincode", number)), code == 0 ? 22 : 21);
    if (code != 0) {
        QCOMPARE(seen().at("path"), Json(path.toStdString())); // and no other: nothing was followed
        QCOMPARE(codeOf(sdk.askAccount("checkmessagecode", {{"phonenumber", "61234567"}, {"checkcode", "000000"}})),
                 15);
    }
}

void tst_SmsGateway::addressesWithAMistake_data() {
    QTest::addColumn<QByteArray>("gateway");
    QTest::addColumn<bool>("noticed");
    QTest::newRow("no object") << QByteArray("5") << true;
    QTest::newRow("no address") << QByteArray("{}") << true;
    QTest::newRow("a file") << QByteArray(R"({"url":"file:///etc/passwd"})") << true;
    QTest::newRow("no host") << QByteArray(R"({"url":"http:///x"})") << true;
    QTest::newRow("a line feed in the token")
        << QByteArray(R"({"url":"http://127.0.0.1/","token":"a\nb: c"})") << true;
    QTest::newRow("nobody listens") << QByteArray(R"({"url":"http://127.0.0.1:1/x"})") << false;
}

void tst_SmsGateway::addressesWithAMistake() {
    QFETCH(QByteArray, gateway);
    QFETCH(bool, noticed);
    TestSdk sdk;
    sdk.write("config/service.json", "{\"smsgateway\": " + gateway.toStdString() + "}");
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(codeOf(sdk.askAccount("logincode", number)), 21);
    sdk.settle();
    QCOMPARE(sdk.client.ofType("servicenotice").size(), noticed ? std::size_t{1} : std::size_t{0});
    // A code that was meant for a phone is not shown instead.
    QVERIFY(sdk.client.ofType("sms").empty());
    QVERIFY(!std::filesystem::exists(sdk.path("service/outbox.jsonl")));
}

void tst_SmsGateway::othersGoOnMeanwhile() {
    Received answered;
    TestSdk sdk;
    configure(sdk, url("/hang"));
    QCOMPARE(sdk.start(), emSuccess);
    int id = 0;
    sdk.runtime.requestMessage(
        toText({{"reqtype", "urlreq"}, {"urlreq", {{"clienttype", "logincode"}, {"params", number}}}}), id,
        [&answered](const std::string& text) { answered.add(text); });
    QCOMPARE(seen().at("path"), Json("/hang"));
    QVERIFY(sdk.signIn());
    QCOMPARE(codeOf(sdk.askAccount("logincode", number)), 22); // its minute is taken for the time being
    QVERIFY(answered.all().empty());
    // A clean-up does not wait for the gateway's answer, and none comes after it.
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
    QVERIFY(answered.all().empty());
}

QTEST_APPLESS_MAIN(tst_SmsGateway)
#include "tst_SmsGateway.moc"
