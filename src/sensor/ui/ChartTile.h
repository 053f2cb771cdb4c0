#pragma once

#include "base/ui/Worded.h"
#include "sensor/ChartTrack.h"
#include "sensor/ui/ChartPlot.h"

#include <QHash>
#include <QMap>
#include <QTimer>
#include <QWidget>

#include <map>

class InputFields;
class QLabel;
class QMimeData;
class QToolButton;

namespace corvanta::sensor {

/// One chart: up to `MostInputsOfAChart` inputs over time. Follows the present until the user looks elsewhere. Asks
/// for the samples that it lacks.
class ChartTile final : public QWidget {
    Q_OBJECT
public:
    /// `number` counts the tiles; `fields` outlives it.
    ChartTile(int number, const InputFields& fields, QWidget* parent = nullptr);
    ~ChartTile() override;

    /// Shows these inputs, those that are there already with the samples that they have.
    void setInputs(const QVector<InputRecord>& inputs);
    QVector<int> inputs() const;
    bool hasRoomFor(int more) const;

    /// Shows samples that are all there are, from the first to the last, and follows nothing.
    void showFixed(const QVector<InputRecord>& inputs, const QMap<int, Samples>& samples);

    void setMarks(const std::vector<AlarmMark>& marks) { plot_->setMarks(marks); }
    /// Records that were asked for, here or elsewhere.
    void takeRecords(const QString& key, const Samples& records);
    void takeFailure(const QString& key);
    /// What is known of inputs has changed.
    void refresh(const QVector<int>& changed);

    /// The newest samples, for when the tile is shown again, and back.
    QMap<int, Samples> keptSamples() const;
    void restoreSamples(const QMap<int, Samples>& samples);

    /// Whether it scrolls with the present.
    bool isLive() const { return isLive_; }
    void setLive(bool on);
    ChartPlot& plot() const { return *plot_; }

signals:
    void sigQuery(corvanta::sensor::SampleQuery query);
    /// Inputs are to be chosen for this tile.
    void sigAdd(int number);
    /// An input is not to be shown any more.
    void sigRemove(int number, int input);
    void sigClear(int number);
    void sigThresholds(int input);
    /// A device was dropped on it.
    void sigDevice(int number, QString ipncid);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QWidget* makeHead();
    QToolButton* headButton(const char* name, Text text, const QString& drawing);
    void fillLegend();
    void showValues();
    void inputMenu(int input, const QPoint& place);
    void chooseSpan(const QPoint& place);
    void setSpan(double seconds);
    void tick();
    void load();
    void savePicture();

    const int number_;
    const InputFields& fields_;
    QVector<InputRecord> inputs_;
    std::map<int, ChartTrack> tracks_; ///< by pid
    ChartPlot* plot_;
    QWidget* legend_ = nullptr;
    QHash<int, QToolButton*> chips_; ///< of the legend, by pid
    QToolButton* live_ = nullptr;
    QToolButton* add_ = nullptr;
    QLabel* empty_ = nullptr;
    QTimer beat_;     ///< scrolls
    QTimer settling_; ///< what is looked at has changed; it is loaded when it rests
    bool isLive_ = true;
    bool isFixed_ = false;
};

/// The device that is dragged out of the device tree; empty for anything else.
QString draggedDevice(const QMimeData& data);

} // namespace corvanta::sensor
