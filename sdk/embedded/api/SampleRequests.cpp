#include "api/SensorRequests.h"

#include <algorithm>

namespace ipncsdk::api {

namespace {

constexpr std::size_t mostOfReply = 1'000'000; ///< records
constexpr std::size_t pieceOfExport = 5000;    ///< records

Json recordsOf(const sensor::SampleRange& range, bool buckets) {
    Json records = Json::array();
    for (const sensor::Sample& sample : range.samples)
        records.push_back(sensor::recordOf(sample, buckets));
    return {{"datas", std::move(records)}, {"more", range.more}};
}

} // namespace

void SensorRequests::samples(const Pointer& request, const sensor::SampleQuery& query) {
    sensor::SampleFile file(parts_.sensors.sampleFile());
    Json answer = Json::object();
    std::size_t left = mostOfReply;
    for (const int pid : query.inputs) {
        if (request->hasEnded() || parts_.sensors.isStopping())
            return;
        sensor::SampleQuery part = query;
        part.most = std::min(query.most, std::max<std::size_t>(left, 1));
        const sensor::SampleRange range = readRange(file, pid, part);
        left -= std::min(left, range.samples.size());
        answer[std::to_string(pid)] = recordsOf(range, query.step > 0);
    }
    respond(request, "serverreq", Reply(Json{{"sensordataresp", std::move(answer)}}));
}

bool SensorRequests::tellPiece(const Pointer& request, std::int64_t done, std::int64_t total, const Json& pieces,
                               const char* state) {
    if (request->hasEnded() || parts_.sensors.isStopping())
        return false;
    const Json message = {{"type", "serverreq"},
                          {"reqid", request->id()},
                          {"retcode", 0},
                          {"resp", {{"state", state}, {"done", done}, {"total", total}, {"sensordataresp", pieces}}}};
    return request->respond(toText(message));
}

void SensorRequests::exportSamples(const Pointer& request, const sensor::SampleQuery& query) {
    sensor::SampleFile file(parts_.sensors.sampleFile());
    std::int64_t total = 0;
    for (const int pid : query.inputs)
        total += countRows(file, pid, query);
    std::int64_t done = 0;
    for (const int pid : query.inputs) {
        sensor::SampleQuery part = query;
        part.forward = true;
        part.most = pieceOfExport;
        for (bool more = true; more;) {
            const sensor::SampleRange range = readRange(file, pid, part);
            done += range.rows;
            more = range.more;
            part.begin = range.next;
            // What is read while new samples come may be more than was counted.
            total = std::max(total, done);
            if (!tellPiece(request, done, total, {{std::to_string(pid), recordsOf(range, query.step > 0)}},
                           "progress"))
                return;
        }
    }
    tellPiece(request, done, total, Json::object(), "ok");
    parts_.requests.take(request->id());
}

} // namespace ipncsdk::api
