#include "recording/Recorder.h"

#include "base/CallbackGate.h"
#include "base/DataTree.h"
#include "base/JsonText.h"
#include "base/SdkGateway.h"
#include "base/Settings.h"
#include "recording/CodedMessage.h"
#include "storage/RecordingStorage.h"
#include "storage/Rotation.h"
#include "video/AvMessage.h"

#include <QDebug>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <utility>
#include <vector>

namespace keys = corvanta::keys;
namespace dataTree = corvanta::dataTree;
namespace video = corvanta::video;
using corvanta::recording::CodedFrame;
using corvanta::recording::CodedFrameRefused;
using corvanta::recording::CodedMessage;

namespace {

constexpr int TickTime = 1000; // ms

/// A frame on its way to the GUI thread; frees it when it does not arrive.
struct Block {
    explicit Block(std::span<const std::byte> frame)
        : bytes(new std::uint8_t[frame.size()])
        , length(static_cast<long>(frame.size())) {
        std::memcpy(bytes, frame.data(), frame.size());
    }
    ~Block() { delete[] bytes; }
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;

    std::uint8_t* bytes;
    long length;
};

std::filesystem::path systemPath(const QString& path) {
    return std::filesystem::path(path.toStdU16String());
}

/// The first file of the folder, by its second, that does not exist: no recording is written over another.
QString freeFile(const QString& folder, QDateTime time) {
    QString path;
    do {
        path = folder + time.toString(dataTree::FileTimeFormat) + QStringLiteral(".avi");
        time = time.addSecs(1);
    } while (QFile::exists(path));
    return path;
}

} // namespace

Recorder::Recorder(const Parts& parts, QObject* parent, Clock clock, Waiting waiting)
    : QObject(parent)
    , parts_(parts)
    , clock_(std::move(clock))
    , waiting_(std::move(waiting)) {
    timer_.setInterval(TickTime);
    connect(&timer_, &QTimer::timeout, this, &Recorder::tick);
    connect(&parts_.storage, &RecordingStorage::sigRoomSought, this, &Recorder::onRoomSought);
}

Recorder::~Recorder() {
    for (auto& [ipncId, recording] : recordings_) {
        parts_.gateway.StopRequest(recording.requestId);
        recording.requestId = 0;
    }
    // What was delivered before is in the queue.
    parts_.gateway.deliverPending();
    for (auto& [ipncId, recording] : recordings_) {
        if (recording.gate != nullptr)
            recording.gate->close();
        endFile(ipncId, recording);
    }
}

QString Recorder::operation() {
    return corvanta::recording::recordOperation();
}

void Recorder::setWanted(const QString& ipncId, bool wanted) {
    if (wanted)
        wanted_ += ipncId;
    else
        wanted_.removeAll(ipncId);
    parts_.settings.set(keys::Recordings, wanted_);
    parts_.settings.save(); // also a program that is killed knows it at its next start
}

void Recorder::start(const QString& ipncId) {
    if (ipncId.isEmpty() || wanted_.contains(ipncId))
        return;
    setWanted(ipncId, true);
    if (recordings_.find(ipncId) == recordings_.end()) // else it is still ending, and begins again after that
        send(ipncId);
    emit sigChanged(ipncId);
}

void Recorder::stop(const QString& ipncId) {
    if (!wanted_.contains(ipncId))
        return;
    setWanted(ipncId, false);
    finish(ipncId);
    emit sigChanged(ipncId);
}

void Recorder::pause() {
    const QStringList wanted = std::exchange(wanted_, {});
    for (const QString& ipncId : wanted) {
        finish(ipncId);
        emit sigChanged(ipncId);
    }
}

void Recorder::resume(const QStringList& known) {
    for (const QString& ipncId : parts_.settings.get(keys::Recordings).toStringList()) {
        if (!known.contains(ipncId))
            qDebug() << "not recorded again, it is not there:" << ipncId;
        else
            start(ipncId);
    }
}

void Recorder::keepOnly(const QStringList& known) {
    for (const QString& ipncId : QStringList(wanted_)) {
        if (!known.contains(ipncId))
            stop(ipncId);
    }
}

