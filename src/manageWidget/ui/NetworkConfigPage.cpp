#include "manageWidget/ui/NetworkConfigPage.h"

#include "account/ui/AccountForm.h"
#include "base/RequestBuilder.h"
#include "base/ui/SendAndReact.h"
#include "manageWidget/AddressChecks.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <initializer_list>
#include <utility>

namespace account = corvanta::account;
namespace manage = corvanta::manage;

NetworkConfigPage::NetworkConfigPage(const ConfigTarget& target, QWidget* parent)
    : ConfigPage(target, parent) {
    buildWired();
    buildWifi();
    column()->addStretch(1);
    showState();
}

void NetworkConfigPage::buildWired() {
    addSection(tr("有线网络"));
    QFormLayout* const form = account::makeForm();
    dhcp_ = new QCheckBox(tr("自动获取地址(DHCP)"), this);
    dhcp_->setObjectName(QStringLiteral("netDhcp"));
    dhcp_->setAccessibleName(dhcp_->text());
    form->addRow(QString(), dhcp_);
    ip_ = account::addField(*form, tr("IP地址"), tr("IP地址"), QStringLiteral("netIp"));
    mask_ = account::addField(*form, tr("子网掩码"), tr("子网掩码"), QStringLiteral("netMask"));
    gateway_ = account::addField(*form, tr("网关"), tr("网关"), QStringLiteral("netGateway"));
    dns_ = account::addField(*form, tr("DNS"), tr("DNS"), QStringLiteral("netDns"));
    mac_ = addValue(*form, tr("MAC地址"), QStringLiteral("netMac"));
    column()->addLayout(form);
    saveWired_ = addButton(tr("保存有线网络"), QStringLiteral("netSave"), [this] { saveWired(); });
    column()->addWidget(saveWired_, 0, Qt::AlignRight);
    connect(dhcp_, &QCheckBox::toggled, this, &NetworkConfigPage::showState);
}

void NetworkConfigPage::buildWifi() {
    addSection(tr("无线网络"));
    QFormLayout* const form = account::makeForm();
    ssid_ = account::addField(*form, tr("网络名称"), tr("无线网络名称"), QStringLiteral("wifiSsid"));
    security_ = new QComboBox(this);
    security_->setObjectName(QStringLiteral("wifiSecurity"));
    security_->setAccessibleName(tr("加密方式"));
    security_->addItem(tr("WPA2"), QStringLiteral("wpa2"));
    security_->addItem(tr("WPA3"), QStringLiteral("wpa3"));
    security_->addItem(tr("开放"), QStringLiteral("open"));
    form->addRow(tr("加密方式"), security_);
    password_ = account::addField(*form, tr("密码"), tr("无线密码"), QStringLiteral("wifiPassword"));
    password_->setEchoMode(QLineEdit::Password);
    signal_ = addValue(*form, tr("信号强度"), QStringLiteral("wifiSignal"));
    column()->addLayout(form);
    saveWifi_ = addButton(tr("保存无线网络"), QStringLiteral("wifiSave"), [this] { saveWifi(); });
    column()->addWidget(saveWifi_, 0, Qt::AlignRight);
    connect(security_, qOverload<int>(&QComboBox::currentIndexChanged), this, &NetworkConfigPage::showState);
}

void NetworkConfigPage::showState() {
    for (QWidget* const field : std::initializer_list<QWidget*>{dhcp_, saveWired_, ssid_, security_, saveWifi_})
        field->setEnabled(canWrite());
    for (QLineEdit* const field : {ip_, mask_, gateway_, dns_})
        field->setEnabled(canWrite() && !dhcp_->isChecked());
    const bool isOpen = security_->currentData().toString() == QLatin1String("open");
    password_->setEnabled(canWrite() && !isOpen);
    if (isOpen)
        password_->clear();
}

void NetworkConfigPage::read() {
    readNames({QStringLiteral("netstate")},
              [this](const QVariantMap& values) { show(values.value(QStringLiteral("netstate")).toMap()); });
}

void NetworkConfigPage::show(const QVariantMap& state) {
    if (state.isEmpty()) {
        say(tr("该设备不提供网络参数。"));
        return;
    }
    const auto text = [&state](const char* key) {
        return state.value(QLatin1String(key)).toString();
    };
    dhcp_->setChecked(state.value(QStringLiteral("dhcp")).toBool());
    ip_->setText(text("ip"));
    mask_->setText(text("mask"));
    gateway_->setText(text("gateway"));
    dns_->setText(text("dns"));
    mac_->setText(text("mac"));
    const QVariantMap wifi = state.value(QStringLiteral("wifi")).toMap();
    ssid_->setText(wifi.value(QStringLiteral("ssid")).toString());
    const int security = security_->findData(wifi.value(QStringLiteral("security")).toString());
    if (security >= 0)
        security_->setCurrentIndex(security);
    const QVariant strength = wifi.value(QStringLiteral("signal"));
    signal_->setText(strength.isNull() ? QStringLiteral("-") : tr("%1%").arg(strength.toInt()));
    showState();
}

void NetworkConfigPage::saveWired() {
    const manage::WiredAddress address{dhcp_->isChecked(), ip_->text().trimmed(), mask_->text().trimmed(),
                                       gateway_->text().trimmed(), dns_->text().trimmed()};
    if (const auto problem = manage::checkWired(address)) {
        account::tell(*problem, this);
        return;
    }
    command(QStringLiteral("本地设备修改有线ip"),
            {{QStringLiteral("ip"), address.ip},
             {QStringLiteral("mask"), address.mask},
             {QStringLiteral("gateway"), address.gateway},
             {QStringLiteral("dns"), address.dns},
             {QStringLiteral("dhcp"), address.dhcp}},
            saveWired_, QStringLiteral("修改有线网络"), address.dhcp ? QStringLiteral("DHCP") : address.ip);
}

void NetworkConfigPage::saveWifi() {
    const QString security = security_->currentData().toString();
    if (const auto problem = manage::checkWifi(ssid_->text(), password_->text(), security)) {
        account::tell(*problem, this);
        return;
    }
    command(QStringLiteral("本地设备修改配置无线账号密码"),
            {{QStringLiteral("ssid"), ssid_->text()},
             {QStringLiteral("password"), password_->text()},
             {QStringLiteral("security"), security}},
            saveWifi_, QStringLiteral("修改无线网络"), ssid_->text());
}

void NetworkConfigPage::command(const QString& operation, QVariantMap parameters, QPushButton* busy,
                                const QString& what, const QString& detail) {
    parameters.insert(QStringLiteral("ipncid"), target().ipncId);
    const auto rest = [this, busy] {
        busy->setEnabled(canWrite());
    };
    const bool isSent = corvanta::setConfigAndReact(target().context.gateway,
                                                    corvanta::requests::directCommand(operation, parameters), this,
                                                    {.done =
                                                         [this, rest, what, detail](const QVariantMap&) {
                                                             rest();
                                                             log(what, detail);
                                                             account::tell(tr("保存成功!"), this);
                                                         },
                                                     .failed =
                                                         [this, rest](const QString& text) {
                                                             rest();
                                                             account::tell(text, this);
                                                         }});
    if (isSent)
        busy->setEnabled(false);
}
