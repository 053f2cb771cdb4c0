#pragma once

#include "base/AppContext.h"
#include "sensor/SensorData.h"
#include "sensor/ui/ChartPlot.h"

#include <QSet>
#include <QVariantList>
#include <QVector>
#include <QWidget>

class QGridLayout;
class QStackedWidget;
class QToolButton;
class RecordingStorage;

namespace corvanta::sensor {

class ChartTile;
class DatPage;

/// The chart module: one, two, four or nine charts, and the data files of alarms. Layout and chosen inputs are kept
/// in the settings; the samples of tiles that a smaller layout hides in the database, while the program runs.
class ChartPage final : public QWidget {
    Q_OBJECT
public:
    /// `storage` outlives the page.
    ChartPage(const AppContext& context, RecordingStorage& storage, QWidget* parent = nullptr);
    ~ChartPage() override;

    void setInputs(const QVector<InputRecord>& inputs);
    /// What is known of these inputs has changed.
    void refresh(const QVector<int>& inputs);
    /// Shows inputs: in the first chart that is empty, else in the first one in place of what it shows.
    void showInputs(const QVector<int>& inputs);
    void showLayout(int layout);
    /// Goes to the data file of an alarm.
    void showDat(const QString& path);
    /// A data file has come.
    void refreshDats();

    ChartTile* tile(int number) const { return tiles_.value(number); }

public slots:
    /// The records of a reply under the key of their query: every chart that has asked for them takes them.
    void UpdateSensorInputData(const QString& key, const QVariantList& records);
    void onQueryFailed(const QString& key);
    /// An alarm as the service tells it.
    void onAlarm(const QVariantMap& message);

signals:
    void sigQuery(corvanta::sensor::SampleQuery query);
    void sigThresholds(int input);
    void sigReport(QVector<int> inputs);

private:
    QWidget* makeBar();
    ChartTile* makeTile(int number);
    void pick(int number, const QString& ipncId);
    void dropDevice(int number, const QString& ipncId);
    void choose(int number, const QVector<int>& inputs);
    void applyInputs(int number);
    void hideTile(int number);
    void keepSetting();

    AppContext context_;
    QVector<InputRecord> inputs_;
    QVector<QVector<int>> chosen_; ///< by tile
    QVector<ChartTile*> tiles_;    ///< null where none was needed yet
    std::vector<AlarmMark> marks_;
    QStackedWidget* stack_ = nullptr;
    QWidget* wall_ = nullptr;
    QGridLayout* grid_ = nullptr;
    DatPage* dats_ = nullptr;
    QVector<QToolButton*> layoutButtons_;
    QToolButton* datButton_ = nullptr;
    int layout_ = 0;
};

} // namespace corvanta::sensor
