#pragma once

#include "sensor/SensorTypes.h"

#include <QHash>
#include <QWidget>

class QFormLayout;

namespace corvanta::sensor {

/// Entries for the parameters of a board or port, made from the service's description. Those that do not belong to
/// what is chosen in others are hidden and keep their values, as do parameters without a description.
class FieldForm final : public QWidget {
    Q_OBJECT
public:
    FieldForm(const QVector<Field>& fields, const QVariantMap& values, QWidget* parent);

    QVariantMap values() const;
    /// The first entry that the service would not take, for the user.
    std::optional<QString> problem() const;

signals:
    void sigEdited();

private:
    QWidget* makeEntry(const Field& field);
    QVariant valueOf(const Field& field) const;
    void showWhatBelongs();

    QVector<Field> fields_;
    QVariantMap original_;
    QFormLayout* form_;
    QHash<QString, QWidget*> entries_; ///< by key
};

} // namespace corvanta::sensor
