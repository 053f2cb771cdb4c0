#include "onvif/UsernameToken.h"

#include "onvif/Names.h"
#include "onvif/Xml.h"

extern "C" {
#include <libavutil/base64.h>
#include <libavutil/mem.h>
#include <libavutil/sha.h>
}

#include <array>
#include <cstdio>
#include <memory>
#include <random>

namespace ipncsdk::onvif {

namespace {

constexpr std::size_t nonceBytes = 16;
constexpr std::size_t sha1Bytes = 20;
constexpr int sha1Bits = 160;

std::vector<std::uint8_t> randomBytes(std::size_t count) {
    std::random_device device;
    std::vector<std::uint8_t> bytes(count);
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(device() & 0xffU);
    return bytes;
}

std::vector<std::uint8_t> sha1(const std::vector<std::uint8_t>& bytes) {
    struct Free {
        void operator()(AVSHA* sha) const { av_free(sha); }
    };
    const std::unique_ptr<AVSHA, Free> sha(av_sha_alloc());
    std::vector<std::uint8_t> digest(sha1Bytes);
    if (sha && av_sha_init(sha.get(), sha1Bits) == 0) {
        av_sha_update(sha.get(), bytes.data(), bytes.size());
        av_sha_final(sha.get(), digest.data());
    }
    return digest;
}

} // namespace

std::string timestamp(Time time) {
    using namespace std::chrono;
    const auto day = floor<days>(time);
    const year_month_day date(day);
    const hh_mm_ss clock(floor<seconds>(time - day));
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()));
    return text.data();
}

std::optional<Time> timeOf(int year, int month, int day, int hour, int minute, int second) {
    using namespace std::chrono;
    const year_month_day date(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                              std::chrono::day(static_cast<unsigned>(day)));
    // Years beyond these would leave the clock's range.
    const bool sane = year >= 1970 && year <= 2200 && month >= 1 && day >= 1 && date.ok() && hour >= 0 && hour < 24 &&
                      minute >= 0 && minute < 60 && second >= 0 && second <= 60;
    if (!sane)
        return std::nullopt;
    return sys_days(date) + hours(hour) + minutes(minute) + seconds(second);
}

std::string base64(const std::vector<std::uint8_t>& bytes) {
    std::string text(AV_BASE64_SIZE(bytes.size()), '\0');
    av_base64_encode(text.data(), static_cast<int>(text.size()), bytes.data(), static_cast<int>(bytes.size()));
    text.resize(text.size() - 1); // the terminating zero
    return text;
}

std::string passwordDigest(const std::vector<std::uint8_t>& nonce, std::string_view created,
                           std::string_view password) {
    std::vector<std::uint8_t> bytes = nonce;
    bytes.insert(bytes.end(), created.begin(), created.end());
    bytes.insert(bytes.end(), password.begin(), password.end());
    return base64(sha1(bytes));
}

std::string usernameToken(const Credentials& credentials, Time now) {
    const std::vector<std::uint8_t> nonce = randomBytes(nonceBytes);
    const std::string created = timestamp(now);
    std::string text = "<w:Security s:mustUnderstand=\"1\" xmlns:w=\"";
    text += ns::security;
    text += "\" xmlns:u=\"";
    text += ns::utility;
    text += "\"><w:UsernameToken><w:Username>" + xml::escaped(credentials.user) + "</w:Username><w:Password Type=\"";
    text += ns::passwordDigest;
    text += "\">" + passwordDigest(nonce, created, credentials.password) + "</w:Password><w:Nonce EncodingType=\"";
    text += ns::base64Binary;
    text += "\">" + base64(nonce) + "</w:Nonce><u:Created>" + created + "</u:Created></w:UsernameToken></w:Security>";
    return text;
}

std::string randomUrn() {
    std::vector<std::uint8_t> bytes = randomBytes(16);
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0fU) | 0x40U); // version 4
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3fU) | 0x80U); // variant of RFC 4122
    std::string text = "urn:uuid:";
    constexpr std::string_view digits = "0123456789abcdef";
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        if (index == 4 || index == 6 || index == 8 || index == 10)
            text += '-';
        text += digits[bytes[index] >> 4U];
        text += digits[bytes[index] & 0x0fU];
    }
    return text;
}

} // namespace ipncsdk::onvif
