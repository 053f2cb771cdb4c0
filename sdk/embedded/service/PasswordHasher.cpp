#include "service/PasswordHasher.h"

#include <sodium.h>

#include <array>
#include <new>

namespace ipncsdk::service {

PasswordHasher::Cost PasswordHasher::interactive() {
    return {crypto_pwhash_OPSLIMIT_INTERACTIVE, crypto_pwhash_MEMLIMIT_INTERACTIVE};
}

PasswordHasher::Cost PasswordHasher::least() {
    return {crypto_pwhash_OPSLIMIT_MIN, crypto_pwhash_MEMLIMIT_MIN};
}

PasswordHasher::PasswordHasher(Cost cost)
    : cost_(cost) {
    std::array<char, 16> password{};
    randombytes_buf(password.data(), password.size());
    nobody_ = hash({password.data(), password.size()});
}

std::string PasswordHasher::hash(const std::string& password) const {
    std::array<char, crypto_pwhash_STRBYTES> text{};
    if (crypto_pwhash_str(text.data(), password.data(), password.size(), cost_.operations, cost_.memoryBytes) != 0)
        throw std::bad_alloc();
    return text.data();
}

bool PasswordHasher::verify(const std::string& hash, const std::string& password) const {
    const std::string& known = hash.empty() ? nobody_ : hash;
    const bool matches = crypto_pwhash_str_verify(known.c_str(), password.data(), password.size()) == 0;
    return matches && !hash.empty();
}

} // namespace ipncsdk::service
