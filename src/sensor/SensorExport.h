#pragma once

#include "base/CallbackGate.h"
#include "logs/LogKinds.h"
#include "sensor/InputRecords.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <string>

class SdkGateway;

namespace corvanta::sensor {

/// Which samples a report has.
struct ReportPlan {
    QVector<InputRecord> inputs;
    qint64 begin = 0; ///< epoch, s
    qint64 end = 0;
    int step = 0; ///< s; 0: each sample, else lowest, mean and highest value of each span
};

/// Fetches the samples of a report from the service, piece by piece, as the rows of a table. The rows are made on the
/// threads that deliver the pieces, so that a million of them hold up no window. One at a time; GUI thread.
class SensorExport final : public QObject {
    Q_OBJECT
public:
    explicit SensorExport(SdkGateway& gateway, QObject* parent = nullptr);
    ~SensorExport() override;

    void start(const ReportPlan& plan);
    /// Ends it; no signal follows.
    void cancel();
    bool isRunning() const { return gate_ != nullptr; }

    /// The columns of a report.
    static QStringList header(bool isBySpans);

signals:
    /// Records; `total` is 0 while it is not known.
    void sigProgress(qint64 done, qint64 total);
    /// All rows are there; they are taken by `takeTable`.
    void sigDone();
    void sigFailed(QString text);

public:
    /// Once, from `sigDone` on.
    std::shared_ptr<const corvanta::logs::Table> takeTable();

private:
    struct Rows;
    void onPiece(qint64 done, qint64 total);
    void onEnd(const std::string& reply);

    SdkGateway& gateway_;
    QTimer silence_;
    std::shared_ptr<CallbackGate> gate_; ///< of the request that runs
    std::shared_ptr<Rows> rows_;         ///< written by the callback alone until its end was told
    int requestId_ = 0;
};

} // namespace corvanta::sensor
