#pragma once

#include "base/DiskWorker.h"
#include "base/ProxySettings.h"

#include <QObject>
#include <QVariantMap>

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// Keys of the settings document. The Chinese texts are what stands in the file, so they are never translated.
namespace corvanta::keys {
inline const QString AppName = QStringLiteral("APP名称");
inline const QString AlarmDeviceFault = QStringLiteral("是否设备异常报警");
inline const QString AlarmLevel1 = QStringLiteral("是否一级阈值报警");
inline const QString AlarmLevel2 = QStringLiteral("是否二级阈值报警");
inline const QString AlarmLevel3 = QStringLiteral("是否三级阈值报警");
inline const QString AlarmOther = QStringLiteral("是否其他报警");
inline const QString WindowMode = QStringLiteral("窗口模式");
inline const QString CompanyName = QStringLiteral("公司名称");
inline const QString RestoreState = QStringLiteral("是否恢复状态");
inline const QString AspectMode = QStringLiteral("画面比例");
inline const QString LongestOpening = QStringLiteral("视频打开最长时间");
inline const QString PackingTime = QStringLiteral("录像打包时间");
inline const QString DriveThreshold = QStringLiteral("磁盘跳转阈值");
inline const QString AcceptAlarms = QStringLiteral("是否接收报警");
inline const QString Proxy = QStringLiteral("代理设置");
/// Layout of the charts: 0 one tile, 1 two, 2 four, 3 nine.
inline const QString ChartZoom = QStringLiteral("ChartZoomDisplayIndex");
/// The inputs that the charts show: a list, by the tile's number, of lists of "pid".
inline const QString ChartInputs = QStringLiteral("图表采集输入");
inline const QString Drives = QStringLiteral("盘符列表");
/// Folders that count as this computer's drives, in place of its own: a list of absolute paths. For disks that the
/// system does not show as drives.
inline const QString DriveFolders = QStringLiteral("盘符文件夹");
inline const QString DeviceTreeState = QStringLiteral("设备树状态");
inline const QString ShowSplash = QStringLiteral("是否显示启动画面");
inline const QString SplashPicture = QStringLiteral("启动画面图片路径");
inline const QString EnterByItself = QStringLiteral("是否自动进入软件");
inline const QString PollInterval = QStringLiteral("轮屏时间");
/// The entries of the screen polling, a list of {"name", "ipnclist"}.
inline const QString PollEntries = QStringLiteral("轮屏列表");
/// What the polling that is started by its button shows: 1 videos, 2 preview pictures; videos when absent.
inline const QString PollMode = QStringLiteral("轮屏模式");
/// The polling that runs: 0 none, 1 videos, 2 preview pictures.
inline const QString Poll = QStringLiteral("poll");
/// Sound files of the alarm types, by the type's text; the switches beside them are above.
inline const QString SoundDeviceFault = QStringLiteral("设备异常报警");
inline const QString SoundLevel1 = QStringLiteral("一级阈值报警");
inline const QString SoundLevel2 = QStringLiteral("二级阈值报警");
inline const QString SoundLevel3 = QStringLiteral("三级阈值报警");
inline const QString SoundOther = QStringLiteral("其他报警");
/// Id of the group whose members take the first tiles; the first group when absent.
inline const QString DefaultGroup = QStringLiteral("默认分组");
inline const QString GridRows = QStringLiteral("fwidget_row");
inline const QString GridColumns = QStringLiteral("fwidget_col");
inline const QString VideoZoom = QStringLiteral("VideoZoomDisplayIndex");
/// Devices whose live videos are open, by tile index: a list of {"index", "ipncid"}.
inline const QString OpenVideos = QStringLiteral("TileWidgetIndexList");
/// Devices that are being recorded: a list of ids.
inline const QString Recordings = QStringLiteral("正在录像设备");
/// The device whose sound was left on; it is heard again when its video opens.
inline const QString ListenedDevice = QStringLiteral("DeviceIdOpenAudioListen");
/// Volume of what is heard, 0 to 100 (100 when absent), and whether it is muted.
inline const QString Volume = QStringLiteral("音量");
inline const QString Muted = QStringLiteral("静音");
/// Template of the addresses of a tile server for online maps ("https://host/{z}/{x}/{y}.png"); absent or empty: the
/// map that is built in.
inline const QString TileServer = QStringLiteral("地图瓦片服务器");
/// Where updates come from ("http://host:port"); absent or empty: from nowhere.
inline const QString UpdateServer = QStringLiteral("更新服务器");
/// The version that the user does not want to be told of at the start.
inline const QString IgnoredVersion = QStringLiteral("ignoreVersion");
/// Place of the main window: {"x", "y", "width", "height", "state"}, of the window when it is neither maximised nor
/// full screen.
inline const QString WindowPlace = QStringLiteral("窗口位置");
/// The interface's language by its code, "zh" or "en"; "zh" when absent.
inline const QString Language = QStringLiteral("语言");
/// Width of the device tree, px.
inline const QString PanelWidth = QStringLiteral("设备树宽度");
/// Layout of the maps: rows and columns, and its number: 0 one map, 1 two, 2 four, 3 nine.
inline const QString MapRows = QStringLiteral("FwidgetElectronMap_row");
inline const QString MapColumns = QStringLiteral("FwidgetElectronMap_col");
inline const QString MapZoom = QStringLiteral("MapZoomDisplayIndex");
/// The maps that the cells show: a list of ids, by the cell's number.
inline const QString OpenMaps = QStringLiteral("已打开地图");
} // namespace corvanta::keys

