#include "monitor/ui/SensorControl.h"

#include "base/AppEvents.h"
#include "base/DeviceModel.h"
#include "base/InputFields.h"
#include "monitor/ui/DeviceTree.h"
#include "sensor/DatDownload.h"
#include "sensor/Samples.h"
#include "sensor/ui/ChartPage.h"
#include "sensor/ui/DataReportDialog.h"
#include "sensor/ui/SensorDialog.h"
#include "sensor/ui/SensorPage.h"
#include "sensor/ui/SensorSend.h"
#include "sensor/ui/ThresholdDialog.h"

#include <algorithm>
#include <utility>

namespace sensor = corvanta::sensor;

SensorControl::SensorControl(const AppContext& context, RecordingStorage& storage, DeviceTree& tree, QWidget& window)
    : QObject(&window)
    , context_(context)
    , storage_(storage)
    , window_(window)
    , data_(context)
    , dats_(new sensor::DatDownload(context.gateway, context.events, storage, this)) {
    connect(&tree, &DeviceTree::sigSensors, this, [this](const QString& ipncId) { openSettings(ipncId, 0); });
    connect(&data_, &sensor::SensorData::sigReport, this, &SensorControl::sigReport);
    connect(&data_, &sensor::SensorData::sigRecords, this, &SensorControl::sigRecords);
    connect(&data_, &sensor::SensorData::sigInputsChanged, this, [this](const QVector<int>& inputs) {
        if (page_ != nullptr)
            page_->refresh(inputs);
        if (charts_ != nullptr)
            charts_->refresh(inputs);
    });
    connect(&data_, &sensor::SensorData::sigQueryFailed, this, [this](const QString& key) {
        if (charts_ != nullptr)
            charts_->onQueryFailed(key);
    });
    connect(dats_, &sensor::DatDownload::sigStored, this, [this] {
        if (charts_ != nullptr)
            charts_->refreshDats();
    });
}

sensor::SensorPage* SensorControl::makeDataPage(QWidget* parent) {
    page_ = new sensor::SensorPage(context_, parent);
    connect(page_, &sensor::SensorPage::sigChart, this, [this](const QVector<int>& inputs) {
        emit sigShowCharts();
        if (charts_ != nullptr)
            charts_->showInputs(inputs);
    });
    connect(page_, &sensor::SensorPage::sigReport, this, &SensorControl::openReport);
    connect(page_, &sensor::SensorPage::sigSettings, this, &SensorControl::openSettings);
    connect(page_, &sensor::SensorPage::sigThresholds, this, &SensorControl::openThresholds);
    connect(page_, &sensor::SensorPage::sigRead, this, &SensorControl::readInputs);
    page_->setInputs(inputs_);
    readTimes();
    return page_;
}

sensor::ChartPage* SensorControl::makeChartPage(QWidget* parent) {
    charts_ = new sensor::ChartPage(context_, storage_, parent);
    connect(charts_, &sensor::ChartPage::sigQuery, &data_, &sensor::SensorData::requestSensorData);
    connect(charts_, &sensor::ChartPage::sigThresholds, this, &SensorControl::openThresholds);
    connect(charts_, &sensor::ChartPage::sigReport, this, &SensorControl::openReport);
    connect(&context_.events, &AppEvents::Onsig_TriggerAlarm, charts_, &sensor::ChartPage::onAlarm);
    charts_->setInputs(inputs_);
    return charts_;
}

sensor::ChartPage* SensorControl::charts() const {
    return charts_;
}

void SensorControl::onLists() {
    const auto before = std::exchange(inputs_, sensor::inputsOf(context_.devices));
    if (page_ != nullptr)
        page_->setInputs(inputs_);
    if (charts_ != nullptr)
        charts_->setInputs(inputs_);
    // A list comes with every change of a device; the times are asked for when there are other inputs.
    const bool isSame = std::equal(before.begin(), before.end(), inputs_.begin(), inputs_.end(),
                                   [](const auto& one, const auto& other) { return one.pid == other.pid; });
    if (!isSame)
        readTimes();
}

void SensorControl::readTimes() {
    if (page_ == nullptr || inputs_.isEmpty())
        return;
    QVector<int> pids;
    for (const sensor::InputRecord& one : qAsConst(inputs_))
        pids += one.pid;
    data_.requestEarliestTimes(pids);
    data_.requestLatestTimes(pids);
}

void SensorControl::readInputs(const QVector<int>& inputs) {
    constexpr int most = 50; // of a click
    for (const int pid : inputs.mid(0, most)) {
        const sensor::InputRecord* const one = input(pid);
        if (one == nullptr)
            continue;
        sensor::readNow(context_, &window_, one->ipncId, pid, nullptr, [this, pid](const QVariantMap& read) {
            // It is told like any other new value.
            emit context_.events.sig_UpdateSensorInputData(
                {}, {QVariantMap{{QStringLiteral("pid"), pid},
                                 {QStringLiteral("value"), read.value(QStringLiteral("value"))},
                                 {QStringLiteral("state"), read.value(QStringLiteral("state"))},
                                 {QStringLiteral("time"), read.value(QStringLiteral("time"))}}});
        });
    }
}

const sensor::InputRecord* SensorControl::input(int pid) const {
    const auto it = std::find_if(inputs_.begin(), inputs_.end(),
                                 [pid](const sensor::InputRecord& one) { return one.pid == pid; });
    return it == inputs_.end() ? nullptr : &*it;
}

void SensorControl::show(QDialog* dialog) {
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialogs_.removeAll(nullptr);
    dialogs_ += dialog;
    dialog->open();
}

void SensorControl::openSettings(const QString& ipncId, int sensorPid) {
    if (context_.devices.device(ipncId) == nullptr)
        return;
    auto* const dialog = new sensor::SensorDialog(context_, ipncId, &window_);
    dialog->select(sensorPid);
    show(dialog);
}

void SensorControl::openThresholds(int pid) {
    if (const sensor::InputRecord* const one = input(pid))
        show(new sensor::ThresholdDialog(context_, *one, &window_));
}

void SensorControl::openReport(const QVector<int>& inputs) {
    show(new sensor::DataReportDialog(context_, inputs_, inputs, &window_));
}

void SensorControl::onAccount(const QString& number) {
    if (std::exchange(account_, number) == number)
        return;
    const auto open = std::exchange(dialogs_, {});
    for (const QPointer<QDialog>& dialog : open) {
        if (dialog != nullptr)
            dialog->close(); // it is about an account that is gone
    }
    if (number.isEmpty())
        onLists();
}
