#pragma once

#include "account/ui/ListDialog.h"
#include "linkage/LinkagePlan.h"

/// The linkage plans of a device: made, changed, deleted. The list follows what the service sends.
class NewSet_Linkage_Dialog final : public ListDialog {
    Q_OBJECT
public:
    NewSet_Linkage_Dialog(const AppContext& context, const QString& ipncId, QWidget* parent = nullptr);

public slots:
    /// Fills the list from the device's record.
    void onUpdateTable();

signals:
    /// A plan was saved or deleted.
    void sig_updateSensorList();

private:
    void showPlans(QList<corvanta::linkage::LinkagePlan> plans);
    void load();
    void openEditor(const corvanta::linkage::LinkagePlan& plan);
    const corvanta::linkage::LinkagePlan* demandPlan();
    void askToDelete();
    void sendDelete(const corvanta::linkage::LinkagePlan& plan);

    const QString ipncId_;
    QList<corvanta::linkage::LinkagePlan> plans_; ///< a row's key is its place here
    QPushButton* delete_;
};
