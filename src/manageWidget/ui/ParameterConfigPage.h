#pragma once

#include "manageWidget/DeviceParameters.h"
#include "manageWidget/ui/ConfigPage.h"

#include <QTimer>

class ParameterForm;
class TestPicture;

/// A page of parameters that are read, edited and saved together; only what was changed is written. The page of the
/// picture shows it, writes while values are dragged, and puts them back when it is left without saving.
class ParameterConfigPage final : public ConfigPage {
    Q_OBJECT
public:
    ParameterConfigPage(corvanta::manage::ParameterPage page, const ConfigTarget& target, QWidget* parent);

    void discard() override;

protected:
    void read() override;

private:
    void save();
    void apply();
    void showButtons();

    const corvanta::manage::ParameterPage page_;
    const bool isPicture_;
    ParameterForm* form_;
    TestPicture* picture_ = nullptr;
    QPushButton* save_ = nullptr;
    QPushButton* undo_ = nullptr;
    QVariantMap saved_;   ///< what the device had, or was told by "保存"
    QVariantMap applied_; ///< what it was told while values were dragged
    QTimer applySoon_;
    bool applying_ = false;
};
