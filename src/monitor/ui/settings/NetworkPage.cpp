#include "monitor/ui/settings/NetworkPage.h"

#include "base/Settings.h"
#include "monitor/ui/settings/SettingsForm.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

namespace keys = corvanta::keys;

namespace {

const QString HostKey = QStringLiteral("proxyHostName");
const QString PortKey = QStringLiteral("proxyPort");
const QString UserKey = QStringLiteral("proxyUser");
const QString PasswordKey = QStringLiteral("proxyPassword");
const QString KindKey = QStringLiteral("proxyType");
const QString Socks5 = QStringLiteral("socks5");
const QString Http = QStringLiteral("http");

constexpr int LongestEntry = 255; // characters

} // namespace

NetworkPage::NetworkPage(QWidget* parent)
    : SettingsPage(QStringLiteral("networkPage"), tr("网络"), QStringLiteral("network"), parent) {
    SettingsForm form(*this);
    form.addSection(tr("代理"));
    usesProxy_ = form.addCheck(tr("使用代理服务器"), QStringLiteral("useProxy"));
    kind_ = form.addCombo(tr("代理类型"), QStringLiteral("proxyKind"));
    kind_->addItem(QStringLiteral("SOCKS5"), Socks5);
    kind_->addItem(QStringLiteral("HTTP"), Http);
    host_ = form.addEdit(tr("服务器地址"), QStringLiteral("proxyHost"), LongestEntry);
    port_ = form.addEdit(tr("端口"), QStringLiteral("proxyPort"), 5);
    port_->setFixedWidth(kind_->minimumWidth());
    user_ = form.addEdit(tr("用户名"), QStringLiteral("proxyUser"), LongestEntry);
    password_ = form.addEdit(tr("密码"), QStringLiteral("proxyPassword"), LongestEntry);
    password_->setEchoMode(QLineEdit::Password);
    form.addHint(tr("不需要登录的代理服务器，用户名和密码留空"));
    form.addRest();
    connect(usesProxy_, &QCheckBox::toggled, this, &NetworkPage::enableFields);
}

void NetworkPage::enableFields() {
    for (QWidget* field : std::initializer_list<QWidget*>{kind_, host_, port_, user_, password_})
        field->setEnabled(usesProxy_->isChecked());
}

void NetworkPage::showValues(const Settings& settings) {
    record_ = settings.get(keys::Proxy).toMap();
    usesProxy_->setChecked(!record_.isEmpty());
    const auto proxy = ProxySettings::fromMap(record_);
    kind_->setCurrentIndex(proxy.kind == ProxySettings::Kind::Http ? 1 : 0);
    host_->setText(QString::fromStdString(proxy.host));
    port_->setText(proxy.port == 0 ? QString() : QString::number(proxy.port));
    user_->setText(QString::fromStdString(proxy.user));
    password_->setText(QString::fromStdString(proxy.password));
    enableFields();
}

corvanta::settings::ProxyEntries NetworkPage::entries() const {
    return {host_->text().trimmed(), port_->text().trimmed(), user_->text(), password_->text()};
}

QVariantMap NetworkPage::values() const {
    if (!usesProxy_->isChecked())
        return {{keys::Proxy, QVariantMap()}};
    const auto entered = entries();
    QVariantMap proxy = record_;
    proxy.insert(HostKey, entered.host);
    proxy.insert(PortKey, entered.port.toInt());
    proxy.insert(UserKey, entered.user);
    proxy.insert(PasswordKey, entered.password);
    proxy.insert(KindKey, kind_->currentData());
    return {{keys::Proxy, proxy}};
}

std::optional<QString> NetworkPage::check() const {
    return usesProxy_->isChecked() ? corvanta::settings::checkProxy(entries()) : std::nullopt;
}
