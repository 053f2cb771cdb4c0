#include "manageWidget/ui/ConfigPage.h"

#include "base/RequestBuilder.h"
#include "base/ui/Theme.h"
#include "base/ui/TipDialog.h"
#include "manageWidget/ui/ManageSend.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <QVariant>

#include <utility>

namespace manage = corvanta::manage;
namespace requests = corvanta::requests;
namespace theme = corvanta::theme;

namespace {
QLabel* makeSection(const QString& text, QWidget* parent) {
    auto* const label = new QLabel(text, parent);
    label->setProperty("role", QStringLiteral("section"));
    return label;
}
} // namespace

ConfigPage::ConfigPage(const ConfigTarget& target, QWidget* parent)
    : QWidget(parent)
    , target_(target)
    , area_(new QScrollArea(this))
    , column_(nullptr)
    , state_(new QLabel(this)) {
    auto* const outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(3 * theme::Step);
    area_->setWidgetResizable(true);
    area_->setFrameShape(QFrame::NoFrame);
    area_->setFocusPolicy(Qt::NoFocus);
    auto* const inside = new QWidget(area_);
    column_ = new QVBoxLayout(inside);
    area_->setWidget(inside);
    outer->addWidget(area_, 1);
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

void ConfigPage::setNames(const QString& objectName, const QString& text) {
    setObjectName(objectName);
    area_->setObjectName(objectName + QStringLiteral("Area"));
    area_->setAccessibleName(text);
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
    column_->addWidget(makeSection(text, this));
}

void ConfigPage::addSection(QFormLayout& form, const QString& text) {
    form.addRow(makeSection(text, this));
}

void ConfigPage::addFoot(const QList<QPushButton*>& buttons) {
    auto* const row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 2 * theme::Step, 0); // as the page
    row->addStretch(1);
    for (QPushButton* const button : buttons)
        row->addWidget(button);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

QLabel* ConfigPage::addValue(QFormLayout& form, const QString& label, const QString& objectName) {
    auto* const value = new QLabel(QStringLiteral("-"), this);
    value->setObjectName(objectName); // read out by its text, behind its label
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
