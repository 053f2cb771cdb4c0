#pragma once

#include "app/AppManager.h"
#include "base/ui/TipDialog.h"
#include "support/FakeSdk.h"
#include "support/RecordingUi.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QtTest>

#include <map>
#include <memory>
#include <mutex>

/// What the tests of the account's dialogs share: a service that answers by a script, and a user who clicks, types
/// and reads tips.
class AccountTest : public QObject {
    Q_OBJECT
protected:
    /// What the service answers to an operation's type from now on; "" answers nothing.
    void answer(const char* type, const QByteArray& reply);
    static QByteArray ok(const char* rest = "");
    static QByteArray error(const char* code);
    /// The parameters of the requests of a type, oldest first.
    QList<QVariantMap> sent(const char* type) const;
    int sentCount() const { return static_cast<int>(sdk_.requests().size()); }

    AppContext context() { return manager_->context(); }
    void show(QWidget& dialog);
    template <typename T>
    static T* find(const QWidget& dialog, const char* name) {
        T* const found = dialog.findChild<T*>(QLatin1String(name));
        return found != nullptr ? found : (qFatal("no %s", name), nullptr);
    }
    static void click(const QWidget& dialog, const char* name);
    static void type(const QWidget& dialog, const char* name, const QString& text);
    /// Waits for a tip or question, answers it with its first button (or the second) and returns its text.
    static QString tip(bool accept = true);
    static bool isTipOpen() { return openTip() != nullptr; }
    /// The rows "type|context|context1" of the log of operations.
    QStringList log();
    /// Every control that can have the focus has an object name and an accessible name.
    static void checkNames(const QWidget& dialog);

    FakeSdk& sdk_ = FakeSdk::instance();
    RecordingUi ui_;
    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<AppManager> manager_;

private:
    static TipDialog* openTip();

    struct Script {
        std::mutex mutex;
        std::map<std::string, std::string> answers;
    };
    std::shared_ptr<Script> script_;

private slots:
    void initTestCase();
    void init();
    void cleanup();
};
