#pragma once

#include "base/AppContext.h"
#include "manageWidget/PtzCaps.h"
#include "manageWidget/PtzLine.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QTimer>

class Fwidget;
class LiveVideo;
class PtzPad;
class QKeyEvent;
enum class TileAction;

/// Moves the camera of the tile that is shown alone or selected: the pad that appears over it, and the arrow keys
/// while it is shown alone. A camera stops when it is let go, when the focus goes away, and when its video ends. GUI
/// thread.
class WallPtz final : public QObject {
    Q_OBJECT
public:
    /// Both outlive it.
    WallPtz(const AppContext& context, Fwidget& grid, LiveVideo& live, QObject* parent);
    ~WallPtz() override;

    /// The device lists are new.
    void onLists();
    /// Stops what moves; the program ends.
    void stop();

signals:
    void sigMessage(QString text);
    /// The dialog of a camera is wanted.
    void sigDialog(QString ipncid);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void connectTiles();
    void connectPad();
    void update();
    void askCaps(const QString& ipncId);
    /// The device of the tile in question, if its account may move it and its video is open; else empty.
    QString movable() const;
    bool mayMove(const QString& ipncId) const;
    int tileInQuestion() const;
    void showPad();
    void hidePad();
    bool onKey(const QKeyEvent& event, bool pressed);
    void letGo();

    AppContext context_;
    Fwidget& grid_;
    LiveVideo& live_;
    PtzLine line_;
    PtzPad* pad_;
    QTimer hide_;
    QHash<QString, corvanta::manage::PtzCaps> caps_; ///< by device, of those that have told
    QSet<QString> asked_;
    QSet<int> keys_; ///< that are held
};
