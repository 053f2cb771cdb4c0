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
    int timeoutMs = 15000;                              ///< how long the service may take
};

/// Sends `json` and reacts once: to the reply, or with a text when none comes in time or it could not be sent.
/// Nothing is called after `receiver` is gone. GUI thread.
void sendAndReact(SdkGateway& gateway, const std::string& json, QObject* receiver, Reaction reaction);

} // namespace corvanta
