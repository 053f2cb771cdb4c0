#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "linkage/LinkagePlan.h"

class PartList;
class QCheckBox;
class QComboBox;
class QHBoxLayout;
class QLineEdit;
class QPushButton;
class QTabWidget;

/// Makes a linkage plan, or changes one. Deletes itself when it is closed.
class AddAndSet_Linkage_Dialog final : public FramedDialog {
    Q_OBJECT
public:
    /// `plan` has the device's id; one without an id of its own is new.
    AddAndSet_Linkage_Dialog(const AppContext& context, corvanta::linkage::LinkagePlan plan, QWidget* parent);

signals:
    /// The service has taken the plan.
    void sigSaved();

private:
    QLayout* makeHead();
    QLayout* makeConditionRow();
    QWidget* makeParts();
    QLayout* makeActionRow();
    void connectConditions();
    void connectActions();
    void showPlan();
    void showParts();
    void loadLogics();
    void showDuration();
    /// Takes what the controls say into the plan.
    void readPlan();
    void save();
    void pickInput(int row);
    void pickInputUnion(int row);
    void pickOutput(int row);
    void pickOutputUnion(int row);

    AppContext context_;
    corvanta::linkage::LinkagePlan plan_;
    const corvanta::linkage::Boards boards_; ///< of the device as it was when the dialog was opened
    QLineEdit* name_ = nullptr;
    QCheckBox* enable_ = nullptr;
    QCheckBox* report_ = nullptr;
    QComboBox* condition_ = nullptr;
    QComboBox* logic_ = nullptr;
    QComboBox* duration_ = nullptr;
    QLineEdit* ownDuration_ = nullptr;
    QComboBox* threshold_ = nullptr;
    QTabWidget* conditions_ = nullptr;
    PartList* inputs_ = nullptr;
    PartList* inputUnions_ = nullptr;
    PartList* outputs_ = nullptr;
    PartList* outputUnions_ = nullptr;
    QComboBox* outMode_ = nullptr;
    QLineEdit* interval_ = nullptr;
    QPushButton* save_ = nullptr;
};
