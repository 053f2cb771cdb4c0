#pragma once

#include "base/BackgroundThread.h"
#include "vision/FileMeasurement.h"

#include <atomic>

namespace corvanta::vision {

/// Measures one file in a thread of its own. What it needs it is given before it starts and keeps as copies; what it
/// found is told in the GUI thread. Destroying it ends the measurement.
class ImageScannerTHread final : public BackgroundThread {
    Q_OBJECT
public:
    ImageScannerTHread(const QString& path, FileMeasurement measurement, QObject* parent = nullptr);
    ~ImageScannerTHread() override;

signals:
    /// The position as texts, of a code x, y and z. In the GUI thread, before `sigDone`.
    void sig_C_point(QStringList resultList);
    /// It is over, with or without a result. In the GUI thread.
    void sigDone(bool found);

private:
    void run() override;
    void tell();

    const QString path_;
    const FileMeasurement measurement_;
    std::atomic<bool> ended_ = false;
    QStringList result_; ///< written by the thread, read once it has been joined
};

} // namespace corvanta::vision
