#include "base/ui/SendAndReact.h"

#include "base/SdkGateway.h"
#include "base/ServerErrors.h"

#include <QCoreApplication>
#include <QDebug>
#include <QObject>
#include <QTimer>

#include <memory>
#include <set>
#include <utility>

namespace corvanta {
namespace {

/// The requests of a receiver that wait for their replies; its child, so gone with it.
class Waiting final : public QObject {
public:
    static Waiting& of(QObject* receiver) {
        for (QObject* const child : receiver->children()) {
            if (auto* const known = dynamic_cast<Waiting*>(child))
                return *known;
        }
        return *new Waiting(receiver); // the receiver owns it
    }

    std::set<std::string> texts;

private:
    explicit Waiting(QObject* receiver)
        : QObject(receiver) {}
};

/// One operation on its way; whichever comes first, reply or time-out, takes the reaction. Called while the receiver
/// lives.
struct Pending {
    Reaction reaction;
    QObject* receiver;
    std::string json;
    bool (*isSuccess)(const QVariantMap& reply);
    bool answered = false;

    bool begin() { return Waiting::of(receiver).texts.insert(json).second; }
    bool end() {
        if (std::exchange(answered, true))
            return false;
        Waiting::of(receiver).texts.erase(json);
        return true;
    }
    void fail(const QString& text) {
        if (end() && reaction.failed)
            reaction.failed(text);
    }
    void reply(const QVariantMap& map) {
        if (!end())
            return;
        if (isSuccess(map)) {
            if (reaction.done)
                reaction.done(map);
        } else if (reaction.refused) {
            reaction.refused(serverErrors::codeOf(map), serverErrors::textOfReply(map));
        } else if (reaction.failed) {
            reaction.failed(serverErrors::textOfReply(map));
        }
    }
};

bool isDone(const QVariantMap& result) {
    return result.value(QStringLiteral("retcode"), -1).toInt() == 0;
}

/// Null where the same waits already.
std::shared_ptr<Pending> begin(Pending pending) {
    auto begun = std::make_shared<Pending>(std::move(pending));
    if (begun->begin())
        return begun;
    qDebug() << "a request that waits for its reply is not sent twice";
    return nullptr;
}

void limit(const SdkGateway& gateway, const std::shared_ptr<Pending>& pending) {
    QTimer::singleShot(gateway.patience(), pending->receiver,
                       [pending] { pending->fail(serverErrors::noReplyText()); });
}

} // namespace

bool sendAndReact(SdkGateway& gateway, const std::string& json, QObject* receiver, Reaction reaction) {
    const auto pending = begin({std::move(reaction), receiver, json, serverErrors::isSuccess});
    if (pending == nullptr)
        return false;
    const int requestId =
        gateway.request(json, receiver, [pending](const QVariantMap& reply) { pending->reply(reply); });
    if (requestId <= 0) {
        QTimer::singleShot(
            0, receiver, [pending] { pending->fail(QCoreApplication::translate("SendAndReact", "请求发送失败!")); });
        return true;
    }
    limit(gateway, pending);
    return true;
}

bool setConfigAndReact(SdkGateway& gateway, const std::string& json, QObject* receiver, Reaction reaction) {
    const auto pending = begin({std::move(reaction), receiver, json, isDone});
    if (pending == nullptr)
        return false;
    gateway.setConfig(json, receiver, [pending](const QVariantMap& result) { pending->reply(result); });
    limit(gateway, pending);
    return true;
}

} // namespace corvanta
