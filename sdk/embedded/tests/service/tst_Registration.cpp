#include "TestSdk.h"
#include "service/VerificationCodes.h"
#include "world/FirstWorld.h"

#include <QtTest>

#include <filesystem>
#include <set>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// Numbers from their registration to a forgotten password and a computer that is unbound and bound again.
class tst_Registration final : public QObject {
    Q_OBJECT

private slots:
    void registration();
    void codeRequests_data();
    void codeRequests();
    void passwords_data();
    void passwords();
    void submissionNeedsItsOwnCode();
    void checkedCodeServesOnce();
    void checkedCodeExpires();
    void codeExpires();
    void fiveWrongTriesUseACodeUp();
    void newCodeReplacesTheOneBefore();
    void oneMessageAMinuteAndTenADay();
    void limitsHoldOverARestart();
    void clockThatIsSetBackLocksNobodyOut();
    void recovery();
    void ownSessionOutlivesAChangeOfPassword();
    void unbindAndRebind();
    void hostileInput_data();
    void hostileInput();
    void codesAreNotReadable();
    void outboxThatCannotBeWrittenRefuses();
};

namespace {

constexpr auto newPhone = "13512345678";
const Json newNumber = {{"countrycode", "86"}, {"phonenumber", newPhone}};

Json check(TestSdk& sdk, const std::string& phone, const std::string& code) {
    return sdk.askAccount("checkmessagecode", {{"phonenumber", phone}, {"checkcode", code}});
}

/// Six other digits.
std::string otherThan(const std::string& code) {
    return code == "123456" ? "654321" : "123456";
}

int submitted(TestSdk& sdk, const std::string& operation, const std::string& phone, const std::string& password) {
    return codeOf(sdk.askAccount(operation, {{"phonenumber", phone}, {"phonepassword", password}}));
}

/// Asks for a code of this kind and enters it.
void obtain(TestSdk& sdk, const std::string& operation, const std::string& phone) {
    QCOMPARE(codeOf(sdk.askAccount(operation, {{"countrycode", "86"}, {"phonenumber", phone}})), 0);
    QCOMPARE(codeOf(check(sdk, phone, sdk.codeFor(phone))), 0);
}

} // namespace

void tst_Registration::registration() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(sdk.askAccount("checkphone", {{"phonenumber", newPhone}}).at("resp").at("registered"), Json(false));
    QCOMPARE(codeOf(sdk.askAccount("logincode", newNumber)), 0);
    const Json sms = sdk.client.waitForType("sms");
    const std::string code = sdk.codeFor(newPhone);
    QCOMPARE(code.size(), std::size_t{6});
    QCOMPARE(sms.at("phonenumber"), Json(newPhone));
    QCOMPARE(sms.at("text"), Json("【监控平台】验证码：" + code + "，60秒内有效，请勿告诉他人。"));
    QCOMPARE(sms.at("time").get<std::string>().size(), std::string("yyyy-MM-dd hh:mm:ss").size());
    QCOMPARE(codeOf(check(sdk, newPhone, otherThan(code))), 14);
    QCOMPARE(codeOf(check(sdk, newPhone, code)), 0);
    QCOMPARE(submitted(sdk, "loginphone", newPhone, "secret-1234"), 0);
    QCOMPARE(sdk.askAccount("checkphone", {{"phonenumber", newPhone}}).at("resp").at("registered"), Json(true));
    QCOMPARE(codeOf(sdk.askAccount("logincode", newNumber)), 13);
    const Json signedIn = sdk.askAccount("logon", {{"phonenumber", newPhone}, {"phonepassword", "secret-1234"}});
    QCOMPARE(codeOf(signedIn), 0);
    const Json list = sdk.document("ipnclist");
    QVERIFY(list.at("ipnclist").empty());
    QCOMPARE(list.at("group").size(), std::size_t{1});
    QCOMPARE(list.at("group").at(0).at("name"), Json("默认分组"));
    QCOMPARE(sdk.askAccount("getpersioninfo").at("resp").at("persioninfo").at("hashead"), Json(false));
}

