#include "TestSdk.h"
#include "device/CardFiles.h"
#include "media/loop/View.h"

#include <QtTest>

#include <set>

using namespace ipncsdk;
using namespace ipncsdk::test;
using namespace std::chrono_literals;

namespace {

/// The messages of a flow that is sent and, at its first progress, perhaps stopped.
class Flow final {
public:
    Flow(TestSdk& sdk, const Json& request, bool stops = false)
        : sdk_(sdk) {
        sdk.runtime.requestMessage(toText(request), id_, [this, stops](const std::string& text) {
            messages_.add(text);
            if (stops)
                sdk_.runtime.stopRequest(Json::parse(text).at("reqid").get<int>());
        });
    }
    ~Flow() { sdk_.runtime.stopRequest(id_); }
    Flow(const Flow&) = delete;
    Flow& operator=(const Flow&) = delete;

    /// The last message; null when it does not come.
    Json end() const {
        const auto ended = [this] {
            const auto all = messages_.all();
            return !all.empty() && all.back().at("state") != "progress";
        };
        return waitFor(ended) ? messages_.all().back() : Json();
    }
    std::vector<Json> messages() const { return messages_.all(); }

private:
    TestSdk& sdk_;
    int id_ = 0;
    Received messages_;
};

/// What ffprobe says of a file: codec and number of frames.
QByteArray probe(const std::filesystem::path& path) {
    QProcess ffprobe;
    ffprobe.start("ffprobe", {"-v", "error", "-count_frames", "-show_entries", "stream=codec_name,nb_read_frames",
                              "-of", "csv=p=0", QString::fromStdString(textOf(path))});
    ffprobe.waitForFinished(60000);
    return ffprobe.readAllStandardOutput().trimmed() + ffprobe.readAllStandardError().trimmed();
}

} // namespace

/// What is done to a device rather than with it: its card, its firmware, its restarts, its network.
class tst_DeviceAdmin final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void cardIsListed();
    void downloadsAreWhatWasTold();
    void stoppedDownloadLeavesNothing();
    void deletedStaysDeletedAndFormattedIsEmpty();
    void cardRefusals_data();
    void cardRefusals();
    void restart();
    void upgradeOverTheNetwork();
    void upgradeByFile_data();
    void upgradeByFile();
    void network();
    void networkOfWaitingDevices();
    void badNetworks_data();
    void badNetworks();

private:
    Json get(const std::string& name, const std::string& ipncid = "CAM0001") {
        return sdk_->askDevice({{"ipncid", ipncid}, {"getcmds", {name}}});
    }
    Json value(const std::string& name) { return get(name).at("resp").at("getcmds").at(name); }
    Json set(const Json& values, const Json& more = Json::object()) {
        Json message = {{"ipncid", "CAM0001"}, {"setcmds", values}};
        message.update(more);
        return sdk_->askDevice(message);
    }
    Json list(const Json& wishes, const std::string& folder = "") {
        return set({{"sdlist", wishes}}, {{"filepathvalue", folder}, {"timeout", 5}}).at("resp").at("sdlist");
    }
    Json downloadOf(const Json& file, const std::filesystem::path& target) {
        return {{"reqtype", "downsdfile"},
                {"ipncid", "CAM0001"},
                {"path", file.at("path")},
                {"savepath", textOf(target)}};
    }
    Json upgradeState() { return value("upgradestate").at("state"); }
    bool awaitOnline(bool online) {
        return waitFor([&] { return sdk_->device("CAM0001").at("online") == online; });
    }

    std::unique_ptr<TestSdk> sdk_;
};

void tst_DeviceAdmin::init() {
    sdk_ = std::make_unique<TestSdk>();
    QCOMPARE(sdk_->start(), emSuccess);
    QVERIFY(sdk_->signIn());
}

void tst_DeviceAdmin::cleanup() {
    sdk_.reset();
}

