#pragma once

#include "monitor/ui/settings/SettingsPage.h"

class DriveList;
class QSpinBox;

/// How recordings are cut into files and which drives they go to.
class RecordPage final : public SettingsPage {
    Q_OBJECT
public:
    explicit RecordPage(QWidget* parent);

protected:
    void showValues(const Settings& settings) override;
    QVariantMap values() const override;

private:
    QSpinBox* packing_;
    QSpinBox* threshold_;
    DriveList* drives_;
};
