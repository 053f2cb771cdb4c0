#include "monitor/ui/settings/PollPage.h"

#include "base/AppEvents.h"
#include "base/ScreenPoll.h"
#include "base/Settings.h"
#include "monitor/ui/settings/PollEditor.h"
#include "monitor/ui/settings/SettingsForm.h"

#include <QComboBox>
#include <QSpinBox>

namespace keys = corvanta::keys;

namespace {

constexpr int UsualInterval = 5; // s, what the polling takes instead of a value that cannot be

int modeValue(ScreenPoll::Mode mode) {
    return static_cast<int>(mode);
}

} // namespace

PollPage::PollPage(const AppContext& context, QWidget* parent)
    : SettingsPage(QStringLiteral("pollPage"), tr("轮屏"), QStringLiteral("poll"), parent)
    , context_(context) {
    SettingsForm form(*this);
    form.addSection(tr("轮屏方式"));
    interval_ = form.addNumber(tr("轮屏时间"), QStringLiteral("pollInterval"), 1, 3600, tr("秒"));
    mode_ = form.addCombo(tr("轮屏模式"), QStringLiteral("pollMode"));
    mode_->addItem(tr("轮屏视频通道"), modeValue(ScreenPoll::Mode::Videos));
    mode_->addItem(tr("轮屏图片预览"), modeValue(ScreenPoll::Mode::Previews));
    form.addSection(tr("轮屏列表"));
    editor_ = new PollEditor(context_.devices, this);
    form.addWide(editor_, true);
    connect(editor_, &PollEditor::sigEdited, this, &PollPage::sigEdited);
    connect(&context_.events, qOverload<QVariantList, QVariantMap>(&AppEvents::sig_updateList), editor_,
            &PollEditor::onDevices);
}

void PollPage::showValues(const Settings& settings) {
    const int seconds = settings.get(keys::PollInterval).toInt();
    const bool isWell = seconds >= interval_->minimum() && seconds <= interval_->maximum();
    interval_->setValue(isWell ? seconds : UsualInterval);
    const bool previews = settings.get(keys::PollMode).toInt() == modeValue(ScreenPoll::Mode::Previews);
    mode_->setCurrentIndex(
        mode_->findData(modeValue(previews ? ScreenPoll::Mode::Previews : ScreenPoll::Mode::Videos)));
    editor_->setDraft(PollDraft(context_.poll.entries()));
}

QVariantMap PollPage::values() const {
    QVariantList entries;
    for (const PollEntry& entry : editor_->draft().entries())
        entries += QVariant(entry.toMap());
    return {{keys::PollInterval, interval_->value()},
            {keys::PollMode, mode_->currentData()},
            {keys::PollEntries, entries}};
}