void tst_DeviceAdmin::cardIsListed() {
    const Json root = list(Json::object());
    QVERIFY(root.size() >= 4 && root.size() <= 5);
    QCOMPARE(root[1].at("dir"), Json(true));
    const std::string folder = root[1].at("path").get<std::string>();
    const Json files = list(Json::object(), folder + "/");
    QCOMPARE(files.size(), std::size_t{8});
    std::set<std::string> paths;
    for (const Json& file : files) {
        paths.insert(file.at("path").get<std::string>());
        QVERIFY(file.at("size").get<int>() > 1000);
        QCOMPARE(file.at("time").get<std::string>().substr(0, 10),
                 root[1].at("time").get<std::string>().substr(0, 10));
    }
    QCOMPARE(paths.size(), files.size());
    const Json date = files[0].at("time").get<std::string>().substr(0, 10);
    QCOMPARE(list({{"date", date}}), files);
    QCOMPARE(list({{"date", date}, {"kind", "video"}}).size(), std::size_t{5});
    QCOMPARE(list({{"kind", "image"}}, folder).size(), std::size_t{3});
    QCOMPARE(list({{"date", "2001-01-01"}}), Json::array());
    QCOMPARE(list(Json::object(), "../.."), Json::array());
    QCOMPARE(sdk_->askDevice({{"ipncid", "FRD0003"}, {"setcmds", {{"sdlist", Json::object()}}}}).at("retcode"),
             Json(sdk_->device("FRD0003").at("authority").at("record") == true ? 0 : 6));
}

void tst_DeviceAdmin::downloadsAreWhatWasTold() {
    const Json root = list(Json::object());
    const Json files = list(Json::object(), root[1].at("path").get<std::string>());
    std::set<std::string> endings;
    for (const Json& file : files) {
        const std::string name = file.at("name").get<std::string>();
        const std::string ending = name.substr(name.size() - 3);
        if (!endings.insert(ending).second)
            continue;
        const auto target = sdk_->path("card 目录 " + name);
        const Flow flow(*sdk_, downloadOf(file, target));
        QCOMPARE(flow.end().at("state"), Json("ok"));
        const QByteArray bytes = contentOf(target);
        QCOMPARE(Json(bytes.size()), file.at("size"));
        std::size_t before = 0;
        for (const Json& message : flow.messages()) {
            QCOMPARE(message.at("type"), Json("downsdfile"));
            QCOMPARE(message.at("total"), file.at("size"));
            QVERIFY(message.at("done").get<std::size_t>() >= before);
            before = message.at("done").get<std::size_t>();
        }
        QCOMPARE(Json(before), file.at("size"));
        const QByteArray said = probe(target);
        QVERIFY2(ending == "jpg"
                     ? said == "mjpeg,1"
                     : said.startsWith("h264,") && said.mid(5).toInt() % 25 == 0 && said.mid(5).toInt() >= 75,
                 said.constData());
    }
    QCOMPARE(endings, (std::set<std::string>{"avi", "jpg", "mp4"}));
}

void tst_DeviceAdmin::stoppedDownloadLeavesNothing() {
    const Json root = list(Json::object());
    const Json files = list({{"kind", "video"}}, root[1].at("path").get<std::string>());
    std::filesystem::create_directory(sdk_->path("target"));
    const Flow flow(*sdk_, downloadOf(files[0], sdk_->path("target/a.mp4")), true);
    QVERIFY(waitFor([&] { return !flow.messages().empty(); }));
    // The next one is behind it on the same worker.
    const Flow next(*sdk_, downloadOf(files[0], sdk_->path("b.mp4")));
    QCOMPARE(next.end().at("state"), Json("ok"));
    QCOMPARE(flow.messages().size(), std::size_t{1});
    QVERIFY(sdk_->filesIn("target").empty());
    // Nor does one whose folder is not there; what stands in the place of a file that fails is not touched.
    const Flow nowhere(*sdk_, downloadOf(files[0], sdk_->path("missing/a.mp4")));
    QCOMPARE(nowhere.end().at("retcode"), Json(19));
    std::filesystem::create_directories(sdk_->path("target/full/inner"));
    const Flow onFolder(*sdk_, downloadOf(files[0], sdk_->path("target/full")));
    QCOMPARE(onFolder.end().at("retcode"), Json(19));
    QCOMPARE(sdk_->filesIn("target"), std::vector<std::string>{"full"});
}

