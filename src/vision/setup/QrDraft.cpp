#include "vision/setup/QrDraft.h"

#include "vision/CameraCalibration.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace corvanta::vision {
namespace {

constexpr double WidestCode = 100'000; // mm

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(QrDraft)
};

const QStringList& initialKeys() {
    static const QStringList keys = {QStringLiteral("qr_inint_x"), QStringLiteral("qr_inint_y"),
                                     QStringLiteral("qr_inint_z")};
    return keys;
}

/// Three numbers, or nothing.
QStringList positionFrom(const QStringList& texts) {
    const bool areNumbers = std::all_of(texts.begin(), texts.end(), [](const QString& text) {
        bool isNumber = false;
        return std::isfinite(text.toDouble(&isNumber)) && isNumber;
    });
    return texts.size() == initialKeys().size() && areNumbers ? texts : QStringList();
}

bool isSame(const QrSetup& one, const QrSetup& other) {
    return one.cameraMatrix == other.cameraMatrix && one.distCoeffs == other.distCoeffs &&
           one.codeWidth.toDouble() == other.codeWidth.toDouble();
}

} // namespace

QrDraft QrDraft::fromInfo(const QVariantMap& info) {
    QrDraft draft;
    draft.setup_ = QrSetup::fromMap(info);
    draft.setup_.codeWidth = draft.setup_.codeWidth.trimmed();
    const QVariantMap initial = info.value(QStringLiteral("inintDataList")).toMap();
    QStringList texts;
    for (const QString& key : initialKeys())
        texts += initial.value(key).toString();
    draft.initial_ = positionFrom(texts);
    draft.initialSetup_ = draft.setup_;
    draft.rest_ = info;
    return draft;
}

void QrDraft::setCalibration(const Calibration& calibration) {
    setup_.cameraMatrix = calibration.cameraMatrix;
    setup_.distCoeffs = calibration.distCoeffs;
}

bool QrDraft::isCalibrated() const {
    if (setup_.cameraMatrix.isEmpty())
        return false;
    QrSetup camera = setup_;
    camera.codeWidth = QStringLiteral("1");
    return QrPose::make(camera).has_value();
}

bool QrDraft::isWidthRight() const {
    bool isNumber = false;
    const auto width = static_cast<double>(setup_.codeWidth.toFloat(&isNumber)); // as it is measured with
    return isNumber && std::isfinite(width) && width > 0 && width <= WidestCode;
}

QStringList QrDraft::initial() const {
    return isWidthRight() && isSame(setup_, initialSetup_) ? initial_ : QStringList();
}

void QrDraft::setInitial(const QStringList& position, const QrSetup& measuredWith) {
    initial_ = positionFrom(position);
    initialSetup_ = measuredWith;
}

std::optional<QString> QrDraft::measureProblem() const {
    if (!isCalibrated())
        return Texts::tr("请先标定摄像机参数!");
    if (!isWidthRight())
        return Texts::tr("请输入正确的二维码宽度!");
    if (visionBackend() == nullptr)
        return noVisionText();
    return std::nullopt;
}

std::optional<QString> QrDraft::saveProblem() const {
    const QString noInitial = Texts::tr("请先确定二维码初始位置!");
    if (isCalibrated() && initial_.isEmpty())
        return noInitial;
    if (auto problem = measureProblem())
        return problem;
    return initial().isEmpty() ? std::optional(noInitial) : std::nullopt;
}

QVariantMap QrDraft::toInfo(const QVariantList& inputs) const {
    QVariantMap info = rest_;
    info.insert(QStringLiteral("QRwidth"), setup_.codeWidth);
    info.insert(QStringLiteral("cameraMatrix"), setup_.cameraMatrix);
    info.insert(QStringLiteral("distCoeffs"), setup_.distCoeffs);
    QVariantMap initial = rest_.value(QStringLiteral("inintDataList")).toMap();
    const QStringList position = this->initial();
    for (int axis = 0; axis < position.size(); ++axis)
        initial.insert(initialKeys()[axis], position[axis]);
    info.insert(QStringLiteral("inintDataList"), initial);
    info.insert(QStringLiteral("input"), inputs);
    return info;
}

} // namespace corvanta::vision
