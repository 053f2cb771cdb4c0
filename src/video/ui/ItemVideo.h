#pragma once

#include "video/FrameBuffer.h"
#include "video/FrameSize.h"
#include "video/Placement.h"
#include "video/ui/PictureBeat.h"
#include "video/ui/RecordMark.h"
#include "video/ui/TileAction.h"

#include <QImage>
#include <QRegion>
#include <QTimer>
#include <QVariantMap>
#include <QWidget>

#include <atomic>
#include <cstdint>
#include <memory>

class GLYuvWidget;
class TileMenu;
class TileTextLine;

/// One tile of the video grid: shows a device's live picture, a line of text over it, and a menu.
///
/// GUI thread only, except `showFrame`. Who calls `showFrame` makes sure that no call is under way when the tile is
/// destroyed.
///
/// A picture is copied twice: from the SDK's memory into the tile's buffer on the SDK's thread, and from there into
/// the renderer's own on the GUI thread, at the next beat. The GUI thread is woken for the first picture only; from
/// then on the beat comes and looks.
class ItemVideo final : public QWidget, private PictureReceiver {
    Q_OBJECT
public:
    /// Tiles of one window share a `beat`, which outlives them; without one the tile has its own.
    explicit ItemVideo(int tileIndex, QWidget* parent = nullptr, PictureBeat* beat = nullptr);
    ~ItemVideo() override;

    /// Position in the pool, 0..63.
    int tileIndex() const { return tileIndex_; }
    /// Request id of the stream shown here, 0 when there is none.
    int requestId() const { return requestId_; }
    /// "avparam" of the stream with "DeviceId" added; empty when there is none.
    const QVariantMap& streamParameters() const { return streamParameters_; }
    /// Size of the picture shown; a default one when there is none.
    corvanta::video::FrameSize frameSize() const { return frameSize_; }
    /// What became of the pictures since the tile was made. The counts wrap.
    struct Counters {
        std::uint32_t received = 0;    ///< taken while the tile was visible
        std::uint32_t overwritten = 0; ///< of these, never painted because a newer one came first
        std::uint32_t painted = 0;
    };
    Counters counters() const;
    bool isSelected() const { return selected_; }
    corvanta::video::AspectMode aspectMode() const { return aspectMode_; }

    /// The session's text. That a stream has been opened is shown for some seconds only, though the text stays.
    QString text() const { return text_; }
    void setText(const QString& text);
    /// Name of the device whose place this is; shown, with the tile's number, while there is no picture.
    void setDeviceName(const QString& name);
    void setSelected(bool selected);
    void setAspectMode(corvanta::video::AspectMode mode);

    /// Says that the tile's device is being recorded, for so many seconds.
    void setRecording(RecordMark::Kind kind, qint64 seconds);

    /// Shows a single picture instead of a live one, with the time at which it was taken, until a live one comes or
    /// the tile is closed. A null picture takes it away.
    void setPreview(const QImage& picture);
    bool hasPreview() const { return !preview_.isNull(); }

    /// A stream is open in this tile, or brings other pictures from now on. Pictures may have come before.
    void attachStream(int requestId, const QVariantMap& parameters);
    /// The tile shows no stream any more: forgets request id and parameters, gives the buffers back, shows the empty
    /// tile. The text stays. The stream's callbacks must have ended, or a late picture would be shown.
    void close();

    /// Takes a decoded picture (I420, tightly packed) when the tile is visible. Any thread; never waits, `picture` is
    /// not used after the return. Returns whether it was taken.
    bool showFrame(const uchar* picture, uint width, uint height);

    /// The wall draws the tile's picture; the renderer is not shown as a widget. To be said before the first picture.
    void setDrawnByWall(bool byWall);
    /// Null before the first picture.
    GLYuvWidget* renderer() const { return renderer_.get(); }
    /// Where the picture is in the tile; empty when there is none.
    QRect picturePlace() const;
    /// What the tile shows over its picture.
    QRegion overPicture() const;

    /// The tile's menu, made at the first call; the owner of the features enables entries.
    TileMenu& menu();

signals:
    /// A picture for the renderer; valid during the emission.
    void sigYuv(uchar* picture, uint width, uint height);
    void sigDoubleClick();
    /// The user selects this tile.
    void sig_setfocus(int tileIndex);
    /// What the tile shows beside the picture has changed.
    void sig_updateDisplay();
    /// An entry of the menu was chosen that the tile cannot do by itself.
    void sigMenuAction(int tileIndex, TileAction action);
    /// The menu is about to open: whoever owns the features says which entries can be chosen now.
    void sigMenuAboutToShow(int tileIndex);
    /// Enter and Delete on the tile.
    void sigOpenWanted(int tileIndex);
    void sigStopWanted(int tileIndex);
    /// Wakes the beat on the GUI thread; carries nothing, as what crosses the threads is in the buffer.
    void sigPictureWaiting(QPrivateSignal);

public slots:
    void updateDisplay();
    /// Once a second while a stream is open: ends short-lived texts and says when pictures do not come.
    void OnTimeOut();
    void onPopMenuTriggered(QAction* action);

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    bool takePicture() override;
    std::uint32_t receivedPictures() const override { return received_.load(std::memory_order_relaxed); }
    bool rest() override;
    void createRenderer();
    void sayName();
    void placeRenderer();
    void paintHint(QPainter& painter, const QRect& area) const;
    void paintPreview(QPainter& painter) const;
    QString shownText() const;
    bool hasPicture() const { return frameSize_ != corvanta::video::FrameSize{}; }

    const int tileIndex_;
    int requestId_ = 0;
    bool selected_ = false;
    bool drawnByWall_ = false;
    corvanta::video::AspectMode aspectMode_ = corvanta::video::AspectMode::KeepRatio;
    QVariantMap streamParameters_;
    QString text_;
    QString deviceName_;
    QImage preview_;
    QString previewTime_;
    int secondsSinceText_ = 0;    ///< counted by the tile timer
    int secondsSincePicture_ = 0; ///< counted by the tile timer while the tile is visible, from 0 when it is shown

    corvanta::video::FrameBuffer buffer_;
    corvanta::video::FrameSize frameSize_;
    std::atomic<bool> shown_{false}; ///< isVisible(), for the SDK's threads
    std::atomic<bool> awake_{false}; ///< the beat comes and looks, or has been asked to
    std::atomic<std::uint32_t> received_{0};
    std::atomic<std::uint32_t> overwritten_{0};
    PictureBeat* beat_;

    /// Made with the first picture: most of the tiles never show one. A child only where it is shown as a widget: a
    /// window composes all it shows with OpenGL once there is such a child anywhere in it, hidden or not.
    std::unique_ptr<GLYuvWidget> renderer_;
    QRect picturePlace_;
    TileTextLine* textLine_ = nullptr;
    RecordMark* recordMark_ = nullptr;
    QTimer timer_;
    std::unique_ptr<TileMenu> menu_; ///< no child, or it would take the tile's style
};
