#include "monitor/ui/settings/VideoPage.h"

#include "base/Settings.h"
#include "monitor/SettingChecks.h"
#include "monitor/ui/settings/SettingsForm.h"
#include "video/Placement.h"

#include <QComboBox>
#include <QLineEdit>

namespace keys = corvanta::keys;
namespace settings = corvanta::settings;
namespace video = corvanta::video;

VideoPage::VideoPage(QWidget* parent)
    : SettingsPage(QStringLiteral("videoPage"), tr("视频"), QStringLiteral("video"), parent) {
    SettingsForm form(*this);
    form.addSection(tr("画面"));
    aspect_ = form.addCombo(tr("画面比例"), QStringLiteral("aspectMode"));
    for (const auto mode : {video::AspectMode::KeepRatio, video::AspectMode::Stretch})
        aspect_->addItem(mode == video::AspectMode::Stretch ? tr("平铺") : tr("原始比例"), static_cast<int>(mode));
    form.addSection(tr("打开视频"));
    longest_ = form.addCombo(tr("视频打开最长时间"), QStringLiteral("longestOpening"));
    longest_->setEditable(true);
    longest_->setInsertPolicy(QComboBox::NoInsert);
    longest_->lineEdit()->setObjectName(QStringLiteral("longestOpeningEdit"));
    longest_->lineEdit()->setAccessibleName(tr("视频打开最长时间"));
    for (const int minutes : {0, 1, 2, 5, 10, 30, 60}) // 0: no limit
        longest_->addItem(settings::longestOpeningText(minutes));
    form.addHint(tr("单位：分钟。超过该时间仍未打开时提示失败"));
    form.addRest();
}

void VideoPage::showValues(const Settings& settings) {
    const auto mode = video::aspectModeFromSetting(settings.get(keys::AspectMode).toString());
    aspect_->setCurrentIndex(aspect_->findData(static_cast<int>(mode)));
    const QString longest = settings::longestOpeningText(settings.get(keys::LongestOpening));
    longest_->setCurrentIndex(longest_->findText(longest)); // from which the arrow keys go on
    longest_->setEditText(longest);
}

QVariantMap VideoPage::values() const {
    const auto mode = static_cast<video::AspectMode>(aspect_->currentData().toInt());
    const QString longest = longest_->currentText().trimmed();
    // What does not pass the check is told apart from every number.
    const bool isWell = !settings::checkLongestOpening(longest);
    return {{keys::AspectMode, video::settingText(mode)},
            {keys::LongestOpening, isWell ? settings::longestOpeningFromText(longest) : QVariant(longest)}};
}

std::optional<QString> VideoPage::check() const {
    return settings::checkLongestOpening(longest_->currentText().trimmed());
}
