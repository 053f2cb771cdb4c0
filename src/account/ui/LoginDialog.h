#pragma once

#include "account/RememberedLogins.h"
#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"

class PhoneFlowDialog;
class QCheckBox;
class QComboBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QToolButton;

/// Signs in: number and password are checked, sent, and the service's answer closes the dialog or is told. Leads to
/// registering, to another password, to binding this computer again and to the proxy.
///
/// A remembered sign-in is offered; where there is none, a first start's account is filled in, so that there is
/// something to look at without registering.
class LoginDialog final : public FramedDialog {
    Q_OBJECT
public:
    /// `automatic`: signs in with the remembered number and password as soon as both are there, and not at all when
    /// either is empty.
    LoginDialog(const AppContext& context, bool automatic, QWidget* parent = nullptr);

signals:
    /// The user wants to see the proxy's settings.
    void sigProxy();

private:
    void addFields();
    void addChecks();
    void addLinks();
    QPushButton* addLink(QHBoxLayout& row, const QString& text, const char* objectName);
    void setTabs();
    void offerRemembered(bool automatic);
    void offerFirstAccount();
    void fillPassword(const QString& number, bool thenSignIn);
    void forgetNumber();
    void showForget();
    QString number() const;
    void signIn();
    void signedIn(const corvanta::account::Credentials& entries);
    void refused(const QString& code, const QString& text);
    void setWaiting(bool waiting);
    void openFlow(PhoneFlowDialog* dialog);
    void rebind();

    AppContext context_;
    RememberedLogins remembered_;
    QComboBox* numbers_ = nullptr;
    QLineEdit* password_ = nullptr;
    QToolButton* forget_ = nullptr;
    QCheckBox* savePassword_ = nullptr;
    QCheckBox* autoLogin_ = nullptr;
    QLabel* hint_ = nullptr;
    QPushButton* signIn_ = nullptr;
    QList<QPushButton*> links_;
};
