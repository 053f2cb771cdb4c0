#include "manageWidget/ui/PtzPad.h"

#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"

#include <QEvent>
#include <QGridLayout>
#include <QToolButton>
#include <QVariant>

#include <utility>

namespace theme = corvanta::theme;
using corvanta::manage::PtzCaps;
using corvanta::manage::PtzMotion;

PtzPad::PtzPad(Extent extent, QWidget* parent)
    : QWidget(parent)
    , onPicture_(extent == Extent::Small)
    , grid_(new QGridLayout(this)) {
    setObjectName(QStringLiteral("ptzPad"));
    corvanta::wordedName(this, [] { return tr("云台控制"); });
    setProperty("onPicture", onPicture_);
    setAttribute(Qt::WA_StyledBackground);
    grid_->setContentsMargins(theme::Step, theme::Step, theme::Step, theme::Step);
    grid_->setSpacing(theme::Step);
    addDirections();
    addButton("zoom-in", [] { return tr("放大"); }, 0, 3, Need::Zoom, {.zoom = 1});
    addButton("zoom-out", [] { return tr("缩小"); }, 1, 3, Need::Zoom, {.zoom = -1});
    if (onPicture_) {
        connect(addPlain(
                    "more", [] { return tr("云台设置"); }, 2, 3),
                &QAbstractButton::clicked, this, &PtzPad::sigMore);
    } else {
        addButton("focus-near", [] { return tr("聚焦近"); }, 0, 4, Need::Focus, {.focus = -1});
        addButton("focus-far", [] { return tr("聚焦远"); }, 1, 4, Need::Focus, {.focus = 1});
        addButton("iris-open", [] { return tr("光圈开"); }, 0, 5, Need::Iris, {.iris = 1});
        addButton("iris-close", [] { return tr("光圈关"); }, 1, 5, Need::Iris, {.iris = -1});
    }
    setCaps({});
}

void PtzPad::addDirections() {
    addButton("ptz-up-left", [] { return tr("左上"); }, 0, 0, Need::PanTilt, {.pan = -1, .tilt = 1});
    addButton("ptz-up", [] { return tr("上"); }, 0, 1, Need::Tilt, {.tilt = 1});
    addButton("ptz-up-right", [] { return tr("右上"); }, 0, 2, Need::PanTilt, {.pan = 1, .tilt = 1});
    addButton("ptz-left", [] { return tr("左"); }, 1, 0, Need::Pan, {.pan = -1});
    home_ = addPlain(
        "ptz-home", [] { return tr("回到初始位置"); }, 1, 1);
    connect(home_, &QAbstractButton::clicked, this, &PtzPad::sigHome);
    addButton("ptz-right", [] { return tr("右"); }, 1, 2, Need::Pan, {.pan = 1});
    addButton("ptz-down-left", [] { return tr("左下"); }, 2, 0, Need::PanTilt, {.pan = -1, .tilt = -1});
    addButton("ptz-down", [] { return tr("下"); }, 2, 1, Need::Tilt, {.tilt = -1});
    addButton("ptz-down-right", [] { return tr("右下"); }, 2, 2, Need::PanTilt, {.pan = 1, .tilt = -1});
}

QAbstractButton* PtzPad::addPlain(const char* drawing, const corvanta::Text& text, int row, int column) {
    auto* const button = new QToolButton(this);
    button->setObjectName(QLatin1String("pad-") + QLatin1String(drawing));
    corvanta::wordedName(button, text);
    corvanta::wordedTip(button, text);
    button->setIcon(corvanta::svgIcon(QLatin1String(drawing), onPicture_ ? theme::TextOnDark : theme::TextOnLight));
    button->setIconSize(QSize(theme::IconSize, theme::IconSize));
    // Over a picture the keys stay the tile's.
    button->setFocusPolicy(onPicture_ ? Qt::NoFocus : Qt::StrongFocus);
    grid_->addWidget(button, row, column);
    return button;
}

void PtzPad::addButton(const char* drawing, const corvanta::Text& text, int row, int column, Need need,
                       const PtzMotion& motion) {
    QAbstractButton* const button = addPlain(drawing, text, row, column);
    buttons_ += Button{button, need};
    connect(button, &QAbstractButton::pressed, this, [this, motion] {
        held_ = true;
        emit sigHold(motion);
    });
    connect(button, &QAbstractButton::released, this, &PtzPad::release);
}

void PtzPad::setCaps(const PtzCaps& caps) {
    for (const Button& button : qAsConst(buttons_)) {
        bool can = false;
        switch (button.need) {
        case Need::PanTilt:
            can = caps.pan && caps.tilt;
            break;
        case Need::Pan:
            can = caps.pan;
            break;
        case Need::Tilt:
            can = caps.tilt;
            break;
        case Need::Zoom:
            can = caps.zoom;
            break;
        case Need::Focus:
            can = caps.focus;
            break;
        case Need::Iris:
            can = caps.iris;
            break;
        }
        button.widget->setEnabled(can);
    }
    home_->setEnabled(caps.any());
}

void PtzPad::release() {
    if (std::exchange(held_, false))
        emit sigRelease();
}

void PtzPad::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && !isActiveWindow())
        release();
}

void PtzPad::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    release();
}
