#include "playback/CameraPlayer.h"

#include <algorithm>
#include <cmath>
#include <system_error>
#include <utility>

namespace corvanta::playback {

namespace {

using Clock = std::chrono::steady_clock;
using Kind = CameraPlayer::Request::Kind;

/// Files that stay open: the one that is seen and the one before, for steps and seeks across their border.
constexpr std::size_t openFiles = 2;
/// A frame that takes longer than this is announced by its key frame.
constexpr double patience = 0.04; // s
/// Who follows and is later than this goes on at a key frame.
constexpr double largestLag = 0.25; // s
/// Of one core's time: above the first only key frames are decoded, below the second all are again.
constexpr double loadTooHigh = 0.9;
constexpr double loadBearable = 0.7;
constexpr double weightOfNewest = 0.2;

Moment writtenAt(const std::filesystem::path& file) {
    std::error_code error;
    const auto time = std::filesystem::last_write_time(file, error);
    if (error)
        return Moment(0);
    const auto age = std::filesystem::file_time_type::clock::now() - time;
    return std::chrono::duration_cast<Moment>((std::chrono::system_clock::now() - age).time_since_epoch());
}

} // namespace

CameraPlayer::CameraPlayer(std::vector<File> files, MediaFile::Options options, std::function<void()> wake)
    : files_(std::move(files))
    , options_(options)
    , wake_(std::move(wake))
    , thread_([this] { run(); }) {}

CameraPlayer::~CameraPlayer() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    changed_.notify_one();
    thread_.join();
}

void CameraPlayer::request(const Request& request) {
    {
        const std::lock_guard lock(mutex_);
        request_ = request;
    }
    changed_.notify_one();
}

std::optional<CameraPlayer::Report> CameraPlayer::takeReport() {
    const std::lock_guard lock(mutex_);
    return std::exchange(report_, std::nullopt);
}

std::shared_ptr<const CameraPlayer::Findings> CameraPlayer::takeFindings() {
    const std::lock_guard lock(mutex_);
    return std::exchange(newFindings_, nullptr);
}

std::optional<CameraPlayer::Request> CameraPlayer::nextRequest() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return ending_ || request_; });
    return ending_ ? std::nullopt : std::exchange(request_, std::nullopt);
}

/// Whether there is something newer to do. Who follows is not disturbed by time going on.
bool CameraPlayer::isOvertaken(const Request& request) {
    const std::lock_guard lock(mutex_);
    return ending_ || (request_ && (request.kind != Kind::Follow || request_->kind != Kind::Follow));
}

bool CameraPlayer::isEnding() {
    const std::lock_guard lock(mutex_);
    return ending_;
}

void CameraPlayer::publish(Report report) {
    last_ = report;
    bool wasEmpty = false;
    {
        const std::lock_guard lock(mutex_);
        wasEmpty = !report_;
        report_ = std::move(report);
    }
    if (wasEmpty)
        wake_();
}

void CameraPlayer::run() {
    lookIntoFiles();
    while (const auto request = nextRequest()) {
        switch (request->kind) {
        case Kind::Show:
            show(*request);
            break;
        case Kind::Follow:
            follow(*request);
            break;
        case Kind::Step:
            step(*request);
            break;
        }
    }
}

void CameraPlayer::lookIntoFiles() {
    auto findings = std::make_shared<Findings>();
    std::vector<Timeline::Recording> recordings;
    for (const File& file : files_) {
        if (isEnding())
            return;
        MediaFile media;
        if (const OpenError error = media.open(file.path, {}); error != OpenError::None) {
            findings->unreadable.emplace_back(file.path, error);
            continue;
        }
        if (!media.isComplete())
            findings->incomplete.push_back(file.path);
        const microseconds length = media.duration();
        recordings.push_back({file.path, file.begin ? *file.begin : writtenAt(file.path) - length, length});
    }
    findings->timeline = Timeline(std::move(recordings));
    findings_ = findings;
    {
        const std::lock_guard lock(mutex_);
        newFindings_ = findings;
    }
    wake_();
}

MediaFile* CameraPlayer::open(std::size_t recording) {
    const auto found =
        std::find_if(open_.begin(), open_.end(), [recording](const OpenFile& o) { return o.recording == recording; });
    if (found != open_.end()) {
        open_.splice(open_.begin(), open_, found);
        return open_.front().file.get();
    }
    auto file = std::make_unique<MediaFile>();
    if (file->open(findings_->timeline.recordings()[recording].file, options_) != OpenError::None)
        file.reset(); // it went away since it was looked into
    open_.push_front({recording, std::move(file)});
    if (open_.size() > openFiles)
        open_.pop_back();
    return open_.front().file.get();
}

/// The frame at a place; never one that ended before the piece begins.
std::size_t CameraPlayer::withinPiece(MediaFile& file, const Timeline::Place& place) {
    return file.frameAt(std::max(place.time, findings_->timeline.pieces()[place.piece].offset));
}

SharedPicture CameraPlayer::decode(MediaFile& file, std::size_t frame, const MediaFile::Interrupted& interrupted) {
    const std::size_t frames = file.framesToDecode(frame);
    const Clock::time_point begin = Clock::now();
    SharedPicture picture = file.decode(frame, interrupted);
    if (frames > 0 && picture != nullptr) {
        const std::chrono::duration<double> taken = Clock::now() - begin;
        const double each = taken.count() / static_cast<double>(frames);
        secondsAFrame_ += secondsAFrame_ > 0 ? weightOfNewest * (each - secondsAFrame_) : each;
    }
    return picture;
}

