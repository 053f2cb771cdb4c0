#pragma once

#include "storage/avi/AviWriter.h"

#include <QDateTime>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVariantMap>

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

class CallbackGate;
class RecordingStorage;
class SdkGateway;
class Settings;

/// Records devices: a request of its own for each one's coded stream, whose frames are appended to AVI files as they
/// come. Files are cut at key frames, when the packing time is over or another drive takes over.
///
/// A recording that was started goes on until it is stopped: a lost connection closes its file complete, and the next
/// frames begin a new one; a request that ends by itself is sent again; a disk that takes nothing more is left at the
/// next key frame. While old days are being deleted a file goes on in what is kept free otherwise. GUI thread;
/// threads of the SDK only copy frames.
class Recorder final : public QObject {
    Q_OBJECT
public:
    enum class State {
        Off,
        Waiting, ///< wanted, and nothing is written: no stream yet, none any more, or no file could be made
        Recording,
    };
    struct Parts {
        SdkGateway& gateway;
        RecordingStorage& storage;
        Settings& settings;
        std::function<QString(const QString& ipncId)> nameOf; ///< what the user calls a device; none: its id
    };
    using Clock = std::function<QDateTime()>;
    using Moment = std::chrono::steady_clock::time_point;
    using Waiting = std::function<Moment()>;

    /// The parts outlive this object. `clock` names files. `waiting` tells when something is tried again and how long
    /// a recording has lasted: the time of day may be set back by a day, and nothing waits for a day because of that.
    explicit Recorder(const Parts& parts, QObject* parent = nullptr, Clock clock = &QDateTime::currentDateTime,
                      Waiting waiting = &std::chrono::steady_clock::now);
    /// Ends every recording; its file is complete.
    ~Recorder() override;

    /// Begins a device's recording; nothing when it is wanted already.
    void start(const QString& ipncId);
    /// Ends it, after what the SDK has delivered has been written.
    void stop(const QString& ipncId);
    /// Ends all, and keeps in mind that they are wanted: `resume` begins them again.
    void pause();
    /// Begins what was being recorded at the last pause or the program's last end, as far as it is among `known`.
    void resume(const QStringList& known);
    /// Recordings of devices that are not among `known` any more end.
    void keepOnly(const QStringList& known);

    State state(const QString& ipncId) const;
    /// How long a device has been recorded without being stopped; nothing while it is not.
    std::optional<std::chrono::seconds> lasting(const QString& ipncId) const;
    bool isWanted(const QString& ipncId) const { return wanted_.contains(ipncId); }
    QStringList wanted() const { return wanted_; }
    /// The file that is being written, empty when there is none.
    QString file(const QString& ipncId) const;

    /// A report of a recording request; the map as `sigReport` carried it.
    void onReport(const QVariantMap& report);
    /// A frame, as `sigFrame` carried it: writes it, and frees the block, which `new uint8_t[]` made.
    void onFrame(const QString& ipncId, std::uint8_t* block, long length);

    /// The operation's name, by which its reports are told from others.
    static QString operation();

    /// How long a request that ended by itself, or a file that could not be made, is left alone.
    static constexpr std::chrono::seconds RetryTime{5};
    /// How long a drive that took nothing is left alone.
    static constexpr std::chrono::seconds BadDriveTime{60};

signals:
    /// A report arrived for `operation()`; whoever receives it hands it to `onReport` in the GUI thread.
    void sigReport(QString operation, QVariant report);
    /// A coded frame arrived; who receives it hands it to `onFrame`, and owns the block until then. One receiver.
    void sigFrame(QString ipncId, std::uint8_t* block, long length);
    /// A device's state or the time of its beginning changed.
    void sigChanged(QString ipncId);
    /// A line for the message bar.
    void sigMessage(QString text);

private:
    /// What the tables hold of one device.
    struct Recording {
        int requestId = 0;
        std::shared_ptr<CallbackGate> gate;
        bool hasWriter = false; ///< a file was begun; the writer is null when it could not be made
        std::unique_ptr<AviWriter> writer;
        std::int64_t framesWritten = 0; ///< in the current file
        int width = 0;
        int height = 0;
        int frameRate = 0; ///< frames a second, as the stream's parameters say
        QString drive;     ///< of the file, or the last one; empty when that has vanished
        QString path;
        std::optional<Moment> since;
        std::optional<Moment> retryAt; ///< the request or the file is tried again then; nothing: nothing to try
        bool stopping = false;         ///< ends when what was delivered is written
        bool waitsForKey = false;      ///< the file was begun in the middle of a stream
        bool isBroken = false;         ///< the file has lost a frame to its disk, and ends at the next key frame
        bool sizeTold = false;         ///< that the file takes no more; once a file
        bool pauseTold = false;        ///< that there is no room; once until there is some
        bool opened = false;           ///< the device has delivered before
    };
    struct BadDrive {
        QString root;
        Moment until;
    };

    void send(const QString& ipncId);
    void onOpened(const QString& ipncId, const QVariantMap& parameters, int requestId);
    void onClosed(const QString& ipncId, int retcode);
    void beginFile(const QString& ipncId, Recording& recording);
    bool openFile(const QString& ipncId, Recording& recording, const QString& folder);
    void endFile(const QString& ipncId, Recording& recording);
    void writeFrame(const QString& ipncId, Recording& recording, AviWriter::Bytes frame);
    bool isPackingTimeReached(const Recording& recording) const;
    bool mustChangeDisk(const Recording& recording);
    void onWriteFailed(const QString& ipncId, Recording& recording);
    void finish(const QString& ipncId);
    void endRequest(Recording& recording);
    void tick();
    void onRoomSought(bool made);
    void setWanted(const QString& ipncId, bool wanted);
    QString nameOf(const QString& ipncId) const;
    void avoid(const QString& drive);
    QStringList badDrives();

    Parts parts_;
    Clock clock_;
    Waiting waiting_;
    std::map<QString, Recording> recordings_;
    QStringList wanted_; ///< in the order in which they were begun
    std::vector<BadDrive> badDrives_;
    QTimer timer_;
};
