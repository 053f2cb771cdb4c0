#include "vision/ui/MeasureDialog.h"

#include "account/ui/AccountForm.h"
#include "base/AppPaths.h"
#include "base/DataTree.h"
#include "base/DeviceModel.h"
#include "base/OperationLog.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/ui/SendAndReact.h"
#include "base/ui/Theme.h"
#include "video/live/LivePane.h"
#include "video/ui/ItemVideo.h"
#include "vision/ui/InputsTable.h"

#include <QDateTime>
#include <QDir>
#include <QEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <utility>

namespace corvanta::vision {
namespace {

const QSize Usual(960, 600);        // px
const QSize SmallestTile(224, 126); // px

enum View { Live, Captured };

/// Of the device's folder, below the data folder; see `MeasureDialog::folder`.
QString folderOf(const AppPaths& paths, const QString& ipncId) {
    const auto component = dataTree::pathComponent(ipncId);
    const QString below = QDir(paths.root()).relativeFilePath(paths.measuring());
    return component ? below + QLatin1Char('/') + *component + QLatin1Char('/') : QString();
}

QVector<MeasuredInput> inputsOf(const AppContext& context, const QString& ipncId, const MeasureDialog::Kind& kind,
                                const QVariantList& kept) {
    const DeviceRecord* const device = context.devices.device(ipncId);
    return device == nullptr ? QVector<MeasuredInput>() : measuredInputs(*device, kind.boardType, kind.axes, kept);
}

/// Scrolls upwards and downwards alone: it is always as wide as what is in it has to be.
class PageScroll final : public QScrollArea {
public:
    using QScrollArea::QScrollArea;

protected:
    // It hears of its content's events by itself.
    bool eventFilter(QObject* object, QEvent* event) override {
        if (object == widget() && event->type() == QEvent::LayoutRequest)
            setMinimumWidth(widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width());
        return QScrollArea::eventFilter(object, event);
    }
};

} // namespace

MeasureDialog::MeasureDialog(const AppContext& context, const Kind& kind, const QString& ipncId,
                             const QVariantList& kept, QWidget* parent)
    : FramedDialog(kind.title, parent)
    , context_(context)
    , kind_(kind)
    , ipncId_(ipncId)
    , kept_(kept)
    , folder_(folderOf(context.paths, ipncId))
    , live_(new video::LivePane(context, ipncId, this))
    , picture_(new PictureView(this))
    , views_(new QTabWidget(this))
    , pages_(new QTabWidget(this)) {
    setObjectName(kind.objectName);
    setAccessibleName(kind.title);
    setSizeGripEnabled(true);
    live_->tile().setMinimumSize(SmallestTile);
    picture_->setHint(tr("还没有照片。抓拍后，照片和测到的结果显示在这里。"));
    views_->setObjectName(QStringLiteral("measureViews"));
    views_->setAccessibleName(tr("画面"));
    views_->addTab(live_, tr("实时视频"));
    views_->addTab(picture_, tr("照片"));
    pages_->setObjectName(QStringLiteral("measurePages"));
    pages_->setAccessibleName(tr("测距的设置"));
    for (QTabWidget* const tabs : {views_, pages_})
        tabs->setUsesScrollButtons(false); // the dialog is wide enough for all
    auto* const row = new QHBoxLayout;
    row->setSpacing(3 * theme::Step);
    row->addWidget(views_, 3);
    row->addWidget(pages_, 2);
    body()->addLayout(row, 1);
    auto* const toggle = addButton(tr("关闭视频"), QStringLiteral("measureVideo"), false);
    save_ = addButton(tr("保存"), QStringLiteral("measureSave"), true);
    connect(save_, &QPushButton::clicked, this, &MeasureDialog::save);
    connect(addButton(tr("关闭"), QStringLiteral("measureClose"), false), &QPushButton::clicked, this,
            &QDialog::reject);
    connect(toggle, &QPushButton::clicked, live_, &video::LivePane::toggle);
    connect(live_, &video::LivePane::sigOpenChanged, toggle,
            [toggle](bool isOpen) { toggle->setText(isOpen ? tr("关闭视频") : tr("打开视频")); });
    connect(live_, &video::LivePane::sigCaptured, this, &MeasureDialog::onCaptured);
    connect(live_, &video::LivePane::sigCaptureFailed, this, [this](const QString& text) {
        if (!then_)
            return; // nobody waits any more
        account::tell(text, this);
        onCaptured({});
    });
    live_->toggle();
}

void MeasureDialog::done(int result) {
    then_ = {};
    live_->stop();
    FramedDialog::done(result);
}

QString MeasureDialog::pathOf(const QString& name) const {
    return context_.paths.root() + QLatin1Char('/') + folder_ + name;
}

void MeasureDialog::showPicture(const QImage& picture, const QVector<PictureView::Mark>& marks) {
    picture_->setPicture(picture, marks);
    views_->setCurrentIndex(Captured);
}

void MeasureDialog::addPage(QWidget* page, const QString& title) {
    auto* const inside = new QWidget(this);
    auto* const column = new QVBoxLayout(inside);
    column->setContentsMargins(2 * theme::Step, 2 * theme::Step, 2 * theme::Step, 2 * theme::Step);
    column->addWidget(page);
    auto* const scroll = new PageScroll(this);
    scroll->setObjectName(page->objectName() + QStringLiteral("Scroll"));
    scroll->setAccessibleName(title);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setWidget(inside);
    pages_->addTab(scroll, title);
}

void MeasureDialog::addInputs() {
    inputs_ = new InputsTable(inputsOf(context_, ipncId_, kind_, kept_), this);
    inputs_->setObjectName(QStringLiteral("inputsPage"));
    addPage(inputs_, tr("采集输入"));
    // As large as the main window lets it be, whatever dialog it was opened from.
    const QWidget* window = parentWidget();
    while (window != nullptr && window->window()->parentWidget() != nullptr)
        window = window->window()->parentWidget();
    const QSize room = window == nullptr ? Usual : window->window()->size();
    resize(Usual.boundedTo(room).expandedTo(minimumSizeHint()));
}

bool MeasureDialog::capture(std::function<void(const QImage&)> then) {
    if (then_)
        return false;
    then_ = std::move(then);
    if (folder_.isEmpty()) {
        account::tell(tr("该设备的编号不能作为文件夹名称，无法保存照片!"), this);
        onCaptured({});
        return true;
    }
    views_->setCurrentIndex(Live);
    live_->capture();
    return true;
}

void MeasureDialog::onCaptured(const QImage& picture) {
    if (const auto then = std::exchange(then_, {}))
        then(picture);
}

void MeasureDialog::save() {
    showProblem({});
    const QString problem = makeReady();
    if (!problem.isEmpty()) {
        account::tell(problem, this);
        return;
    }
    const QVariantMap stored{{QStringLiteral("info"), info(toList(inputs_->inputs()))}};
    const bool isSent = setConfigAndReact(
        context_.gateway,
        requests::directCommand(kind_.operation, {{QStringLiteral("ipncid"), ipncId_}, {kind_.member, stored}}), this,
        {.done =
             [this](const QVariantMap&) {
                 save_->setEnabled(true);
                 context_.operationLog.addOperateLog(context_.gateway.phoneId(), QDateTime::currentDateTime(),
                                                     QStringLiteral("传感器设置"), kind_.logged, ipncId_);
                 account::tell(tr("保存成功!"), this);
             },
         .failed =
             [this](const QString& text) {
                 save_->setEnabled(true);
                 account::tell(text, this);
             }});
    if (isSent)
        save_->setEnabled(false);
}

} // namespace corvanta::vision
