#include "account/ui/RegisterDialog.h"

RegisterDialog::RegisterDialog(const AppContext& context, const QString& number, QWidget* parent)
    : PhoneFlowDialog(context, corvanta::account::FlowUse::Register, number, parent) {
    setObjectName(QStringLiteral("RegisterDialog"));
}
