#pragma once

#include "base/BackgroundThread.h"
#include "map/PicturePyramid.h"

#include <string>

namespace corvanta::map {

/// Reads the picture of a map in a thread of its own. Nothing ends that early, so nobody waits for it: who does not
/// want the picture any more lets it go.
class MapPictureLoader final : public BackgroundThread {
    Q_OBJECT
public:
    explicit MapPictureLoader(const QString& path, QObject* parent = nullptr);
    ~MapPictureLoader() override;

    /// Once it has finished.
    PicturePyramid take();
    /// Goes by itself when it is done, at the latest with the program.
    void letGo();

protected:
    void run() override;

private:
    const std::u16string path_; ///< threads share no texts of the toolkit
    PicturePyramid picture_;    ///< the thread's until it is joined
};

} // namespace corvanta::map
