#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "linkage/NotifyRule.h"
#include "linkage/Words.h"

#include <functional>

class QCheckBox;
class QFormLayout;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

/// Makes a notification rule, or changes one. Deletes itself when it is closed.
class NewSet_Notify_Dialog final : public FramedDialog {
    Q_OBJECT
public:
    /// `friends` as the service sent them. Codes of the rule that `names` does not hold stay in the rule.
    NewSet_Notify_Dialog(const AppContext& context, corvanta::linkage::NotifyRule rule, const QVariantList& friends,
                         const corvanta::linkage::SystemNames& names, QWidget* parent);

signals:
    /// The service has taken the rule.
    void sigSaved();

private:
    /// Boxes for the codes of a list of the rule.
    struct Codes {
        QStringList corvanta::linkage::NotifyRule::*field;
        QList<std::pair<QString, QCheckBox*>> boxes; ///< by code
    };
    /// A template of the rule.
    struct Template {
        QString corvanta::linkage::NotifyRule::*field;
        QPlainTextEdit* edit;
    };

    void addPick(QFormLayout& form, const QString& label, const char* objectName, QLineEdit*& shown,
                 std::function<void()> pick);
    void addCodes(QFormLayout& form, const QString& label, const char* objectName,
                  const corvanta::linkage::Words& words, QStringList corvanta::linkage::NotifyRule::*field);
    QWidget* makeTemplate(const QString& label, const char* objectName,
                          QString corvanta::linkage::NotifyRule::*field);
    QWidget* makeRulePage();
    void showPicked();
    void pickReceivers();
    void pickDevices();
    void readRule();
    void save();

    AppContext context_;
    corvanta::linkage::NotifyRule rule_;
    const QList<corvanta::linkage::Receiver> friends_;
    const corvanta::linkage::SystemNames names_;
    QLineEdit* name_ = nullptr;
    QCheckBox* enable_ = nullptr;
    QLineEdit* receivers_ = nullptr;
    QLineEdit* devices_ = nullptr;
    QList<Codes> codes_;
    QList<Template> templates_;
    QPushButton* save_ = nullptr;
};
