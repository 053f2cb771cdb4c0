#include "vision/ui/LaserSetDialog.h"

#include "account/ui/AccountForm.h"
#include "base/AppPaths.h"
#include "base/DeviceModel.h"
#include "playback/Snapshot.h"
#include "vision/MeasureKind.h"
#include "vision/MediaPictures.h"
#include "vision/ui/LaserScalePage.h"
#include "vision/ui/LaserSpotPage.h"
#include "vision/ui/PositionPage.h"

#include <QDir>

#include <cmath>

namespace corvanta::vision {
namespace {

MeasureDialog::Kind kind() {
    return {.title = LaserSetDialog::tr("激光光斑测距配置"),
            .logged = QStringLiteral("激光光斑测距配置"),
            .objectName = QStringLiteral("LaserSetDialog"),
            .boardType = QStringLiteral("LASER"),
            .axes = {QStringLiteral("laser_x"), QStringLiteral("laser_y")},
            .operation = QStringLiteral("保存激光光斑测距配置"),
            .member = QStringLiteral("Laserinfo")};
}

QVariantMap infoOf(const AppContext& context, const QString& ipncId) {
    const DeviceRecord* const device = context.devices.device(ipncId);
    return device == nullptr ? QVariantMap() : measureInfoOf(*device, MeasureKind::LaserSpot);
}

QString foundText(const Spot& spot) {
    return LaserSetDialog::tr("已找到光斑：中心 (%1, %2)，直径 %3 像素，圆度 %4，亮度差 %5。")
        .arg(spot.centre.x(), 0, 'f', 1)
        .arg(spot.centre.y(), 0, 'f', 1)
        .arg(spot.diameter, 0, 'f', 1)
        .arg(spot.roundness, 0, 'f', 2)
        .arg(spot.contrast, 0, 'f', 0);
}

} // namespace

LaserSetDialog::LaserSetDialog(const AppContext& context, const QString& ipncId, QWidget* parent)
    : LaserSetDialog(context, ipncId, infoOf(context, ipncId), parent) {}

LaserSetDialog::LaserSetDialog(const AppContext& context, const QString& ipncId, const QVariantMap& info,
                               QWidget* parent)
    : MeasureDialog(context, kind(), ipncId, info.value(QStringLiteral("input")).toList(), parent)
    , draft_(LaserDraft::fromInfo(info)) {
    const QString reference = draft_.info().referencePath(context.paths.root());
    if (!reference.isEmpty())
        draft_.setReference(readPicture(reference));
    makePages();
    if (!draft_.info().reference.isEmpty() && draft_.reference().isNull())
        spotPage_->setState(tr("已设置的参考图在本机读不到，请重新拍参考图。"));
    addInputs();
    picture().setChoosing(scalePage_->isByPoints());
}

void LaserSetDialog::makePages() {
    spotPage_ = new LaserSpotPage(draft_.info().spot, this);
    spotPage_->setObjectName(QStringLiteral("spotPage"));
    spotPage_->setHasReference(!draft_.reference().isNull());
    addPage(spotPage_, tr("光斑"));
    scalePage_ = new LaserScalePage(draft_.info(), this);
    scalePage_->setObjectName(QStringLiteral("scalePage"));
    addPage(scalePage_, tr("比例"));
    position_ = new PositionPage({QStringLiteral("X"), QStringLiteral("Y")}, this);
    position_->setObjectName(QStringLiteral("positionPage"));
    addPage(position_, tr("初始位置"));
    showInitial();
    connect(spotPage_, &LaserSpotPage::sigTakeReference, this, &LaserSetDialog::takeReference);
    connect(spotPage_, &LaserSpotPage::sigDropReference, this, [this] {
        draft_.setReference({});
        spotPage_->setHasReference(false);
        onSpotEdited();
    });
    connect(spotPage_, &LaserSpotPage::sigFind, this, [this] { take([this] { find(); }); });
    connect(spotPage_, &LaserSpotPage::sigEdited, this, &LaserSetDialog::onSpotEdited);
    connect(scalePage_, &LaserScalePage::sigCapture, this, [this] { take([this] { find(); }); });
    connect(scalePage_, &LaserScalePage::sigEdited, this, &LaserSetDialog::onScaleEdited);
    connect(position_, &PositionPage::sigSetInitial, this, [this] { measure(true); });
    connect(position_, &PositionPage::sigMeasure, this, [this] { measure(false); });
    connect(&picture(), &PictureView::sigPointChosen, this, [this](const QPointF& pixel) {
        if (scalePage_->isVisible() && scalePage_->isByPoints())
            scalePage_->choose(pixel);
    });
}

void LaserSetDialog::setBusy(bool isBusy) {
    spotPage_->setBusy(isBusy);
    scalePage_->setBusy(isBusy);
    position_->setBusy(isBusy);
}

void LaserSetDialog::take(const std::function<void()>& then) {
    setBusy(true);
    const auto onPicture = [this, then](const QImage& picture) {
        setBusy(false);
        if (picture.isNull())
            return;
        taken_ = picture;
        spot_.reset();
        showPicture(taken_);
        then();
    };
    capture(onPicture); // with the buttons asleep, no other capture is on its way
}

void LaserSetDialog::takeReference() {
    take([this] {
        draft_.setReference(taken_);
        spotPage_->setHasReference(true);
        spotPage_->setState(tr("已拍参考图，保存后生效。请打开激光，再查找光斑。"));
        showMarks();
    });
}

void LaserSetDialog::find() {
    LaserInfo entered = draft_.info();
    entered.spot = spotPage_->spot();
    entered.mode = LaserInfo::Mode::Scale;
    entered.scale = 1; // what remains is what the spot is looked for with
    if (const auto problem = entered.measureProblem()) {
        spot_.reset();
        spotPage_->setState(*problem);
    } else {
        const SpotSearch search = findSpot(taken_, draft_.reference(), entered.spot);
        spot_ = search.spot;
        spotPage_->setState(search.spot ? foundText(*search.spot) : problemText(search.problem));
    }
    showMarks();
}

void LaserSetDialog::enter() {
    LaserInfo entered = draft_.info();
    entered.spot = spotPage_->spot();
    scalePage_->enterInto(entered);
    draft_.setMeasuring(entered);
    showInitial();
}

void LaserSetDialog::onSpotEdited() {
    enter();
    position_->setCurrent({});
    if (!taken_.isNull())
        find(); // with other settings it may be seen, or not
}

void LaserSetDialog::onScaleEdited() {
    enter();
    position_->setCurrent({});
    picture().setChoosing(scalePage_->isByPoints());
    showMarks();
}

void LaserSetDialog::showMarks() {
    QVector<PictureView::Mark> marks;
    if (scalePage_->isByPoints()) {
        const QVector<QPointF> pixels = scalePage_->pixels();
        for (int point = 0; point < pixels.size(); ++point) {
            if (std::isfinite(pixels[point].x()) && std::isfinite(pixels[point].y()))
                marks += {pixels[point], QString::number(point + 1)};
        }
    }
    if (spot_)
        marks += {spot_->centre, tr("光斑"), spot_->diameter / 2};
    picture().setMarks(marks);
}

void LaserSetDialog::showInitial() {
    const auto initial = draft_.initial();
    position_->setInitial(initial ? initial->texts() : QStringList(), draft_.hasOldInitial());
}

void LaserSetDialog::measure(bool isInitial) {
    enter(); // an edit may still have the keyboard
    if (const auto problem = draft_.info().measureProblem()) {
        account::tell(*problem, this);
        return;
    }
    take([this, isInitial] {
        const auto meter = LaserMeter::make(draft_.info(), draft_.reference());
        const LaserMeter::Measurement measured = meter ? meter->measure(taken_) : LaserMeter::Measurement();
        if (measured.position) {
            spot_ = measured.spot;
            position_->setCurrent(measured.position->texts());
            position_->setState({});
        } else {
            position_->setCurrent({});
            const QString why = problemText(measured.problem);
            position_->setState(why.isEmpty() ? tr("光斑不在靶面上。") : why);
        }
        showMarks();
        if (!isInitial)
            return;
        if (measured.position)
            draft_.setInitial(*measured.position);
        showInitial();
        account::tell(measured.position ? tr("初始值确定成功!") : tr("初始值确定失败!"), this);
    });
}

QString LaserSetDialog::makeReady() {
    enter();
    const QString name = QStringLiteral("laserpic/reference.png");
    draft_.setReferenceName(draft_.reference().isNull() ? QString() : folder() + name);
    if (auto problem = draft_.saveProblem())
        return *problem;
    const QString path = pathOf(name);
    const bool isKept = draft_.reference().isNull() || (QDir().mkpath(pathOf(QStringLiteral("laserpic"))) &&
                                                        playback::saveSnapshot(draft_.reference(), path));
    return isKept ? QString() : tr("照片无法保存，请检查磁盘空间和权限!");
}

QVariantMap LaserSetDialog::info(const QVariantList& inputs) {
    return draft_.toInfo(inputs);
}

} // namespace corvanta::vision
