#pragma once

#include "api/Request.h"
#include "api/Worker.h"
#include "base/Reply.h"
#include "device/CameraTask.h"

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace ipncsdk {
class TCPSocketDelegate;
}

namespace ipncsdk::api {

/// Moves network cameras and sets their pictures. The tasks of one camera are done one after another in the order in
/// which they were given, those of several side by side, on a worker that waits for the network.
class CameraControl final {
public:
    struct Parts {
        RequestTable& requests;
        Worker& cameras; ///< waits for cameras; outlived by this
        const std::atomic<bool>& stopping;
        std::function<TCPSocketDelegate*()> socketDelegate;
    };

    explicit CameraControl(Parts parts);
    ~CameraControl();
    CameraControl(const CameraControl&) = delete;
    CameraControl& operator=(const CameraControl&) = delete;

    /// Does the task and responds. Thread-safe.
    void perform(const std::shared_ptr<Request>& request, device::CameraTask task);

private:
    class Camera;
    struct Job {
        std::shared_ptr<Request> request;
        device::CameraTask task;
    };

    std::shared_ptr<Camera> cameraOf(const std::string& ipncid);
    void work(const std::shared_ptr<Camera>& camera);
    void respond(const std::shared_ptr<Request>& request, const std::string& ipncid, const Reply& reply);

    const Parts parts_;
    std::mutex mutex_;
    std::map<std::string, std::shared_ptr<Camera>> cameras_; ///< guarded by mutex_
};

} // namespace ipncsdk::api
