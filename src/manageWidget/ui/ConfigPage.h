#pragma once

#include "base/AppContext.h"

#include <QStringList>
#include <QVariantMap>
#include <QWidget>

#include <functional>

class QAbstractButton;
class QFormLayout;
class QLabel;
class QPushButton;
class QScrollArea;
class QVBoxLayout;

/// The device that a configuration is about.
struct ConfigTarget {
    AppContext context;
    QString ipncId;
    bool mayWrite = false; ///< the account administers it
    bool isOnline = false;
};

/// A page of a device's configuration: reads when it is first shown, and says why nothing can be changed.
class ConfigPage : public QWidget {
    Q_OBJECT
public:
    explicit ConfigPage(const ConfigTarget& target, QWidget* parent);

    /// `text` is what it is called in the list of pages.
    void setNames(const QString& objectName, const QString& text);
    /// Once, when the page is first seen.
    void begin();
    /// The dialog closes without saving.
    virtual void discard() {}

protected:
    virtual void read() = 0;

    const ConfigTarget& target() const { return target_; }
    bool canWrite() const { return target_.mayWrite && target_.isOnline; }
    QVBoxLayout* column() const { return column_; }
    void addSection(const QString& text);
    /// A section inside a form, so that the fields of all sections stand in one line.
    void addSection(QFormLayout& form, const QString& text);
    /// A row of buttons that stay in sight however far the page is scrolled.
    void addFoot(const QList<QPushButton*>& buttons);
    QLabel* addValue(QFormLayout& form, const QString& label, const QString& objectName);
    QPushButton* addButton(const QString& text, const QString& objectName, std::function<void()> clicked);
    /// Below the reason why nothing can be changed, where there is one.
    void say(const QString& text);

    using Done = std::function<void(const QVariantMap& resp)>;
    /// Reads parameters by name; a failure is said on the page.
    void readNames(const QStringList& names, Done done);
    /// A device operation of the request tables with the device's id added.
    void run(const QString& operation, QVariantMap parameters, QAbstractButton* busy, Done done);
    /// Writes parameters, and a row into the log.
    void write(const QString& operation, const QVariantMap& values, QAbstractButton* busy, const QString& what,
               const QString& detail, std::function<void()> done = {});
    void log(const QString& what, const QString& detail);
    void ask(const QString& text, const QString& accept, std::function<void()> agreed);

private:
    ConfigTarget target_;
    QScrollArea* area_;
    QVBoxLayout* column_; ///< what is scrolled
    QLabel* state_;
    QString reason_; ///< why nothing can be changed; empty: it can
    bool begun_ = false;
};
