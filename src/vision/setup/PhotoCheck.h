#pragma once

#include "vision/CameraCalibration.h"
#include "vision/setup/DialogTask.h"

#include <QImage>
#include <QString>

namespace corvanta::vision {

/// Looks for the board in one photo, in the background.
class PhotoCheck final : public DialogTask {
    Q_OBJECT
public:
    PhotoCheck(int number, QString path, const BoardShape& shape, QObject* parent = nullptr);
    ~PhotoCheck() override;

    int number() const { return number_; }
    const BoardShape& shape() const { return shape_; }
    // After `sigDone`:
    bool isFound() const { return found_; }
    /// The photo in its full size, with the corners drawn into it where the board was found; null where the file
    /// cannot be read.
    const QImage& drawn() const { return drawn_; }

private:
    void run() override;

    const int number_;
    const QString path_;
    const BoardShape shape_;
    bool found_ = false;
    QImage drawn_;
};

} // namespace corvanta::vision
