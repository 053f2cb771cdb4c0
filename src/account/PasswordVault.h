#pragma once

#include "account/KeyStore.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

/// Turns a password into a text that may lie in a file, and back: protected by the system where it does that (data
/// protection on Windows), else sealed with a key from the user's secret service, else with one in a file that only
/// its owner can read. Asks nobody before it is first used.
///
/// Lives in the GUI thread and never makes it wait: answers come later, at the latest when the store has been silent
/// for the limit, and only while the receiver lives.
class PasswordVault final : public QObject {
    Q_OBJECT
public:
    struct Revealed {
        std::optional<QString> password; ///< nothing: protected for somebody else, or damaged
        bool wasReadable = false;        ///< it was stored as it is, by an older program
    };
    using OnProtected = std::function<void(const QString& stored)>;
    using OnRevealed = std::function<void(const Revealed& revealed)>;

    static constexpr std::chrono::milliseconds Limit{3000};

    /// `store` may be null.
    PasswordVault(QString keyFile, std::unique_ptr<KeyStore> store, std::chrono::milliseconds limit = Limit,
                  QObject* parent = nullptr);

    /// An empty text when nothing can protect it: then it must not be stored.
    void protect(const QString& password, QObject* receiver, OnProtected then);
    void reveal(const QString& stored, QObject* receiver, OnRevealed then);

private:
    using Task = std::function<void()>;

    /// Runs `task` once it is known what the store says.
    void whenStoreAnswered(QObject* receiver, Task task);
    void storeAnswered(std::optional<QByteArray> key);
    QString protectNow(const QString& password) const;
    Revealed revealNow(const QString& stored) const;

    enum class Store { NotAsked, Asked, Answered };

    const QString keyFile_;
    const std::unique_ptr<KeyStore> keyStore_;
    const std::chrono::milliseconds limit_;
    Store state_ = Store::NotAsked;
    std::optional<QByteArray> storeKey_;
    std::vector<Task> waiting_;
};
