#include "manageWidget/ui/InfoConfigPage.h"

#include "account/ui/AccountForm.h"
#include "base/DeviceModel.h"
#include "manageWidget/TimeZones.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace account = corvanta::account;

namespace {

/// The list's "UTC+08:00" as a device has it.
QString deviceZone(QString zone) {
    return zone.replace(QStringLiteral("UTC"), QStringLiteral("GMT"));
}

} // namespace

InfoConfigPage::InfoConfigPage(const ConfigTarget& target, QWidget* parent)
    : ConfigPage(target, parent) {
    addSection(tr("设备"));
    QFormLayout* const form = account::makeForm();
    column()->addLayout(form);
    const DeviceRecord* const device = target.context.devices.device(target.ipncId);
    const QVariantMap record = device == nullptr ? QVariantMap() : device->record;
    const QVariantMap info = record.value(QStringLiteral("info")).toMap();
    addValue(*form, tr("名称"), QStringLiteral("infoName"))
        ->setText(device == nullptr ? QString() : device->displayName());
    addValue(*form, tr("设备编号"), QStringLiteral("infoNumber"))->setText(target.ipncId);
    addValue(*form, tr("型号"), QStringLiteral("infoModel"))->setText(info.value(QStringLiteral("model")).toString());
    addValue(*form, tr("序列号"), QStringLiteral("infoSerial"))
        ->setText(info.value(QStringLiteral("serial")).toString());
    addValue(*form, tr("地址"), QStringLiteral("infoAddress"))->setText(info.value(QStringLiteral("ip")).toString());
    software_ = addValue(*form, tr("固件版本"), QStringLiteral("infoSoftware"));
    kernel_ = addValue(*form, tr("内核版本"), QStringLiteral("infoKernel"));
    bios_ = addValue(*form, tr("引导版本"), QStringLiteral("infoBios"));
    addSection(*form, tr("时区"));
    auto* const row = new QHBoxLayout;
    zone_ = new QComboBox(this);
    zone_->setObjectName(QStringLiteral("infoZone"));
    zone_->setAccessibleName(tr("时区"));
    row->addWidget(zone_, 1);
    save_ = addButton(tr("保存"), QStringLiteral("infoZoneSave"), [this] { saveZone(); });
    row->addWidget(save_);
    form->addRow(tr("时区"), row);
    column()->addStretch(1);
    fillZones(info.value(QStringLiteral("timezone")).toString());
    zone_->setEnabled(target.mayWrite); // kept by the service, so the device may be offline
    save_->setEnabled(target.mayWrite);
}

void InfoConfigPage::fillZones(const QString& current) {
    for (const QVariant& one : target().context.timeZones) {
        const QVariantMap entry = one.toMap();
        const QString zone = entry.value(QStringLiteral("timezone")).toString();
        const QString places = corvanta::manage::zonePlaces(entry.value(QStringLiteral("name")).toString());
        zone_->addItem(QStringLiteral("%1  %2").arg(zone, places), deviceZone(zone));
    }
    int known = zone_->findData(current);
    if (known < 0 && !current.isEmpty()) {
        zone_->insertItem(0, current, current); // one that the list does not have
        known = 0;
    }
    zone_->setCurrentIndex(known);
}

void InfoConfigPage::read() {
    readNames({QStringLiteral("softwareversion"), QStringLiteral("kernelversion"), QStringLiteral("biosversion")},
              [this](const QVariantMap& values) {
                  software_->setText(values.value(QStringLiteral("softwareversion")).toString());
                  kernel_->setText(values.value(QStringLiteral("kernelversion")).toString());
                  bios_->setText(values.value(QStringLiteral("biosversion")).toString());
              });
}

void InfoConfigPage::saveZone() {
    const QString zone = zone_->currentData().toString();
    if (zone.isEmpty())
        return;
    run(QStringLiteral("设置时区"), {{QStringLiteral("timezone"), zone}}, save_, [this, zone](const QVariantMap&) {
        log(QStringLiteral("设置时区"), zone);
        account::tell(tr("保存成功!"), this);
    });
}
