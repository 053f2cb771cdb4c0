#pragma once

#include "FakeHub.h"
#include "api/Runtime.h"
#include "base/JsonText.h"

#include <QByteArray>
#include <QTemporaryDir>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

class QProcess;

namespace ipncsdk::test {

/// A clock that a test moves on.
class ManualClock final : public Clock {
public:
    void advance(std::chrono::seconds time) { offset_ += time.count(); }
    [[nodiscard]] std::chrono::steady_clock::time_point steadyNow() const override {
        return std::chrono::steady_clock::time_point(std::chrono::hours(1)) + std::chrono::seconds(offset_);
    }
    [[nodiscard]] std::chrono::system_clock::time_point now() const override {
        return std::chrono::system_clock::from_time_t(1'700'000'000) + std::chrono::seconds(offset_);
    }

private:
    std::atomic<long long> offset_{0};
};

/// Waits until `condition` holds; false when it still does not after a minute.
bool waitFor(const std::function<bool()>& condition);

/// Texts that callbacks received, in order. Thread-safe.
class Received final {
public:
    void add(const std::string& text);
    [[nodiscard]] std::vector<Json> all() const;
    [[nodiscard]] std::vector<Json> ofType(const std::string& type) const;
    /// Waits for the first message of this type; null when none comes.
    [[nodiscard]] Json waitForType(const std::string& type) const;
    void clear();

private:
    mutable std::mutex mutex_;
    std::vector<Json> messages_;
};

/// An SDK on a temporary folder, with a fake hub (unless a test brings another one) and a clock that stands.
class TestSdk final {
public:
    /// `searchPort`: where network cameras are searched for on the loopback; 0: nowhere.
    /// `sensors`: boards are read.
    explicit TestSdk(api::HubFactory makeHub = nullptr, int searchPort = 0, bool sensors = false);

    /// Starts and installs a client callback that keeps the messages in `client`.
    emReturnValue start();

    /// Sends a request and waits for its one response; null when none comes.
    Json ask(const Json& message);
    Json askAccount(const std::string& operation, const Json& params = Json::object());
    Json askDevice(const Json& message);
    /// Runs a command and waits for its result.
    Json command(const Json& message);
    Json document(const std::string& name);
    /// The device record of the "ipnclist" document; null when it is not there.
    Json device(const std::string& ipncid);
    /// Signs in as the first account and says whether that worked.
    bool signIn();
    bool signIn(const std::string& phone);

    /// Registers a number with the usual password, and signs in with it.
    bool registerAndSignIn(const std::string& phone);
    /// The digits of the message sent last to a number through the outbox; empty when none was.
    [[nodiscard]] std::string codeFor(const std::string& phone) const;

    /// Before a start: lives on the store of another SDK, as a process on another computer does, or on the same one.
    void joinStoreOf(const TestSdk& other) const;
    void joinComputerOf(const TestSdk& other) const;

    /// Waits until everything sent before has been done.
    void settle();

    [[nodiscard]] std::filesystem::path path(const std::string& relative) const;
    void write(const std::string& relative, const std::string& content) const;
    /// Begins a sqlite3 shell on the store, with the statement or to be written to.
    void openShell(QProcess& shell, const std::string& statement = {}) const;
    /// What the sqlite3 shell says to a statement on the store, lines without the last line end.
    [[nodiscard]] std::string sqlite(const std::string& statement) const;
    [[nodiscard]] std::vector<std::string> filesIn(const std::string& relative) const;

    QTemporaryDir folder;
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::shared_ptr<HubScript> hub = std::make_shared<HubScript>();
    Received client;
    api::Runtime runtime;

private:
    api::RuntimeOptions options(api::HubFactory makeHub, int searchPort, bool sensors) const;
};

int codeOf(const Json& response);

/// A path from a message's text and the other way, in UTF-8 on every system.
std::filesystem::path pathOf(const std::string& text);
std::string textOf(const std::filesystem::path& path);

/// All bytes of a file; empty when it cannot be read.
QByteArray contentOf(const std::filesystem::path& file);

/// A message whose paths begin at the root, "/a", as it has to be where paths begin with a drive's letter.
std::string withDrive(std::string message);

/// The "avreq" message for decoded pictures of a camera.
Json openMessage(const std::string& ipncid);

} // namespace ipncsdk::test
