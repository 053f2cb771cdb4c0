#pragma once

#include "vision/CameraCalibration.h"

#include <QImage>
#include <QString>
#include <QStringList>
#include <QVector>

namespace corvanta::vision {

/// The photos of a chessboard that a camera is calibrated with: numbered from 1, one file each, and what was found
/// in them. They stay in their folder, with the board's measures beside them, so that a series can be gone on with
/// another day. A value; of one thread at a time.
class PhotoSeries final {
public:
    enum class State {
        Missing,   ///< no file
        Unchecked, ///< nobody has looked for the board yet
        NoBoard,   ///< the board is not seen as a whole, or the file cannot be read
        Found
    };
    static constexpr int Fewest = 3; ///< photos; fewer do not tell a camera
    static constexpr int Most = 50;
    static constexpr int FewestCorners = 3; ///< in a row or column of a board that can be found
    static constexpr int MostCorners = 40;

    /// Takes up the series of a folder (absolute, with a slash at its end), or begins one with usual measures.
    explicit PhotoSeries(QString folder);

    int count() const { return states_.size(); }
    /// Wanted number of photos, within `Fewest` and `Most`. Files beyond it stay where they are.
    void setCount(int count);

    const BoardShape& shape() const { return shape_; }
    /// With other numbers of corners every photo is to be looked at again. Square sides of 0 are "not entered".
    void setShape(const BoardShape& shape);

    /// "qrpic/1.jpg" in the folder for number 1.
    QString path(int number) const;
    QStringList paths() const;

    /// Writes a photo; one of the same number is replaced. False where the file cannot be written.
    bool store(int number, const QImage& photo);
    bool remove(int number);

    State state(int number) const;
    /// What looking at a photo gave; ignored where the photo is missing.
    void setFound(int number, bool hasBoard);

    /// The photo to be taken next: the first that is missing, else the first without the board; 0 when all are good.
    int nextToTake() const;
    /// The first that nobody has looked at yet; 0 for none.
    int nextUnchecked() const;
    int taken() const;
    int found() const;

private:
    void keepMeasures() const;
    State& at(int number) { return states_[number - 1]; }

    QString folder_;
    BoardShape shape_{9, 6, 25, 25};
    QVector<State> states_; ///< by number - 1
};

} // namespace corvanta::vision
