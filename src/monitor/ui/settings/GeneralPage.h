#pragma once

#include "base/AppContext.h"
#include "monitor/WindowMode.h"
#include "monitor/ui/settings/SettingsPage.h"

class QCheckBox;
class QComboBox;
class QLineEdit;

/// Names, the way the main window begins, the default group, and the start with the system.
class GeneralPage final : public SettingsPage {
    Q_OBJECT
public:
    GeneralPage(const AppContext& context, QWidget* parent);

    bool isChanged() const override;
    std::optional<QString> check() const override;
    std::optional<QString> storeElsewhere() override;

protected:
    void showValues(const Settings& settings) override;
    QVariantMap values() const override;

private:
    void addNames(class SettingsForm& form);
    void addLanguage(class SettingsForm& form);
    void addWindow(class SettingsForm& form);
    void offerGroups(const QString& chosen);
    void showAutostart();

    AppContext context_;
    QLineEdit* appName_;
    QLineEdit* companyName_;
    QCheckBox* autostart_;
    QComboBox* language_;
    QCheckBox* restore_;
    QComboBox* windowState_;
    QList<QCheckBox*> windowSwitches_; ///< in the order of `corvanta::windowSwitches()`
    QComboBox* defaultGroup_;
    QStringList otherModes_; ///< of the window, unknown to this program
    bool starts_ = false;    ///< whether the system starts the program, when it was last asked
};
