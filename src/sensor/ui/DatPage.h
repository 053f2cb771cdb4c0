#pragma once

#include "base/AppContext.h"
#include "sensor/DatFile.h"
#include "sensor/InputRecords.h"

#include <QWidget>

class QLabel;
class QTreeWidget;
class RecordingStorage;

namespace corvanta::sensor {

class ChartTile;

/// The data files that devices have kept of their alarms: a list, and the chosen one as a chart.
class DatPage final : public QWidget {
    Q_OBJECT
public:
    /// `storage` outlives the page.
    DatPage(const AppContext& context, RecordingStorage& storage, QWidget* parent = nullptr);

    void setInputs(const QVector<InputRecord>& inputs) { inputs_ = inputs; }
    /// Reads the list of files anew.
    void refresh();
    /// Shows a file, when it is one of the list.
    void open(const QString& path);

signals:
    void sigThresholds(int input);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void showFile(const QString& path);

    AppContext context_;
    RecordingStorage& storage_;
    QVector<InputRecord> inputs_;
    QTreeWidget* list_;
    QLabel* hint_;
    ChartTile* chart_;
};

} // namespace corvanta::sensor
