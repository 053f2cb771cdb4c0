#include "account/ui/Rebindphonewidget.h"

Rebindphonewidget::Rebindphonewidget(const AppContext& context, const QString& number, QWidget* parent)
    : PhoneFlowDialog(context, corvanta::account::FlowUse::Rebind, number, parent) {
    setObjectName(QStringLiteral("Rebindphonewidget"));
}