void tst_Registration::codeRequests_data() {
    QTest::addColumn<QByteArray>("operation");
    QTest::addColumn<QByteArray>("params");
    QTest::addColumn<int>("code");
    for (const char* country : {"86", "852", "853", "886", "1"})
        QTest::newRow(country) << QByteArray("logincode")
                               << R"({"phonenumber":"61234567","countrycode":")" + QByteArray(country) + "\"}" << 0;
    QTest::newRow("no country") << QByteArray("logincode") << QByteArray(R"({"phonenumber":"13512345678"})") << 2;
    QTest::newRow("another country") << QByteArray("logincode")
                                     << QByteArray(R"({"phonenumber":"13512345678","countrycode":"7"})") << 2;
    QTest::newRow("a country of a number")
        << QByteArray("logincode") << QByteArray(R"({"phonenumber":"13512345678","countrycode":86})") << 2;
    QTest::newRow("registered") << QByteArray("logincode")
                                << QByteArray(R"({"phonenumber":"13800138000","countrycode":"86"})") << 13;
    for (const char* operation : {"changepascode", "rebindcode"}) {
        QTest::addRow("%s, registered", operation)
            << QByteArray(operation) << QByteArray(R"({"phonenumber":"13800138000"})") << 0;
        QTest::addRow("%s, not registered", operation)
            << QByteArray(operation) << QByteArray(R"({"phonenumber":"13512345678"})") << 4;
    }
}

void tst_Registration::codeRequests() {
    QFETCH(QByteArray, operation);
    QFETCH(QByteArray, params);
    QFETCH(int, code);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(codeOf(sdk.askAccount(operation.toStdString(), Json::parse(params.toStdString()))), code);
    sdk.settle();
    QCOMPARE(sdk.client.ofType("sms").size(), code == 0 ? std::size_t{1} : std::size_t{0});
    QCOMPARE(std::filesystem::exists(sdk.path("service/outbox.jsonl")), code == 0);
}

void tst_Registration::passwords_data() {
    QTest::addColumn<QByteArray>("password");
    QTest::addColumn<int>("code");
    QTest::newRow("7 characters") << QByteArray("1234567") << 2;
    QTest::newRow("8 characters") << QByteArray("12345678") << 0;
    QTest::newRow("16 characters") << QByteArray("1234567890123456") << 0;
    QTest::newRow("17 characters") << QByteArray("12345678901234567") << 2;
    QTest::newRow("16 characters of four bytes") << QByteArray("😀").repeated(16) << 0;
    QTest::newRow("17 characters of four bytes") << QByteArray("😀").repeated(17) << 2;
    QTest::newRow("7 characters of three bytes") << QByteArray("密").repeated(7) << 2;
    QTest::newRow("quotes and blanks") << QByteArray(R"(" ' ; -- <)") << 0;
    QTest::newRow("a line feed") << QByteArray("12345678\n") << 2;
    QTest::newRow("NUL") << QByteArray("1234567\0x", 9) << 2;
    QTest::newRow("empty") << QByteArray("") << 2;
}

void tst_Registration::passwords() {
    QFETCH(QByteArray, password);
    QFETCH(int, code);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    obtain(sdk, "logincode", newPhone);
    QCOMPARE(submitted(sdk, "loginphone", newPhone, password.toStdString()), code);
    const Json signedIn =
        sdk.askAccount("logon", {{"phonenumber", newPhone}, {"phonepassword", password.toStdString()}});
    QCOMPARE(codeOf(signedIn) == 0, code == 0);
}

void tst_Registration::submissionNeedsItsOwnCode() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(submitted(sdk, "loginphone", newPhone, "secret-1234"), 15);
    QCOMPARE(submitted(sdk, "changephonepas", world::firstPhone, "secret-1234"), 15);
    QCOMPARE(codeOf(sdk.askAccount("rebindphone", {{"phonenumber", world::firstPhone}, {"phonetype", "pc"}})), 15);
    // A code for binding opens nothing else, and nothing of another number.
    obtain(sdk, "rebindcode", world::firstPhone);
    QCOMPARE(submitted(sdk, "changephonepas", world::firstPhone, "secret-1234"), 15);
    QCOMPARE(codeOf(sdk.askAccount("rebindphone", {{"phonenumber", "13900139000"}, {"phonetype", "pc"}})), 15);
    // A code that was sent and not entered opens nothing either.
    QCOMPARE(codeOf(sdk.askAccount("logincode", newNumber)), 0);
    QCOMPARE(submitted(sdk, "loginphone", newPhone, "secret-1234"), 15);
    QVERIFY(sdk.signIn());
}

