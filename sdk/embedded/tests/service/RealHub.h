#pragma once

#include "api/VideoHub.h"

#include <chrono>
#include <utility>

namespace ipncsdk::test {

/// A hub of real streams that gives up on a silent network after a while.
inline api::HubFactory realHub(std::chrono::seconds silence = std::chrono::seconds(120)) {
    return [silence](media::HubOptions options) {
        options.networkTimeout = silence;
        return api::makeStreamHub(std::move(options));
    };
}

} // namespace ipncsdk::test
