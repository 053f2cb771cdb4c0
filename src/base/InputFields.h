#pragma once

#include <QHash>
#include <QVariantMap>

/// Fields of the inputs of sensors that the client has learned since the list of devices was sent, by the input's
/// "pid": "earliesttime" and "latesttime" (epoch, whole seconds), "value", its "time" (epoch, s, with fractions) and
/// "state". They stand beside the device model, which is replaced as a whole. GUI thread.
class InputFields final {
public:
    void set(const QString& key, int pid, const QVariant& value) { fields_[pid].insert(key, value); }
    /// Invalid when it is not known.
    QVariant value(const QString& key, int pid) const {
        const auto input = fields_.constFind(pid);
        return input == fields_.constEnd() ? QVariant() : input->value(key);
    }
    void clear() { fields_.clear(); }

private:
    QHash<int, QVariantMap> fields_;
};
