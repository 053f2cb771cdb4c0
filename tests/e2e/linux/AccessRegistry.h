#pragma once

#include <QDBusVirtualObject>
#include <QHash>
#include <QString>

#include <mutex>
#include <optional>
#include <string>
#include <vector>

/// A place on the message bus. Standard types, as it crosses threads.
struct BusPlace {
    std::string service;
    std::string path;
    friend bool operator==(const BusPlace& one, const BusPlace& other) {
        return one.service == other.service && one.path == other.path;
    }
};

/// The registry of an accessibility bus, as far as programs made with Qt need it: they enter themselves, ask what the
/// listeners want to hear, and offer every key before they take it.
///
/// Answers on the thread that it lives in; the questions of the test may come from another.
class AccessRegistry final : public QDBusVirtualObject {
    Q_OBJECT
public:
    static const inline QString Name = QStringLiteral("org.a11y.atspi.Registry");

    AccessRegistry();
    ~AccessRegistry() override;

    /// The root of a program, once it has entered itself.
    std::optional<BusPlace> program(qint64 process) const;
    /// What programs have shown and not hidden since, the last one last.
    std::vector<BusPlace> shown() const;

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

public slots:
    void onStateChanged(const QDBusMessage& message);

private:
    void enter(const QDBusMessage& message, const QDBusConnection& connection);

    mutable std::mutex mutex_; ///< of all below
    QHash<qint64, BusPlace> programs_;
    std::vector<BusPlace> shown_;
};