void tst_DeviceAdmin::deletedStaysDeletedAndFormattedIsEmpty() {
    const Json root = list(Json::object());
    const std::string folder = root[1].at("path").get<std::string>();
    const Json files = list(Json::object(), folder);
    const Json first = files[0].at("path");
    const Json reply = set({{"delsdfilelist", {first, "no/such", first}}});
    QCOMPARE(reply.at("resp").at("deleted"), Json::array({first}));
    sdk_->runtime.cleanup();
    QCOMPARE(sdk_->start(), emSuccess);
    QVERIFY(sdk_->signIn());
    QCOMPARE(list(Json::object(), folder).size(), files.size() - 1);
    const Flow gone(*sdk_, downloadOf(files[0], sdk_->path("a")));
    QCOMPARE(gone.end().at("retcode"), Json(404));
    QCOMPARE(set({{"sdformat", 1}}).at("retcode"), Json(0));
    QCOMPARE(list(Json::object()), Json::array());
    sdk_->clock->advance(24h);
    const Json after = list(Json::object());
    QVERIFY(!after.empty()); // it goes on recording
    QVERIFY(after[0].at("path").get<std::string>() >= root.back().at("path").get<std::string>());
}

void tst_DeviceAdmin::cardRefusals_data() {
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<int>("code");
    const auto row = [](const char* name, const char* request, int code) {
        QTest::newRow(name) << QByteArray(request) << code;
    };
    row("list of an unknown device", R"({"reqtype":"p2pmsg","ipncid":"x","setcmds":{"sdlist":{}}})", 7);
    row("list while offline", R"({"reqtype":"p2pmsg","ipncid":"CAM0061","setcmds":{"sdlist":{}}})", 10);
    row("list of a date that is none",
        R"({"reqtype":"p2pmsg","ipncid":"CAM0001","setcmds":{"sdlist":{"date":"gestern"}}})", 2);
    row("list of a kind that is none", R"({"reqtype":"p2pmsg","ipncid":"CAM0001","setcmds":{"sdlist":{"kind":1}}})",
        2);
    row("list beside a parameter", R"({"reqtype":"p2pmsg","ipncid":"CAM0001","setcmds":{"sdlist":{},"mirror":1}})",
        2);
    row("deleting a friend's", R"({"reqtype":"p2pmsg","ipncid":"FRD0001","setcmds":{"delsdfilelist":[]}})", 6);
    row("deleting a text", R"({"reqtype":"p2pmsg","ipncid":"CAM0001","setcmds":{"delsdfilelist":"a"}})", 2);
    row("download without a place", R"({"reqtype":"downsdfile","ipncid":"CAM0001","path":"a"})", 2);
    row("download to a relative place", R"({"reqtype":"downsdfile","ipncid":"CAM0001","path":"a","savepath":"b"})",
        2);
    row("download of what is not there",
        R"({"reqtype":"downsdfile","ipncid":"CAM0001","path":"../x","savepath":"/tmp/b"})", 404);
    row("download of an unknown device", R"({"reqtype":"downsdfile","ipncid":"x","path":"a","savepath":"/tmp/b"})",
        7);
    row("upload of nothing", R"({"reqtype":"uploadipncfile","ipncid":"CAM0001","path":"/no/such/file"})", 19);
    row("upload of a folder", R"({"reqtype":"uploadipncfile","ipncid":"CAM0001","path":"/tmp/."})", 19);
    row("upload to a friend's", R"({"reqtype":"uploadipncfile","ipncid":"FRD0001","path":"/no/such/file"})", 6);
    row("version of a friend's without the right", R"({"reqtype":"ipnclatestver","ipncid":"FRD0003"})", 6);
    row("version of nothing", R"({"reqtype":"ipnclatestver"})", 2);
    row("upgrade to another version",
        R"({"reqtype":"p2pmsg","ipncid":"CAM0001","setcmds":{"upgrade":{"softwareversion":"9.9"}}})", 2);
    row("upgrade without a file", R"({"reqtype":"p2pmsg","ipncid":"CAM0001","setcmds":{"upgrade":{"uploaded":1}}})",
        2);
    row("upgrade of a friend's", R"({"reqtype":"p2pmsg","ipncid":"FRD0001","setcmds":{"upgrade":{"uploaded":1}}})",
        6);
    row("upgrade of a number", R"({"reqtype":"p2pmsg","ipncid":"CAM0001","setcmds":{"upgrade":1}})", 2);
}

void tst_DeviceAdmin::cardRefusals() {
    QFETCH(QByteArray, request);
    const Json message = Json::parse(withDrive(request.toStdString()));
    QTEST(static_cast<int>(integerAt(sdk_->ask(message), "retcode").value_or(-1)), "code");
    QCOMPARE(sdk_->command({{"type", "logout"}}).at("retcode"), Json(0));
    QVERIFY(sdk_->ask(message).at("retcode") == 3 || sdk_->ask(message).at("retcode") == 2);
}

