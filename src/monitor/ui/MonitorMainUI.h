#pragma once

#include "base/AppContext.h"

#include <QVariant>
#include <QWidget>

class DevicePanel;
class Fwidget;
class LiveVideo;
class MessageBar;
class TopBar;
class WaitOverlay;
enum class TileAction;

/// The main window: device tree, video grid, bars; connects what the operator does to the live videos.
class MonitorMainUI final : public QWidget {
    Q_OBJECT
public:
    explicit MonitorMainUI(const AppContext& context, QWidget* parent = nullptr);
    ~MonitorMainUI() override;

    /// The smallest content, px.
    static constexpr int SmallestWidth = 680;
    static constexpr int SmallestHeight = 384;

    Fwidget& grid() const { return *grid_; }
    LiveVideo& live() const { return *live_; }
    DevicePanel& devicePanel() const { return *devices_; }
    const DeviceModel& devices() const { return context_.devices; }
    WaitOverlay& waitOverlay() const { return *wait_; }

    void showMessage(const QString& text);
    /// Without asking first; for who has asked already.
    void closeWithoutAsking();

signals:
    /// An operation and its value, from whichever part reports it.
    void sigDeal(QString name, QVariant value);

public slots:
    void slotDeal(const QString& name, const QVariant& value);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void build();
    void connectBars();
    void connectEvents();
    void connectTiles();
    void setTitle(const QString& title);
    void onLists();
    void onAccountChanged();
    void onTileAction(int tileIndex, TileAction action);
    void nameTiles();
    void toggleFullScreen();
    void leaveFullScreen();

    AppContext context_;
    TopBar* topBar_ = nullptr;
    DevicePanel* devices_ = nullptr;
    Fwidget* grid_ = nullptr;
    MessageBar* bottomBar_ = nullptr;
    WaitOverlay* wait_ = nullptr;
    LiveVideo* live_ = nullptr;
    bool closingAgreed_ = false;
};
