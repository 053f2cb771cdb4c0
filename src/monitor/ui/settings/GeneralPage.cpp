#include "monitor/ui/settings/GeneralPage.h"

#include "base/AppEvents.h"
#include "base/DeviceModel.h"
#include "base/Language.h"
#include "base/Settings.h"
#include "monitor/SettingChecks.h"
#include "monitor/ui/settings/SettingsForm.h"
#include "platform/Autostart.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QLineEdit>

namespace keys = corvanta::keys;
namespace settings = corvanta::settings;

GeneralPage::GeneralPage(const AppContext& context, QWidget* parent)
    : SettingsPage(QStringLiteral("generalPage"), tr("常规"), QStringLiteral("settings"), parent)
    , context_(context) {
    SettingsForm form(*this);
    addNames(form);
    addLanguage(form);
    addWindow(form);
    form.addSection(tr("设备"));
    defaultGroup_ = form.addCombo(tr("默认分组"), QStringLiteral("defaultGroup"));
    defaultGroup_->setMaximumWidth(320);
    form.addHint(tr("默认分组的设备从第一个窗口开始排列"));
    form.addRest();
    connect(&context_.events, qOverload<QVariantList, QVariantMap>(&AppEvents::sig_updateList), this,
            [this] { offerGroups(defaultGroup_->currentData().toString()); });
}

void GeneralPage::addNames(SettingsForm& form) {
    form.addSection(tr("名称"));
    appName_ = form.addEdit(tr("APP名称"), QStringLiteral("appName"), settings::LongestName);
    companyName_ = form.addEdit(tr("公司名称"), QStringLiteral("companyName"), settings::LongestName);
}

void GeneralPage::addLanguage(SettingsForm& form) {
    form.addSection(tr("语言"));
    language_ = form.addCombo(tr("界面语言"), QStringLiteral("interfaceLanguage"));
    for (const corvanta::Language& language : corvanta::languages())
        language_->addItem(language.name, language.code);
}

void GeneralPage::addWindow(SettingsForm& form) {
    form.addSection(tr("启动与窗口"));
    autostart_ = form.addCheck(tr("随系统启动"), QStringLiteral("autostart"));
    restore_ = form.addCheck(tr("启动时恢复上次的状态"), QStringLiteral("restoreState"));
    windowState_ = form.addCombo(tr("窗口模式"), QStringLiteral("windowState"));
    for (const auto& [state, text] : corvanta::windowStates())
        windowState_->addItem(QCoreApplication::translate("WindowMode", text), static_cast<int>(state));
    int number = 0;
    for (const auto& entry : corvanta::windowSwitches())
        windowSwitches_ += form.addCheck(QCoreApplication::translate("WindowMode", entry.text),
                                         QStringLiteral("windowSwitch%1").arg(number++));
    form.addHint(tr("窗口模式在下次启动时生效"));
}

void GeneralPage::offerGroups(const QString& chosen) {
    const QSignalBlocker quiet(defaultGroup_); // offering is no choice of the user
    defaultGroup_->clear();
    defaultGroup_->addItem(tr("第一个分组"), QString());
    for (const GroupRecord& group : context_.devices.groups())
        defaultGroup_->addItem(group.name.isEmpty() ? group.id : group.name, group.id);
    if (defaultGroup_->findData(chosen) < 0)
        defaultGroup_->addItem(tr("%1(不存在)").arg(chosen), chosen);
    defaultGroup_->setCurrentIndex(defaultGroup_->findData(chosen));
}

void GeneralPage::showAutostart() {
    starts_ = corvanta::platform::isAutostartEnabled();
    autostart_->setChecked(starts_);
}

void GeneralPage::showValues(const Settings& settings) {
    appName_->setText(settings.get(keys::AppName).toString());
    companyName_->setText(settings.get(keys::CompanyName).toString());
    const int language = language_->findData(settings.get(keys::Language).toString());
    language_->setCurrentIndex(language < 0 ? 0 : language);
    restore_->setChecked(settings.get(keys::RestoreState).toBool());
    const WindowMode mode = WindowMode::fromSetting(settings.get(keys::WindowMode));
    windowState_->setCurrentIndex(windowState_->findData(static_cast<int>(mode.state)));
    for (int i = 0; i < windowSwitches_.size(); ++i)
        windowSwitches_[i]->setChecked(mode.*corvanta::windowSwitches()[static_cast<std::size_t>(i)].isOn);
    otherModes_ = mode.others;
    offerGroups(settings.get(keys::DefaultGroup).toString());
    showAutostart();
}

QVariantMap GeneralPage::values() const {
    WindowMode mode;
    mode.state = static_cast<WindowMode::State>(windowState_->currentData().toInt());
    for (int i = 0; i < windowSwitches_.size(); ++i)
        mode.*corvanta::windowSwitches()[static_cast<std::size_t>(i)].isOn = windowSwitches_[i]->isChecked();
    mode.others = otherModes_;
    return {{keys::AppName, appName_->text().trimmed()},
            {keys::CompanyName, companyName_->text().trimmed()},
            {keys::Language, language_->currentData().toString()},
            {keys::RestoreState, restore_->isChecked()},
            {keys::WindowMode, mode.toSetting()},
            {keys::DefaultGroup, defaultGroup_->currentData().toString()}};
}

bool GeneralPage::isChanged() const {
    return SettingsPage::isChanged() || autostart_->isChecked() != starts_;
}

std::optional<QString> GeneralPage::check() const {
    if (auto problem = settings::checkApplicationName(appName_->text()))
        return problem;
    return settings::checkCompanyName(companyName_->text());
}

std::optional<QString> GeneralPage::storeElsewhere() {
    const bool wanted = autostart_->isChecked();
    if (wanted == starts_)
        return std::nullopt;
    Settings::setAutostart(wanted);
    showAutostart();
    if (starts_ == wanted)
        return std::nullopt;
    return wanted ? tr("无法设置随系统启动") : tr("无法取消随系统启动");
}
