#pragma once

#include "monitor/SettingChecks.h"
#include "monitor/ui/settings/SettingsPage.h"

class QCheckBox;
class QComboBox;
class QLineEdit;

/// The proxy that device traffic goes through.
class NetworkPage final : public SettingsPage {
    Q_OBJECT
public:
    explicit NetworkPage(QWidget* parent);

    std::optional<QString> check() const override;

protected:
    void showValues(const Settings& settings) override;
    QVariantMap values() const override;

private:
    corvanta::settings::ProxyEntries entries() const;
    void enableFields();

    QCheckBox* usesProxy_;
    QComboBox* kind_;
    QLineEdit* host_;
    QLineEdit* port_;
    QLineEdit* user_;
    QLineEdit* password_;
    QVariantMap record_; ///< the proxy as it was stored: keys that have no field survive
};
