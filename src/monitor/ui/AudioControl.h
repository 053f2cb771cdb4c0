#pragma once

#include "base/AppContext.h"

#include <QObject>

class Fwidget;
class Listener;
class LiveVideo;
class Talker;
class TopBar;
enum class TileAction;

/// What the operator does to sound by tile menus and the top bar: listening to one camera, talking to one, volume and
/// mute. GUI thread.
class AudioControl final : public QObject {
    Q_OBJECT
public:
    struct Parts {
        Fwidget& grid;
        LiveVideo& live;
        Listener& listener;
        Talker& talker;
        TopBar& topBar;
    };

    /// The parts outlive this object.
    AudioControl(const AppContext& context, const Parts& parts, QObject* parent);

    /// Listens to a tile's camera, or not any more; what is on is remembered for the next time its video opens.
    void toggleListening(int tileIndex);
    void toggleTalking(int tileIndex);
    /// Ends both without forgetting what was on.
    void pause();

private:
    void onTileAction(int tileIndex, TileAction action);
    void prepareMenu(int tileIndex);
    void onVideo(const QString& ipncId, bool open);
    void show();

    AppContext context_;
    Parts parts_;
};
