#include "manageWidget/ui/PtzDialog.h"

#include "account/ui/AccountForm.h"
#include "base/DeviceModel.h"
#include "base/RequestBuilder.h"
#include "base/ui/Theme.h"
#include "base/ui/Worded.h"
#include "manageWidget/PtzLine.h"
#include "manageWidget/ui/ManageSend.h"
#include "manageWidget/ui/PtzPad.h"
#include "manageWidget/ui/PtzPages.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QTabWidget>
#include <QVBoxLayout>

#include <utility>

namespace account = corvanta::account;
namespace manage = corvanta::manage;
namespace requests = corvanta::requests;
namespace theme = corvanta::theme;
using manage::PtzCaps;
using manage::PtzCruise;
using manage::PtzMotion;
using manage::PtzPreset;

namespace {
constexpr int MostSpeed = 10;
constexpr int UsualSpeed = 5;
} // namespace

PtzDialog::PtzDialog(const AppContext& context, QString ipncId, QWidget* parent)
    : FramedDialog(tr("云台设置"), parent)
    , context_(context)
    , ipncId_(std::move(ipncId))
    , line_(new PtzLine(context.gateway, context.operationLog, this)) {
    setObjectName(QStringLiteral("PtzDialog"));
    line_->setDevice(ipncId_);
    build();
    corvanta::worded(this, [this] { setWords(); });
    connectPad();
    read();
}

PtzDialog::~PtzDialog() {
    line_->stopNow();
}

void PtzDialog::build() {
    const DeviceRecord* const device = context_.devices.device(ipncId_);
    auto* const name = new QLabel(device == nullptr ? ipncId_ : device->displayName(), this);
    name->setTextFormat(Qt::PlainText);
    body()->addWidget(name);
    auto* const row = new QHBoxLayout;
    row->setSpacing(4 * theme::Step);
    auto* const left = new QVBoxLayout;
    pad_ = new PtzPad(PtzPad::Extent::Whole, this);
    left->addWidget(pad_);
    auto* const speedRow = new QHBoxLayout;
    speedLabel_ = new QLabel(this);
    speed_ = new QSlider(Qt::Horizontal, this);
    speed_->setObjectName(QStringLiteral("ptzSpeed"));
    speed_->setRange(1, MostSpeed);
    speed_->setValue(UsualSpeed);
    speedLabel_->setBuddy(speed_);
    speedRow->addWidget(speedLabel_);
    speedRow->addWidget(speed_, 1);
    left->addLayout(speedRow);
    state_ = new QLabel(this);
    state_->setObjectName(QStringLiteral("ptzState"));
    state_->setTextFormat(Qt::PlainText);
    state_->setWordWrap(true);
    left->addWidget(state_);
    left->addStretch(1);
    row->addLayout(left);
    tabs_ = new QTabWidget(this);
    tabs_->setObjectName(QStringLiteral("ptzTabs"));
    presets_ = new PtzPresetPage(context_, ipncId_, tabs_);
    cruises_ = new PtzCruisePage(context_, ipncId_, tabs_);
    tabs_->addTab(presets_, {});
    tabs_->addTab(cruises_, {});
    row->addWidget(tabs_, 1);
    body()->addLayout(row, 1);
    refresh_ = addButton({}, QStringLiteral("ptzRefresh"), false);
    connect(refresh_, &QPushButton::clicked, this, &PtzDialog::read);
    close_ = addButton({}, QStringLiteral("ptzClose"), false);
    connect(close_, &QPushButton::clicked, this, &QDialog::reject);
    for (PtzPage* const page : {static_cast<PtzPage*>(presets_), static_cast<PtzPage*>(cruises_)}) {
        page->setEnabled(false); // until the camera has told
        connect(page, &PtzPage::sigChanged, this, &PtzDialog::read);
    }
}

void PtzDialog::setWords() {
    setWindowTitle(tr("云台设置"));
    setAccessibleName(windowTitle());
    speedLabel_->setText(tr("速度"));
    speed_->setAccessibleName(tr("速度"));
    tabs_->setAccessibleName(tr("云台设置"));
    tabs_->setTabText(0, tr("预置位"));
    tabs_->setTabText(1, tr("巡航"));
    refresh_->setText(tr("刷新"));
    close_->setText(tr("关闭"));
    for (QPushButton* const button : {refresh_, close_})
        button->setAccessibleName(button->text());
    if (stateText_)
        state_->setText(stateText_());
}

void PtzDialog::showState(corvanta::Text text) {
    stateText_ = std::move(text);
    state_->setText(stateText_());
}

void PtzDialog::connectPad() {
    connect(pad_, &PtzPad::sigHold, this, [this](PtzMotion motion) {
        motion.speed = speed_->value();
        line_->hold(motion);
    });
    connect(pad_, &PtzPad::sigRelease, line_, &PtzLine::release);
    connect(pad_, &PtzPad::sigHome, line_, &PtzLine::home);
    connect(line_, &PtzLine::sigProblem, this, [this](const QString& text) { account::tell(text, this); });
}

void PtzDialog::read() {
    manage::send(
        context_, this,
        {.json = requests::deviceRequest(QStringLiteral("获取云台信息"), {{QStringLiteral("ipncid"), ipncId_}}),
         .done = [this](const QVariantMap& resp) { show(resp.value(QStringLiteral("getcmds")).toMap()); },
         .failed =
             [this](const QString& text) {
                 showState([text] { return text; });
             }});
}

void PtzDialog::show(const QVariantMap& values) {
    const PtzCaps caps = PtzCaps::fromValue(values.value(QStringLiteral("ptzcaps")));
    pad_->setCaps(caps);
    speed_->setEnabled(caps.pan || caps.tilt || caps.zoom);
    const QVariantMap state = values.value(QStringLiteral("ptzstate")).toMap();
    const int running = state.value(QStringLiteral("cruise")).toInt();
    const auto presets = PtzPreset::listFrom(values.value(QStringLiteral("ptzpresets")));
    presets_->show(caps.presets, presets);
    cruises_->show(caps.cruises, PtzCruise::listFrom(values.value(QStringLiteral("ptzcruises"))), presets, running);
    showState([isThere = caps.any(), running] {
        return !isThere      ? tr("该设备没有云台。")
               : running > 0 ? tr("正在巡航：路线%1").arg(running)
                             : tr("按住按钮转动，松开停止。");
    });
}

void PtzDialog::closeEvent(QCloseEvent* event) {
    line_->stopNow();
    FramedDialog::closeEvent(event);
}

void PtzDialog::hideEvent(QHideEvent* event) {
    line_->stopNow();
    FramedDialog::hideEvent(event);
}
