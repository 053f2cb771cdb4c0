#pragma once

#include "base/AppContext.h"

#include <QObject>
#include <QVariantMap>
#include <QVector>

namespace corvanta::sensor {

/// Which recorded samples are asked for. With a begin the first `most` from there on, else the last `most` up to the
/// end.
struct SampleQuery {
    int pid = 0;
    QVariant begin = {}; ///< "oldest" or epoch in seconds; may be invalid
    QVariant end = {};   ///< "latest" or epoch in seconds; may be invalid
    int most = 0;
    int step = 0; ///< s; 0: each sample, else one record a span of so many seconds

    /// Names the query among those of its input: who has asked for it knows the reply by this.
    QString key() const;
};

/// Asks the service for recorded samples, and takes in what it tells of inputs by itself. What is learned is stored
/// beside the device model. GUI thread.
///
/// Replies go through the main window, under the name of what was asked for (`sigReport`, then `onReport`).
class SensorData final : public QObject {
    Q_OBJECT
public:
    explicit SensorData(const AppContext& context, QObject* parent = nullptr);

    /// Names of the replies.
    static QString earliestTimes();
    static QString latestTimes();
    static QString samples();

    /// The time of the oldest record of each input, and of the newest.
    void requestEarliestTimes(const QVector<int>& inputs);
    void requestLatestTimes(const QVector<int>& inputs);
    /// Recorded samples; they come as `sigRecords`, or `sigQueryFailed` says that none do.
    void requestSensorData(const SampleQuery& query);

    /// Takes a reply; names that are not its own are nobody's here.
    void onReport(const QString& name, const QVariantMap& reply);

signals:
    /// A reply, for the main window to pass on.
    void sigReport(QString name, QVariant reply);
    /// What is stored of these inputs has changed.
    void sigInputsChanged(QVector<int> inputs);
    /// The records that a query has found, under its key.
    void sigRecords(QString key, QVariantList records);
    /// No records will come for a query.
    void sigQueryFailed(QString key);

private:
    void send(const QString& name, const QVariantMap& parameters, const QString& key);
    void requestTimes(const QString& name, QVariantMap parameters, const QVector<int>& inputs);
    void storeTimes(const QString& field, const QVariantMap& answers);
    void takeValues(const QVariantList& values);

    AppContext context_;
};

} // namespace corvanta::sensor
