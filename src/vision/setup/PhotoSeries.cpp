#include "vision/setup/PhotoSeries.h"

#include "base/JsonText.h"
#include "base/WholeFile.h"
#include "playback/Snapshot.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvanta::vision {
namespace {

constexpr int UsualCount = 12;

QString measuresFile(const QString& folder) {
    return folder + QStringLiteral("qrpic/board.json");
}

double lengthOf(const QVariant& value) {
    const double length = value.toDouble();
    return std::isfinite(length) && length > 0 ? length : 0;
}

} // namespace

PhotoSeries::PhotoSeries(QString folder)
    : folder_(std::move(folder)) {
    QFile file(measuresFile(folder_));
    QVariantMap kept;
    constexpr qint64 longest = 4096; // bytes
    if (file.open(QIODevice::ReadOnly))
        kept = json::parseObject(file.read(longest).toStdString());
    const auto corners = [&kept](const char* key, int usual) {
        return qBound(FewestCorners, kept.value(QLatin1String(key), usual).toInt(), MostCorners);
    };
    shape_.rowCorners = corners("rowCorners", shape_.rowCorners);
    shape_.columnCorners = corners("columnCorners", shape_.columnCorners);
    shape_.squareWidth = lengthOf(kept.value(QStringLiteral("squareWidth"), shape_.squareWidth));
    shape_.squareLength = lengthOf(kept.value(QStringLiteral("squareLength"), shape_.squareLength));
    const int count = qBound(Fewest, kept.value(QStringLiteral("photos"), UsualCount).toInt(), Most);
    for (int number = 1; number <= count; ++number)
        states_ += QFileInfo::exists(path(number)) ? State::Unchecked : State::Missing;
}

void PhotoSeries::setCount(int count) {
    count = qBound(Fewest, count, Most);
    if (count == states_.size())
        return;
    states_.resize(std::min(count, states_.size()));
    while (states_.size() < count)
        states_ += QFileInfo::exists(path(states_.size() + 1)) ? State::Unchecked : State::Missing;
    keepMeasures();
}

void PhotoSeries::setShape(const BoardShape& shape) {
    const bool isOther = shape.rowCorners != shape_.rowCorners || shape.columnCorners != shape_.columnCorners;
    shape_ = shape;
    for (State& state : states_) {
        if (isOther && state != State::Missing)
            state = State::Unchecked;
    }
    keepMeasures();
}

QString PhotoSeries::path(int number) const {
    return folder_ + QStringLiteral("qrpic/%1.jpg").arg(number);
}

QStringList PhotoSeries::paths() const {
    QStringList all;
    for (int number = 1; number <= states_.size(); ++number)
        all += path(number);
    return all;
}

bool PhotoSeries::store(int number, const QImage& photo) {
    if (number < 1 || number > states_.size() || !QDir().mkpath(QFileInfo(path(number)).path()) ||
        !playback::saveSnapshot(photo, path(number)))
        return false;
    at(number) = State::Unchecked;
    keepMeasures();
    return true;
}

bool PhotoSeries::remove(int number) {
    if (state(number) == State::Missing || !QFile::remove(path(number)))
        return false;
    at(number) = State::Missing;
    return true;
}

PhotoSeries::State PhotoSeries::state(int number) const {
    return states_.value(number - 1, State::Missing);
}

void PhotoSeries::setFound(int number, bool hasBoard) {
    if (state(number) != State::Missing)
        at(number) = hasBoard ? State::Found : State::NoBoard;
}

int PhotoSeries::nextToTake() const {
    const int missing = states_.indexOf(State::Missing);
    return 1 + (missing >= 0 ? missing : states_.indexOf(State::NoBoard));
}

int PhotoSeries::nextUnchecked() const {
    return states_.indexOf(State::Unchecked) + 1;
}

int PhotoSeries::taken() const {
    return count() - static_cast<int>(std::count(states_.begin(), states_.end(), State::Missing));
}

int PhotoSeries::found() const {
    return static_cast<int>(std::count(states_.begin(), states_.end(), State::Found));
}

void PhotoSeries::keepMeasures() const {
    const QString name = measuresFile(folder_);
    if (!QFileInfo(QFileInfo(name).path()).isDir())
        return; // they belong to photos, and there are none
    const std::string text = json::toText({{QStringLiteral("rowCorners"), shape_.rowCorners},
                                           {QStringLiteral("columnCorners"), shape_.columnCorners},
                                           {QStringLiteral("squareWidth"), shape_.squareWidth},
                                           {QStringLiteral("squareLength"), shape_.squareLength},
                                           {QStringLiteral("photos"), count()}});
    if (const QString problem = writeWholeFile(name, QByteArray::fromStdString(text)); !problem.isEmpty())
        qDebug() << "the board's measures are not kept" << problem;
}

} // namespace corvanta::vision
