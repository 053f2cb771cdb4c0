// What clients ask of the embedded service: requests, commands, queries. The first byte says which.

#include "Fuzz.h"
#include "TestSdk.h"

#include <QCoreApplication>

#include <memory>

using namespace ipncsdk;
using namespace ipncsdk::test;

namespace {

/// A service that has been asked this often is replaced: what was asked before must not reach far.
constexpr int mostAsked = 200;

std::unique_ptr<TestSdk> startedSdk() {
    auto sdk = std::make_unique<TestSdk>();
    fuzz::demand(sdk->start() == emSuccess && sdk->signIn(), "the service starts");
    return sdk;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static int argc = 1;
    static char name[] = "fuzz";
    static char* argv[] = {name, nullptr};
    static const QCoreApplication application(argc, argv);
    static std::unique_ptr<TestSdk> sdk;
    static int asked = 0;
    if (size == 0)
        return 0;
    if (sdk == nullptr || ++asked >= mostAsked) {
        sdk.reset();
        sdk = startedSdk();
        asked = 0;
    }
    const std::string text = fuzz::textOf(data + 1, size - 1);
    switch (data[0] % 3) {
    case 0: {
        int id = 0;
        sdk->runtime.requestMessage(text, id, [](const std::string& response) {
            fuzz::demand(Json::accept(response), "a response is JSON");
        });
        sdk->settle();
        sdk->runtime.stopRequest(id);
        break;
    }
    case 1:
        sdk->runtime.setConfig(
            text, [](const std::string& result) { fuzz::demand(Json::accept(result), "a result is JSON"); });
        sdk->settle();
        break;
    default: {
        std::string document;
        sdk->runtime.getConfig(text, document);
        fuzz::demand(document.empty() || Json::accept(document), "a document is JSON");
    }
    }
    for (const Json& message : sdk->client.all())
        fuzz::demand(message.is_object(), "the client is told objects");
    sdk->client.clear();
    return 0;
}
