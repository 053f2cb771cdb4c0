#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "logs/LogExport.h"
#include "sensor/SensorExport.h"

#include <QTimer>

#include <memory>

class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class TimeRangeEdit;

namespace corvanta::sensor {

/// Writes recorded samples of inputs into a file: which inputs, from when to when, every sample or lowest, mean and
/// highest value of each minute, hour or day. The file appears whole or not at all.
class DataReportDialog final : public FramedDialog {
    Q_OBJECT
public:
    DataReportDialog(const AppContext& context, const QVector<InputRecord>& inputs, const QVector<int>& chosen,
                     QWidget* parent);
    ~DataReportDialog() override;

    /// Begins to write into `file`, whose suffix decides: "xls" or text.
    void exportTo(const QString& file);

public slots:
    /// Ends what runs; closes when nothing does.
    void reject() override;

private:
    QWidget* makeForm();
    QWidget* makeProgress();
    void pick();
    void showChosen();
    void start();
    void write();
    void follow();
    void finish(const QString& text);
    void showRunning(bool isRunning);

    AppContext context_;
    QVector<InputRecord> inputs_;
    QVector<int> chosen_;
    SensorExport fetch_;
    std::unique_ptr<LogExport> writing_;
    QTimer timer_; ///< follows the writing
    QString file_;
    QWidget* form_ = nullptr;
    QPushButton* choose_ = nullptr;
    TimeRangeEdit* range_ = nullptr;
    QComboBox* step_ = nullptr;
    QComboBox* format_ = nullptr;
    QLabel* text_ = nullptr;
    QProgressBar* bar_ = nullptr;
    QPushButton* start_ = nullptr;
    QPushButton* close_ = nullptr;
};

} // namespace corvanta::sensor
