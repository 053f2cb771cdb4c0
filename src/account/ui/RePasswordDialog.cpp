#include "account/ui/RePasswordDialog.h"

RePasswordDialog::RePasswordDialog(const AppContext& context, const QString& number, QWidget* parent)
    : PhoneFlowDialog(context, corvanta::account::FlowUse::Recover, number, parent) {
    setObjectName(QStringLiteral("RePasswordDialog"));
}