void tst_Registration::checkedCodeServesOnce() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    obtain(sdk, "changepascode", world::firstPhone);
    // Who goes back a page may enter the code again while it is valid.
    QCOMPARE(codeOf(check(sdk, world::firstPhone, sdk.codeFor(world::firstPhone))), 0);
    // A refused password uses nothing up.
    QCOMPARE(submitted(sdk, "changephonepas", world::firstPhone, "short"), 2);
    QCOMPARE(submitted(sdk, "changephonepas", world::firstPhone, "secret-1234"), 0);
    QCOMPARE(submitted(sdk, "changephonepas", world::firstPhone, "secret-5678"), 15);
    QCOMPARE(codeOf(check(sdk, world::firstPhone, sdk.codeFor(world::firstPhone))), 15);
}

void tst_Registration::checkedCodeExpires() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    obtain(sdk, "changepascode", world::firstPhone);
    sdk.clock->advance(std::chrono::seconds(599));
    obtain(sdk, "logincode", newPhone);
    sdk.clock->advance(std::chrono::seconds(1));
    QCOMPARE(submitted(sdk, "changephonepas", world::firstPhone, "secret-1234"), 15);
    QCOMPARE(submitted(sdk, "loginphone", newPhone, "secret-1234"), 0);
}

void tst_Registration::codeExpires() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(codeOf(sdk.askAccount("logincode", newNumber)), 0);
    sdk.clock->advance(std::chrono::seconds(59));
    QCOMPARE(codeOf(check(sdk, newPhone, otherThan(sdk.codeFor(newPhone)))), 14);
    sdk.clock->advance(std::chrono::seconds(1));
    QCOMPARE(codeOf(check(sdk, newPhone, sdk.codeFor(newPhone))), 15);
    QCOMPARE(codeOf(check(sdk, "13500000000", "123456")), 15); // none was asked for
}

void tst_Registration::fiveWrongTriesUseACodeUp() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(codeOf(sdk.askAccount("logincode", newNumber)), 0);
    const std::string code = sdk.codeFor(newPhone);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(codeOf(check(sdk, newPhone, otherThan(code))), 14);
    // Tries are remembered over a restart.
    sdk.runtime.cleanup();
    QCOMPARE(sdk.start(), emSuccess);
    for (int i = 0; i < 2; ++i)
        QCOMPARE(codeOf(check(sdk, newPhone, otherThan(code))), 14);
    QCOMPARE(codeOf(check(sdk, newPhone, code)), 15);
    QCOMPARE(submitted(sdk, "loginphone", newPhone, "secret-1234"), 15);
}

void tst_Registration::newCodeReplacesTheOneBefore() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(codeOf(sdk.askAccount("changepascode", {{"phonenumber", world::firstPhone}})), 0);
    const std::string first = sdk.codeFor(world::firstPhone);
    sdk.clock->advance(std::chrono::seconds(60));
    QCOMPARE(codeOf(sdk.askAccount("rebindcode", {{"phonenumber", world::firstPhone}})), 0);
    const std::string second = sdk.codeFor(world::firstPhone);
    if (first != second)
        QCOMPARE(codeOf(check(sdk, world::firstPhone, first)), 14);
    QCOMPARE(codeOf(check(sdk, world::firstPhone, second)), 0);
}

void tst_Registration::oneMessageAMinuteAndTenADay() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    std::set<std::string> codes;
    for (int i = 0; i < service::VerificationCodes::mostADay; ++i) {
        QCOMPARE(codeOf(sdk.askAccount("logincode", newNumber)), 0);
        codes.insert(sdk.codeFor(newPhone));
        sdk.clock->advance(std::chrono::seconds(59));
        QCOMPARE(codeOf(sdk.askAccount("logincode", newNumber)), 22);
        sdk.clock->advance(std::chrono::seconds(1));
    }
    QVERIFY(codes.size() > 5);
    QCOMPARE(codeOf(sdk.askAccount("logincode", newNumber)), 22);
    // Another number has its own.
    QCOMPARE(codeOf(sdk.askAccount("logincode", {{"countrycode", "1"}, {"phonenumber", "13500000000"}})), 0);
    // A day after the first of the ten there is room for one.
    sdk.clock->advance(std::chrono::hours(24) - std::chrono::seconds(600));
    QCOMPARE(codeOf(sdk.askAccount("logincode", newNumber)), 0);
    QCOMPARE(codeOf(sdk.askAccount("logincode", newNumber)), 22);
}

