#pragma once

#include "account/ui/PhoneFlowDialog.h"

/// Registers a new account for a phone number.
class RegisterDialog final : public PhoneFlowDialog {
    Q_OBJECT
public:
    RegisterDialog(const AppContext& context, const QString& number, QWidget* parent = nullptr);
};
