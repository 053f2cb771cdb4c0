#include "monitor/ui/settings/OnlineMapPage.h"

#include "base/Settings.h"
#include "map/web/TileAddress.h"
#include "monitor/ui/settings/SettingsForm.h"

#include <QLineEdit>

namespace keys = corvanta::keys;
using corvanta::map::TileAddress;

OnlineMapPage::OnlineMapPage(QWidget* parent)
    : SettingsPage(QStringLiteral("onlineMapPage"), tr("地图"), QStringLiteral("map"), parent) {
    SettingsForm form(*this);
    form.addSection(tr("在线地图"));
    server_ = form.addEdit(tr("地图服务器"), QStringLiteral("tileServer"), TileAddress::Longest);
    server_->setPlaceholderText(tr("https://主机/{z}/{x}/{y}.png"));
    form.addHint(tr("留空则使用内置地图；修改后重新打开地图时生效"));
    form.addRest();
}

void OnlineMapPage::showValues(const Settings& settings) {
    server_->setText(settings.get(keys::TileServer).toString());
}

QVariantMap OnlineMapPage::values() const {
    return {{keys::TileServer, server_->text().trimmed()}};
}

std::optional<QString> OnlineMapPage::check() const {
    return TileAddress::problemOf(server_->text());
}
