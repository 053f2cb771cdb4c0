#include "monitor/ui/settings/SettingsPage.h"

#include "base/Settings.h"

SettingsPage::SettingsPage(const QString& objectName, const QString& title, QString drawing, QWidget* parent)
    : QWidget(parent)
    , title_(title)
    , drawing_(std::move(drawing)) {
    setObjectName(objectName);
    setAccessibleName(title);
}

void SettingsPage::load(const Settings& settings) {
    showValues(settings);
    stored_ = values();
}

QVariantMap SettingsPage::changedValues() const {
    QVariantMap changed = values();
    for (auto it = changed.begin(); it != changed.end();)
        it = it.value() == stored_.value(it.key()) ? changed.erase(it) : std::next(it);
    return changed;
}

QStringList SettingsPage::store(Settings& settings) {
    const QVariantMap changed = changedValues();
    for (auto it = changed.begin(); it != changed.end(); ++it)
        settings.set(it.key(), it.value());
    stored_ = values();
    return changed.keys();
}
