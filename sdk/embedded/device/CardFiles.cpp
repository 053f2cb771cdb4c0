#include "device/CardFiles.h"

#include "base/JsonText.h"
#include "base/LocalTime.h"
#include "store/Parameters.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <ctime>
#include <utility>

namespace ipncsdk::device {

namespace {

using Format = media::LoopClips::Format;
using std::chrono::system_clock;

constexpr auto storedName = "sdcard";
constexpr int days = 5;

/// When a file of each day is begun, give or take an hour.
struct Plan {
    int hour;
    Format format;
};

constexpr std::array plans = {Plan{1, Format::Mp4},   Plan{4, Format::Jpeg}, Plan{7, Format::Avi},
                              Plan{10, Format::Jpeg}, Plan{12, Format::Mp4}, Plan{15, Format::Avi},
                              Plan{18, Format::Jpeg}, Plan{21, Format::Mp4}};

const char* endingOf(Format format) {
    switch (format) {
    case Format::Mp4:
        return ".mp4";
    case Format::Avi:
        return ".avi";
    case Format::Jpeg:
        break;
    }
    return ".jpg";
}

std::uint32_t hashOf(const std::string& text) {
    std::uint32_t hash = 2166136261U; // FNV-1a
    for (const char character : text)
        hash = (hash ^ static_cast<unsigned char>(character)) * 16777619U;
    return hash ^ hash >> 15;
}

system_clock::time_point timeOf(std::int64_t seconds) {
    return system_clock::time_point(std::chrono::seconds(seconds));
}

CardFile fileOf(const std::string& ipncid, const Plan& plan, std::int64_t begin, std::uint32_t hash) {
    const std::tm local = localTimeOf(begin);
    const bool isPicture = plan.format == Format::Jpeg;
    CardFile file;
    file.folder = written(local, "%Y%m%d");
    file.name = ipncid + written(local, "-%H%M%S") + endingOf(plan.format);
    file.kind = isPicture ? "image" : "video";
    file.date = written(local, "%Y-%m-%d");
    file.time = written(local, "%Y-%m-%d %H:%M:%S");
    file.clip = {plan.format, hash % (media::loopLength / media::loopGopLength), isPicture ? 1 : 3 + hash / 8 % 4};
    return file;
}

} // namespace

CardState cardOf(soci::session& sql, const std::string& ipncid) {
    const auto stored = store::parametersOf(sql, ipncid);
    const auto found = stored.find(storedName);
    const Json kept = found != stored.end() ? Json::parse(found->second, nullptr, false) : Json::object();
    CardState card{timeOf(integerAt(kept, "formatted").value_or(0)), {}};
    if (const Json* const deleted = memberAt(kept, "deleted"); deleted != nullptr && deleted->is_array()) {
        for (const Json& path : *deleted) {
            if (path.is_string())
                card.deleted.insert(path.get<std::string>());
        }
    }
    return card;
}

void storeCard(soci::session& sql, const std::string& ipncid, const CardState& card) {
    const Json kept = {{"formatted", secondsOf(card.formatted)}, {"deleted", card.deleted}};
    store::setParameter(sql, ipncid, storedName, toText(kept));
}

std::vector<CardFile> cardFiles(const std::string& ipncid, const CardState& card, system_clock::time_point now) {
    std::vector<CardFile> files;
    const std::tm today = localTimeOf(secondsOf(now));
    for (int back = days - 1; back >= 0; --back) {
        for (const Plan& plan : plans) {
            std::tm begin = today;
            begin.tm_mday -= back;
            begin.tm_hour = plan.hour;
            begin.tm_isdst = -1;
            secondsOf(begin); // the date, also across the end of a month
            begin.tm_isdst = -1;
            const std::uint32_t hash = hashOf(ipncid + written(begin, "%Y%m%d/%H"));
            begin.tm_min = static_cast<int>(hash % 60);
            begin.tm_sec = static_cast<int>(hash / 64 % 60);
            const std::int64_t moment = secondsOf(begin);
            // A recording is there once it has ended.
            const auto ended = timeOf(moment) + std::chrono::seconds(10);
            if (ended > now || ended <= card.formatted)
                continue;
            CardFile file = fileOf(ipncid, plan, moment, hash);
            if (card.deleted.count(file.path()) == 0)
                files.push_back(std::move(file));
        }
    }
    return files;
}

bool isDate(std::string_view text) {
    constexpr std::string_view form = "dddd-dd-dd";
    return text.size() == form.size() &&
           std::equal(text.begin(), text.end(), form.begin(),
                      [](char has, char wanted) { return wanted == 'd' ? has >= '0' && has <= '9' : has == wanted; });
}

} // namespace ipncsdk::device
