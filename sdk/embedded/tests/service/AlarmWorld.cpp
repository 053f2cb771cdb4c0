#include "AlarmWorld.h"

#include <QtTest>

#include <soci/soci.h>

#include <chrono>
#include <fstream>

namespace ipncsdk::test {

namespace {

/// Nobody reads this board but the test.
constexpr auto boards = R"([{"pid":101,"type":"RS485","ifname":"RS485-9","name":"泵组仪表",
  "params":{"mode":"rtu","device":"/dev/null"},
  "input":[{"pid":1001,"ifpid":101,"name":"出口压力","unit":"MPa","thresholds":[{"level":1,"high":5},
   {"level":2,"high":8},{"level":3,"high":10}]},{"pid":1003,"ifpid":101,"name":"电机温度","unit":"℃"}],
  "output":[{"pid":1005,"ifpid":101,"name":"启停"},{"pid":1006,"ifpid":101,"name":"声光报警"}]}])";

} // namespace

const Json onPressure = {{"report", true}, {"input", {{{"ifpid", 101}, {"input", 1001}}}}};

Plant::Plant(TestSdk& sdk, std::optional<device::NoticesConfig> notices)
    : sdk_(sdk)
    , outbox_(sdk.path("plant"), std::nullopt, *sdk.clock) {
    const auto file = sdk.path("service/service.db");
    auto opened = store::openDatabaseFile(file, std::chrono::seconds(5), *sdk.clock, {});
    database_.use(std::move(opened.session));
    if (notices)
        broker_ = std::make_unique<service::NoticeBroker>(*notices);
    book_ = std::make_unique<api::AlarmBook>(
        api::AlarmBook::Parts{database_, cameras_, *sdk.clock, outbox_, broker_.get(), [] {
                              }});
    auto dat = file;
    dat += ".dat";
    desk_ = std::make_unique<api::AlarmDesk>(api::AlarmDesk::Parts{
        database_, cameras_, *sdk.clock, *book_, dat, std::move(opened.changes), [this](const std::string& text) {
            notices_.add(toText({{"text", text}}));
        }});
    desk_->attach(outputs);
}

Plant::~Plant() {
    desk_->stop();
    book_->stop();
}

std::vector<std::string> Plant::messages() const {
    std::vector<std::string> lines;
    std::ifstream in(sdk_.path("plant/service/outbox.jsonl"));
    for (std::string line; std::getline(in, line);) {
        const Json message = Json::parse(line);
        lines.push_back(message.at("phonenumber").get<std::string>() + " " + message.at("text").get<std::string>());
    }
    return lines;
}

AlarmWorld::AlarmWorld() {
    started = sdk.start() == emSuccess;
    started = started && sdk.sqlite("delete from linkplans; delete from reportrules").empty();
    sdk.write("pumps.sql",
              "update devices set interfaces = '" + std::string(boards) + "' where ipncid = '" + pumps + "';");
    started = started && sdk.sqlite(".read '" + sdk.path("pumps.sql").string() + "'").empty();
    started = started && sdk.signIn();
}

long long AlarmWorld::addPlan(Json plan) {
    plan["ipncid"] = pumps;
    plan.emplace("name", "超压");
    const Json reply = sdk.askAccount("submitlinkplan", {{"linkplan", plan}});
    return codeOf(reply) == 0 ? reply.at("resp").at("linkplanid").get<long long>() : -1;
}

Json AlarmWorld::addRule(Json rule) {
    rule.emplace("name", "值班");
    rule.emplace("ipncids", Json::array({pumps}));
    rule.emplace("reporttype", Json::array({"threshold"}));
    rule.emplace("reportmode", Json::array({"sms"}));
    rule.emplace("smslevel", Json::array({"1", "2", "3"}));
    return sdk.askAccount("submitreportrules", {{"reportrules", rule}});
}

void AlarmWorld::raise(Plant& plant, double value) {
    const std::size_t before = sdk.client.ofType("trigger").size();
    plant.read(1001, 0);
    plant.read(1001, value);
    QVERIFY(waitFor([&] { return sdk.client.ofType("trigger").size() > before; }));
}

} // namespace ipncsdk::test
