#pragma once

#include "update/Signature.h"
#include "update/UpdateDescription.h"
#include "update/UpdateServer.h"

#include <QNetworkAccessManager>
#include <QObject>

#include <memory>
#include <optional>

namespace corvanta::update {

/// What a check came to.
struct CheckResult {
    enum class State { Failed, UpToDate, Newer };
    State state = State::Failed;
    QString problem;                                      ///< for the user, when it failed
    std::shared_ptr<const UpdateDescription> description; ///< of a newer version
};

/// Asks the update server for the newest version. GUI thread.
///
/// Who asks connects to `network()`'s `finished` and hands every reply to `take`, which knows its own by their
/// address; `sigDone` tells what it came to.
class VersionCheck final : public QObject {
    Q_OBJECT
public:
    /// With a key, only descriptions that it has signed are taken.
    explicit VersionCheck(std::optional<SigningKey> key = keyOfThisBuild(), QObject* parent = nullptr);
    ~VersionCheck() override;

    /// A server that sends nothing for so long has gone away, ms.
    void setPatience(int milliseconds) { patience_ = milliseconds; }

    /// Begins; false when it runs already or the server has no address that can be used.
    bool start(const UpdateServer& server);
    bool isRunning() const { return isRunning_; }
    const UpdateServer& server() const { return server_; }
    QNetworkAccessManager& network() { return network_; }

    /// An answer has come. Those of others are left alone.
    void take(QNetworkReply* reply);

signals:
    void sigDone(const corvanta::update::CheckResult& result);

private:
    class Parser;
    void get(const QUrl& address, qint64 limit);
    void takeDescription(QNetworkReply& reply);
    void takeSignature(QNetworkReply& reply);
    void parse(const QByteArray& signature);
    void finish(const CheckResult& result);

    const std::optional<SigningKey> key_;
    QNetworkAccessManager network_;
    UpdateServer server_{QString()};
    int patience_ = 30000;
    bool isRunning_ = false;
    QByteArray text_; ///< of the description
    std::unique_ptr<Parser> parser_;
};

} // namespace corvanta::update
