#pragma once

#include "api/Request.h"
#include "api/SensorService.h"
#include "api/Worker.h"
#include "base/JsonText.h"
#include "base/Reply.h"
#include "device/NetworkCameras.h"
#include "device/Rights.h"
#include "sensor/SampleQuery.h"
#include "service/Session.h"
#include "store/Database.h"

#include <atomic>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ipncsdk::api {

/// Answers what clients ask of boards and samples. Who may ask is checked on the service worker; what waits for
/// devices or reads much is done on workers of its own.
class SensorRequests final {
public:
    struct Parts {
        store::Database& database;
        const device::NetworkCameras& cameras;
        const service::Session& session;
        SensorService& sensors;
        RequestTable& requests;
    };

    explicit SensorRequests(Parts parts);
    SensorRequests(const SensorRequests&) = delete;
    SensorRequests& operator=(const SensorRequests&) = delete;

    /// True for a "p2pmsg" that speaks to a board; those are answered here.
    static bool isAboutBoards(const Json& message);
    void boardRequest(const std::shared_ptr<Request>& request, const Json& message);
    /// True for a "serverreq" about samples.
    static bool isAboutSamples(const Json& message);
    void sampleRequest(const std::shared_ptr<Request>& request, const Json& message);

    /// The message "sensordataupdate" for whoever is signed in; null when nothing of it may be read.
    Json updateOf(const std::vector<sensor::Reading>& changed, const Clock& clock) const;

    /// Forgets what waits and ends what runs.
    void stop();

private:
    using Pointer = std::shared_ptr<Request>;
    struct Handed {
        int pid = 0;
        double raw = 0;
    };

    /// The devices by the inputs that the account may read.
    std::map<int, std::string> readableInputs(store::AccountId account) const;
    /// A board of the device that has the port, or why not.
    ServiceCode findPort(const std::string& ipncid, int pid, bool isInput, device::Right right,
                         sensor::Board& board) const;
    void read(const Pointer& request, const std::string& ipncid, const Json& wish);
    void write(const Pointer& request, const std::string& ipncid, const Json& wish);
    void upload(const Pointer& request, const std::string& ipncid, const Json& list);
    ServiceCode handedValue(const std::string& ipncid, const Json& entry, Handed& handed) const;
    void samples(const Pointer& request, const sensor::SampleQuery& query);
    void exportSamples(const Pointer& request, const sensor::SampleQuery& query);
    /// False when the flow has been ended meanwhile.
    bool tellPiece(const Pointer& request, std::int64_t done, std::int64_t total, const Json& pieces,
                   const char* state);

    void respond(const Pointer& request, const char* family, const Reply& reply, Json extra = Json::object());

    const Parts parts_;
    Worker devices_{4}; ///< waits for boards
    Worker readers_{2}; ///< reads samples
};

} // namespace ipncsdk::api
