#include "service/FriendRecords.h"

namespace ipncsdk::service {

Json friendRecord(const store::Friend& person) {
    return {{"friendphone", person.phone},
            {"nickname", person.nickname},
            {"phoneid", person.phone},
            {"remarkname", person.remark}};
}

Json friendList(const std::vector<store::Friend>& friends) {
    Json list = Json::array();
    for (const store::Friend& person : friends)
        list.push_back(friendRecord(person));
    return list;
}

} // namespace ipncsdk::service
