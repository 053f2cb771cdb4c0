#include "api/CameraControl.h"

#include "base/Log.h"
#include "device/OnvifDriver.h"
#include "onvif/OnvifImaging.h"
#include "onvif/OnvifPtz.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <optional>
#include <utility>

namespace ipncsdk::api {

namespace {

using device::CameraTask;
using onvif::Refusal;
using std::chrono::steady_clock;

/// A camera that answers slowly must not be moved by what was clicked long ago.
constexpr std::size_t mostWaiting = 16;
constexpr std::chrono::seconds taskLimit{12}; ///< less than clients wait for a reply
/// Cameras lock out who tries a wrong password again and again.
constexpr std::chrono::seconds afterRefusal{60};

std::string addressOf(const device::NetworkCamera& camera) {
    return camera.onvifUrl + '\n' + camera.user + '\n' + camera.password;
}

} // namespace

/// One camera: what waits for it, and the conversation with it.
class CameraControl::Camera {
public:
    explicit Camera(const Parts& parts)
        : parts_(parts) {}

    /// Nothing is taken when too much waits. `begins` says whether somebody has to work it off.
    bool add(Job job, bool& begins) {
        const std::lock_guard lock(mutex_);
        if (jobs_.size() >= mostWaiting)
            return false;
        jobs_.push_back(std::move(job));
        begins = !std::exchange(working_, true);
        return true;
    }

    /// Nothing when none waits: who worked is done then.
    std::optional<Job> next() {
        const std::lock_guard lock(mutex_);
        if (jobs_.empty()) {
            working_ = false;
            return std::nullopt;
        }
        Job job = std::move(jobs_.front());
        jobs_.pop_front();
        return job;
    }

    Reply perform(const Job& job) {
        talkTo(job.task.camera);
        current_ = job.request;
        end_ = steady_clock::now() + taskLimit;
        Reply reply(job.task.content);
        device::OnvifDriver driver(*ptz_);
        reply.code = write(job.task, driver);
        if (reply.code == ServiceCode::Done)
            reply.code = read(job.task, driver, reply.content);
        if (reply.code != ServiceCode::Done)
            reply.content = Json::object();
        if (const auto& failure = failure_ ? failure_ : driver.failure())
            judge(job.task.camera.ipncid, *failure, reply);
        failure_.reset();
        current_.reset();
        return reply;
    }

private:
    /// Begins a conversation unless one with this address and password is under way.
    void talkTo(const device::NetworkCamera& camera) {
        const bool isOver = over_ && steady_clock::now() >= *over_;
        if (session_ && !isOver && address_ == addressOf(camera))
            return;
        over_.reset();
        address_ = addressOf(camera);
        onvif::Transport transport;
        transport.socketDelegate = parts_.socketDelegate;
        transport.cancelled = [this] {
            return parts_.stopping || current_->hasEnded() || steady_clock::now() >= end_;
        };
        imaging_.reset();
        ptz_.reset();
        session_.emplace(onvif::CameraAddress{camera.onvifUrl, {camera.user, camera.password}}, transport);
        ptz_.emplace(*session_);
        imaging_.emplace(*session_);
    }

    ServiceCode write(const CameraTask& task, device::OnvifDriver& driver) {
        for (const device::PtzCommand& move : task.moves) {
            if (const ServiceCode code = move(driver); code != ServiceCode::Done)
                return code;
        }
        if (task.image.empty())
            return ServiceCode::Done;
        const auto written = imaging_->write(task.image);
        if (written)
            return ServiceCode::Done;
        failure_ = written.failure();
        return device::codeOf(failure_->refusal);
    }

    ServiceCode read(const CameraTask& task, device::OnvifDriver& driver, Json& content) {
        bool wantsImage = false;
        for (const std::string& name : task.names) {
            wantsImage = wantsImage || device::isImageName(name);
            if (device::isImageName(name))
                continue;
            if (const ServiceCode code = device::readPtz(driver, name, content["getcmds"][name]);
                code != ServiceCode::Done)
                return code;
        }
        if (wantsImage)
            readImage(task.names, content["getcmds"]);
        return ServiceCode::Done;
    }

    /// What the camera does not tell reads as null: the other parameters are not its fault.
    void readImage(const std::vector<std::string>& names, Json& content) {
        const auto values = imaging_->read();
        if (!values)
            failure_ = values.failure();
        for (const std::string& name : names) {
            if (!device::isImageName(name))
                continue;
            const auto found = values ? values->find(name) : onvif::OnvifImaging::Values::const_iterator();
            content[name] = values && found != values->end() ? Json(found->second) : Json();
        }
    }

    /// Decides how long the conversation may go on after a failure.
    void judge(const std::string& ipncid, const onvif::Failure& failure, Reply& reply) {
        logLine(ipncid + ": " + failure.text);
        if (reply.code == ServiceCode::CameraFault)
            reply.content["text"] = failure.text;
        if (over_ || failure.refusal == Refusal::Fault || failure.refusal == Refusal::NotSupported)
            return;
        const bool isRefused = failure.refusal == Refusal::Password || failure.refusal == Refusal::Clock;
        over_ = steady_clock::now() + (isRefused ? afterRefusal : std::chrono::seconds(0));
    }

    const Parts& parts_;
    std::mutex mutex_;
    std::deque<Job> jobs_; ///< guarded by mutex_
    bool working_ = false; ///< guarded by mutex_

    // For the one who works.
    std::shared_ptr<Request> current_;
    steady_clock::time_point end_;
    std::string address_;
    std::optional<onvif::CameraSession> session_;
    std::optional<onvif::OnvifPtz> ptz_;         ///< knows the numbers of presets as long as the conversation lasts
    std::optional<onvif::OnvifImaging> imaging_; ///< as `ptz_`
    std::optional<onvif::Failure> failure_;
    std::optional<steady_clock::time_point> over_; ///< when the conversation is to be begun anew
};

CameraControl::CameraControl(Parts parts)
    : parts_(std::move(parts)) {}

CameraControl::~CameraControl() = default;

std::shared_ptr<CameraControl::Camera> CameraControl::cameraOf(const std::string& ipncid) {
    const std::lock_guard lock(mutex_);
    std::shared_ptr<Camera>& camera = cameras_[ipncid];
    if (camera == nullptr)
        camera = std::make_shared<Camera>(parts_);
    return camera;
}

void CameraControl::respond(const std::shared_ptr<Request>& request, const std::string& ipncid, const Reply& reply) {
    request->respond(responseText("p2pmsg", request->id(), reply, {{"ipncid", ipncid}}));
    parts_.requests.take(request->id());
}

void CameraControl::perform(const std::shared_ptr<Request>& request, CameraTask task) {
    const std::string ipncid = task.camera.ipncid;
    const std::shared_ptr<Camera> camera = cameraOf(ipncid);
    bool begins = false;
    if (!camera->add({request, std::move(task)}, begins))
        return respond(request, ipncid, ServiceCode::TryLater);
    if (begins)
        parts_.cameras.post([this, camera] { work(camera); });
}

void CameraControl::work(const std::shared_ptr<Camera>& camera) {
    const auto job = camera->next();
    if (!job)
        return;
    if (!job->request->hasEnded() && !parts_.stopping)
        respond(job->request, job->task.camera.ipncid, camera->perform(*job));
    // One at a time, so that a busy camera lets others through.
    parts_.cameras.post([this, camera] { work(camera); });
}

} // namespace ipncsdk::api
