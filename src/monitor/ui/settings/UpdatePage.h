#pragma once

#include "monitor/ui/settings/SettingsPage.h"

class QLineEdit;

/// Which version this is, and where newer ones come from.
class UpdatePage final : public SettingsPage {
    Q_OBJECT
public:
    explicit UpdatePage(QWidget* parent);

    std::optional<QString> check() const override;

protected:
    void showValues(const Settings& settings) override;
    QVariantMap values() const override;

private:
    QLineEdit* server_;
};
