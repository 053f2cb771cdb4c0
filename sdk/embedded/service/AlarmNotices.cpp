#include "service/AlarmNotices.h"

#include "base/LocalTime.h"
#include "base/Text.h"
#include "device/DeviceRequests.h"
#include "device/Rights.h"
#include "store/Notices.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <optional>
#include <utility>

namespace ipncsdk::service {

namespace {

constexpr long long pauseOfSource = 60'000; ///< milliseconds
constexpr auto sender = "【监控平台】";

struct Receiver {
    std::string phone;
    std::string name;
    std::string countryCode;
};

struct AccountRule {
    store::AccountId account = 0;
    ReportRule rule;
    std::vector<Receiver> receivers;
};

std::vector<Receiver> receiversOf(soci::session& sql, store::AccountId account, const ReportRule& rule) {
    std::vector<Receiver> receivers;
    const auto add = [&](const std::string& phone, const std::string& name) {
        const auto known = store::accountByPhone(sql, phone);
        receivers.push_back({phone, name, known ? known->countryCode : store::Account().countryCode});
    };
    if (const auto own = rule.self ? store::accountById(sql, account) : std::nullopt)
        add(own->phone, own->nickname);
    for (const std::string& phone : rule.phones) {
        if (const auto person = store::friendOf(sql, account, phone))
            add(phone, person->remark.empty() ? person->nickname : person->remark);
    }
    return receivers;
}

std::vector<AccountRule> enabledRules(soci::session& sql) {
    std::vector<AccountRule> rules;
    for (const store::ReportRule& row : store::allRules(sql)) {
        std::string fault;
        const auto rule = parseReportRule(Json::parse(row.document, nullptr, false), fault);
        if (rule && rule->enabled)
            rules.push_back({row.account, *rule, receiversOf(sql, row.account, *rule)});
    }
    return rules;
}

bool contains(const std::vector<std::string>& list, const std::string& text) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

/// Alarms without a level go out whatever levels were chosen.
bool takesLevel(const std::set<int>& levels, int level) {
    return level == 0 || levels.count(level) > 0;
}

long long costOf(const std::string& text) {
    const std::size_t characters = std::max<std::size_t>(characterCount(text).value_or(text.size()), 1);
    return static_cast<long long>((characters - 1) / AlarmNotices::charactersOfMessage) + 1;
}

/// One message that nobody pays for, when an account's balance has come down to where it wants to be told.
void remind(soci::session& sql, store::AccountId account, const store::SmsBalance& before, long long cost,
            long long now, Outgoing& outgoing) {
    const long long left = before.left - cost;
    if (before.warn <= 0 || before.phone.empty() || before.left <= before.warn || left > before.warn)
        return;
    const std::string text = std::string(sender) + "短信剩余" + std::to_string(left) + "条，请及时充值。";
    const auto known = store::accountByPhone(sql, before.phone);
    const long long record = store::insertSmsRecord(
        sql, {0, account, before.phone, known ? known->nickname : "", now, text, "alarm", "error", "balance"});
    outgoing.messages.push_back(
        {record, account, 0, {before.phone, known ? known->countryCode : store::Account().countryCode, text, now}});
}

void addMessage(soci::session& sql, const AccountRule& rule, const Receiver& receiver, const AlarmNews& news,
                Outgoing& outgoing) {
    const auto last = store::lastSms(sql, receiver.phone, news.source);
    if (last && std::llabs(news.madeAt - *last) < pauseOfSource)
        return;
    const std::string& form = rule.rule.smsTemplate;
    const std::string text = sender + (form.empty() ? news.text : fillTemplate(form, news.values));
    const long long cost = costOf(text);
    const store::SmsBalance balance = store::smsBalance(sql, rule.account);
    const bool paid = balance.left >= cost;
    const long long record = store::insertSmsRecord(sql, {0, rule.account, receiver.phone, receiver.name, news.madeAt,
                                                          text, "alarm", paid ? "error" : "nobalance", news.source});
    if (!paid)
        return;
    store::addToBalance(sql, rule.account, -cost);
    outgoing.messages.push_back(
        {record, rule.account, cost, {receiver.phone, receiver.countryCode, text, news.madeAt}});
    remind(sql, rule.account, balance, cost, news.madeAt, outgoing);
}

void addNotice(const AccountRule& rule, const Receiver& receiver, const AlarmNews& news, Outgoing& outgoing) {
    const std::string& form = rule.rule.appTemplate;
    outgoing.notices.push_back({receiver.phone,
                                {{"phonenumber", receiver.phone},
                                 {"text", form.empty() ? news.text : fillTemplate(form, news.values)},
                                 {"time", localTime(news.madeAt, "%Y-%m-%d %H:%M:%S")},
                                 {"ipncid", news.ipncid},
                                 {"level", news.level}}});
}

} // namespace

void AlarmNotices::make(soci::session& sql, const std::vector<AlarmNews>& news, Outgoing& outgoing) const {
    const std::vector<AccountRule> rules = enabledRules(sql);
    std::map<std::pair<store::AccountId, std::string>, bool> mayKnow;
    const auto isAllowed = [&](store::AccountId account, const std::string& ipncid) {
        const auto [known, isNew] = mayKnow.try_emplace({account, ipncid}, false);
        if (isNew) {
            const auto device = device::visibleDevice(sql, account, ipncid, cameras_);
            known->second = device && device::allows(*device, device::Right::Param);
        }
        return known->second;
    };
    for (const AlarmNews& each : news) {
        for (const AccountRule& rule : rules) {
            if (rule.rule.types.count(each.type) == 0 || !contains(rule.rule.ipncids, each.ipncid) ||
                !isAllowed(rule.account, each.ipncid))
                continue;
            const bool sms = rule.rule.modes.count(smsMode) > 0 && takesLevel(rule.rule.smsLevels, each.level);
            const bool app = rule.rule.modes.count(appMode) > 0 && takesLevel(rule.rule.appLevels, each.level);
            for (const Receiver& receiver : rule.receivers) {
                if (sms)
                    addMessage(sql, rule, receiver, each, outgoing);
                if (app)
                    addNotice(rule, receiver, each, outgoing);
            }
        }
    }
}

} // namespace ipncsdk::service
