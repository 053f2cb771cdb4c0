#include "base/ui/SendAndReact.h"

#include "base/SdkGateway.h"
#include "base/ServerErrors.h"

#include <QCoreApplication>
#include <QTimer>

#include <memory>

namespace corvanta {
namespace {

/// One operation on its way; whichever comes first, reply or time-out, takes the reaction.
struct Pending {
    Reaction reaction;
    bool answered = false;

    void fail(const QString& text) {
        if (std::exchange(answered, true))
            return;
        if (reaction.failed)
            reaction.failed(text);
    }
    void reply(const QVariantMap& map) {
        if (!serverErrors::isSuccess(map)) {
            fail(serverErrors::textOfReply(map));
            return;
        }
        if (!std::exchange(answered, true) && reaction.done)
            reaction.done(map);
    }
};

} // namespace

void sendAndReact(SdkGateway& gateway, const std::string& json, QObject* receiver, Reaction reaction) {
    auto pending = std::make_shared<Pending>(Pending{std::move(reaction)});
    const int requestId =
        gateway.request(json, receiver, [pending](const QVariantMap& reply) { pending->reply(reply); });
    if (requestId <= 0) {
        QTimer::singleShot(
            0, receiver, [pending] { pending->fail(QCoreApplication::translate("SendAndReact", "请求发送失败!")); });
        return;
    }
    QTimer::singleShot(pending->reaction.timeoutMs, receiver, [pending] {
        pending->fail(QCoreApplication::translate("SendAndReact", "服务器没有响应，请稍后再试!"));
    });
}

} // namespace corvanta
