#include "monitor/ui/VolumePopup.h"

#include "base/ui/Theme.h"
#include "base/ui/Worded.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

#include <algorithm>

namespace theme = corvanta::theme;

VolumePopup::VolumePopup(QWidget* parent)
    : QWidget(parent, Qt::Popup)
    , slider_(new QSlider(Qt::Horizontal, this))
    , number_(new QLabel(this))
    , muted_(new QCheckBox(this)) {
    setObjectName(QStringLiteral("volumePopup"));
    corvanta::wordedName(this, [] { return tr("音量"); });
    setAttribute(Qt::WA_StyledBackground);
    slider_->setObjectName(QStringLiteral("volumeSlider"));
    corvanta::wordedName(slider_, [] { return tr("音量"); });
    slider_->setRange(0, 100);
    slider_->setPageStep(10);
    slider_->setMinimumWidth(140);
    muted_->setObjectName(QStringLiteral("volumeMuted"));
    corvanta::wordedText(muted_, [] { return tr("静音"); });
    corvanta::wordedName(muted_, [] { return tr("静音"); });
    number_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    number_->setMinimumWidth(number_->fontMetrics().horizontalAdvance(QStringLiteral("100")) + theme::Step);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(3 * theme::Step, 2 * theme::Step, 3 * theme::Step, 2 * theme::Step);
    auto* const row = new QHBoxLayout;
    row->addWidget(slider_, 1);
    row->addWidget(number_);
    column->addLayout(row);
    column->addWidget(muted_);
    connect(slider_, &QSlider::valueChanged, this, [this](int value) {
        number_->setNum(value);
        emit sigVolume(value);
    });
    connect(muted_, &QCheckBox::toggled, this, &VolumePopup::sigMuted);
}

void VolumePopup::setValues(int volume, bool muted) {
    const QSignalBlocker noVolume(slider_);
    const QSignalBlocker noMute(muted_);
    slider_->setValue(volume);
    number_->setNum(volume);
    muted_->setChecked(muted);
}

void VolumePopup::showUnder(const QWidget& button) {
    adjustSize();
    const QRect screen = button.screen()->availableGeometry();
    QPoint place = button.mapToGlobal(QPoint(0, button.height()));
    place.setX(std::clamp(place.x(), screen.left(), std::max(screen.left(), screen.right() - width())));
    move(place);
    show();
    slider_->setFocus(Qt::PopupFocusReason);
}
