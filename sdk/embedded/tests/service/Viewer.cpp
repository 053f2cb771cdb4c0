#include "Viewer.h"

namespace ipncsdk::test {

void Viewer::open(const std::string& ipncid, const Json& keys) {
    Json message = openMessage(ipncid);
    message["avreq"].update(keys);
    int id = 0;
    sdk_.runtime.requestMessage(toText(message), id, [this](const std::string& text) { take(text); });
    id_ = id;
}

void Viewer::stop() {
    if (id_ != 0)
        sdk_.runtime.stopRequest(id_);
    ended_ = true;
}

void Viewer::change(bool hd) {
    const std::size_t number = asked_++;
    sdk_.runtime.setConfig(toText({{"type", "avchange"}, {"reqid", id_.load()}, {"hd", hd}}),
                           [outcome = outcome_, number](const std::string& text) {
                               const Json result = Json::parse(text);
                               const std::lock_guard lock(outcome->mutex);
                               if (!outcome->resultOf.emplace(number, result.at("retcode").get<int>()).second)
                                   outcome->fault = "two results of one change";
                               outcome->results.add(text);
                           });
}

bool Viewer::waitForFrames(int more) {
    const int from = frames_;
    return waitFor([&] { return frames_ >= from + more; });
}

bool Viewer::waitForFramesOf(bool hd) {
    return waitFor([&] { return hd_ == hd && framesOfThis_ > 0; });
}

int Viewer::waitForResult(std::size_t number) {
    int code = -1;
    waitFor([&] {
        const std::lock_guard lock(outcome_->mutex);
        const auto found = outcome_->resultOf.find(number);
        code = found == outcome_->resultOf.end() ? -1 : found->second;
        return found != outcome_->resultOf.end();
    });
    return code;
}

std::vector<std::string> Viewer::course() const {
    std::vector<std::string> course;
    for (const Json& message : messages.all()) {
        auto type = message.at("type").get<std::string>();
        if (type == "avopen")
            type += message.at("avparam").at("hd").get<bool>() ? " main" : " light";
        if (type == "avclose")
            type += " " + std::to_string(message.at("retcode").get<int>());
        course.push_back(type);
    }
    return course;
}

std::string Viewer::fault() const {
    const std::lock_guard lock(outcome_->mutex);
    return outcome_->fault;
}

void Viewer::take(const std::string& text) {
    if (inside_++ != 0)
        blame("two messages at once");
    if (ended_)
        blame("a message after the end");
    const Json message = Json::parse(text);
    check(message);
    if (text.find("videodata\"") == std::string::npos) {
        messages.add(text);
    } else {
        ++framesOfThis_;
        ++frames_;
    }
    if (onMessage)
        onMessage(text);
    --inside_;
}

void Viewer::check(const Json& message) {
    const auto type = message.at("type").get<std::string>();
    if (type == "avopen") {
        open_ = true;
        width_ = message.at("avparam").at("weidth").get<int>();
        framesOfThis_ = 0;
        hd_ = message.at("avparam").at("hd").get<bool>();
    } else if (type == "avstate") {
        open_ = false;
    } else if (type == "avclose") {
        ended_ = true;
    } else if (!open_) {
        blame("a frame without an opening");
    } else if (type == "decodevideodata" && message.at("w") != width_) {
        blame("a picture of another size than was announced");
    } else if (type == "videodata" && framesOfThis_ == 0 && message.at("key") != true) {
        blame("a stream began without a key frame");
    }
}

void Viewer::blame(const std::string& fault) {
    const std::lock_guard lock(outcome_->mutex);
    if (outcome_->fault.empty())
        outcome_->fault = fault;
}

} // namespace ipncsdk::test
