#include "media/rtsp/Resolver.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/address.hpp>
#include <boost/asio/ip/tcp.hpp>

#include <thread>

namespace ipncsdk::media {

Resolver::Resolver(const std::string& host) {
    boost::system::error_code error;
    boost::asio::ip::make_address(host, error);
    if (!error) {
        answer_->addresses = {host};
        answer_->state = State::Found;
        return;
    }
    std::thread([host, answer = answer_] {
        boost::asio::io_context context;
        boost::asio::ip::tcp::resolver resolver(context);
        boost::system::error_code failure;
        const auto found = resolver.resolve(host, std::string(), failure);
        for (const auto& entry : found) {
            answer->addresses.push_back(entry.endpoint().address().to_string());
        }
        answer->state = failure || found.empty() ? State::Unknown : State::Found;
    }).detach();
}

} // namespace ipncsdk::media