void tst_Registration::limitsHoldOverARestart() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(codeOf(sdk.askAccount("logincode", newNumber)), 0);
    sdk.runtime.cleanup();
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(codeOf(sdk.askAccount("logincode", newNumber)), 22);
    // So does the code.
    QCOMPARE(codeOf(check(sdk, newPhone, sdk.codeFor(newPhone))), 0);
}

void tst_Registration::clockThatIsSetBackLocksNobodyOut() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    sdk.clock->advance(std::chrono::hours(24 * 365));
    QCOMPARE(codeOf(sdk.askAccount("logincode", newNumber)), 0);
    sdk.clock->advance(-std::chrono::hours(24 * 365));
    QCOMPARE(codeOf(check(sdk, newPhone, sdk.codeFor(newPhone))), 15);
    QCOMPARE(codeOf(sdk.askAccount("logincode", newNumber)), 0);
}

void tst_Registration::recovery() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    obtain(sdk, "changepascode", world::firstPhone);
    QCOMPARE(submitted(sdk, "changephonepas", world::firstPhone, "neues-Wort"), 0);
    QVERIFY(!sdk.signIn());
    const Json signedIn =
        sdk.askAccount("logon", {{"phonenumber", world::firstPhone}, {"phonepassword", "neues-Wort"}});
    QCOMPARE(codeOf(signedIn), 0);
    QCOMPARE(sdk.document("ipnclist").at("ipnclist").size(), std::size_t{72});
}

void tst_Registration::ownSessionOutlivesAChangeOfPassword() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    obtain(sdk, "changepascode", world::firstPhone);
    QCOMPARE(submitted(sdk, "changephonepas", world::firstPhone, "neues-Wort"), 0);
    QCOMPARE(codeOf(sdk.askAccount("getpersioninfo")), 0);
    sdk.settle();
    QVERIFY(sdk.client.ofType("logout").empty());
    // Somebody else's password ends nothing here.
    obtain(sdk, "changepascode", "13900139000");
    QCOMPARE(submitted(sdk, "changephonepas", "13900139000", "neues-Wort"), 0);
    QCOMPARE(codeOf(sdk.askAccount("getpersioninfo")), 0);
}

void tst_Registration::unbindAndRebind() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(codeOf(sdk.askAccount("unbindphonemode", {{"phonetype", "phone"}})), 2);
    QCOMPARE(codeOf(sdk.askAccount("unbindphonemode", {{"phonetype", "pc"}})), 0);
    QCOMPARE(sdk.client.waitForType("logout").at("reason"), Json("unbind"));
    QCOMPARE(codeOf(sdk.askAccount("getpersioninfo")), 3);
    QVERIFY(sdk.document("ipnclist").at("ipnclist").empty());
    const auto logon = [&sdk](const char* password) {
        return codeOf(sdk.askAccount("logon", {{"phonenumber", world::firstPhone}, {"phonepassword", password}}));
    };
    QCOMPARE(logon(world::firstPassword), 12);
    QCOMPARE(logon("wrong"), 5); // who does not know the password learns nothing
    QVERIFY(sdk.signIn("13900139000"));
    sdk.runtime.cleanup();
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(logon(world::firstPassword), 12);
    // Another computer is not concerned.
    TestSdk other;
    other.joinStoreOf(sdk);
    QCOMPARE(other.start(), emSuccess);
    QVERIFY(other.signIn());
    obtain(sdk, "rebindcode", world::firstPhone);
    QCOMPARE(codeOf(sdk.askAccount("rebindphone", {{"phonenumber", world::firstPhone}, {"phonetype", "pc"}})), 0);
    QCOMPARE(logon(world::firstPassword), 0);
}

