#pragma once

#include "manageWidget/DeviceParameters.h"

#include <QHash>
#include <QWidget>

/// Fields for a page of a device's parameters, made from their table. Parameters that the device does not have cannot
/// be edited, and are not among the values.
class ParameterForm final : public QWidget {
    Q_OBJECT
public:
    /// `hasSliders`: numbers are dragged.
    ParameterForm(corvanta::manage::ParameterPage page, bool hasSliders, QWidget* parent);

    QStringList names() const;
    void setValues(const QVariantMap& values);
    QVariantMap values() const;
    void setWritable(bool on);

signals:
    /// The user has changed a value.
    void sigEdited();

private:
    QWidget* addField(const corvanta::manage::Parameter& parameter, bool hasSliders);
    void addRow(const corvanta::manage::Parameter& parameter, QWidget* field, class QFormLayout& form);
    QWidget* makeField(const corvanta::manage::Parameter& parameter, bool hasSliders);
    static void setValue(QWidget& field, const QVariant& value);
    static QVariant value(const QWidget& field);

    std::vector<corvanta::manage::Parameter> parameters_;
    QHash<QString, QWidget*> fields_;
    QStringList known_; ///< names that the device has
    bool writable_ = false;
};
