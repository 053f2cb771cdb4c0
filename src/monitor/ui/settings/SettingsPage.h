#pragma once

#include <QVariantMap>
#include <QWidget>

#include <optional>

class Settings;

/// A page of the settings dialog: shows some keys of the settings, and stores those that the user changed. What the
/// user did not touch is never written, so a value that a page can show only roughly stays as it stands in the file.
///
/// Life: `load`, then any number of `check` and `store`. After either of load and store nothing is changed.
class SettingsPage : public QWidget {
    Q_OBJECT
public:
    /// `drawing` is the name of the drawing beside the title.
    SettingsPage(const QString& objectName, const QString& title, QString drawing, QWidget* parent);

    const QString& title() const { return title_; }
    const QString& drawing() const { return drawing_; }

    void load(const Settings& settings);
    virtual bool isChanged() const { return !changedValues().isEmpty(); }
    /// What is wrong with the entries, a text for the user.
    virtual std::optional<QString> check() const { return std::nullopt; }
    /// Puts the changed values into the settings, which are not saved here; returns their keys.
    QStringList store(Settings& settings);
    /// Stores what does not stand in the settings' document; returns what failed, a text for the user.
    virtual std::optional<QString> storeElsewhere() { return std::nullopt; }

signals:
    /// The user changed something.
    void sigEdited();

protected:
    /// Puts the values into the controls. Values of wrong types show as what the program takes them for.
    virtual void showValues(const Settings& settings) = 0;
    /// What the controls hold, by settings key; of one type a key.
    virtual QVariantMap values() const = 0;

    bool isKeyChanged(const QString& key) const { return values().value(key) != stored_.value(key); }

private:
    QVariantMap changedValues() const;

    QString title_;
    QString drawing_;
    QVariantMap stored_; ///< `values()` when they were last loaded or stored
};
