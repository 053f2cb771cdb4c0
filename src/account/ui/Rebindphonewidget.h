#pragma once

#include "account/ui/PhoneFlowDialog.h"

/// Binds this computer to an account again that was unbound from it.
class Rebindphonewidget final : public PhoneFlowDialog {
    Q_OBJECT
public:
    Rebindphonewidget(const AppContext& context, const QString& number, QWidget* parent = nullptr);
};
