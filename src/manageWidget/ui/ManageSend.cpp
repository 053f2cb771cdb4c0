#include "manageWidget/ui/ManageSend.h"

#include "account/ui/AccountForm.h"
#include "base/SdkGateway.h"
#include "base/ui/SendAndReact.h"
#include "manageWidget/ManageLog.h"

#include <QAbstractButton>
#include <QPointer>
#include <QStandardPaths>

namespace corvanta::manage {

bool send(const AppContext& context, QWidget* dialog, Sending sending) {
    const QPointer<QAbstractButton> busy = sending.busy;
    const auto rest = [busy] {
        if (busy != nullptr)
            busy->setEnabled(true);
    };
    Reaction reaction;
    reaction.done = [rest, done = std::move(sending.done)](const QVariantMap& reply) {
        rest();
        if (done)
            done(reply.value(QStringLiteral("resp")).toMap());
    };
    reaction.failed = [rest, dialog, failed = std::move(sending.failed)](const QString& text) {
        rest();
        if (failed)
            failed(text);
        else
            account::tell(text, dialog);
    };
    const bool isSent = sendAndReact(context.gateway, sending.json, dialog, std::move(reaction));
    if (isSent && busy != nullptr)
        busy->setEnabled(false);
    return isSent;
}

void log(const AppContext& context, const QString& what, const QString& detail) {
    logChange(context.operationLog, context.gateway.phoneId(), what, detail);
}

QString documentsFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

} // namespace corvanta::manage
