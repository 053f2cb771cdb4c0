#pragma once

#include "base/AppContext.h"

#include <QObject>

/// Sends changes of the order of devices and groups to the service. The lists change when the service has sent them
/// anew. GUI thread.
class DeviceOrder final : public QObject {
    Q_OBJECT
public:
    explicit DeviceOrder(const AppContext& context, QObject* parent = nullptr);

    /// Indices count from 0 in the list as it will be after the move.
    void moveDevice(const QString& ipncId, const QString& groupId, int index);
    void moveGroup(const QString& groupId, int index);

signals:
    /// A line for the message bar: the service refused.
    void sigMessage(QString text);

private:
    void send(const QString& operation, const QVariantMap& parameters);

    AppContext context_;
};
