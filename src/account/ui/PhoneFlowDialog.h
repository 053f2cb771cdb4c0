#pragma once

#include "account/PhoneFlow.h"
#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"

class PhoneFlowPages;

/// A dialog round the pages of one use, for who is not signed in: at the end it asks whether to sign in now.
class PhoneFlowDialog : public FramedDialog {
    Q_OBJECT
public:
    /// Begins with `number`, which may be empty.
    PhoneFlowDialog(const AppContext& context, corvanta::account::FlowUse use, const QString& number,
                    QWidget* parent);

    PhoneFlowPages& pages() const { return *pages_; }

signals:
    /// The user wants to sign in with this number now.
    void sigSignIn(QString number);

private:
    void finish(const QString& number, const QString& password);

    AppContext context_;
    PhoneFlowPages* pages_;
};
