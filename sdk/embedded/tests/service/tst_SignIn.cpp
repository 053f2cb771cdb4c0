#include "TestSdk.h"
#include "service/PasswordHasher.h"
#include "service/SignInGuard.h"
#include "world/FirstWorld.h"

#include <QtTest>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// Signing in and out, and what slows guessing down.
class tst_SignIn final : public QObject {
    Q_OBJECT

private slots:
    void refusals_data();
    void refusals();
    void wrongPasswordsAreSlowedDown();
    void failuresOfOneNumberDoNotHinderAnother();
    void waitGrowsAndEnds();
    void signInAndOut();
    void commandSignsInToo();
    void anotherAccountTakesOver();
    void firstAccountIsToldUntilSomebodySignedIn();
    void hashesDifferAndVerify();
};

namespace {

Json logon(TestSdk& sdk, const Json& phone, const Json& password) {
    return sdk.askAccount("logon", {{"phonenumber", phone}, {"phonepassword", password}});
}

} // namespace

void tst_SignIn::refusals_data() {
    QTest::addColumn<QByteArray>("params");
    QTest::addColumn<int>("code");
    QTest::newRow("wrong password") << QByteArray(R"({"phonenumber":"13800138000","phonepassword":"x"})") << 5;
    QTest::newRow("empty password") << QByteArray(R"({"phonenumber":"13800138000","phonepassword":""})") << 5;
    QTest::newRow("unknown number") << QByteArray(R"({"phonenumber":"13000000000","phonepassword":"corvanta-8000"})")
                                    << 5;
    QTest::newRow("the hash itself") << QByteArray(R"({"phonenumber":"13800138000","phonepassword":"$argon2id$"})")
                                     << 5;
    QTest::newRow("no password") << QByteArray(R"({"phonenumber":"13800138000"})") << 2;
    QTest::newRow("number is a number") << QByteArray(R"({"phonenumber":13800138000,"phonepassword":"x"})") << 2;
    QTest::newRow("number with quotes") << QByteArray(R"({"phonenumber":"1' or '1'='1","phonepassword":"x"})") << 2;
    QTest::newRow("overlong password") << QByteArray(R"({"phonenumber":"13800138000","phonepassword":")" +
                                                     QByteArray(5000, 'x') + "\"}")
                                       << 2;
    QTest::newRow("nothing") << QByteArray("{}") << 2;
}

void tst_SignIn::refusals() {
    QFETCH(QByteArray, params);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    const Json response = sdk.askAccount("logon", Json::parse(params.toStdString()));
    QTEST(static_cast<int>(integerAt(response, "retcode").value_or(-1)), "code");
    QCOMPARE(response.at("type"), Json("urlreq"));
    QCOMPARE(response.at("clienttype"), Json("logon"));
    QCOMPARE(response.at("resp").at("state"), Json("error"));
    QCOMPARE(sdk.askAccount("getpersioninfo").at("retcode"), Json(3));
    QVERIFY(sdk.client.ofType("freshlist").empty());
}

void tst_SignIn::wrongPasswordsAreSlowedDown() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    for (int i = 0; i < service::SignInGuard::freeFailures; ++i)
        QCOMPARE(logon(sdk, world::firstPhone, "wrong").at("retcode"), Json(5));
    // The right password has to wait too, or the refusal would tell that it is the right one.
    const Json refused = logon(sdk, world::firstPhone, world::firstPassword);
    QCOMPARE(refused.at("retcode"), Json(11));
    QCOMPARE(refused.at("resp").at("errcode"), Json("(try later)"));
    sdk.clock->advance(service::SignInGuard::firstWait);
    QVERIFY(sdk.signIn());
    QCOMPARE(logon(sdk, world::firstPhone, "wrong").at("retcode"), Json(5)); // counted anew
}

void tst_SignIn::failuresOfOneNumberDoNotHinderAnother() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    for (int i = 0; i < 8; ++i)
        logon(sdk, "13000000000", "wrong");
    QCOMPARE(logon(sdk, "13000000000", "wrong").at("retcode"), Json(11));
    QVERIFY(sdk.signIn());
}