void Recorder::finish(const QString& ipncId) {
    const auto it = recordings_.find(ipncId);
    if (it == recordings_.end() || it->second.stopping)
        return;
    it->second.stopping = true;
    parts_.gateway.StopRequest(it->second.requestId);
    const auto end = [this, ipncId] {
        endRequest(recordings_.at(ipncId));
        endFile(ipncId, recordings_.at(ipncId));
        recordings_.erase(ipncId);
        if (wanted_.contains(ipncId))
            send(ipncId);
        emit sigChanged(ipncId);
    };
    // Behind the frames that are on their way.
    if (it->second.gate != nullptr)
        parts_.gateway.laterInGui(this, end);
    else
        end();
}

void Recorder::endRequest(Recording& recording) {
    if (recording.gate != nullptr)
        recording.gate->close();
    recording.gate.reset();
    recording.requestId = 0;
}

void Recorder::send(const QString& ipncId) {
    Recording& recording = recordings_[ipncId];
    recording.retryAt.reset();
    auto gate = std::make_shared<CallbackGate>();
    auto refusalTold = std::make_shared<std::atomic<bool>>(false);
    // On a thread of the SDK: frames are copied, everything else is handed on as the text it came as.
    const auto onMessage = [this, device = ipncId.toStdString(), gate, refusalTold](const std::string& text) {
        const CodedMessage message = corvanta::recording::parseCodedMessage(text);
        if (const auto* frame = std::get_if<CodedFrame>(&message)) {
            auto block = std::make_shared<Block>(frame->data);
            parts_.gateway.inGui(gate, [this, device, block] {
                emit sigFrame(QString::fromStdString(device), std::exchange(block->bytes, nullptr), block->length);
            });
        } else if (const auto* refused = std::get_if<CodedFrameRefused>(&message)) {
            if (!refusalTold->exchange(true))
                qDebug() << refused->reason;
        } else {
            parts_.gateway.inGui(gate, [this, device, text] {
                emit sigReport(operation(), video::toGuiMap(corvanta::json::parseObject(text),
                                                            QString::fromStdString(device), -1));
            });
        }
    };
    const int requestId = parts_.gateway.RequestMessage(
        corvanta::json::toText(corvanta::recording::recordRequest(ipncId)), onMessage, gate);
    if (requestId > 0) {
        recording.requestId = requestId;
        recording.gate = gate;
    } else {
        recording.retryAt = waiting_() + RetryTime;
    }
    if (!timer_.isActive())
        timer_.start();
}

void Recorder::onReport(const QVariantMap& map) {
    const video::AvReport report = video::AvReport::fromMap(map);
    const auto it = recordings_.find(report.deviceId);
    switch (report.kind) {
    case video::AvReport::Kind::State:
        // The connection was lost and is being made again: what there is so far is made complete.
        if (it != recordings_.end() && it->second.hasWriter) {
            endFile(report.deviceId, it->second);
            emit sigChanged(report.deviceId);
        }
        break;
    case video::AvReport::Kind::Open:
        onOpened(report.deviceId, report.parameters, report.requestId);
        break;
    case video::AvReport::Kind::Close:
        onClosed(report.deviceId, report.retcode);
        break;
    case video::AvReport::Kind::Other:
        break;
    }
}

void Recorder::onOpened(const QString& ipncId, const QVariantMap& parameters, int requestId) {
    qDebug() << "开始录像开始录像" << ipncId;
    Recording& recording = recordings_[ipncId];
    if (recording.requestId <= 0) {
        qWarning() << "not save reqid";
        recording.requestId = requestId;
    }
    if (recording.hasWriter) {
        qDebug() << "not save AviRecoder" << ipncId;
        return;
    }
    recording.frameRate = parameters.value(QStringLiteral("framerate")).toInt();
    recording.width = parameters.value(QStringLiteral("weidth")).toInt(); // peers spell it so
    recording.height = parameters.value(QStringLiteral("height")).toInt();
    recording.waitsForKey = false;
    recording.opened = true;
    beginFile(ipncId, recording);
    if (!recording.since)
        recording.since = waiting_();
    emit sigChanged(ipncId);
}

void Recorder::onClosed(const QString& ipncId, int retcode) {
    const auto it = recordings_.find(ipncId);
    const bool opened = it != recordings_.end() && it->second.opened;
    if (it == recordings_.end() || !it->second.hasWriter) {
        qWarning() << "Recoderclose not contains AviRecoder";
    } else if (it->second.requestId > 0) {
        endFile(ipncId, it->second);
    } else {
        qDebug() << "!!!!!!!!!!!!!!AVRecodeclose not save reqid";
    }
    if (it == recordings_.end() || it->second.stopping)
        return;
    endRequest(it->second);
    if (!opened) {
        // It has never been possible: the operator decides again.
        emit sigMessage(tr("%1 录像失败(%2)").arg(nameOf(ipncId), QString::number(retcode)));
        recordings_.erase(it);
        setWanted(ipncId, false);
    } else {
        it->second.retryAt = waiting_() + RetryTime;
    }
    emit sigChanged(ipncId);
}

