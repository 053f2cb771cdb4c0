#pragma once

#include "e2e/AccessSource.h"

#include <QGenericPlugin>
#include <QLocalServer>
#include <QTimer>

/// Tells a test what this program shows, as it tells a screen reader. GUI thread.
class Reader final : public QObject {
    Q_OBJECT
public:
    Reader();

private:
    void serve();
    static QVariantList answer(int question, const QStringList& things);

    QLocalServer server_;
    QTimer arrivals_;
};

/// Makes the reader when a program loads the plugin.
class ReaderPlugin final : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "reader.json")
public:
    QObject* create(const QString& name, const QString& specification) override;
};
