#pragma once

#include "app/AppManager.h"
#include "monitor/ui/settings/SettingsDialog.h"
#include "support/FakeSdk.h"
#include "support/RecordingUi.h"

#include <QObject>
#include <QTemporaryDir>

#include <memory>

/// The settings dialog on an application with three cameras in two groups, driven by mouse and keyboard.
class SettingsDialogTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

protected:
    Settings& settings() { return manager_->context().settings; }
    template <typename T>
    T* find(const char* name) const {
        T* const found = dialog_->findChild<T*>(QLatin1String(name));
        return found != nullptr ? found : (qFatal("no %s", name), nullptr);
    }
    void open();
    void page(const char* name) { dialog_->showPage(QLatin1String(name)); }
    void click(const char* name);
    void type(const char* name, const QString& text);
    void choose(const char* name, const QString& text);
    bool tick(const QString& device);
    QStringList texts(const char* list) const;
    QString problem() const;
    QVariantMap fileValues() const;
    /// Answers the question that the next act brings up.
    void answer(const char* button);

    FakeSdk& sdk_ = FakeSdk::instance();
    RecordingUi ui_;
    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<AppManager> manager_;
    std::unique_ptr<SettingsDialog> dialog_;
    QStringList applied_;
    int questions_ = 0;
};
