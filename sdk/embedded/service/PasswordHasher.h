#pragma once

#include <cstddef>
#include <string>

namespace ipncsdk::service {

/// Argon2id through libsodium. Thread-safe.
class PasswordHasher final {
public:
    /// How much work a hash is; tests take less.
    struct Cost {
        unsigned long long operations;
        std::size_t memoryBytes;
    };
    static Cost interactive();
    static Cost least();

    explicit PasswordHasher(Cost cost);

    /// The text that the store keeps: algorithm, cost, salt and hash. Throws std::bad_alloc when there is not
    /// memory enough for the cost.
    [[nodiscard]] std::string hash(const std::string& password) const;

    /// True when the password belongs to the hash. An empty hash stands for an account that does not exist: the
    /// answer is false and takes as long as for one that does.
    [[nodiscard]] bool verify(const std::string& hash, const std::string& password) const;

private:
    Cost cost_;
    std::string nobody_; ///< hash of a random password, verified for accounts that do not exist
};

} // namespace ipncsdk::service