/// Decodes and reports a frame, unless something newer comes in between. One key frame is always worth its time: who
/// drags along the time sees something at once, however often he asks anew.
void CameraPlayer::reportFrame(const Request& request, const Timeline::Place& place, std::size_t frame,
                               bool isFinal) {
    const Timeline& timeline = findings_->timeline;
    const std::size_t recording = timeline.pieces()[place.piece].recording;
    MediaFile& file = *open(recording);
    const MediaFile::Interrupted overtaken = [this, &request] {
        return isOvertaken(request);
    };
    const SharedPicture picture = decode(file, frame, isFinal ? overtaken : MediaFile::Interrupted());
    if (picture == nullptr) {
        if (isFinal && !isOvertaken(request))
            reportNothing(request, Report::State::Broken);
        return;
    }
    shown_ = Shown{recording, frame};
    nothing_.reset();
    const Moment begin = timeline.momentOf({place.piece, file.beginOf(frame)});
    publish({Report::State::Picture, picture, std::max(begin, timeline.pieces()[place.piece].span.begin),
             request.serial, isFinal, keyFramesOnly_});
}

void CameraPlayer::reportNothing(const Request& request, Report::State state) {
    shown_.reset();
    nothing_ = state;
    publish({state, nullptr, request.moment, request.serial, true, false});
}

void CameraPlayer::show(const Request& request) {
    keyFramesOnly_ = false;
    const auto place = findings_->timeline.at(request.moment);
    if (!place) {
        reportNothing(request, Report::State::Gap);
        return;
    }
    MediaFile* const file = open(findings_->timeline.pieces()[place->piece].recording);
    if (file == nullptr) {
        reportNothing(request, Report::State::Broken);
        return;
    }
    const std::size_t frame = withinPiece(*file, *place);
    const std::size_t key = file->keyFrameBefore(frame);
    if (key<frame&& static_cast<double>(file->framesToDecode(frame)) * secondsAFrame_> patience)
        reportFrame(request, *place, key, false);
    if (!isOvertaken(request))
        reportFrame(request, *place, frame, true);
}

void CameraPlayer::follow(const Request& request) {
    const auto place = findings_->timeline.at(request.moment);
    MediaFile* const file = place ? open(findings_->timeline.pieces()[place->piece].recording) : nullptr;
    if (file == nullptr) {
        const auto state = place ? Report::State::Broken : Report::State::Gap;
        if (nothing_ != state)
            reportNothing(request, state);
        return;
    }
    const std::size_t recording = findings_->timeline.pieces()[place->piece].recording;
    std::size_t frame = withinPiece(*file, *place);
    if (shown_ == Shown{recording, frame})
        return;
    const double load = secondsAFrame_ * file->frameRate() * request.speed;
    keyFramesOnly_ = load > (keyFramesOnly_ ? loadBearable : loadTooHigh);
    const bool isLate = static_cast<double>(file->framesToDecode(frame)) * secondsAFrame_ > largestLag;
    if (keyFramesOnly_ || isLate) {
        const std::size_t key = file->keyFrameBefore(frame);
        const bool isNews = !shown_ || shown_->recording != recording || shown_->frame < key || shown_->frame > frame;
        if (keyFramesOnly_ && !isNews) {
            if (!last_.keyFramesOnly) { // what is shown stays; who sees it is to know why
                last_.keyFramesOnly = true;
                publish(last_);
            }
            return;
        }
        frame = isNews ? key : frame;
    }
    reportFrame(request, *place, frame, true);
}

void CameraPlayer::step(const Request& request) {
    keyFramesOnly_ = false;
    const Timeline& timeline = findings_->timeline;
    std::optional<Timeline::Place> place = timeline.at(request.moment);
    int left = request.frames;
    if (!place && left != 0) {
        // Out of a gap the first step leads to its border.
        const auto piece = left > 0 ? timeline.pieceAfter(request.moment) : timeline.pieceBefore(request.moment);
        if (piece) {
            const Timeline::Piece& found = timeline.pieces()[*piece];
            const microseconds length = found.span.end - found.span.begin;
            place = {*piece, left > 0 ? found.offset : found.offset + length - microseconds(1)};
            left += left > 0 ? -1 : 1;
        }
    }
    for (; place && left != 0; left += left > 0 ? -1 : 1) {
        const auto next = stepOnce(*place, left > 0);
        if (!next)
            break;
        place = next;
    }
    MediaFile* const file = place ? open(timeline.pieces()[place->piece].recording) : nullptr;
    if (file == nullptr)
        reportNothing(request, place ? Report::State::Broken : Report::State::Gap);
    else
        reportFrame(request, *place, withinPiece(*file, *place), true);
}

/// The place of the frame beside the one at `place`; nothing at the end of everything.
std::optional<Timeline::Place> CameraPlayer::stepOnce(Timeline::Place place, bool forward) {
    const std::vector<Timeline::Piece>& pieces = findings_->timeline.pieces();
    const Timeline::Piece& piece = pieces[place.piece];
    if (MediaFile* const file = open(piece.recording)) {
        const std::size_t frame = withinPiece(*file, place);
        const microseconds end = piece.offset + (piece.span.end - piece.span.begin);
        if (forward && frame + 1 < file->frameCount() && file->beginOf(frame + 1) < end)
            return Timeline::Place{place.piece, file->beginOf(frame + 1)};
        if (!forward && frame > 0 && file->beginOf(frame) > piece.offset)
            return Timeline::Place{place.piece, file->beginOf(frame - 1)};
    }
    if (forward ? place.piece + 1 >= pieces.size() : place.piece == 0)
        return std::nullopt;
    const std::size_t neighbour = forward ? place.piece + 1 : place.piece - 1;
    const Timeline::Piece& other = pieces[neighbour];
    const microseconds length = other.span.end - other.span.begin;
    return Timeline::Place{neighbour, forward ? other.offset : other.offset + length - microseconds(1)};
}

} // namespace corvanta::playback