void Recorder::beginFile(const QString& ipncId, Recording& recording) {
    recording.hasWriter = true;
    recording.framesWritten = 0;
    recording.isBroken = false;
    recording.sizeTold = false;
    recording.writer.reset();
    recording.path.clear();
    if (!recording.drive.isEmpty() && !parts_.storage.disks().freeBytes(recording.drive)) {
        emit sigMessage(tr("%1 录像磁盘不可用：%2").arg(nameOf(ipncId), recording.drive));
        recording.drive.clear(); // once
    }
    QString folder;
    do {
        folder = parts_.storage.folderAtOnce(dataTree::LocalRecord, ipncId, {}, badDrives());
    } while (!folder.isEmpty() && !openFile(ipncId, recording, folder));
    if (folder.isEmpty() && !std::exchange(recording.pauseTold, true))
        emit sigMessage(tr("%1 录像暂停：没有可用的存储空间").arg(nameOf(ipncId)));
    recording.pauseTold = recording.writer == nullptr;
    recording.retryAt.reset();
    if (recording.writer == nullptr)
        recording.retryAt = waiting_() + RetryTime;
}

/// Makes the next file on the drive of `folder`; a drive that refuses is left alone for a while.
bool Recorder::openFile(const QString& ipncId, Recording& recording, const QString& folder) {
    recording.drive = folder.left(folder.indexOf(QStringLiteral("ZEL/")));
    QDir().mkpath(folder);
    const QString path = freeFile(folder, clock_());
    auto writer = AviWriter::openOutput(systemPath(path));
    const bool isMade =
        writer != nullptr &&
        writer->setVideo(static_cast<std::uint32_t>(std::max(0, recording.width)),
                         static_cast<std::uint32_t>(std::max(0, recording.height)), recording.frameRate, "H264") == 0;
    if (isMade) {
        recording.writer = std::move(writer);
        recording.path = path;
        return true;
    }
    writer.reset();
    QFile::remove(path); // made by us a moment ago, if at all, and holds nothing
    avoid(recording.drive);
    emit sigMessage(tr("%1 录像文件无法创建：%2").arg(nameOf(ipncId), path));
    return false;
}

void Recorder::endFile(const QString& ipncId, Recording& recording) {
    recording.hasWriter = false;
    if (recording.writer != nullptr) {
        const bool isEmpty = recording.writer->videoFrames() == 0;
        if (recording.writer->close() != 0) {
            qDebug() << "recording not complete" << recording.path << static_cast<int>(AviWriter::lastError());
            emit sigMessage(tr("%1 录像文件未能完整保存：%2").arg(nameOf(ipncId), recording.path));
        }
        recording.writer.reset();
        if (isEmpty)
            QFile::remove(recording.path); // made by us a moment ago, and holds nothing
    }
    recording.path.clear();
    recording.framesWritten = 0;
}

void Recorder::onFrame(const QString& ipncId, std::uint8_t* block, long length) {
    const std::unique_ptr<std::uint8_t[]> owned(block);
    const auto it = recordings_.find(ipncId);
    if (it == recordings_.end() || it->second.writer == nullptr || block == nullptr || length <= 0)
        return;
    writeFrame(ipncId, it->second, {reinterpret_cast<const std::byte*>(block), static_cast<std::size_t>(length)});
}

void Recorder::writeFrame(const QString& ipncId, Recording& recording, AviWriter::Bytes frame) {
    const bool isKey = corvanta::avi::isKeyFrame(frame);
    if (isKey) {
        recording.waitsForKey = false;
        if (recording.isBroken || mustChangeDisk(recording) || isPackingTimeReached(recording)) {
            endFile(ipncId, recording);
            beginFile(ipncId, recording);
            emit sigChanged(ipncId);
        }
    }
    if (recording.writer == nullptr || recording.waitsForKey)
        return;
    if (recording.writer->writeFrame(frame, isKey) != 0)
        onWriteFailed(ipncId, recording);
    ++recording.framesWritten; // of what was offered: the packing time is counted in frames of the stream
}

