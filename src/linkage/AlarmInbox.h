#pragma once

#include "linkage/AlarmMessage.h"
#include "linkage/Throttle.h"

#include <QHash>
#include <QObject>
#include <QVector>

#include <map>

namespace corvanta::linkage {

/// Alarms of one device and one plan that nobody has acknowledged yet: one entry, however many they are.
struct OpenAlarm {
    QString key;
    AlarmLevel level = AlarmLevel::Other; ///< of the last one, as all texts
    QString ipncId;
    QString device; ///< its name when the alarm came
    QString plan;
    QString content;
    QString firstTime; ///< as the device sent them
    QString lastTime;
    int count = 1;
    bool hasImages = false;
    QStringList images; ///< names of picture files, the newest last
    QVariantMap trigger;

    QVariantMap toMap() const;
    static OpenAlarm fromMap(const QVariantMap& map);
};

/// The alarms that nobody has acknowledged. They survive the end of the program in a file. GUI thread.
class AlarmInbox final : public QObject {
    Q_OBJECT
public:
    /// Entries at most; the oldest goes when there are more. The log of alarms keeps them all.
    static constexpr int Most = 10000;

    /// Reads `file`. One that cannot be read is set aside.
    explicit AlarmInbox(const QString& file, QObject* parent = nullptr);
    /// Writes what was not written yet.
    ~AlarmInbox() override;

    void add(const AlarmMessage& alarm, const QString& device);
    /// The entries, that of the last alarm first.
    QVector<OpenAlarm> alarms() const;
    /// Null when there is none of this key.
    const OpenAlarm* find(const QString& key) const;
    /// How many alarms wait, each counted.
    qint64 count() const { return count_; }
    void acknowledge(const QStringList& keys);
    void acknowledgeAll();

signals:
    /// The entries have changed; at most five times a second.
    void sigChanged();

private:
    struct Entry {
        qint64 serial = 0;
        OpenAlarm alarm;
    };
    void load();
    void save();
    void put(OpenAlarm alarm);
    void remove(const QString& key);
    void changed();

    QString file_;
    QHash<QString, Entry> entries_;    ///< by key
    std::map<qint64, QString> byTime_; ///< keys by serial number; the last alarm has the greatest
    qint64 serial_ = 0;
    qint64 count_ = 0;
    Throttle telling_;
    Throttle saving_;
};

} // namespace corvanta::linkage