void tst_SignIn::waitGrowsAndEnds() {
    using Guard = service::SignInGuard;
    const ManualClock fixed;
    ManualClock clock;
    Guard guard(clock);
    const auto waitAfterFailure = [&] {
        guard.failed("1");
        std::chrono::seconds waited{0};
        while (!guard.mayTry("1")) {
            clock.advance(std::chrono::seconds(1));
            waited += std::chrono::seconds(1);
        }
        return waited;
    };
    for (int i = 1; i < Guard::freeFailures; ++i)
        QCOMPARE(waitAfterFailure().count(), 0);
    auto expected = Guard::firstWait;
    for (int i = 0; i < 12; ++i) {
        QCOMPARE(waitAfterFailure().count(), expected.count());
        expected = std::min(expected * 2, Guard::longestWait);
    }
    clock.advance(Guard::memory + std::chrono::seconds(1));
    QVERIFY(guard.mayTry("1"));
    QCOMPARE(waitAfterFailure().count(), 0);
}

void tst_SignIn::signInAndOut() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(sdk.document("phoneid").at("phoneid"), Json(""));
    QVERIFY(sdk.signIn());
    QVERIFY(!sdk.client.waitForType("freshlist").is_null());
    QCOMPARE(sdk.document("phoneid").at("phoneid"), Json(world::firstPhone));
    QCOMPARE(sdk.document("ipnclist").at("ipnclist").size(), std::size_t{72});
    QCOMPARE(sdk.command({{"type", "logout"}}).at("retcode"), Json(0));
    QVERIFY(!sdk.client.waitForType("logout").is_null());
    QVERIFY(sdk.document("ipnclist").at("ipnclist").empty());
    QVERIFY(sdk.document("ipnclist").at("group").empty());
    QCOMPARE(sdk.command({{"type", "logout"}}).at("retcode"), Json(3));
    QCOMPARE(sdk.command({{"type", "freshlist"}}).at("retcode"), Json(3));
    QCOMPARE(sdk.client.waitForType("freshlisterror").at("errcode"), Json("(not login)"));
}

void tst_SignIn::commandSignsInToo() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    const Json wrong = sdk.command({{"type", "login"}, {"phonenumber", world::firstPhone}, {"phonepassword", "x"}});
    QCOMPARE(wrong.at("retcode"), Json(5));
    const Json right =
        sdk.command({{"type", "login"}, {"phonenumber", world::firstPhone}, {"phonepassword", world::firstPassword}});
    QCOMPARE(right.at("retcode"), Json(0));
    QVERIFY(!sdk.client.waitForType("freshlist").is_null());
}

void tst_SignIn::anotherAccountTakesOver() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Received video;
    int id = 0;
    sdk.runtime.requestMessage(toText(openMessage("CAM0001")), id, [&](const std::string& text) { video.add(text); });
    QVERIFY(!video.waitForType("avopen").is_null());
    QVERIFY(sdk.signIn("13600136000"));
    // The streams of the one before are closed, and none of its devices is seen.
    QCOMPARE(video.waitForType("avclose").at("retcode"), Json(4));
    sdk.runtime.stopRequest(id); // the callback has left its variables
    QVERIFY(waitFor([&] { return sdk.hub->running == 0; }));
    QCOMPARE(sdk.document("ipnclist").at("ipnclist").size(), std::size_t{3});
    QVERIFY(sdk.device("CAM0002").is_null());
    QCOMPARE(sdk.device("CAM0001").at("authority").at("admin"), Json(false));
}

void tst_SignIn::firstAccountIsToldUntilSomebodySignedIn() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    const Json told = sdk.document("firstaccount");
    QCOMPARE(logon(sdk, told.at("phonenumber"), "wrong").at("retcode"), Json(5));
    QVERIFY(sdk.document("firstaccount") == told);
    QCOMPARE(logon(sdk, told.at("phonenumber"), told.at("phonepassword")).at("retcode"), Json(0));
    QVERIFY(sdk.document("firstaccount").empty());
    sdk.runtime.cleanup();
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.document("firstaccount").empty());
}

void tst_SignIn::hashesDifferAndVerify() {
    const service::PasswordHasher hasher(service::PasswordHasher::least());
    const std::string one = hasher.hash("password");
    QVERIFY(one != hasher.hash("password"));
    QVERIFY(hasher.verify(one, "password"));
    QVERIFY(!hasher.verify(one, "Password"));
    QVERIFY(!hasher.verify("", "password"));
    QVERIFY(!hasher.verify("no hash at all", "password"));
    const std::string withNul("a\0b", 3);
    QVERIFY(!hasher.verify(hasher.hash(withNul), "a"));
}

QTEST_APPLESS_MAIN(tst_SignIn)
#include "tst_SignIn.moc"
