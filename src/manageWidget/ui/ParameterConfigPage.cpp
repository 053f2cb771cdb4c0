#include "manageWidget/ui/ParameterConfigPage.h"

#include "account/ui/AccountForm.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/ui/SendAndReact.h"
#include "manageWidget/ui/ParameterForm.h"
#include "manageWidget/ui/TestPicture.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace manage = corvanta::manage;
using manage::ParameterPage;

namespace {

constexpr int ApplyEvery = 300; // ms

QString writeOperation(ParameterPage page) {
    switch (page) {
    case ParameterPage::Record:
        return QStringLiteral("设置录像抓拍方式");
    case ParameterPage::Video:
    case ParameterPage::Image:
        return QStringLiteral("设置图像设置");
    case ParameterPage::Osd:
    case ParameterPage::Ftp:
        break;
    }
    return QStringLiteral("设置设备参数");
}

} // namespace

ParameterConfigPage::ParameterConfigPage(ParameterPage page, const ConfigTarget& target, QWidget* parent)
    : ConfigPage(target, parent)
    , page_(page)
    , isPicture_(page == ParameterPage::Image)
    , form_(new ParameterForm(page, isPicture_, this)) {
    if (isPicture_) {
        picture_ = new TestPicture(target.context, this);
        picture_->rest(tr("正在获取画面…"));
        column()->addWidget(picture_, 1);
    }
    column()->addWidget(form_);
    undo_ = addButton(tr("还原"), QStringLiteral("configUndo"), [this] {
        form_->setValues(saved_);
        apply();
        showButtons();
    });
    save_ = addButton(tr("保存"), QStringLiteral("configSave"), [this] { save(); });
    save_->setProperty("primary", true);
    addFoot({undo_, save_});
    applySoon_.setSingleShot(true);
    applySoon_.setInterval(ApplyEvery);
    connect(&applySoon_, &QTimer::timeout, this, &ParameterConfigPage::apply);
    connect(form_, &ParameterForm::sigEdited, this, [this] {
        showButtons();
        if (isPicture_ && !applySoon_.isActive())
            applySoon_.start();
    });
    showButtons();
}

void ParameterConfigPage::showButtons() {
    const bool isChanged = !manage::changed(saved_, form_->values()).isEmpty();
    save_->setEnabled(canWrite() && isChanged);
    undo_->setEnabled(canWrite() && isChanged);
}

void ParameterConfigPage::read() {
    if (picture_ != nullptr)
        picture_->follow(target().ipncId);
    readNames(form_->names(), [this](const QVariantMap& values) {
        form_->setWritable(canWrite());
        form_->setValues(values);
        saved_ = form_->values();
        applied_ = saved_;
        showButtons();
    });
}

void ParameterConfigPage::apply() {
    // One at a time; what is dragged meanwhile is written with the next one.
    if (!isPicture_ || applying_)
        return;
    const QVariantMap wanted = form_->values();
    const QVariantMap values = manage::changed(applied_, wanted);
    if (values.isEmpty())
        return;
    applying_ = true;
    const std::string json = corvanta::requests::deviceRequest(
        writeOperation(page_), {{QStringLiteral("ipncid"), target().ipncId}, {QStringLiteral("cmdlist"), values}});
    const auto done = [this, wanted](const QVariantMap&) {
        applying_ = false;
        applied_ = wanted;
        if (!manage::changed(applied_, form_->values()).isEmpty())
            applySoon_.start();
    };
    const auto failed = [this](const QString& text) {
        applying_ = false;
        say(text);
    };
    // For a receiver of its own: saving the same values meanwhile is another request.
    applying_ = corvanta::sendAndReact(target().context.gateway, json, &applySoon_, {done, failed});
}

void ParameterConfigPage::save() {
    const QVariantMap wanted = form_->values();
    const QVariantMap values = manage::changed(saved_, wanted);
    if (const auto problem = manage::problem(values)) {
        corvanta::account::tell(*problem, this);
        return;
    }
    if (values.isEmpty())
        return;
    write(writeOperation(page_), values, save_, QStringLiteral("修改设备参数"), manage::describe(values),
          [this, wanted] {
              saved_ = wanted;
              applied_ = wanted;
              showButtons();
              corvanta::account::tell(tr("保存成功!"), this);
          });
}

void ParameterConfigPage::discard() {
    applySoon_.stop();
    QVariantMap back = manage::changed(applied_, saved_);
    if (applying_) // what is on its way is not known to have come
        back = manage::changed(form_->values(), saved_);
    if (!isPicture_ || back.isEmpty())
        return;
    const std::string json = corvanta::requests::deviceRequest(
        writeOperation(page_), {{QStringLiteral("ipncid"), target().ipncId}, {QStringLiteral("cmdlist"), back}});
    target().context.gateway.request(json, this, {}); // the dialog is gone before the reply
    form_->setValues(saved_);
    applied_ = saved_;
}
