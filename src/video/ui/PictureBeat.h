#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <vector>

/// Something that receives pictures on any thread and takes them to the screen when it is told to.
class PictureReceiver {
public:
    PictureReceiver() = default;
    PictureReceiver(const PictureReceiver&) = delete;
    PictureReceiver& operator=(const PictureReceiver&) = delete;

    /// Shows the newest picture, if there is one that was not shown yet; whether there was.
    virtual bool takePicture() = 0;
    /// How many pictures have come so far; wraps.
    virtual std::uint32_t receivedPictures() const = 0;
    /// No beat comes until the receiver wakes it again. False when a picture has come in between: then the beat goes
    /// on.
    virtual bool rest() = 0;

protected:
    ~PictureReceiver() = default;
};

/// Takes the pictures of many tiles to the screen in one go. Drawing a window costs the same for one tile as for all
/// of them, so pictures that come at moments of their own are gathered to one beat, which is just a little faster
/// than the fastest of the streams: so that no two pictures of one stream fall into the same beat, and the window is
/// not drawn more often than needed. GUI thread.
///
/// Life: rests until `wake`; beats until no picture has come for a while.
class PictureBeat final : public QObject {
    Q_OBJECT
public:
    explicit PictureBeat(QObject* parent = nullptr);

    /// The receiver is removed before it goes.
    void add(PictureReceiver& receiver);
    void remove(PictureReceiver& receiver);

    /// A picture is waiting somewhere. Begins with a beat at once when it was resting.
    void wake();

    bool isResting() const { return !timer_.isActive(); }
    /// The time from one beat to the next, ms.
    int period() const { return timer_.interval(); }

    /// The period for streams of which the fastest brings so many pictures a second, ms.
    static int periodFor(double picturesPerSecond);

signals:
    /// Some tiles have taken a new picture.
    void sigPicturesTaken();

private:
    struct Member {
        PictureReceiver* receiver = nullptr;
        std::uint32_t received = 0; ///< when the rate was last measured
    };

    void beat();
    void tryToRest();
    void measureRate();

    std::vector<Member> members_;
    QTimer timer_;
    QElapsedTimer sincePicture_;
    QElapsedTimer sinceMeasured_;
};
