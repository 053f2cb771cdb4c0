// The embedded service's configuration, and the addresses in it.

#include "Fuzz.h"
#include "device/ServiceConfig.h"
#include "media/rtsp/RtspAddress.h"

#include <string_view>

using namespace ipncsdk;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = fuzz::textOf(data, size);
    const device::ServiceConfig config = device::parseServiceConfig(text);
    for (const device::ConfigMistake& mistake : config.mistakes)
        fuzz::demand(!mistake.english().empty() && !mistake.chinese().empty(), "every mistake has its words");
    device::parseRtspAddress(text);
    device::isCameraService(text);
    if (const auto path = device::parseFileAddress(text)) {
        for (const auto& part : *path)
            fuzz::demand(part != "..", "no file's address leads upwards");
    }
    return 0;
}
