#include "media/backchannel/RtspAuthorization.h"

#include "media/backchannel/RtspText.h"

extern "C" {
#include <libavutil/base64.h>
#include <libavutil/md5.h>
#include <libavutil/random_seed.h>
}

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>
#include <vector>

namespace ipncsdk::media {

namespace {

void appendHex(std::string& text, std::uint32_t number, int digits) {
    constexpr std::string_view hex = "0123456789abcdef";
    for (int digit = digits - 1; digit >= 0; --digit) {
        text += hex[number >> (4 * digit) & 15U];
    }
}

std::string md5(const std::string& text) {
    std::array<std::uint8_t, 16> sum{};
    av_md5_sum(sum.data(), reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    std::string result;
    for (const std::uint8_t byte : sum) {
        appendHex(result, byte, 2);
    }
    return result;
}

std::string base64(const std::string& text) {
    std::vector<char> result(AV_BASE64_SIZE(text.size()));
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const char* end =
        av_base64_encode(result.data(), static_cast<int>(result.size()), bytes, static_cast<int>(text.size()));
    return end == nullptr ? std::string() : std::string(result.data());
}

std::string quoted(std::string_view text) {
    std::string result(1, '"');
    for (const char character : text) {
        if (character == '"' || character == '\\') {
            result += '\\';
        }
        result += character;
    }
    return result + '"';
}

/// Cuts the next `name=value` off a list of them; the value without its quotes.
std::pair<std::string_view, std::string> cutParameter(std::string_view& rest) {
    const std::string_view name = cutField(rest, '=');
    rest = rest.substr(std::min(rest.find_first_not_of(" \t"), rest.size()));
    if (rest.empty() || rest.front() != '"') {
        return {name, std::string(cutField(rest, ','))};
    }
    std::string value;
    std::size_t at = 1;
    for (; at < rest.size() && rest[at] != '"'; ++at) {
        at += rest[at] == '\\' && at + 1 < rest.size() ? 1U : 0U;
        value += rest[at];
    }
    rest.remove_prefix(at);
    cutField(rest, ',');
    return {name, value};
}

std::string joined(std::initializer_list<std::string_view> parts) {
    std::string result;
    for (const std::string_view part : parts) {
        result.append(part).append(1, ':');
    }
    result.pop_back();
    return result;
}

bool listHas(std::string_view list, std::string_view word) {
    while (!list.empty()) {
        if (isSameWord(cutField(list, ','), word)) {
            return true;
        }
    }
    return false;
}

} // namespace

std::string digestResponse(const DigestParts& parts) {
    const std::string who = md5(joined({parts.user, parts.realm, parts.password}));
    const std::string what = md5(joined({parts.method, parts.url}));
    return md5(parts.clientNonce.empty() ? joined({who, parts.nonce, what})
                                         : joined({who, parts.nonce, parts.count, parts.clientNonce, "auth", what}));
}

RtspAuthorization::RtspAuthorization(std::string user, std::string password)
    : user_(std::move(user))
    , password_(std::move(password)) {}

/// Scheme `None` stands for a challenge that is not understood.
RtspAuthorization::Challenge RtspAuthorization::read(std::string_view text) {
    Challenge challenge;
    const std::string_view scheme = cutField(text, ' ');
    bool understood = true;
    while (!text.empty()) {
        const auto [name, value] = cutParameter(text);
        if (isSameWord(name, "realm")) {
            challenge.realm = value;
        } else if (isSameWord(name, "nonce")) {
            challenge.nonce = value;
        } else if (isSameWord(name, "opaque")) {
            challenge.opaque = value;
        } else if (isSameWord(name, "stale")) {
            challenge.stale = isSameWord(value, "true");
        } else if (isSameWord(name, "qop")) {
            challenge.qop = listHas(value, "auth");
            understood = understood && challenge.qop;
        } else if (isSameWord(name, "algorithm")) {
            understood = understood && isSameWord(value, "MD5");
        }
    }
    if (isSameWord(scheme, "Basic")) {
        challenge.scheme = Scheme::Basic;
    } else if (isSameWord(scheme, "Digest") && understood && !challenge.nonce.empty()) {
        challenge.scheme = Scheme::Digest;
    }
    return challenge;
}

bool RtspAuthorization::accept(const RtspResponse& response) {
    Challenge best;
    for (const auto& [name, value] : response.headers) {
        Challenge challenge = name == "www-authenticate" ? read(value) : Challenge();
        if (best.scheme == Scheme::None || (challenge.scheme == Scheme::Digest && best.scheme == Scheme::Basic)) {
            best = std::move(challenge);
        }
    }
    const bool again = best.stale && best.nonce != challenge_.nonce;
    if (best.scheme == Scheme::None || (user_.empty() && password_.empty()) || (answered_ && !again)) {
        return false;
    }
    challenge_ = std::move(best);
    uses_ = 0;
    return true;
}

std::string RtspAuthorization::header(const std::string& method, const std::string& url) {
    answered_ = challenge_.scheme != Scheme::None;
    if (challenge_.scheme == Scheme::None) {
        return {};
    }
    if (challenge_.scheme == Scheme::Basic) {
        return "Basic " + base64(user_ + ':' + password_);
    }
    std::string count;
    std::string clientNonce;
    if (challenge_.qop) {
        appendHex(count, ++uses_, 8);
        appendHex(clientNonce, av_get_random_seed(), 8);
        appendHex(clientNonce, av_get_random_seed(), 8);
    }
    const std::string response =
        digestResponse({user_, password_, challenge_.realm, challenge_.nonce, method, url, count, clientNonce});
    std::string text = "Digest username=" + quoted(user_) + ", realm=" + quoted(challenge_.realm) +
                       ", nonce=" + quoted(challenge_.nonce) + ", uri=" + quoted(url) + ", response=\"" + response +
                       '"';
    if (!challenge_.opaque.empty()) {
        text += ", opaque=" + quoted(challenge_.opaque);
    }
    if (challenge_.qop) {
        text += ", qop=auth, nc=" + count + ", cnonce=\"" + clientNonce + '"';
    }
    return text;
}

} // namespace ipncsdk::media
