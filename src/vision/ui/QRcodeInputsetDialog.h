#pragma once

#include "vision/setup/QrDraft.h"
#include "vision/ui/MeasureDialog.h"

#include <memory>

namespace corvanta::vision {

class CalibrationPage;
class ImageScannerTHread;
class PositionPage;

/// Sets up a camera that measures where a printed code is: the code's size, the camera's calibration with photos of
/// a chessboard, the initial position, the inputs that are reported.
class QRcodeInputsetDialog final : public MeasureDialog {
    Q_OBJECT
public:
    QRcodeInputsetDialog(const AppContext& context, const QString& ipncId, QWidget* parent);
    ~QRcodeInputsetDialog() override;

public slots:
    /// The position that a captured picture shows: x, y and z as texts.
    void Ongetpoint(const QStringList& resultList);

private:
    /// What a captured picture is measured for.
    enum class Purpose { Initial, Current };

    QRcodeInputsetDialog(const AppContext& context, const QString& ipncId, const QVariantMap& info, QWidget* parent);
    void makeCalibration();
    void makePosition();
    void measure(Purpose purpose);
    void measurePicture(const QImage& picture);
    void rest();
    void onMeasured(bool found);
    void showInitial();
    QString makeReady() override;
    QVariantMap info(const QVariantList& inputs) override;

    QrDraft draft_;
    CalibrationPage* calibration_ = nullptr;
    PositionPage* position_ = nullptr;
    Purpose purpose_ = Purpose::Current;
    QrSetup measuredWith_;                        ///< what the scanner was given
    std::unique_ptr<ImageScannerTHread> scanner_; ///< null while nothing is measured
};

} // namespace corvanta::vision