void tst_DeviceAdmin::restart() {
    const auto control = sdk_->hub->options().loopControl("CAM0001");
    QCOMPARE(set({{"ptzmove", {{"pan", 1}, {"tilt", 0}, {"zoom", 0}, {"speed", 5}}}}).at("retcode"), Json(0));
    sdk_->clock->advance(2s);
    sdk_->client.clear();
    QCOMPARE(set({{"ipcamrestartcmd", 1}}).at("retcode"), Json(0));
    QVERIFY(!control->now().reachable);
    QCOMPARE(get("mirror").at("retcode"), Json(10));
    QCOMPARE(sdk_->device("CAM0001").at("online"), Json(false));
    QCOMPARE(sdk_->device("CAM0002").at("online"), Json(true));
    QVERIFY(!sdk_->client.waitForType("freshlist").is_null());
    sdk_->clock->advance(4s);
    QVERIFY(control->now().reachable && control->now().view.isHome());
    QVERIFY(awaitOnline(true));
    QCOMPARE(get("mirror").at("retcode"), Json(0));
    QVERIFY(waitFor([&] { return sdk_->client.ofType("freshlist").size() >= 2; }));
}

void tst_DeviceAdmin::upgradeOverTheNetwork() {
    const Json newest = sdk_->ask({{"reqtype", "ipnclatestver"}, {"ipncid", "CAM0001"}});
    QCOMPARE(newest.at("retcode"), Json(0));
    const Json version = newest.at("resp").at("softwareversion");
    QVERIFY(version != value("softwareversion"));
    QVERIFY(newest.at("resp").at("size").get<int>() > 0 && !newest.at("resp").at("text").get<std::string>().empty());
    QCOMPARE(value("upgradestate"), (Json{{"state", "none"}, {"percent", 0}, {"text", ""}}));
    QCOMPARE(set({{"upgrade", {{"softwareversion", version}}}}).at("retcode"), Json(0));
    QCOMPARE(set({{"upgrade", {{"softwareversion", version}}}}).at("retcode"), Json(11));
    sdk_->clock->advance(1s);
    QCOMPARE(upgradeState(), Json("download"));
    QCOMPARE(value("upgradestate").at("percent"), Json(33));
    sdk_->clock->advance(3s);
    QCOMPARE(upgradeState(), Json("write"));
    sdk_->clock->advance(3s);
    QVERIFY(awaitOnline(false));
    QCOMPARE(upgradeState(), Json("restart"));
    QCOMPARE(get("softwareversion").at("retcode"), Json(10));
    sdk_->clock->advance(4s);
    QVERIFY(awaitOnline(true));
    QCOMPARE(upgradeState(), Json("ok"));
    QCOMPARE(value("softwareversion"), version);
    QCOMPARE(sdk_->device("CAM0001").at("info").at("softwareversion"), version);
    // There is nothing newer now.
    QCOMPARE(sdk_->ask({{"reqtype", "ipnclatestver"}, {"ipncid", "CAM0001"}}).at("resp").at("softwareversion"),
             version);
    sdk_->runtime.cleanup();
    QCOMPARE(sdk_->start(), emSuccess);
    QVERIFY(sdk_->signIn());
    QCOMPARE(value("softwareversion"), version);
}

void tst_DeviceAdmin::upgradeByFile_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("version");
    QTest::newRow("good") << QByteArray("ipnc-firmware 4.0.1\nrest") << "4.0.1";
    QTest::newRow("good, large") << QByteArray("ipnc-firmware 4.0.2\r\n") + QByteArray(300000, 'x') << "4.0.2";
    QTest::newRow("another file") << QByteArray("#!/bin/sh\n") << "";
    QTest::newRow("markup for a version") << QByteArray("ipnc-firmware <b>\n") << "";
    QTest::newRow("no version") << QByteArray("ipnc-firmware ") << "";
    QTest::newRow("bytes") << QByteArray(1000, '\0') << "";
}

