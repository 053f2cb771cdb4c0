#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"

class QLabel;
class QLineEdit;

/// Signs in: number and password are checked, sent, and the service's answer closes the dialog or is shown.
/// A first start's account is filled in, so that there is something to look at without registering.
class LoginDialog final : public FramedDialog {
    Q_OBJECT
public:
    /// `automatic`: signs in at once when number and password are there.
    LoginDialog(const AppContext& context, bool automatic, QWidget* parent = nullptr);

private:
    void offerFirstAccount();
    void signIn();
    void setWaiting(bool waiting);

    AppContext context_;
    QLineEdit* number_;
    QLineEdit* password_;
    QLabel* hint_;
    QPushButton* signIn_;
};
