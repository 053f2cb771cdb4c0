#pragma once

#include "base/ui/Worded.h"
#include "manageWidget/PtzCaps.h"
#include "manageWidget/PtzControl.h"

#include <QWidget>

class QAbstractButton;
class QGridLayout;

/// The buttons that move a camera: eight directions round the way home, zoom, and in a dialog focus and iris. A
/// button moves the camera while it is held. GUI thread.
class PtzPad final : public QWidget {
    Q_OBJECT
public:
    enum class Extent {
        Small, ///< in a tile: directions, zoom, the way to the dialog
        Whole  ///< in a dialog
    };
    explicit PtzPad(Extent extent, QWidget* parent = nullptr);

    /// What the camera cannot do cannot be pressed.
    void setCaps(const corvanta::manage::PtzCaps& caps);
    bool isHeld() const { return held_; }

signals:
    void sigHold(corvanta::manage::PtzMotion motion);
    void sigRelease();
    void sigHome();
    /// The dialog is wanted.
    void sigMore();

protected:
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    enum class Need { PanTilt, Pan, Tilt, Zoom, Focus, Iris };
    struct Button {
        QAbstractButton* widget;
        Need need;
    };

    void addButton(const char* drawing, const corvanta::Text& text, int row, int column, Need need,
                   const corvanta::manage::PtzMotion& motion);
    QAbstractButton* addPlain(const char* drawing, const corvanta::Text& text, int row, int column);
    void addDirections();
    void release();

    const bool onPicture_;
    QGridLayout* grid_;
    QVector<Button> buttons_;
    QAbstractButton* home_ = nullptr;
    bool held_ = false;
};
