#include "onvif/Discovery.h"

#include "onvif/LocalAddresses.h"
#include "onvif/UsernameToken.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/multicast.hpp>
#include <boost/asio/ip/udp.hpp>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <utility>

namespace ipncsdk::onvif {

namespace {

namespace asio = boost::asio;
using asio::ip::udp;
using std::chrono::steady_clock;

constexpr std::chrono::milliseconds lookUpEvery{50};
constexpr int receiveBuffer = 1 << 20;
constexpr std::size_t largestDatagram = 65536;
constexpr std::size_t mostDatagrams = 2000;
constexpr std::size_t mostCameras = 256;

/// One interface: asks on it, and hears the answers to it.
class Ear final {
public:
    using Heard = std::function<void(std::string_view datagram, const std::string& sender)>;

    Ear(asio::io_context& context, const asio::ip::address_v4& address, Heard heard)
        : socket_(context)
        , heard_(std::move(heard)) {
        boost::system::error_code error;
        const bool ready = !socket_.open(udp::v4(), error) && !socket_.bind(udp::endpoint(address, 0), error) &&
                           !socket_.set_option(asio::ip::multicast::outbound_interface(address), error) &&
                           !socket_.set_option(asio::ip::multicast::hops(1), error) &&
                           !socket_.set_option(asio::ip::multicast::enable_loopback(true), error);
        // Answers come all at once, and whoever fills a small buffer would silence the others. The system may allow
        // less.
        socket_.set_option(udp::socket::receive_buffer_size(receiveBuffer), error);
        if (ready)
            listen();
    }
    Ear(const Ear&) = delete;
    Ear& operator=(const Ear&) = delete;

    /// An interface that takes nothing just now may take the next round's.
    void ask(const std::string& question, const udp::endpoint& group) {
        boost::system::error_code ignored;
        socket_.send_to(asio::buffer(question), group, 0, ignored);
    }

private:
    void listen() {
        socket_.async_receive_from(
            asio::buffer(*buffer_), sender_, [this](const boost::system::error_code& error, std::size_t size) {
                if (error == asio::error::operation_aborted)
                    return;
                boost::system::error_code ignored;
                const std::string sender = sender_.address().to_string(ignored);
                if (!error)
                    heard_(std::string_view(buffer_->data(), size), sender);
                if (!error || error == asio::error::connection_refused || error == asio::error::message_size)
                    listen();
            });
    }

    udp::socket socket_;
    const Heard heard_;
    udp::endpoint sender_;
    std::unique_ptr<std::array<char, largestDatagram>> buffer_ =
        std::make_unique<std::array<char, largestDatagram>>();
};

/// Everything that one search has heard.
class Search final {
public:
    explicit Search(const DiscoveryOptions& options)
        : group_(asio::ip::make_address(options.group, error_), options.port) {
        for (const std::string& text : localAddresses()) {
            const auto address = asio::ip::make_address_v4(text, error_);
            if (error_ || (options.loopbackOnly && !address.is_loopback()))
                continue;
            ears_.push_back(std::make_unique<Ear>(
                context_, address,
                [this](std::string_view datagram, const std::string& sender) { hear(datagram, sender); }));
        }
    }

    void ask() {
        for (const Sought sought : {Sought::Device, Sought::VideoTransmitter}) {
            questions_.push_back(randomUrn());
            const std::string question = probeMessage(questions_.back(), sought);
            for (const auto& ear : ears_)
                ear->ask(question, group_);
        }
    }

    void listenFor(std::chrono::milliseconds time) {
        context_.run_for(time);
        context_.restart();
    }

    [[nodiscard]] std::vector<FoundCamera> found() const {
        std::vector<FoundCamera> cameras;
        for (const auto& [uuid, camera] : found_)
            cameras.push_back(camera);
        return cameras;
    }

    [[nodiscard]] bool isDeaf() const { return ears_.empty(); }

private:
    void hear(std::string_view datagram, const std::string& sender) {
        if (++datagrams_ > mostDatagrams)
            return;
        for (FoundCamera& camera : readProbeMatches(datagram, sender, questions_)) {
            // The first answer counts: a second sender cannot take a camera's place.
            std::string uuid = camera.uuid;
            if (found_.size() < mostCameras)
                found_.emplace(std::move(uuid), std::move(camera));
        }
    }

    boost::system::error_code error_;
    asio::io_context context_;
    /// Without it a search whose sockets all failed would not wait.
    asio::executor_work_guard<asio::io_context::executor_type> work_ = asio::make_work_guard(context_);
    udp::endpoint group_;
    std::vector<std::string> questions_;
    std::size_t datagrams_ = 0;
    std::map<std::string, FoundCamera> found_; ///< by uuid
    std::vector<std::unique_ptr<Ear>> ears_;
};

} // namespace

std::vector<FoundCamera> discover(const DiscoveryOptions& options,
                                  const std::function<bool(const std::vector<FoundCamera>&)>& cancelled) {
    if (options.port == 0)
        return {};
    Search search(options);
    if (search.isDeaf())
        return {};
    for (int round = 0; round < options.rounds; ++round) {
        search.ask();
        for (const auto end = steady_clock::now() + options.round; steady_clock::now() < end;) {
            search.listenFor(lookUpEvery);
            if (cancelled && cancelled(search.found()))
                return search.found();
        }
    }
    return search.found();
}

} // namespace ipncsdk::onvif
