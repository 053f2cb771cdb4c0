#pragma once

#include "media/backchannel/RtspMessage.h"

#include <string>
#include <string_view>

namespace ipncsdk::media {

/// What the answer to a Digest challenge is computed from.
struct DigestParts {
    std::string_view user;
    std::string_view password;
    std::string_view realm;
    std::string_view nonce;
    std::string_view method;
    std::string_view url;
    std::string_view count;       ///< eight hexadecimal digits; unused without `clientNonce`
    std::string_view clientNonce; ///< empty: the camera wants no "qop"
};

/// RFC 2617, 3.2.2, with MD5, as 32 small hexadecimal digits; "qop" is "auth" where there is a nonce of our own.
std::string digestResponse(const DigestParts& parts);

/// Says who asks, in the way a camera wants it: Digest (MD5, with and without "qop") or else Basic.
class RtspAuthorization final {
public:
    RtspAuthorization(std::string user, std::string password);

    /// Takes the challenge of an answer with the status 401. False when asking again makes no sense: there is no
    /// name and password, no challenge that is understood, or the camera has refused them before.
    bool accept(const RtspResponse& response);
    /// The value of "Authorization" for a request; empty as long as no challenge came.
    std::string header(const std::string& method, const std::string& url);
    /// The camera has answered with another status than 401: a later challenge is a new one.
    void pass() { answered_ = false; }

private:
    enum class Scheme { None, Basic, Digest };
    struct Challenge {
        Scheme scheme = Scheme::None;
        bool stale = false;
        bool qop = false;
        std::string realm;
        std::string nonce;
        std::string opaque;
    };

    static Challenge read(std::string_view text);

    const std::string user_;
    const std::string password_;
    Challenge challenge_;
    unsigned uses_ = 0;     ///< of the challenge
    bool answered_ = false; ///< the camera has seen name and password in answer to a challenge
};

} // namespace ipncsdk::media
