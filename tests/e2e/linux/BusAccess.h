#pragma once

#include "e2e/AccessSource.h"

#include <QDBusConnection>

class QDBusPendingCall;

/// Answers by the accessibility bus. Every question is a round trip to the program's GUI thread; those about many are
/// asked at once.
class BusAccess final : public AccessSource {
public:
    explicit BusAccess(const QDBusConnection& bus)
        : bus_(bus) {}

    /// The id of what has a place on the bus.
    static QString id(const QString& service, const QString& path);

    QVector<QVariant> ask(What what, const QStringList& things) override;

private:
    QDBusPendingCall begin(What what, const QString& thing) const;

    const QDBusConnection bus_;
};
