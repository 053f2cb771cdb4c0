#include "media/backchannel/RtspLink.h"

#include "media/backchannel/RtspParser.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/address.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/write.hpp>

#include <algorithm>
#include <array>
#include <deque>
#include <utility>

namespace ipncsdk::media {

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;

constexpr std::chrono::milliseconds lookUpEvery{20};

} // namespace

/// The socket and what waits at its two sides. Handlers run inside `work` alone.
class RtspLink::Socket {
public:
    void begin(const tcp::endpoint& place) {
        connecting_ = true;
        socket_.async_connect(place, [this](const boost::system::error_code& error) {
            connecting_ = false;
            open_ = !error;
        });
    }
    /// After an attempt that failed, so that another one may begin.
    void close() {
        boost::system::error_code ignored;
        socket_.close(ignored);
    }
    bool isConnecting() const { return connecting_; }
    bool isOpen() const { return open_; }

    void read() {
        socket_.async_read_some(asio::buffer(arrived_),
                                [this](const boost::system::error_code& error, std::size_t size) {
                                    if (error) {
                                        open_ = false;
                                        return;
                                    }
                                    take({arrived_.data(), size});
                                    if (open_) {
                                        read();
                                    }
                                });
    }
    void write(std::string bytes) {
        unsent_ += bytes.size();
        leaving_.push_back(std::move(bytes));
        if (leaving_.size() == 1) {
            writeNext();
        }
    }
    /// Runs handlers: one that comes before a moment, or all that are due when the moment has come.
    void work(Clock::time_point moment) {
        context_.restart();
        if (moment <= Clock::now()) {
            context_.poll();
        } else {
            context_.run_one_until(moment);
        }
    }

    std::deque<RtspResponse> answers;
    std::size_t unsent() const { return unsent_; }
    const RtspParser& parser() const { return parser_; }

private:
    void writeNext() {
        asio::async_write(socket_, asio::buffer(leaving_.front()),
                          [this](const boost::system::error_code& error, std::size_t) {
                              if (error) {
                                  open_ = false;
                                  return;
                              }
                              unsent_ -= leaving_.front().size();
                              leaving_.pop_front();
                              if (!leaving_.empty()) {
                                  writeNext();
                              }
                          });
    }
    void take(std::string_view bytes) {
        // Whoever is answered takes the answer at once: more of them were not asked for.
        constexpr std::size_t mostAnswers = 16;
        parser_.feed(bytes);
        RtspResponse answer;
        RtspParser::Found found = parser_.next(answer);
        for (; found == RtspParser::Found::Response; found = parser_.next(answer)) {
            answers.push_back(std::move(answer));
        }
        open_ = found != RtspParser::Found::Bad && answers.size() <= mostAnswers;
    }

    asio::io_context context_;
    tcp::socket socket_{context_};
    bool connecting_ = false;
    bool open_ = false;
    std::array<char, 4096> arrived_{};
    RtspParser parser_;
    std::deque<std::string> leaving_; ///< the first one is on its way
    std::size_t unsent_ = 0;          ///< bytes in `leaving_`
};

RtspLink::RtspLink(GoesOn goesOn)
    : goesOn_(std::move(goesOn))
    , socket_(std::make_unique<Socket>()) {}

RtspLink::~RtspLink() = default;

bool RtspLink::connect(const std::vector<std::string>& addresses, std::uint16_t port,
                       std::optional<Clock::time_point> giveUp) {
    for (const std::string& text : addresses) {
        boost::system::error_code error;
        const auto address = asio::ip::make_address(text, error);
        if (error) {
            continue;
        }
        socket_->begin({address, port});
        while (socket_->isConnecting() && isWanted() && (!giveUp || Clock::now() < *giveUp)) {
            socket_->work(Clock::now() + lookUpEvery);
        }
        if (socket_->isOpen()) {
            socket_->read();
            return true;
        }
        if (socket_->isConnecting()) {
            return false;
        }
        socket_->close();
    }
    return false;
}

void RtspLink::send(std::string bytes) {
    if (socket_->isOpen()) {
        socket_->write(std::move(bytes));
    }
}

std::size_t RtspLink::unsent() const {
    return socket_->unsent();
}

void RtspLink::workUntil(Clock::time_point moment) {
    do {
        socket_->work(std::min(moment, Clock::now() + lookUpEvery));
    } while (Clock::now() < moment && socket_->answers.empty() && !isBroken() && isWanted());
}

std::optional<RtspResponse> RtspLink::takeAnswer() {
    if (socket_->answers.empty()) {
        return std::nullopt;
    }
    RtspResponse answer = std::move(socket_->answers.front());
    socket_->answers.pop_front();
    return answer;
}

bool RtspLink::isBroken() const {
    return !socket_->isOpen();
}

std::string_view RtspLink::complaint() const {
    return socket_->parser().complaint();
}

} // namespace ipncsdk::media
