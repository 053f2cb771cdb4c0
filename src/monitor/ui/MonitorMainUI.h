#pragma once

#include "base/AppContext.h"

#include <QTimer>
#include <QVariant>
#include <QWidget>

class AccountControl;
class AlarmControl;
class AudioControl;
class DeviceOrder;
class DevicePanel;
class Fwidget;
class LinkageControl;
class Listener;
class LiveVideo;
class ManageControl;
class MapControl;
class MessageBar;
class ModulePages;
class PlaybackControl;
class PollRunner;
class QSplitter;
class RecordControl;
class Recorder;
class RecordingStorage;
class SensorControl;
class Talker;
class TopBar;
class UpdateControl;
class WaitOverlay;
class WallControl;
class WallPtz;
class WorkspaceKeeper;

/// The main window: device tree, pages of which the video grid is the first, bars. Puts the parts together; what they
/// do stands in them.
class MonitorMainUI final : public QWidget {
    Q_OBJECT
public:
    /// `storage` outlives the window.
    MonitorMainUI(const AppContext& context, RecordingStorage& storage, QWidget* parent = nullptr);
    ~MonitorMainUI() override;

    /// The smallest content, px.
    static constexpr int SmallestWidth = 680;
    static constexpr int SmallestHeight = 384;

    Fwidget& grid() const { return *grid_; }
    LiveVideo& live() const { return *live_; }
    AccountControl& account() const { return *account_; }
    DevicePanel& devicePanel() const { return *devices_; }
    const DeviceModel& devices() const { return context_.devices; }
    const AppContext& context() const { return context_; }
    WaitOverlay& waitOverlay() const { return *wait_; }
    PollRunner& poll() const { return *poll_; }
    ManageControl& manage() const { return *manage_; }
    LinkageControl& linkage() const { return *linkage_; }
    SensorControl& sensors() const { return *sensors_; }
    MapControl& maps() const { return *maps_; }
    Recorder& recorder() const { return *recorder_; }
    PlaybackControl& playback() const { return *playback_; }
    RecordingStorage& storage() const { return storage_; }

    /// Puts the frame that this window was set into where it was at the last end, before it is shown.
    void placeFrame();

    /// Without asking first; for who has asked already.
    void closeWithoutAsking();

signals:
    /// An operation and its value, from whichever part reports it.
    void sigDeal(QString name, QVariant value);
    /// A coded frame of a recording; its slot owns the block.
    void sig_RecodeData(QString ipncId, uint8_t* block, long length);
    /// The records of a reply with samples, under the key of what was asked for; for the charts.
    void sig_UpdateSensorInputData(QString key, QVariantList records);

public slots:
    void slotDeal(const QString& name, const QVariant& value);
    /// Writes a frame of a recording and frees its block.
    void OnGetRecodeData(const QString& ipncId, uint8_t* block, long length);
    /// A line for the message bar. It clears itself 10 000 ms after the last one.
    void showMessage(const QString& text) { OngetAlarmMessage(text); }
    void OngetAlarmMessage(const QString& message);
    void OnMessagertimeout();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void build();
    void buildPages(QWidget* parent);
    void connectPages();
    void connectBars();
    void connectTree();
    void connectReports();
    void connectEvents();
    void connectAlarms();
    void showLive(const QString& ipncId);
    void setTitle(const QString& title);
    void onLists();
    void onAccountChanged();
    /// Ends what the account's devices show, record and tell, until there is an account again.
    void rest();
    void signOut();
    void setDefaultGroup(const QString& groupId);
    void nameTiles();

    AppContext context_;
    TopBar* topBar_ = nullptr;
    QSplitter* splitter_ = nullptr;
    DevicePanel* devices_ = nullptr;
    ModulePages* pages_ = nullptr;
    Fwidget* grid_ = nullptr;
    PlaybackControl* playback_ = nullptr;
    UpdateControl* update_ = nullptr;
    MessageBar* bottomBar_ = nullptr;
    QTimer messageTimer_{this}; ///< clears the message bar
    WaitOverlay* wait_ = nullptr;
    RecordingStorage& storage_;
    AccountControl* account_ = nullptr;
    LiveVideo* live_ = nullptr;
    Recorder* recorder_ = nullptr;
    RecordControl* records_ = nullptr;
    Listener* listener_ = nullptr;
    Talker* talker_ = nullptr;
    AudioControl* audio_ = nullptr;
    PollRunner* poll_ = nullptr;
    WallControl* control_ = nullptr;
    WallPtz* ptz_ = nullptr;
    ManageControl* manage_ = nullptr;
    LinkageControl* linkage_ = nullptr;
    AlarmControl* alarms_ = nullptr;
    SensorControl* sensors_ = nullptr;
    MapControl* maps_ = nullptr;
    DeviceOrder* order_ = nullptr;
    WorkspaceKeeper* workspace_ = nullptr;
    bool pollWaits_ = true; ///< a polling goes on with the first devices after a sign-in
    bool closingAgreed_ = false;
};
