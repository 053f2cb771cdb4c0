#include "manageWidget/ui/ConfigPage.h"

#include "base/RequestBuilder.h"
#include "base/ui/Theme.h"
#include "base/ui/TipDialog.h"
#include "manageWidget/ui/ManageSend.h"

#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <QVariant>

#include <utility>

namespace manage = corvanta::manage;
namespace requests = corvanta::requests;
namespace theme = corvanta::theme;

ConfigPage::ConfigPage(const ConfigTarget& target, QWidget* parent)
    : QWidget(parent)
    , target_(target)
    , column_(new QVBoxLayout(this))
    , state_(new QLabel(this)) {
    column_->setContentsMargins(0, 0, 2 * theme::Step, 0);
    column_->setSpacing(3 * theme::Step);
    state_->setObjectName(QStringLiteral("configState"));
    state_->setProperty("role", QStringLiteral("warning"));
    state_->setTextFormat(Qt::PlainText);
    state_->setWordWrap(true);
    column_->addWidget(state_);
    reason_ = !target_.isOnline   ? tr("设备不在线，无法读取和修改参数。")
              : !target_.mayWrite ? tr("没有该设备的管理权限，只能查看。")
                                  : QString();
    say({});
}

void ConfigPage::begin() {
    if (std::exchange(begun_, true) || !target_.isOnline)
        return;
    read();
}

void ConfigPage::say(const QString& text) {
    state_->setText(reason_.isEmpty() || text.isEmpty() ? reason_ + text : reason_ + QLatin1Char('\n') + text);
    state_->setVisible(!state_->text().isEmpty());
}

void ConfigPage::addSection(const QString& text) {
    auto* const label = new QLabel(text, this);
    label->setProperty("role", QStringLiteral("section"));
    column_->addWidget(label);
}

QLabel* ConfigPage::addValue(QFormLayout& form, const QString& label, const QString& objectName) {
    auto* const value = new QLabel(QStringLiteral("-"), this);
    value->setObjectName(objectName);
    value->setAccessibleName(label);
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    value->setWordWrap(true);
    form.addRow(label, value);
    return value;
}

QPushButton* ConfigPage::addButton(const QString& text, const QString& objectName, std::function<void()> clicked) {
    auto* const button = new QPushButton(text, this);
    button->setObjectName(objectName);
    button->setAccessibleName(text);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, std::move(clicked));
    return button;
}

void ConfigPage::readNames(const QStringList& names, Done done) {
    manage::send(
        target_.context, this,
        {.json = requests::deviceRequest(QStringLiteral("读取设备参数"), {{QStringLiteral("ipncid"), target_.ipncId},
                                                                          {QStringLiteral("getcmds"), names}}),
         .done = [done = std::move(done)](
                     const QVariantMap& resp) { done(resp.value(QStringLiteral("getcmds")).toMap()); },
         .failed =
             [this](const QString& text) {
                 say(text);
             }});
}

void ConfigPage::run(const QString& operation, QVariantMap parameters, QAbstractButton* busy, Done done) {
    parameters.insert(QStringLiteral("ipncid"), target_.ipncId);
    manage::send(target_.context, this,
                 {.json = requests::deviceRequest(operation, parameters), .busy = busy, .done = std::move(done)});
}

void ConfigPage::write(const QString& operation, const QVariantMap& values, QAbstractButton* busy,
                       const QString& what, const QString& detail, std::function<void()> done) {
    run(operation, {{QStringLiteral("cmdlist"), values}}, busy,
        [this, what, detail, done = std::move(done)](const QVariantMap&) {
            log(what, detail);
            if (done)
                done();
        });
}

void ConfigPage::log(const QString& what, const QString& detail) {
    manage::log(target_.context, what, target_.ipncId + QLatin1Char(' ') + detail);
}

void ConfigPage::ask(const QString& text, const QString& accept, std::function<void()> agreed) {
    TipDialog::offer({tr("提示"), text, accept, tr("取消"), true}, this, {std::move(agreed)});
}
