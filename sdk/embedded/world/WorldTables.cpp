#include "world/WorldTables.h"

namespace ipncsdk::world {

const std::vector<GroupPlan>& ownGroups() {
    static const std::vector<GroupPlan> groups = {
        {"园区大门",
         {"东大门入口", "东大门出口", "西大门入口", "西大门出口", "门卫室", "访客登记处", "人行通道", "大门广场全景",
          "北侧围墙"}},
        {"一号厂房",
         {"装配一线", "装配二线", "装配三线", "焊接工位", "冲压车间", "喷涂车间", "质检台", "物料暂存区", "行车通道",
          "配电间", "厂房东门", "厂房西门", "厂房全景"}},
        {"仓库",
         {"原料库一区", "原料库二区", "成品库一区", "成品库二区", "立体货架A", "立体货架B", "装卸月台一", "危化品库",
          "叉车充电区", "仓库大门"}},
        {"停车场",
         {"地面停车A区", "地面停车B区", "地下一层入口", "地下一层A区", "地下一层B区", "地下二层A区", "充电桩区",
          "货车停靠区", "停车场出口"}},
        {"办公楼",
         {"一层大厅", "一层前台", "电梯厅", "二层走廊", "三层走廊", "四层走廊", "会议室外", "机房", "档案室外",
          "消防控制室"}},
        {"水泵站",
         {"一号泵组", "二号泵组", "三号泵组", "进水口", "出水口", "蓄水池", "加药间", "泵站控制室", "泵站大门"}},
    };
    return groups;
}

const std::vector<GivenCamera>& givenCameras() {
    static const std::vector<GivenCamera> cameras = {
        {"FRD0001", "河道闸口", R"({"admin":false,"video":true,"record":true,"ptz":true,"param":true})"},
        {"FRD0002", "上游水位尺", R"({"admin":false,"video":true,"record":true,"ptz":false,"param":true})"},
        {"FRD0003", "巡堤路口", R"({"admin":false,"video":true,"record":false,"ptz":false,"param":false})"},
        {"FRD0004", "值守房", R"({"admin":false,"video":true,"record":false,"ptz":false,"param":false})"},
    };
    return cameras;
}

const std::vector<WaitingCamera>& waitingCameras() {
    static const std::vector<WaitingCamera> cameras = {
        {"SPARE001", "备用一号", "word-0001"},
        {"SPARE002", "备用二号", "word-0002"},
        {"SPARE003", "备用三号", "word-0003"},
        {"SPARE004", "备用四号", "word-0004"},
    };
    return cameras;
}

const GroupPlan& groupOfOffline() {
    static const GroupPlan group = {"停用待检",
                                    {"南侧围墙", "空压机房", "装卸月台二", "非机动车棚", "楼顶平台", "变压器"}};
    return group;
}

} // namespace ipncsdk::world
