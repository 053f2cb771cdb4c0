#pragma once

#include "monitor/ui/settings/SettingsPage.h"

#include <vector>

class FileField;
class QCheckBox;

/// Whether alarms are received, and how each type of them sounds.
class AlarmPage final : public SettingsPage {
    Q_OBJECT
public:
    explicit AlarmPage(QWidget* parent);

    std::optional<QString> check() const override;

protected:
    void showValues(const Settings& settings) override;
    QVariantMap values() const override;

private:
    struct Row {
        QCheckBox* isOn;
        FileField* sound;
    };

    QCheckBox* accepts_;
    std::vector<Row> rows_; ///< in the order of `corvanta::alarmTypes()`
};
