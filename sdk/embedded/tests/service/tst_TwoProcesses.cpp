#include "TestSdk.h"
#include "world/FirstWorld.h"

#include <QtTest>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// Several SDKs on one store, each with folders of its own: what one changes the others see.
class tst_TwoProcesses final : public QObject {
    Q_OBJECT

private slots:
    void sameAccountSeesTheChangeOnce();
    void othersAreLeftInPeace();
    void shareComesAndGoes();
    void streamsEndWithTheRight_data();
    void streamsEndWithTheRight();
    void newPasswordEndsOtherSessions();
    void unbindingEndsTheSessionsOfTheComputer();
    void endedSessionDoesNothingMore();
    void codesAreOfTheStoreAndTheComputer();
    void bothWriteAtOnce();
    void manyFirstStartsAtOnce();
    void cleanUpWhileOthersWrite();
};

namespace {

constexpr auto owner = world::firstPhone;
constexpr auto colleague = "13700137000";

/// Two SDKs that have started, and a video request of the second.
struct Pair {
    Pair() { two.joinStoreOf(one); }
    ~Pair() {
        if (request > 0)
            two.runtime.stopRequest(request);
    }
    Pair(const Pair&) = delete;
    Pair& operator=(const Pair&) = delete;

    bool start(const std::string& first, const std::string& second) {
        const bool started =
            one.start() == emSuccess && two.start() == emSuccess && one.signIn(first) && two.signIn(second);
        settle();
        return started;
    }
    /// What was told until now is forgotten.
    void settle() {
        for (TestSdk* sdk : {&one, &two}) {
            sdk->settle();
            sdk->client.clear();
        }
    }
    bool watch(const std::string& ipncid) {
        two.runtime.requestMessage(toText(openMessage(ipncid)), request,
                                   [this](const std::string& text) { video.add(text); });
        return !video.waitForType("avopen").is_null();
    }

    Received video;
    TestSdk one;
    TestSdk two;
    int request = 0;
};

Json share(const std::string& phone, const std::string& ipncid, bool wanted) {
    return {{"friendphone", phone}, {"ipncid", ipncid}, {"share", wanted}};
}

void setPassword(TestSdk& sdk, const std::string& phone, const std::string& password) {
    QCOMPARE(codeOf(sdk.askAccount("changepascode", {{"phonenumber", phone}})), 0);
    const Json code = {{"phonenumber", phone}, {"checkcode", sdk.codeFor(phone)}};
    QCOMPARE(codeOf(sdk.askAccount("checkmessagecode", code)), 0);
    QCOMPARE(codeOf(sdk.askAccount("changephonepas", {{"phonenumber", phone}, {"phonepassword", password}})), 0);
}

} // namespace

void tst_TwoProcesses::sameAccountSeesTheChangeOnce() {
    Pair pair;
    QVERIFY(pair.start(owner, owner));
    QCOMPARE(codeOf(pair.one.askAccount("addgroup", {{"name", "新"}})), 0);
    QVERIFY(!pair.two.client.waitForType("freshlist").is_null());
    QVERIFY(pair.two.document("ipnclist") == pair.one.document("ipnclist"));
    // Who made it was told by the answer's "freshlist" alone; a request makes either look for itself.
    for (TestSdk* sdk : {&pair.one, &pair.two}) {
        QCOMPARE(codeOf(sdk->askAccount("getfriends")), 0);
        sdk->settle();
        QCOMPARE(sdk->client.ofType("freshlist").size(), std::size_t{1});
    }
}

