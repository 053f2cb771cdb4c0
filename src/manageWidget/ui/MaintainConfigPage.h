#pragma once

#include "manageWidget/ui/ConfigPage.h"

/// Restart, and the way back to how the device left its factory.
class MaintainConfigPage final : public ConfigPage {
    Q_OBJECT
public:
    MaintainConfigPage(const ConfigTarget& target, QWidget* parent);

protected:
    void read() override {}

private:
    void addAction(const QString& title, const QString& hint, const QString& question, const QString& operation,
                   const char* objectName);
};
