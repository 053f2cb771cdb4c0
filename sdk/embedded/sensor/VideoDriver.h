#pragma once

#include "sensor/Driver.h"
#include "sensor/PictureSource.h"

namespace ipncsdk::sensor {

class PictureMeter;

/// Inputs that are measured on a device's pictures.
class VideoDriver final : public Driver {
public:
    /// `pictures` opens the device's light stream; null when that can't be.
    VideoDriver(const Board& board, std::function<std::unique_ptr<PictureSource>()> pictures);
    ~VideoDriver() override;

    std::string open() override;
    std::string read(std::vector<RawValue>& raw) override;
    std::string write(const Port& output, double value) override;
    void close() override;

private:
    const std::vector<Port> inputs_;
    const std::function<std::unique_ptr<PictureSource>()> pictures_;
    std::unique_ptr<PictureSource> source_; ///< null while closed
    std::vector<std::unique_ptr<PictureMeter>> meters_;
};

} // namespace ipncsdk::sensor
