#include "media/backchannel/RtspParser.h"

#include "media/backchannel/RtspText.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace ipncsdk::media {

namespace {

bool isText(std::string_view line) {
    return std::none_of(line.begin(), line.end(), [](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return (byte < 0x20 && character != '\t') || byte == 0x7F;
    });
}

} // namespace

void RtspParser::feed(std::string_view bytes) {
    const std::size_t media = std::min(skip_, bytes.size());
    skip_ -= media;
    if (complaint_.empty()) {
        buffer_ += bytes.substr(media);
    }
}

RtspParser::Found RtspParser::refuse(const char* complaint) {
    complaint_ = complaint;
    buffer_.clear();
    return Found::Bad;
}

RtspParser::Found RtspParser::next(RtspResponse& response) {
    while (complaint_.empty()) {
        if (!inBody_) {
            if (const Found head = takeHead(); head != Found::Response) {
                return head;
            }
        }
        if (buffer_.size() < bodySize_) {
            return Found::Nothing;
        }
        response_.body = buffer_.substr(0, bodySize_);
        buffer_.erase(0, bodySize_);
        inBody_ = false;
        if (!isRequest_) {
            response = std::exchange(response_, {});
            return Found::Response;
        }
    }
    return Found::Bad;
}

/// Leaves out what stands between messages; false when more has to come before anything can be told.
bool RtspParser::skipMedia() {
    constexpr std::size_t mediaHead = 4;
    while (true) {
        buffer_.erase(0, std::min(buffer_.find_first_not_of("\r\n"), buffer_.size()));
        if (buffer_.empty()) {
            return false;
        }
        if (buffer_.front() != '$') {
            return true;
        }
        if (buffer_.size() < mediaHead) {
            return false;
        }
        const auto size = static_cast<std::size_t>(static_cast<unsigned char>(buffer_[2])) << 8 |
                          static_cast<std::size_t>(static_cast<unsigned char>(buffer_[3]));
        const std::size_t here = std::min(size, buffer_.size() - mediaHead);
        buffer_.erase(0, mediaHead + here);
        skip_ = size - here;
    }
}

/// Takes the lines before a body; `Response` when they are whole.
RtspParser::Found RtspParser::takeHead() {
    if (!skipMedia()) {
        return Found::Nothing;
    }
    constexpr std::string_view headEnd = "\r\n\r\n";
    const std::size_t size = buffer_.find(headEnd);
    if (std::min(size, buffer_.size()) > longestHead) {
        return refuse("its headers are too long");
    }
    if (size == std::string::npos) {
        const bool begins = buffer_.front() >= 'A' && buffer_.front() <= 'Z';
        return begins ? Found::Nothing : refuse("it does not speak RTSP");
    }
    std::string_view head(buffer_.data(), size + 2);
    const std::string_view first = head.substr(0, head.find("\r\n"));
    head.remove_prefix(first.size() + 2);
    if (takeFirstLine(first) == Found::Bad) {
        return Found::Bad;
    }
    bodySize_ = 0;
    while (!head.empty()) {
        const std::string_view line = head.substr(0, head.find("\r\n"));
        head.remove_prefix(line.size() + 2);
        if (takeHeader(line) == Found::Bad) {
            return Found::Bad;
        }
    }
    if (!isRequest_ && response_.sequence < 0) {
        return refuse("it answers without a sequence number");
    }
    buffer_.erase(0, size + headEnd.size());
    inBody_ = true;
    return Found::Response;
}

RtspParser::Found RtspParser::takeFirstLine(std::string_view line) {
    constexpr std::string_view version = "RTSP/1.";
    constexpr std::size_t statusAt = 9; // behind the version's last digit and a blank
    constexpr std::size_t statusSize = 3;
    response_ = {};
    response_.sequence = -1;
    const bool answers = line.starts_with(version) && line.size() >= statusAt &&
                         readNumber(line.substr(statusAt, statusSize), 100, 999, response_.status);
    isRequest_ = !line.starts_with(version) && line.find(" RTSP/1.") != std::string_view::npos;
    return isText(line) && (answers || isRequest_) ? Found::Response : refuse("it does not speak RTSP");
}

RtspParser::Found RtspParser::takeHeader(std::string_view line) {
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos || colon == 0 || !isText(line)) {
        return refuse("its headers are no headers");
    }
    std::string name = inSmallLetters(trimmed(line.substr(0, colon)));
    const std::string_view value = trimmed(line.substr(colon + 1));
    int number = 0;
    if (name == "content-length") {
        if (!readNumber(value, 0, static_cast<int>(longestBody), number)) {
            return refuse("its answer has no length that can be taken");
        }
        bodySize_ = static_cast<std::size_t>(number);
    } else if (name == "cseq") {
        readNumber(value, 0, std::numeric_limits<int>::max(), response_.sequence);
    }
    response_.headers.emplace_back(std::move(name), value);
    return Found::Response;
}

} // namespace ipncsdk::media
