#include "monitor/ui/settings/AlarmPage.h"

#include "base/Settings.h"
#include "linkage/AlarmTypes.h"
#include "monitor/SettingChecks.h"
#include "monitor/ui/settings/FileField.h"
#include "monitor/ui/settings/SettingsForm.h"

#include <QCheckBox>

namespace keys = corvanta::keys;
using corvanta::alarmTypes;

namespace {

QString soundFilter() {
    QStringList patterns;
    for (const QString& suffix : corvanta::settings::soundSuffixes())
        patterns += QStringLiteral("*.") + suffix;
    return AlarmPage::tr("声音") + QStringLiteral(" (%1)").arg(patterns.join(QLatin1Char(' ')));
}

} // namespace

AlarmPage::AlarmPage(QWidget* parent)
    : SettingsPage(QStringLiteral("alarmPage"), tr("报警"), QStringLiteral("alarm"), parent) {
    SettingsForm form(*this);
    form.addSection(tr("接收"));
    accepts_ = form.addCheck(tr("接收报警"), QStringLiteral("acceptAlarms"));
    form.addSection(tr("报警声音"));
    for (const corvanta::AlarmType& type : alarmTypes()) {
        const auto [box, sound] =
            form.addCheckedFile(type.shownText(), QStringLiteral("alarm") + QLatin1String(type.id), soundFilter());
        connect(box, &QCheckBox::toggled, sound, &QWidget::setEnabled);
        rows_.push_back({box, sound});
    }
    form.addHint(tr("支持wav、mp3、ogg文件；未选择文件时不播放声音"));
    form.addRest();
}

void AlarmPage::showValues(const Settings& settings) {
    accepts_->setChecked(settings.get(keys::AcceptAlarms).toBool());
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        rows_[i].isOn->setChecked(settings.get(alarmTypes()[i].switchKey).toBool());
        rows_[i].sound->setPath(settings.get(alarmTypes()[i].soundKey).toString());
        rows_[i].sound->setEnabled(rows_[i].isOn->isChecked());
    }
}

QVariantMap AlarmPage::values() const {
    QVariantMap result{{keys::AcceptAlarms, accepts_->isChecked()}};
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        result.insert(alarmTypes()[i].switchKey, rows_[i].isOn->isChecked());
        result.insert(alarmTypes()[i].soundKey, rows_[i].sound->path());
    }
    return result;
}

std::optional<QString> AlarmPage::check() const {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        // A file that was chosen once and has gone since does not keep the user from changing the others.
        if (!isKeyChanged(alarmTypes()[i].soundKey))
            continue;
        if (auto problem = corvanta::settings::checkSoundFile(alarmTypes()[i].shownText(), rows_[i].sound->path()))
            return problem;
    }
    return std::nullopt;
}