void tst_DeviceAdmin::upgradeByFile() {
    QFETCH(QByteArray, content);
    QFETCH(QString, version);
    sdk_->write("firmware.bin", content.toStdString());
    const Json before = value("softwareversion");
    const Flow flow(
        *sdk_, {{"reqtype", "uploadipncfile"}, {"ipncid", "CAM0001"}, {"path", sdk_->path("firmware.bin").string()}});
    QCOMPARE(flow.end().at("state"), Json("ok"));
    QCOMPARE(flow.end().at("done"), Json(content.size()));
    QVERIFY(flow.messages().size() > static_cast<std::size_t>(content.size() / 65536));
    QCOMPARE(set({{"upgrade", {{"uploaded", 1}}}}).at("retcode"), Json(0));
    sdk_->clock->advance(1s);
    if (version.isEmpty()) {
        QCOMPARE(upgradeState(), Json("error"));
        sdk_->clock->advance(10s);
        QCOMPARE(value("softwareversion"), before);
        return;
    }
    QCOMPARE(upgradeState(), Json("write"));
    sdk_->clock->advance(3s);
    QVERIFY(awaitOnline(false));
    sdk_->clock->advance(4s);
    QVERIFY(awaitOnline(true));
    QCOMPARE(value("softwareversion"), Json(version.toStdString()));
}

void tst_DeviceAdmin::network() {
    const Json before = value("netstate");
    QCOMPARE(before.at("ip"), sdk_->device("CAM0001").at("info").at("ip"));
    QVERIFY(before.at("mac") != get("netstate", "CAM0002").at("resp").at("getcmds").at("netstate").at("mac"));
    const Json result = sdk_->command({{"type", "setnet"},
                                       {"ipncid", "CAM0001"},
                                       {"ip", "10.1.2.3"},
                                       {"mask", "255.255.252.0"},
                                       {"gateway", "10.1.3.254"},
                                       {"dns", "9.9.9.9"},
                                       {"dhcp", false}});
    QCOMPARE(result, (Json{{"type", "setnet"}, {"retcode", 0}, {"ipncid", "CAM0001"}}));
    const Json wifi = {{"type", "apconfig"},
                       {"ipncid", "CAM0001"},
                       {"ssid", "院内'\""},
                       {"security", "wpa2"},
                       {"password", "geheim-geheim"}};
    QCOMPARE(sdk_->command(wifi).at("retcode"), Json(0));
    sdk_->runtime.cleanup();
    QCOMPARE(sdk_->start(), emSuccess);
    QVERIFY(sdk_->signIn());
    const Json after = value("netstate");
    QCOMPARE(after.at("ip"), Json("10.1.2.3"));
    QCOMPARE(after.at("gateway"), Json("10.1.3.254"));
    QCOMPARE(after.at("mac"), before.at("mac"));
    QCOMPARE(after.at("wifi").at("ssid"), wifi.at("ssid"));
    QVERIFY(after.at("wifi").at("signal").get<int>() > 0);
    QCOMPARE(sdk_->device("CAM0001").at("info").at("ip"), Json("10.1.2.3"));
    // The password is nobody's to read.
    QVERIFY(sdk_->sqlite(".dump").find("geheim") == std::string::npos);
    QCOMPARE(sdk_->command({{"type", "setnet"}, {"ipncid", "CAM0001"}, {"dhcp", true}}).at("retcode"), Json(0));
    QCOMPARE(value("netstate").at("dhcp"), Json(true));
    QCOMPARE(sdk_->command({{"type", "logout"}}).at("retcode"), Json(0));
    QCOMPARE(sdk_->command(wifi).at("retcode"), Json(3));
}

void tst_DeviceAdmin::networkOfWaitingDevices() {
    const Json wifi = {
        {"type", "apconfig"}, {"ipncid", "SPARE001"}, {"ssid", "yard"}, {"security", "open"}, {"password", ""}};
    QCOMPARE(sdk_->command(wifi).at("retcode"), Json(0));
    QCOMPARE(sdk_->command({{"type", "setnet"},
                            {"ipncid", "SPARE001"},
                            {"ip", "10.0.0.9"},
                            {"mask", "255.0.0.0"},
                            {"gateway", "10.0.0.1"},
                            {"dns", "10.0.0.1"},
                            {"dhcp", false}})
                 .at("retcode"),
             Json(0));
    const Json found = sdk_->document("localdevice").at("localdevice").at("SPARE001");
    QCOMPARE(found.at("ip"), Json("10.0.0.9"));
    QCOMPARE(found.at("added"), Json(false));
    QVERIFY(!found.at("mac").get<std::string>().empty() && !found.at("model").get<std::string>().empty());
    // It keeps them when it is added, and is no longer among those that wait.
    QCOMPARE(sdk_->askAccount("addipnc", {{"ipncid", "SPARE001"}, {"word", "word-0001"}}).at("retcode"), Json(0));
    QCOMPARE(get("netstate", "SPARE001").at("resp").at("getcmds").at("netstate").at("wifi").at("ssid"), Json("yard"));
    QVERIFY(!sdk_->document("localdevice").at("localdevice").contains("SPARE001"));
}

