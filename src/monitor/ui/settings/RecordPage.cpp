#include "monitor/ui/settings/RecordPage.h"

#include "base/Settings.h"
#include "monitor/ui/settings/DriveList.h"
#include "monitor/ui/settings/SettingsForm.h"

#include <QSpinBox>

namespace keys = corvanta::keys;

RecordPage::RecordPage(QWidget* parent)
    : SettingsPage(QStringLiteral("recordPage"), tr("录像"), QStringLiteral("record"), parent) {
    SettingsForm form(*this);
    form.addSection(tr("录像文件"));
    packing_ = form.addNumber(tr("录像打包时间"), QStringLiteral("packingTime"), 1, 120, tr("分钟"));
    form.addSection(tr("磁盘"));
    threshold_ =
        form.addNumber(tr("磁盘跳转阈值"), QStringLiteral("driveThreshold"), 128, 4096, QStringLiteral("MiB"));
    threshold_->setSingleStep(128);
    form.addHint(tr("剩余空间不足时，录像转到下一个盘符；未勾选盘符时自动选择"));
    drives_ = new DriveList(this);
    connect(drives_, &DriveList::sigEdited, this, &RecordPage::sigEdited);
    form.addWide(drives_, true);
}

void RecordPage::showValues(const Settings& settings) {
    packing_->setValue(settings.get(keys::PackingTime).toInt());
    threshold_->setValue(settings.get(keys::DriveThreshold).toInt());
    drives_->setStored(settings.get(keys::Drives).toStringList());
}

QVariantMap RecordPage::values() const {
    return {{keys::PackingTime, packing_->value()},
            {keys::DriveThreshold, threshold_->value()},
            {keys::Drives, drives_->used()}};
}