/// What threads of the SDK read of the settings: an immutable value, in standard types.
struct SdkThreadSettings {
    bool acceptsAlarms = true;
    std::optional<ProxySettings> proxy; ///< none: connect directly
    std::vector<std::string> drives;    ///< that recordings may go to, in order of preference, UTF-8
    int driveThreshold = 0;             ///< MiB; as it is stored, in its range or not
};

/// The settings document "config/set.json": every setting of the program and its saved window state.
///
/// Lives in the GUI thread. The few values that SDK threads need can be read from any thread without a lock
/// (`forSdkThreads`); everything else, and every change, belongs to the GUI thread.
///
/// Life of the file: read once at `load`; a file that is not a JSON object is set aside under a name with the
/// time, so that nothing that the user entered is lost; every `save` replaces the whole file at once, in a thread
/// that waits for the disk. The last one is written when the settings go.
class Settings final : public QObject {
    Q_OBJECT
public:
    explicit Settings(QString file, QObject* parent = nullptr);
    ~Settings() override;

    /// Reads the file and fills in the default of every key that is missing.
    void load();
    /// Writes the whole document as it is now, and does not wait until it is on the disk. A file that cannot be
    /// written is skipped; the values stay in memory.
    void save();
    /// Waits until what was saved is on the disk.
    void finishSaving() { disk_.finish(); }

    /// The value of a key, invalid when the document has none.
    QVariant get(const QString& key) const { return values_.value(key); }
    /// Stores a value. A change of the application's or the company's name computes the title anew.
    void set(const QString& key, const QVariant& value);

    const QVariantMap& values() const { return values_; }
    /// Application name, "--", company name.
    QString title() const;

    /// Makes this user's next sign-in to the system start the program, or not. Kept by the system, not in the file.
    static void setAutostart(bool enabled);

    /// The newest snapshot. Any thread; the reference stays valid as long as the settings do.
    const SdkThreadSettings& forSdkThreads() const { return *published_.load(std::memory_order_acquire); }

signals:
    void titleChanged(QString title);

private:
    void applyDefaults();
    void publish();
    bool setAside();

    QString file_;
    QVariantMap values_;
    bool fileIsKept_ = true; ///< false: the file could not be read and could not be set aside, so it is not touched
    std::atomic<const SdkThreadSettings*> published_{nullptr}; ///< the last of `snapshots_`
    /// Every snapshot ever published: an SDK thread may still read an old one. One per change of what it holds.
    std::vector<std::unique_ptr<const SdkThreadSettings>> snapshots_;
    corvanta::DiskWorker disk_;
};
