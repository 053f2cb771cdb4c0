#include "account/ui/AccountForm.h"

#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/ui/FaintHint.h"
#include "base/ui/SendAndReact.h"
#include "base/ui/Theme.h"
#include "base/ui/TipDialog.h"

#include <QCoreApplication>
#include <QFormLayout>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

#include <algorithm>

namespace corvanta::account {

QFormLayout* makeForm() {
    auto* const form = new QFormLayout; // the layout it is added to owns it
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->setHorizontalSpacing(3 * theme::Step);
    form->setVerticalSpacing(3 * theme::Step);
    return form;
}

QLineEdit* addField(QFormLayout& form, const QString& label, const QString& name, const QString& objectName) {
    auto* const edit = new QLineEdit;
    edit->setObjectName(objectName);
    edit->setAccessibleName(name);
    edit->setMinimumWidth(240); // px
    faintHint(*edit);
    form.addRow(label, edit);
    return edit;
}

void tell(const QString& text, QWidget* parent) {
    // One answer for many requests is read once.
    const auto open = parent->findChildren<TipDialog*>(QString(), Qt::FindDirectChildrenOnly);
    if (std::any_of(open.begin(), open.end(),
                    [&text](const TipDialog* tip) { return tip->isVisible() && tip->text() == text; }))
        return;
    TipDialog::tell(QCoreApplication::translate("AccountForm", "提示"), text, parent);
}

bool send(const AppContext& context, QWidget* dialog, Request request) {
    // The list that a button belongs to may be built anew before the reply comes.
    const QPointer<QPushButton> busy = request.busy;
    const auto rest = [busy] {
        if (busy != nullptr)
            busy->setEnabled(true);
    };
    const auto fail = [rest, dialog, failed = std::move(request.failed)](const QString& text) {
        rest();
        tell(text, dialog);
        if (failed)
            failed();
    };
    Reaction reaction;
    reaction.done = [rest, done = std::move(request.done)](const QVariantMap& reply) {
        rest();
        if (done)
            done(reply.value(QStringLiteral("resp")).toMap());
    };
    reaction.failed = fail;
    reaction.refused = [fail, refusal = std::move(request.refusal)](const QString& code, const QString& text) {
        fail(refusal ? refusal(code, text) : text);
    };
    const std::string json = requests::accountRequest(request.operation, request.parameters);
    const bool isSent = sendAndReact(context.gateway, json, dialog, std::move(reaction));
    if (isSent && busy != nullptr)
        busy->setEnabled(false);
    return isSent;
}

} // namespace corvanta::account
