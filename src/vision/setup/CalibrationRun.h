#pragma once

#include "vision/CameraCalibration.h"
#include "vision/setup/DialogTask.h"

#include <QString>
#include <QStringList>

#include <mutex>
#include <optional>
#include <vector>

namespace corvanta::vision {

/// What a calibration has come to.
struct CalibrationStep {
    enum class Kind {
        Looked,      ///< the board was found in a photo
        Unreadable,  ///< a photo cannot be read; goes on without it
        NoBoard,     ///< the end: a photo without the board
        OtherSize,   ///< the end: a photo of another size than the ones before
        TooFew,      ///< the end: too few photos that can be read
        Calibrating, ///< all photos were looked at
        Done,        ///< the end, there is a result
        Failed,      ///< the end: no camera fits what was seen
        NoBackend    ///< the end: nothing that looks at pictures is installed
    };
    Kind kind = Kind::Looked;
    int photo = 0;    ///< from 1, of the kinds that are about one
    double error = 0; ///< of `Done`: the reprojection error, px
};

/// The lines of the log that a step is told by.
QString stepText(const CalibrationStep& step);

/// Calibrates a camera from the photos of a series, in the background: looks for the board in one after the other,
/// and then for the camera.
class CalibrationRun final : public DialogTask {
    Q_OBJECT
public:
    CalibrationRun(QStringList paths, const BoardShape& shape, QObject* parent = nullptr);
    ~CalibrationRun() override;

    /// Steps: one for each photo, and one for the calibration itself.
    int length() const { return static_cast<int>(paths_.size()) + 1; }
    /// The steps since the last call, oldest first.
    std::vector<CalibrationStep> takeSteps();
    /// After `sigDone`.
    const std::optional<Calibration>& result() const { return result_; }

signals:
    /// There are steps to be taken; in the receiver's thread.
    void sigSteps();

private:
    void run() override;
    /// False where the calibration ends with this photo.
    bool look(int photo);
    void tell(const CalibrationStep& step);

    const QStringList paths_;
    const BoardShape shape_;
    QVector<BoardCorners> seen_; ///< of the thread, as is `size_`
    QSize size_;
    std::optional<Calibration> result_; ///< written by the thread, read once it has been joined
    std::mutex mutex_;
    std::vector<CalibrationStep> steps_; ///< guarded by `mutex_`
};

} // namespace corvanta::vision