void tst_Registration::hostileInput_data() {
    QTest::addColumn<QByteArray>("operation");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("value"); // JSON
    const std::vector<std::pair<const char*, QByteArray>> values = {
        {"40 digits", '"' + QByteArray(40, '1') + '"'},
        {"10,000 characters", '"' + QByteArray(10000, 'x') + '"'},
        {"emoji", R"("😀😀😀😀😀😀😀😀")"},
        {"quotes", R"("1' or '1'='1")"},
        {"markup", R"("<b>13512345678</b>")"},
        {"letters", R"("1351234567a")"},
        {"blank", R"(" 13512345678")"},
        {"NUL", R"("13512345678\u0000")"},
        {"wide digits", R"("１３５１２３４５６７８")"},
        {"number", "13512345678"},
        {"huge number", "1e400"},
        {"flag", "true"},
        {"null", "null"},
        {"list", R"(["13512345678"])"},
        {"object", R"({"a":1})"},
        {"empty", R"("")"},
    };
    for (const char* operation : {"checkphone", "logincode", "changepascode", "rebindcode", "checkmessagecode",
                                  "loginphone", "changephonepas", "rebindphone", "logon"}) {
        for (const auto& [name, value] : values)
            QTest::addRow("%s, number: %s", operation, name)
                << QByteArray(operation) << QByteArray("phonenumber") << value;
        QTest::addRow("%s, number missing", operation)
            << QByteArray(operation) << QByteArray("phonenumber") << QByteArray();
    }
    for (const char* operation : {"loginphone", "changephonepas"}) {
        for (const char* value : {"5", "null", "[]", "{}", "true"})
            QTest::addRow("%s, password: %s", operation, value)
                << QByteArray(operation) << QByteArray("phonepassword") << QByteArray(value);
    }
    for (const char* value : {"123456", "null", "[\"123456\"]", "{}", "true"})
        QTest::addRow("code: %s", value)
            << QByteArray("checkmessagecode") << QByteArray("checkcode") << QByteArray(value);
}

void tst_Registration::hostileInput() {
    QFETCH(QByteArray, operation);
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, value);
    static TestSdk sdk;
    static const emReturnValue started = sdk.start();
    QCOMPARE(started, emSuccess);
    Json params = {{"phonenumber", newPhone},
                   {"countrycode", "86"},
                   {"phonepassword", "secret-1234"},
                   {"checkcode", "123456"},
                   {"phonetype", "pc"}};
    std::string text = toText(params);
    // Written by hand: not all of it can be had as a value.
    params.erase(key.toStdString());
    text = toText(params);
    if (!value.isEmpty())
        text.insert(1, "\"" + key.toStdString() + "\":" + value.toStdString() + ",");
    const std::string message =
        R"({"reqtype":"urlreq","urlreq":{"clienttype":")" + operation.toStdString() + R"(","params":)" + text + "}}";
    Received received;
    int id = 0;
    sdk.runtime.requestMessage(message, id, [&received](const std::string& response) { received.add(response); });
    if (id == 0)
        return; // not even JSON
    const Json response = received.waitForType("urlreq");
    QCOMPARE(codeOf(response), 2);
    QCOMPARE(response.at("resp").at("errcode"), Json("(bad request)"));
    QVERIFY(sdk.client.ofType("sms").empty());
}

void tst_Registration::codesAreNotReadable() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(codeOf(sdk.askAccount("logincode", newNumber)), 0);
    const std::string code = sdk.codeFor(newPhone);
    sdk.runtime.cleanup();
    QCOMPARE(sdk.sqlite("select count(*) from codes"), std::string("1"));
    QCOMPARE(sdk.sqlite("select count(*) from codes where hash like '%" + code + "%'"), std::string("0"));
#ifndef Q_OS_WIN // the user's own folder is what keeps others out there
    // What stands in the clear belongs to the owner alone.
    for (const char* file : {"service/outbox.jsonl", "service/service.db.key", "config/computer.id"})
        QCOMPARE(std::filesystem::status(sdk.path(file)).permissions(),
                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
#endif
}

void tst_Registration::outboxThatCannotBeWrittenRefuses() {
#ifdef Q_OS_WIN
    QSKIP("only an administrator makes links there");
#endif
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    sdk.write("elsewhere", "");
    std::filesystem::create_symlink(sdk.path("elsewhere"), sdk.path("service/outbox.jsonl"));
    QCOMPARE(codeOf(sdk.askAccount("logincode", newNumber)), 21);
    QCOMPARE(std::filesystem::file_size(sdk.path("elsewhere")), std::uintmax_t{0});
    std::filesystem::remove(sdk.path("service/outbox.jsonl"));
    // The number's minute was not used up.
    QCOMPARE(codeOf(sdk.askAccount("logincode", newNumber)), 0);
}

QTEST_APPLESS_MAIN(tst_Registration)
#include "tst_Registration.moc"
