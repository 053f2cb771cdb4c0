#include "vision/setup/PhotoCheck.h"

#include "vision/MediaPictures.h"

#include <utility>

namespace corvanta::vision {

PhotoCheck::PhotoCheck(int number, QString path, const BoardShape& shape, QObject* parent)
    : DialogTask(parent)
    , number_(number)
    , path_(std::move(path))
    , shape_(shape) {}

PhotoCheck::~PhotoCheck() {
    join();
}

void PhotoCheck::run() {
    drawn_ = readPicture(path_);
    if (drawn_.isNull() || isGivenUp())
        return;
    if (const auto corners = findBoard(drawn_, shape_)) {
        found_ = true;
        drawn_ = drawBoard(drawn_, shape_, *corners);
    }
}

} // namespace corvanta::vision