void tst_TwoProcesses::othersAreLeftInPeace() {
    Pair pair;
    TestSdk third;
    third.joinStoreOf(pair.one);
    QVERIFY(pair.start(owner, owner));
    QCOMPARE(third.start(), emSuccess);
    QVERIFY(third.signIn("13900139000"));
    third.settle();
    third.client.clear();
    QCOMPARE(codeOf(pair.one.askAccount("setfrienddeviceshare", share(colleague, "CAM0001", true))), 0);
    QVERIFY(!pair.two.client.waitForType("freshlist").is_null());
    QCOMPARE(codeOf(third.askAccount("getfriends")), 0);
    third.settle();
    QVERIFY(third.client.all().empty());
    // Another nickname concerns friends alone.
    QCOMPARE(codeOf(pair.one.askAccount("setphoneparam", {{"nickname", "中心"}})), 0);
    QVERIFY(!third.client.waitForType("freshlist").is_null());
}

void tst_TwoProcesses::shareComesAndGoes() {
    Pair pair;
    QVERIFY(pair.start(owner, colleague));
    QVERIFY(pair.two.device("CAM0001").is_null());
    QCOMPARE(codeOf(pair.one.askAccount("setfrienddeviceshare", share(colleague, "CAM0001", true))), 0);
    QVERIFY(!pair.two.client.waitForType("freshlist").is_null());
    QVERIFY(!pair.two.device("CAM0001").is_null());
    pair.two.client.clear();
    QCOMPARE(codeOf(pair.two.askAccount("delipnc", {{"ipncid", "CAM0001"}})), 0);
    pair.one.client.clear();
    QCOMPARE(codeOf(pair.one.askAccount("delfriend", {{"friendphone", colleague}})), 0);
    QVERIFY(waitFor([&] { return pair.two.document("ipnclist").at("ipnclist").empty(); }));
    QVERIFY(!pair.two.client.waitForType("freshlist").is_null());
}

void tst_TwoProcesses::streamsEndWithTheRight_data() {
    QTest::addColumn<QByteArray>("operation");
    QTest::addColumn<QByteArray>("params");
    QTest::addColumn<int>("reason");
    QTest::newRow("share taken back") << QByteArray("setfrienddeviceshare")
                                      << QByteArray(
                                             R"({"friendphone":"13700137000","ipncid":"CAM0019","share":false})")
                                      << 3;
    QTest::newRow("right taken back")
        << QByteArray("setfrienddeviceshare")
        << QByteArray(R"({"friendphone":"13700137000","ipncid":"CAM0019","share":true,"authority":{"video":false}})")
        << 3;
    QTest::newRow("friendship ended") << QByteArray("delfriend") << QByteArray(R"({"friendphone":"13700137000"})")
                                      << 3;
    QTest::newRow("device deleted") << QByteArray("delipnc") << QByteArray(R"({"ipncid":"CAM0019"})") << 1;
}

void tst_TwoProcesses::streamsEndWithTheRight() {
    QFETCH(QByteArray, operation);
    QFETCH(QByteArray, params);
    QFETCH(int, reason);
    Pair pair;
    QVERIFY(pair.start(owner, colleague));
    QVERIFY(pair.watch("CAM0019"));
    // A change that concerns it and takes nothing away leaves the stream alone.
    QCOMPARE(codeOf(pair.one.askAccount("setipncadminparam", {{"ipncid", "CAM0019"}, {"timezone", "GMT+01:00"}})), 0);
    QVERIFY(!pair.two.client.waitForType("freshlist").is_null());
    pair.settle();
    QVERIFY(pair.video.ofType("avclose").empty());
    QCOMPARE(codeOf(pair.one.askAccount(operation.toStdString(), Json::parse(params.toStdString()))), 0);
    QCOMPARE(pair.video.waitForType("avclose").at("retcode"), Json(reason));
    QVERIFY(!pair.two.client.waitForType("freshlist").is_null());
    QVERIFY(waitFor([&] { return pair.two.hub->running == 0; }));
}

