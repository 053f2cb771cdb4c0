#include "account/ui/PhoneFlowDialog.h"

#include "account/RememberedLogins.h"
#include "account/ui/PhoneFlowPages.h"
#include "base/ui/TipDialog.h"

#include <QVBoxLayout>

using corvanta::account::PhoneFlow;

PhoneFlowDialog::PhoneFlowDialog(const AppContext& context, corvanta::account::FlowUse use, const QString& number,
                                 QWidget* parent)
    : FramedDialog(PhoneFlow::text(corvanta::account::flowRules(use).title), parent)
    , context_(context)
    , pages_(new PhoneFlowPages(context, use, this)) {
    setAccessibleName(windowTitle());
    body()->addWidget(pages_, 1);
    pages_->setNumber(number, false);
    connect(pages_, &PhoneFlowPages::sigDone, this, &PhoneFlowDialog::finish);
}

void PhoneFlowDialog::finish(const QString& number, const QString& password) {
    RememberedLogins remembered(context_.database, context_.vault);
    if (!password.isEmpty() && remembered.isRemembered(number))
        remembered.remember({number, password});
    TipDialog::offer({.title = tr("提示"),
                      .text = PhoneFlow::text(pages_->flow().rules().success),
                      .accept = tr("登录"),
                      .reject = tr("关闭")},
                     this,
                     {.accepted =
                          [this, number] {
                              emit sigSignIn(number);
                              accept();
                          },
                      .rejected =
                          [this] {
                              reject();
                          }});
}
