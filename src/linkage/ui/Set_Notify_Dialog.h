#pragma once

#include "account/ui/ListDialog.h"
#include "linkage/NotifyRule.h"
#include "linkage/Words.h"

/// The rules by which people are told of alarms: made, changed, deleted.
class Set_Notify_Dialog final : public ListDialog {
    Q_OBJECT
public:
    explicit Set_Notify_Dialog(const AppContext& context, QWidget* parent = nullptr);

public slots:
    /// Asks the service for the rules.
    void onUpTableData();

private:
    void fill();
    /// Rules can be edited when the names of their codes and the friends are known.
    void allowEditing();
    void openEditor(const corvanta::linkage::NotifyRule& rule);
    void edit();
    void askToDelete();
    void sendDelete(int id, const QString& name);

    QList<corvanta::linkage::NotifyRule> rules_; ///< a row's key is its place here
    QVariantList friends_;                       ///< as the service sent them
    corvanta::linkage::SystemNames names_;
    bool hasNames_ = false;
    bool hasRules_ = false;
    QPushButton* add_;
    QPushButton* edit_;
    QPushButton* delete_;
};
