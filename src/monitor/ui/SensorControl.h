#pragma once

#include "base/AppContext.h"
#include "sensor/InputRecords.h"
#include "sensor/SensorData.h"

#include <QList>
#include <QObject>
#include <QPointer>

class DeviceTree;
class QDialog;
class QWidget;
class RecordingStorage;

namespace corvanta::sensor {
class ChartPage;
class DatDownload;
class SensorPage;
} // namespace corvanta::sensor

/// Sensors in the main window: the pages of the data and chart modules, which it makes, the dialogs over the window,
/// and what lies between them and the service. GUI thread.
class SensorControl final : public QObject {
    Q_OBJECT
public:
    /// All outlive it.
    SensorControl(const AppContext& context, RecordingStorage& storage, DeviceTree& tree, QWidget& window);

    /// Pages of the modules; the caller's stack owns them.
    corvanta::sensor::SensorPage* makeDataPage(QWidget* parent);
    corvanta::sensor::ChartPage* makeChartPage(QWidget* parent);
    corvanta::sensor::ChartPage* charts() const;

    /// Replies that came by the main window's `sigDeal`.
    void onReport(const QString& name, const QVariantMap& reply) { data_.onReport(name, reply); }
    /// A new list of devices.
    void onLists();
    /// Somebody signed in or out; an empty number is nobody.
    void onAccount(const QString& number);

    void openSettings(const QString& ipncId, int sensorPid);
    void openThresholds(int input);
    void openReport(const QVector<int>& inputs);

signals:
    /// A reply, for the main window to pass on.
    void sigReport(QString name, QVariant reply);
    /// The records of a reply under their key, for the charts.
    void sigRecords(QString key, QVariantList records);
    /// The page of the charts is to be shown.
    void sigShowCharts();

private:
    void show(QDialog* dialog);
    void readTimes();
    void readInputs(const QVector<int>& inputs);
    const corvanta::sensor::InputRecord* input(int pid) const;

    AppContext context_;
    RecordingStorage& storage_;
    QWidget& window_;
    corvanta::sensor::SensorData data_;
    corvanta::sensor::DatDownload* dats_;
    QVector<corvanta::sensor::InputRecord> inputs_;
    QPointer<corvanta::sensor::SensorPage> page_;
    QPointer<corvanta::sensor::ChartPage> charts_;
    QList<QPointer<QDialog>> dialogs_;
    QString account_;
};