void tst_TwoProcesses::newPasswordEndsOtherSessions() {
    Pair pair;
    QVERIFY(pair.start(owner, owner));
    QVERIFY(pair.watch("CAM0001"));
    setPassword(pair.one, owner, "neues-Wort");
    QCOMPARE(pair.two.client.waitForType("logout").at("reason"), Json("password"));
    QCOMPARE(pair.video.waitForType("avclose").at("retcode"), Json(4));
    QVERIFY(pair.two.document("ipnclist").at("ipnclist").empty());
    QCOMPARE(pair.two.document("phoneid").at("phoneid"), Json(""));
    // The one from which it was set goes on.
    QCOMPARE(codeOf(pair.one.askAccount("getpersioninfo")), 0);
    pair.one.settle();
    QVERIFY(pair.one.client.ofType("logout").empty());
    // Told once.
    QCOMPARE(codeOf(pair.two.askAccount("getpersioninfo")), 3);
    pair.two.settle();
    QCOMPARE(pair.two.client.ofType("logout").size(), std::size_t{1});
}

void tst_TwoProcesses::unbindingEndsTheSessionsOfTheComputer() {
    Pair pair;
    TestSdk elsewhere;
    elsewhere.joinStoreOf(pair.one);
    QCOMPARE(pair.one.start(), emSuccess);
    pair.two.joinComputerOf(pair.one);
    QCOMPARE(pair.two.start(), emSuccess);
    QCOMPARE(elsewhere.start(), emSuccess);
    for (TestSdk* sdk : {&pair.one, &pair.two, &elsewhere})
        QVERIFY(sdk->signIn());
    QCOMPARE(codeOf(pair.one.askAccount("unbindphonemode", {{"phonetype", "pc"}})), 0);
    for (TestSdk* sdk : {&pair.one, &pair.two}) {
        QCOMPARE(sdk->client.waitForType("logout").at("reason"), Json("unbind"));
        QVERIFY(!sdk->signIn());
    }
    QCOMPARE(codeOf(elsewhere.askAccount("getpersioninfo")), 0);
    elsewhere.settle();
    QVERIFY(elsewhere.client.ofType("logout").empty());
}

void tst_TwoProcesses::endedSessionDoesNothingMore() {
    Pair pair;
    QVERIFY(pair.start(owner, owner));
    setPassword(pair.one, owner, "neues-Wort");
    // At once, whether the second has been told yet or not.
    QVERIFY(pair.two.document("ipnclist").at("ipnclist").empty());
    QCOMPARE(codeOf(pair.two.askAccount("addgroup", {{"name", "x"}})), 3);
    QCOMPARE(pair.one.document("ipnclist").at("group").size(), std::size_t{9});
    // A rebinding in between does not bring an unbound session back.
    Pair other;
    QCOMPARE(other.one.start(), emSuccess);
    other.two.joinComputerOf(other.one);
    QCOMPARE(other.two.start(), emSuccess);
    QVERIFY(other.one.signIn() && other.two.signIn());
    QCOMPARE(codeOf(other.one.askAccount("unbindphonemode")), 0);
    QCOMPARE(codeOf(other.one.askAccount("rebindcode", {{"phonenumber", owner}})), 0);
    const Json code = {{"phonenumber", owner}, {"checkcode", other.one.codeFor(owner)}};
    QCOMPARE(codeOf(other.one.askAccount("checkmessagecode", code)), 0);
    QCOMPARE(codeOf(other.one.askAccount("rebindphone", {{"phonenumber", owner}})), 0);
    QCOMPARE(codeOf(other.two.askAccount("addgroup", {{"name", "x"}})), 3);
    QVERIFY(other.two.signIn());
}

