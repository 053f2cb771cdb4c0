#pragma once

#include "account/ui/PhoneFlowDialog.h"

/// Gives an account whose password was forgotten another one.
class RePasswordDialog final : public PhoneFlowDialog {
    Q_OBJECT
public:
    RePasswordDialog(const AppContext& context, const QString& number, QWidget* parent = nullptr);
};
