#pragma once

#include "base/AppContext.h"
#include "base/ui/Worded.h"
#include "manageWidget/PtzCaps.h"

#include <QWidget>

#include <functional>

class QComboBox;
class QLineEdit;
class QPushButton;
class QSpinBox;
class QTreeWidget;

/// What both pages do: a command to the camera, written into the log.
class PtzPage : public QWidget {
    Q_OBJECT
public:
    PtzPage(const AppContext& context, QString ipncId, QWidget* parent);

signals:
    /// The camera keeps or does something else now.
    void sigChanged();

protected:
    /// `what` is the command's name in the log.
    void command(const QString& name, const QVariant& value, QPushButton* busy, const QString& what,
                 const QString& detail);
    QPushButton* addButton(const corvanta::Text& text, const QString& objectName, std::function<void()> clicked);

private:
    AppContext context_;
    const QString ipncId_;
};

/// Places that a camera knows by number and name.
class PtzPresetPage final : public PtzPage {
    Q_OBJECT
public:
    PtzPresetPage(const AppContext& context, const QString& ipncId, QWidget* parent);

    void show(int most, const QVector<corvanta::manage::PtzPreset>& presets);

private:
    void set();
    void remove();

    QTreeWidget* list_;
    QSpinBox* index_;
    QLineEdit* name_;
    QPushButton* set_;
    QPushButton* go_;
    QPushButton* remove_;
};

/// Rounds over presets.
class PtzCruisePage final : public PtzPage {
    Q_OBJECT
public:
    PtzCruisePage(const AppContext& context, const QString& ipncId, QWidget* parent);

    /// A route that is being edited stays as it is.
    void show(int most, const QVector<corvanta::manage::PtzCruise>& cruises,
              const QVector<corvanta::manage::PtzPreset>& presets, int running);

private:
    void buildEditor();
    QString routeText(int index) const;
    void showOne();
    void showButtons();
    /// The route in question as the camera has it; an empty one where it has none.
    corvanta::manage::PtzCruise kept() const;
    void addPoint();
    void removePoint();
    void movePoint(int by);
    void save();
    void showPoints();

    QVector<corvanta::manage::PtzCruise> cruises_;
    QVector<corvanta::manage::PtzPreset> presets_;
    corvanta::manage::PtzCruise edited_;
    int running_ = 0; ///< number of the route that the camera is on; 0: none
    QComboBox* which_;
    QLineEdit* name_;
    QTreeWidget* points_;
    QComboBox* preset_;
    QSpinBox* seconds_;
    QPushButton* add_ = nullptr;
    QPushButton* save_ = nullptr;
    QPushButton* remove_ = nullptr;
    QPushButton* start_ = nullptr;
    QPushButton* stop_ = nullptr;
};
