#include "api/AlarmService.h"

#include <utility>

namespace ipncsdk::api {

AlarmService::AlarmService(Parts parts)
    : parts_(std::move(parts))
    , broker_(parts_.notices ? std::make_unique<service::NoticeBroker>(*parts_.notices) : nullptr)
    , book_(bookParts())
    , pictures_({parts_.hub, parts_.clock, parts_.followsVideo,
                 [this](const Json& message) { return parts_.deliver(toText(message)); }, parts_.root})
    , feed_({parts_.database, parts_.cameras, parts_.session, pictures_,
             [this](const std::string& text) { parts_.deliver(text); }, parts_.lightStream})
    , desk_({parts_.database, parts_.cameras, parts_.clock, book_, parts_.datFolder, std::move(parts_.changes),
             parts_.notice}) {}

AlarmBook::Parts AlarmService::bookParts() {
    return {parts_.database, parts_.cameras, parts_.clock, parts_.outbox, broker_.get(), [this] {
                parts_.onServiceWorker([this] { feed_.look(); });
            }};
}

void AlarmService::listsChanged() {
    feed_.listsChanged();
    desk_.wake();
}

void AlarmService::stop() {
    desk_.stop();
    book_.stop();
    pictures_.stop();
}

} // namespace ipncsdk::api