void tst_TwoProcesses::codesAreOfTheStoreAndTheComputer() {
    Pair pair;
    QCOMPARE(pair.one.start(), emSuccess);
    QCOMPARE(pair.two.start(), emSuccess);
    const Json number = {{"phonenumber", owner}};
    QCOMPARE(codeOf(pair.one.askAccount("changepascode", number)), 0);
    pair.two.settle();
    QVERIFY(pair.two.client.ofType("sms").empty());
    QCOMPARE(codeOf(pair.two.askAccount("rebindcode", number)), 22);
    const std::string digits = pair.one.codeFor(owner);
    const std::string wrong = digits == "111111" ? "222222" : "111111";
    const auto check = [](TestSdk& sdk, const std::string& code) {
        return codeOf(sdk.askAccount("checkmessagecode", {{"phonenumber", owner}, {"checkcode", code}}));
    };
    // Entered at one, it opens nothing at the other.
    QCOMPARE(check(pair.one, digits), 0);
    const Json submission = {{"phonenumber", owner}, {"phonepassword", "neues-Wort"}};
    QCOMPARE(codeOf(pair.two.askAccount("changephonepas", submission)), 15);
    // Tries count wherever they are made.
    for (TestSdk* sdk : {&pair.one, &pair.two, &pair.one, &pair.two, &pair.one})
        QCOMPARE(check(*sdk, wrong), 14);
    QCOMPARE(check(pair.two, digits), 15);
}

void tst_TwoProcesses::bothWriteAtOnce() {
    Pair pair;
    QVERIFY(pair.start(owner, owner));
    constexpr int rounds = 40;
    std::atomic<int> done{0};
    const auto write = [&done](TestSdk& sdk) {
        for (int i = 0; i < rounds; ++i)
            done += codeOf(sdk.askAccount("addgroup", {{"name", "x"}})) == 0 ? 1 : 0;
    };
    std::thread first(write, std::ref(pair.one));
    std::thread second(write, std::ref(pair.two));
    first.join();
    second.join();
    QCOMPARE(done.load(), 2 * rounds);
    QCOMPARE(pair.one.document("ipnclist").at("group").size(), std::size_t{9 + 2 * rounds});
}

void tst_TwoProcesses::manyFirstStartsAtOnce() {
    constexpr int count = 4;
    TestSdk home; // its folder holds the store; it is never started itself
    std::vector<std::unique_ptr<TestSdk>> sdks;
    for (int i = 0; i < count; ++i) {
        sdks.push_back(std::make_unique<TestSdk>());
        sdks.back()->joinStoreOf(home);
    }
    std::vector<std::thread> threads;
    threads.reserve(count);
    for (const auto& sdk : sdks)
        threads.emplace_back([&sdk] { sdk->start(); });
    for (std::thread& thread : threads)
        thread.join();
    for (const auto& sdk : sdks) {
        QVERIFY(sdk->signIn());
        QCOMPARE(sdk->document("ipnclist").at("ipnclist").size(), std::size_t{72});
        QVERIFY(sdk->client.ofType("servicenotice").empty());
    }
    // All of them hash with one key.
    QCOMPARE(codeOf(sdks[0]->askAccount("changepascode", {{"phonenumber", owner}})), 0);
    QCOMPARE(codeOf(sdks[1]->askAccount("checkmessagecode",
                                        {{"phonenumber", owner}, {"checkcode", sdks[0]->codeFor(owner)}})),
             0);
}

void tst_TwoProcesses::cleanUpWhileOthersWrite() {
    Pair pair;
    QVERIFY(pair.start(owner, owner));
    std::atomic<bool> end{false};
    std::thread writer([&] {
        while (!end)
            pair.one.askAccount("setipncparam", {{"ipncid", "CAM0001"}, {"nickname", "x"}});
    });
    for (int i = 0; i < 5; ++i) {
        QVERIFY(!pair.two.client.waitForType("freshlist").is_null());
        QCOMPARE(pair.two.runtime.cleanup(), emSuccess);
        pair.two.client.clear();
        QCOMPARE(pair.two.start(), emSuccess);
        QVERIFY(pair.two.signIn());
    }
    end = true;
    writer.join();
}

QTEST_APPLESS_MAIN(tst_TwoProcesses)
#include "tst_TwoProcesses.moc"
