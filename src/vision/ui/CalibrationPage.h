#pragma once

#include "vision/setup/CalibrationRun.h"
#include "vision/ui/PhotoList.h"

#include <QWidget>

#include <memory>

class QGridLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QSpinBox;

namespace corvanta::vision {

/// Where a camera is calibrated: the measures of code and chessboard, the photos, the calibration with its log, and
/// what it gave. Closing the page ends a calibration.
class CalibrationPage final : public QWidget {
    Q_OBJECT
public:
    CalibrationPage(const QString& folder, QWidget* parent);
    ~CalibrationPage() override;

    PhotoList& photos() { return *photos_; }
    void setCodeWidth(const QString& text);
    /// Texts of matrices; empty for none.
    void setCamera(const QString& cameraMatrix, const QString& distCoeffs);

signals:
    void sigWidthEdited(const QString& text);
    void sigCalibrated(const corvanta::vision::Calibration& calibration);
    /// For the dialog's line; empty: none any more.
    void sigProblem(const QString& text);

private:
    QLineEdit* addLength(const QString& label, const QString& objectName, QGridLayout& grid, int row, int column);
    QSpinBox* addNumber(const QString& label, const QString& objectName, QGridLayout& grid, int row, int column);
    void makeForm(QGridLayout& grid);
    QWidget* makeRun();
    void onMeasures();
    void calibrate();
    void onSteps();
    void onDone();

    PhotoList* photos_;
    QLineEdit* width_ = nullptr;
    QSpinBox* rowCorners_ = nullptr;
    QSpinBox* columnCorners_ = nullptr;
    QLineEdit* squareWidth_ = nullptr;
    QLineEdit* squareLength_ = nullptr;
    QSpinBox* count_ = nullptr;
    QPushButton* calibrate_ = nullptr;
    QProgressBar* progress_ = nullptr;
    QPlainTextEdit* log_ = nullptr;
    QLabel* camera_ = nullptr;
    std::unique_ptr<CalibrationRun> run_; ///< null while none runs
};

} // namespace corvanta::vision
