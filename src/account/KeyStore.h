#pragma once

#include <QByteArray>

#include <functional>
#include <memory>
#include <optional>

/// Where the system keeps a user's secrets. GUI thread.
class KeyStore {
public:
    using Answer = std::function<void(std::optional<QByteArray> key)>;

    KeyStore() = default;
    KeyStore(const KeyStore&) = delete;
    KeyStore& operator=(const KeyStore&) = delete;
    virtual ~KeyStore() = default;

    /// Asks for the program's key, which is made when there is none yet. Answers later, once, or never: a store may
    /// wait for its user. Nothing when there is no such store here, or it refuses.
    virtual void fetch(Answer answer) = 0;
};

/// The system's own: the secret service of a Linux session. Null where passwords are protected otherwise.
std::unique_ptr<KeyStore> systemKeyStore();
