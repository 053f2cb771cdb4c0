#include "api/VideoHub.h"

#include <utility>

namespace ipncsdk::api {

namespace {

class StreamHubAdapter final : public VideoHub {
public:
    explicit StreamHubAdapter(media::HubOptions options)
        : hub_(std::move(options)) {}

    int subscribe(const media::Subscription& subscription, std::shared_ptr<media::StreamListener> listener) override {
        return hub_.subscribe(subscription, std::move(listener));
    }
    void unsubscribe(int id) override { hub_.unsubscribe(id); }
    void stop() override { hub_.stop(); }
    media::StreamError snapshot(int id, const std::filesystem::path& file) override {
        return hub_.snapshot(id, file);
    }
    media::StreamError preview(const media::Subscription& subscription, int width, std::chrono::milliseconds timeout,
                               std::vector<std::uint8_t>& jpeg) override {
        return hub_.preview(subscription, width, timeout, jpeg);
    }

private:
    media::StreamHub hub_;
};

} // namespace

std::unique_ptr<VideoHub> makeStreamHub(media::HubOptions options) {
    return std::make_unique<StreamHubAdapter>(std::move(options));
}

} // namespace ipncsdk::api