bool Recorder::isPackingTimeReached(const Recording& recording) const {
    const int rate = recording.writer == nullptr ? 0 : static_cast<int>(recording.writer->framesPerSecond());
    if (rate <= 0)
        return false;
    const int packingTime = parts_.settings.get(keys::PackingTime).toInt();
    const std::int64_t seconds = recording.framesWritten / rate; // whole ones
    return packingTime <= static_cast<double>(seconds) / 60.0;
}

bool Recorder::mustChangeDisk(const Recording& recording) {
    const QStringList bad = badDrives();
    const QString drive = parts_.storage.chooseDrive(bad);
    if (drive == recording.drive)
        return false;
    if (!drive.isEmpty() || !parts_.storage.disks().freeBytes(recording.drive))
        return true;
    parts_.storage.seekRoom(bad);
    // What is kept free is there until old days have been deleted.
    return !parts_.storage.mayFindRoom() || bad.contains(recording.drive);
}

void Recorder::onWriteFailed(const QString& ipncId, Recording& recording) {
    if (AviWriter::lastError() == AviWriter::Error::SizeLimit) {
        if (!std::exchange(recording.sizeTold, true))
            emit sigMessage(tr("%1 录像文件已达到最大长度：%2").arg(nameOf(ipncId), recording.path));
        return;
    }
    // Without the lost frame those up to the next key frame show nothing.
    recording.isBroken = true;
    recording.waitsForKey = true;
    // A disk that is full is passed over for that, and may have room again in a moment.
    if (parts_.storage.disks().freeBytes(recording.drive).value_or(0) >= corvanta::storage::SmallestRest)
        avoid(recording.drive);
    emit sigMessage(tr("%1 录像写入失败，将转到下一个磁盘：%2").arg(nameOf(ipncId), recording.path));
}

void Recorder::onRoomSought(bool made) {
    if (!made)
        return;
    for (auto& [ipncId, recording] : recordings_) {
        if (recording.hasWriter && recording.writer == nullptr)
            recording.retryAt = waiting_();
    }
    tick();
}

QString Recorder::nameOf(const QString& ipncId) const {
    const QString name = parts_.nameOf ? parts_.nameOf(ipncId) : QString();
    return name.isEmpty() ? ipncId : name;
}

void Recorder::avoid(const QString& drive) {
    badDrives_.push_back({drive, waiting_() + BadDriveTime});
}

QStringList Recorder::badDrives() {
    const Moment now = waiting_();
    const auto isOver = [&now](const BadDrive& drive) {
        return drive.until <= now;
    };
    badDrives_.erase(std::remove_if(badDrives_.begin(), badDrives_.end(), isOver), badDrives_.end());
    QStringList result;
    for (const BadDrive& drive : badDrives_)
        result += drive.root;
    return result;
}

void Recorder::tick() {
    const Moment now = waiting_();
    std::vector<QString> due;
    for (const auto& [ipncId, recording] : recordings_) {
        if (recording.retryAt && *recording.retryAt <= now && !recording.stopping)
            due.push_back(ipncId);
    }
    for (const QString& ipncId : due) {
        Recording& recording = recordings_.at(ipncId);
        if (recording.requestId <= 0) {
            send(ipncId);
        } else if (recording.hasWriter && recording.writer == nullptr) {
            recording.waitsForKey = true;
            beginFile(ipncId, recording);
            emit sigChanged(ipncId);
        }
    }
    if (recordings_.empty())
        timer_.stop();
}

Recorder::State Recorder::state(const QString& ipncId) const {
    const auto it = recordings_.find(ipncId);
    if (it != recordings_.end() && it->second.writer != nullptr && wanted_.contains(ipncId))
        return State::Recording;
    return wanted_.contains(ipncId) ? State::Waiting : State::Off;
}

std::optional<std::chrono::seconds> Recorder::lasting(const QString& ipncId) const {
    const auto it = recordings_.find(ipncId);
    if (it == recordings_.end() || !it->second.since || it->second.stopping)
        return std::nullopt;
    return std::chrono::duration_cast<std::chrono::seconds>(waiting_() - *it->second.since);
}

QString Recorder::file(const QString& ipncId) const {
    const auto it = recordings_.find(ipncId);
    return it == recordings_.end() ? QString() : it->second.path;
}
