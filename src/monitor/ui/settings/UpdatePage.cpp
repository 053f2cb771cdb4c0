#include "monitor/ui/settings/UpdatePage.h"

#include "base/AppPaths.h"
#include "base/Settings.h"
#include "monitor/ui/settings/SettingsForm.h"
#include "update/UpdateServer.h"
#include "update/Version.h"

#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>

namespace keys = corvanta::keys;
namespace update = corvanta::update;

namespace {
constexpr int LongestAddress = 255; // characters
} // namespace

UpdatePage::UpdatePage(QWidget* parent)
    : SettingsPage(QStringLiteral("updatePage"), tr("软件更新"), QStringLiteral("refresh"), parent) {
    SettingsForm form(*this);
    form.addSection(tr("软件更新"));
    auto* const version =
        new QLabel(QStringLiteral("%1 (%2)").arg(update::versionText()).arg(update::BuiltInVersion), this);
    version->setObjectName(QStringLiteral("installedVersion"));
    version->setTextFormat(Qt::PlainText);
    form.addRow(tr("当前版本"), version, false);
    server_ = form.addEdit(tr("更新服务器"), QStringLiteral("updateServer"), LongestAddress);
    server_->setPlaceholderText(tr("http://主机:端口"));
    const bool isOthers = AppPaths::isSystemFolder(QCoreApplication::applicationDirPath());
    server_->setEnabled(!isOthers);
    form.addHint(isOthers ? update::packageManagerText() : tr("启动时向该服务器检测新版本，留空则不检测"));
    form.addRest();
}

void UpdatePage::showValues(const Settings& settings) {
    server_->setText(settings.get(keys::UpdateServer).toString());
}

QVariantMap UpdatePage::values() const {
    return {{keys::UpdateServer, server_->text().trimmed()}};
}

std::optional<QString> UpdatePage::check() const {
    return update::checkServerAddress(server_->text());
}
