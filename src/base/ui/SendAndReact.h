#pragma once

#include <QString>
#include <QVariantMap>

#include <functional>
#include <string>

class QObject;
class SdkGateway;

namespace corvanta {

/// What happens to the reply of an operation.
struct Reaction {
    std::function<void(const QVariantMap& reply)> done; ///< the service says that it succeeded
    std::function<void(const QString& text)> failed;    ///< a text for the user says why not
    /// Of a refusal by the service, in place of `failed`: its code ("(not login)") and the text for the user.
    std::function<void(const QString& code, const QString& text)> refused = {};
};

/// Sends `json` and reacts once: to the reply, or with a text when none comes within the gateway's patience or it
/// could not be sent. A request that waits for its reply is not sent a second time for the same receiver, whatever
/// was clicked twice: false then, and nothing will be called. Nothing is called after `receiver` is gone. GUI thread.
bool sendAndReact(SdkGateway& gateway, const std::string& json, QObject* receiver, Reaction reaction);

/// Likewise a command, whose result says by "retcode" 0 that it is done.
bool setConfigAndReact(SdkGateway& gateway, const std::string& json, QObject* receiver, Reaction reaction);

} // namespace corvanta
