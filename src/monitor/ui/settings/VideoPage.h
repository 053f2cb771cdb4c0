#pragma once

#include "monitor/ui/settings/SettingsPage.h"

class QComboBox;

/// How videos are shown and how long they may stay open.
class VideoPage final : public SettingsPage {
    Q_OBJECT
public:
    explicit VideoPage(QWidget* parent);

    std::optional<QString> check() const override;

protected:
    void showValues(const Settings& settings) override;
    QVariantMap values() const override;

private:
    QComboBox* aspect_;
    QComboBox* longest_;
};
