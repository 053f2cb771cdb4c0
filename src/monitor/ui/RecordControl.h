#pragma once

#include "base/AppContext.h"

#include <QObject>
#include <QTimer>

class DeviceTree;
class Fwidget;
class LiveVideo;
class Recorder;
class RecordingStorage;
enum class TileAction;

/// What the operator does to recordings and snapshots by tile and tree menus, and what tiles and tree show of them.
/// GUI thread.
class RecordControl final : public QObject {
    Q_OBJECT
public:
    struct Parts {
        Fwidget& grid;
        LiveVideo& live;
        Recorder& recorder;
        RecordingStorage& storage;
        DeviceTree& tree;
    };

    /// The parts outlive this object.
    RecordControl(const AppContext& context, const Parts& parts, QObject* parent);

    /// Starts a device's recording, or stops it.
    void toggle(const QString& ipncId);
    /// Starts or stops all videos of a group that are online.
    void recordGroup(const QString& groupId, bool record);
    /// The account is gone: recordings end, and begin again with the next lists.
    void pause();
    /// Stores the picture that a tile shows as a file; only for a tile with an open stream.
    void snapshot(int tileIndex);

    /// The device lists are new: recordings of devices that are gone end, and those of the last time begin again
    /// where that is wanted.
    void onLists();

signals:
    /// A line for the message bar.
    void sigMessage(QString text);
    /// The service's answer to a snapshot, for whoever shows it.
    void sigSnapshot(QString operation, QVariant result);

private:
    void onTileAction(int tileIndex, TileAction action);
    void prepareMenu(int tileIndex);
    void show(const QString& ipncId);
    void showAll();
    void onSnapshot(const QString& path, const QVariantMap& result);

    AppContext context_;
    Parts parts_;
    QTimer second_; ///< while something is recorded
    bool resumes_ = true;
};
