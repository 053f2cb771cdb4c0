#pragma once

#include "base/AppContext.h"
#include "sensor/ui/SensorTableModel.h"

#include <QVector>
#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QStackedWidget;
class QTableView;

namespace corvanta::sensor {

/// The data module: a table of every input of every device with its newest value. What the user wants done with the
/// inputs that are selected comes as a signal.
class SensorPage final : public QWidget {
    Q_OBJECT
public:
    explicit SensorPage(const AppContext& context, QWidget* parent = nullptr);
    ~SensorPage() override;

    void setInputs(const QVector<InputRecord>& inputs);
    void refresh(const QVector<int>& pids) { model_.refresh(pids); }

    QTableView& table() const { return *table_; }

signals:
    void sigChart(QVector<int> inputs);
    void sigReport(QVector<int> inputs);
    void sigSettings(QString ipncid, int sensorPid);
    void sigThresholds(int input);
    void sigRead(QVector<int> inputs);

private:
    QWidget* makeBar();
    void makeTable();
    void fillChoices();
    void filter();
    void showMenu(const QPoint& place);
    QVector<int> selected() const;
    void restoreWidths();
    void keepWidths();

    AppContext context_;
    SensorTableModel model_;
    SensorFilter filter_;
    QComboBox* group_ = nullptr;
    QComboBox* device_ = nullptr;
    QLineEdit* search_ = nullptr;
    QLabel* count_ = nullptr;
    QStackedWidget* stack_ = nullptr;
    QTableView* table_ = nullptr;
};

} // namespace corvanta::sensor