void tst_DeviceAdmin::badNetworks_data() {
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<int>("code");
    const auto net = [](const char* name, const char* ip, const char* mask, const char* gateway, int code = 2) {
        const Json command = {{"type", "setnet"},   {"ipncid", "CAM0001"}, {"ip", ip},     {"mask", mask},
                              {"gateway", gateway}, {"dns", "8.8.8.8"},    {"dhcp", false}};
        QTest::newRow(name) << QByteArray::fromStdString(toText(command)) << code;
    };
    const auto row = [](const char* name, const char* command, int code = 2) {
        QTest::newRow(name) << QByteArray(command) << code;
    };
    net("good", "192.168.1.5", "255.255.255.0", "192.168.1.1", 0);
    net("number too large", "192.168.1.256", "255.255.255.0", "192.168.1.1");
    net("three numbers", "192.168.1", "255.255.255.0", "192.168.1.1");
    net("five numbers", "192.168.1.5.6", "255.255.255.0", "192.168.1.1");
    net("a name", "camera", "255.255.255.0", "192.168.1.1");
    net("blanks", " 192.168.1.5", "255.255.255.0", "192.168.1.1");
    net("leading zero", "192.168.1.05", "255.255.255.0", "192.168.1.1");
    net("mask with gaps", "192.168.1.5", "255.0.255.0", "192.168.0.1");
    net("mask of nothing", "192.168.1.5", "0.0.0.0", "192.168.1.1");
    net("mask of one", "192.168.1.5", "255.255.255.255", "192.168.1.5");
    net("gateway outside", "192.168.1.5", "255.255.255.0", "192.168.2.1");
    net("gateway is the device", "192.168.1.5", "255.255.255.0", "192.168.1.5");
    net("address of the net", "192.168.1.0", "255.255.255.0", "192.168.1.1");
    net("broadcast", "192.168.1.255", "255.255.255.0", "192.168.1.1");
    net("loopback", "127.0.0.1", "255.0.0.0", "127.0.0.2");
    net("multicast", "224.0.0.5", "255.255.255.0", "224.0.0.1");
    row("no addresses", R"({"type":"setnet","ipncid":"CAM0001","dhcp":false})");
    row("no device", R"({"type":"setnet","dhcp":true})");
    row("unknown device", R"({"type":"setnet","ipncid":"x","dhcp":true})", 7);
    row("offline", R"({"type":"setnet","ipncid":"CAM0061","dhcp":true})", 10);
    row("a friend's", R"({"type":"setnet","ipncid":"FRD0001","dhcp":true})", 6);
    row("a friend's that is not shared", R"({"type":"setnet","ipncid":"FRD0005","dhcp":true})", 7);
    row("dhcp as a text", R"({"type":"setnet","ipncid":"CAM0001","dhcp":"yes"})");
    row("no name", R"({"type":"apconfig","ipncid":"CAM0001","ssid":"","security":"open"})");
    row("name of 33 bytes",
        R"({"type":"apconfig","ipncid":"CAM0001","ssid":"一二三四五六七八九十一","security":"open"})");
    row("name with a line feed", R"({"type":"apconfig","ipncid":"CAM0001","ssid":"a\nb","security":"open"})");
    row("short password",
        R"({"type":"apconfig","ipncid":"CAM0001","ssid":"a","security":"wpa2","password":"1234567"})");
    row("no password", R"({"type":"apconfig","ipncid":"CAM0001","ssid":"a","security":"wpa3"})");
    row("open with password",
        R"({"type":"apconfig","ipncid":"CAM0001","ssid":"a","security":"open","password":"12345678"})");
    row("old security",
        R"({"type":"apconfig","ipncid":"CAM0001","ssid":"a","security":"wep","password":"12345678"})");
}

void tst_DeviceAdmin::badNetworks() {
    QFETCH(QByteArray, command);
    QFETCH(int, code);
    const Json before = value("netstate");
    QCOMPARE(sdk_->command(Json::parse(command.toStdString())).at("retcode"), Json(code));
    QCOMPARE(value("netstate") == before, code != 0);
}

QTEST_APPLESS_MAIN(tst_DeviceAdmin)
#include "tst_DeviceAdmin.moc"
