#pragma once

#include "base/AppContext.h"
#include "monitor/ui/settings/SettingsPage.h"

class PollEditor;
class QComboBox;
class QSpinBox;

/// The screen polling: how often it steps, what it shows, and which devices together.
class PollPage final : public SettingsPage {
    Q_OBJECT
public:
    PollPage(const AppContext& context, QWidget* parent);

protected:
    void showValues(const Settings& settings) override;
    QVariantMap values() const override;

private:
    AppContext context_;
    QSpinBox* interval_;
    QComboBox* mode_;
    PollEditor* editor_;
};
