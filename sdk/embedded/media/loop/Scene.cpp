#include "media/loop/Scene.h"

#include "media/loop/scenes/CarParkScene.h"
#include "media/loop/scenes/HarbourScene.h"
#include "media/loop/scenes/LobbyScene.h"
#include "media/loop/scenes/PumpRoomScene.h"
#include "media/loop/scenes/SnowYardScene.h"
#include "media/loop/scenes/StreetScene.h"
#include "media/loop/scenes/WarehouseScene.h"

#include <array>

namespace ipncsdk::media {

namespace {

const auto& scenes() {
    static const StreetScene street;
    static const HarbourScene harbour;
    static const WarehouseScene warehouse;
    static const CarParkScene carPark;
    static const LobbyScene lobby;
    static const PumpRoomScene pumpRoom;
    static const SnowYardScene snowYard;
    static const std::array<const Scene*, 7> all{&street, &harbour,  &warehouse, &carPark,
                                                 &lobby,  &pumpRoom, &snowYard};
    return all;
}

} // namespace

int sceneCount() {
    return static_cast<int>(scenes().size());
}

const Scene& sceneOf(int number) {
    const int count = sceneCount();
    return *scenes()[static_cast<std::size_t>((number % count + count) % count)];
}

} // namespace ipncsdk::media
