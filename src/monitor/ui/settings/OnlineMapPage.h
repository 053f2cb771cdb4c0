#pragma once

#include "monitor/ui/settings/SettingsPage.h"

class QLineEdit;

/// Where online maps take their pictures from.
class OnlineMapPage final : public SettingsPage {
    Q_OBJECT
public:
    explicit OnlineMapPage(QWidget* parent);

    std::optional<QString> check() const override;

protected:
    void showValues(const Settings& settings) override;
    QVariantMap values() const override;

private:
    QLineEdit* server_;
};
