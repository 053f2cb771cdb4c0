#include "vision/ui/QRcodeInputsetDialog.h"

#include "account/ui/AccountForm.h"
#include "base/DeviceModel.h"
#include "playback/Snapshot.h"
#include "vision/CameraCalibration.h"
#include "vision/ImageScannerTHread.h"
#include "vision/MeasureKind.h"
#include "vision/QrFile.h"
#include "vision/QrSensor.h"
#include "vision/ui/CalibrationPage.h"
#include "vision/ui/PositionPage.h"

#include <QDir>

namespace corvanta::vision {
namespace {

MeasureDialog::Kind kind() {
    return {.title = QRcodeInputsetDialog::tr("二维码测距配置"),
            .logged = QStringLiteral("二维码测距配置"),
            .objectName = QStringLiteral("QRcodeInputsetDialog"),
            .boardType = QStringLiteral("QR"),
            .axes = qrAxes(),
            .operation = QStringLiteral("保存二维码测距配置"),
            .member = QStringLiteral("QRinfo")};
}

QVariantMap infoOf(const AppContext& context, const QString& ipncId) {
    const DeviceRecord* const device = context.devices.device(ipncId);
    return device == nullptr ? QVariantMap() : measureInfoOf(*device, MeasureKind::Code);
}

} // namespace

QRcodeInputsetDialog::QRcodeInputsetDialog(const AppContext& context, const QString& ipncId, QWidget* parent)
    : QRcodeInputsetDialog(context, ipncId, infoOf(context, ipncId), parent) {}

QRcodeInputsetDialog::QRcodeInputsetDialog(const AppContext& context, const QString& ipncId, const QVariantMap& info,
                                           QWidget* parent)
    : MeasureDialog(context, kind(), ipncId, info.value(QStringLiteral("input")).toList(), parent)
    , draft_(QrDraft::fromInfo(info)) {
    makeCalibration();
    makePosition();
    addInputs();
}

QRcodeInputsetDialog::~QRcodeInputsetDialog() = default;

void QRcodeInputsetDialog::makeCalibration() {
    calibration_ = new CalibrationPage(pathOf({}), this);
    calibration_->setObjectName(QStringLiteral("calibrationPage"));
    calibration_->setCodeWidth(draft_.setup().codeWidth);
    calibration_->setCamera(draft_.setup().cameraMatrix, draft_.setup().distCoeffs);
    addPage(calibration_, tr("相机标定"));
    PhotoList& photos = calibration_->photos();
    connect(&photos, &PhotoList::sigCaptureWanted, this, [this, &photos] {
        if (!capture([&photos](const QImage& picture) { photos.onCaptured(picture); }))
            photos.onCaptured({});
    });
    connect(&photos, &PhotoList::sigShown, this, [this](const QImage& drawn) { showPicture(drawn); });
    connect(calibration_, &CalibrationPage::sigProblem, this, &QRcodeInputsetDialog::showProblem);
    connect(calibration_, &CalibrationPage::sigWidthEdited, this, [this](const QString& text) {
        draft_.setWidth(text);
        showInitial();
    });
    connect(calibration_, &CalibrationPage::sigCalibrated, this, [this](const Calibration& calibration) {
        draft_.setCalibration(calibration);
        calibration_->setCamera(calibration.cameraMatrix, calibration.distCoeffs);
        position_->setCurrent({}); // it was measured as if by another camera
        showInitial();
    });
}

void QRcodeInputsetDialog::makePosition() {
    position_ = new PositionPage({QStringLiteral("X"), QStringLiteral("Y"), QStringLiteral("Z")}, this);
    position_->setObjectName(QStringLiteral("positionPage"));
    addPage(position_, tr("初始位置"));
    connect(position_, &PositionPage::sigSetInitial, this, [this] { measure(Purpose::Initial); });
    connect(position_, &PositionPage::sigMeasure, this, [this] { measure(Purpose::Current); });
    showInitial();
}

void QRcodeInputsetDialog::showInitial() {
    if (position_ != nullptr)
        position_->setInitial(draft_.initial(), draft_.hasOldInitial());
}

void QRcodeInputsetDialog::measure(Purpose purpose) {
    if (const auto problem = draft_.measureProblem()) {
        account::tell(*problem, this);
        return;
    }
    if (scanner_ != nullptr)
        return;
    purpose_ = purpose;
    position_->setBusy(true);
    position_->setState(tr("正在测量..."));
    if (!capture([this](const QImage& picture) { measurePicture(picture); }))
        rest(); // a photo is just being taken
}

void QRcodeInputsetDialog::measurePicture(const QImage& picture) {
    if (picture.isNull()) {
        rest();
        return;
    }
    showPicture(picture);
    const QString path =
        pathOf(purpose_ == Purpose::Initial ? QStringLiteral("QRinint.jpg") : QStringLiteral("QRtest.jpg"));
    if (!QDir().mkpath(pathOf({})) || !playback::saveSnapshot(picture, path)) {
        showProblem(tr("照片无法保存，请检查磁盘空间和权限!"));
        onMeasured(false);
        return;
    }
    showProblem({});
    measuredWith_ = draft_.setup();
    scanner_ = std::make_unique<ImageScannerTHread>(path, qrMeasurement(measuredWith_));
    connect(scanner_.get(), &ImageScannerTHread::sig_C_point, this, &QRcodeInputsetDialog::Ongetpoint);
    connect(scanner_.get(), &ImageScannerTHread::sigDone, this, [this](bool found) {
        scanner_.release()->deleteLater(); // its signal is being emitted
        onMeasured(found);
    });
    scanner_->start();
}

void QRcodeInputsetDialog::Ongetpoint(const QStringList& resultList) {
    position_->setCurrent(resultList);
    if (purpose_ != Purpose::Initial)
        return;
    draft_.setInitial(resultList, measuredWith_);
    showInitial();
}

void QRcodeInputsetDialog::rest() {
    position_->setBusy(false);
    position_->setState({});
}

void QRcodeInputsetDialog::onMeasured(bool found) {
    rest();
    if (!found)
        position_->setCurrent({});
    if (purpose_ == Purpose::Initial) {
        account::tell(found ? tr("初始值确定成功!") : tr("初始值确定失败!"), this);
    } else {
        position_->setState(found ? QString() : tr("画面中没有测到二维码。"));
    }
}

QString QRcodeInputsetDialog::makeReady() {
    return draft_.saveProblem().value_or(QString());
}

QVariantMap QRcodeInputsetDialog::info(const QVariantList& inputs) {
    return draft_.toInfo(inputs);
}

} // namespace corvanta::vision
