#include "sensor/BoardTemplates.h"

namespace ipncsdk::sensor {

namespace {

constexpr auto templates = R"json([
  {"name":"温湿度变送器","type":"RS485","board":{"type":"RS485","ifname":"RS485-1","name":"温湿度变送器",
    "params":{"mode":"rtu","device":"/dev/ttyS0","baud":9600,"slave":1,"period":2000},
    "input":[
      {"name":"湿度","unit":"%RH","scale":0.1,"hysteresis":1,
       "thresholds":[{"level":1,"high":70,"low":20},{"level":2,"high":80,"low":10}],
       "params":{"function":3,"address":0,"format":"u16"}},
      {"name":"温度","unit":"℃","scale":0.1,"hysteresis":0.5,
       "thresholds":[{"level":1,"high":35,"low":null},{"level":2,"high":45,"low":null},{"level":3,"high":55,"low":null}],
       "params":{"function":3,"address":1,"format":"s16"}}],"output":[]}},
  {"name":"压力变送器","type":"RS485","board":{"type":"RS485","ifname":"RS485-1","name":"压力变送器",
    "params":{"mode":"rtu","slave":2},
    "input":[{"name":"压力","unit":"MPa","params":{"function":3,"address":0,"format":"f32","order":"ABCD"}}],
    "output":[]}},
  {"name":"电磁流量计(网络)",
               "type" : "RS485", "board" : {
    "type":"RS485","ifname":"RS485-2","name":"电磁流量计",
    "params":{"mode":"tcp","host":"192.168.1.100","port":502,"slave":1},
    "input":[{"name":"瞬时流量","unit":"m³/h","params":{"function":4,"address":0,"format":"f32","order":"CDAB"}},
             {"name":"累计流量","unit":"m³","params":{"function":4,"address":2,"format":"u32","order":"CDAB"}}],
    "output":[]
}
},
  {"name":"继电器模块(4路)","type":"RS485","board":{"type":"RS485","ifname":"RS485-1","name":"继电器模块",
    "params":{"mode":"rtu","slave":3},
    "input":[{"name":"状态1","unit":"","params":{"function":1,"address":0,"format":"bit"}},
             {"name":"状态2","unit":"","params":{"function":1,"address":1,"format":"bit"}}],
    "output":[{"name":"继电器1","unit":"","params":{"function":5,"address":0,"format":"bit"}},
              {"name":"继电器2","unit":"","params":{"function":5,"address":1,"format":"bit"}},
              {"name":"继电器3","unit":"","params":{"function":5,"address":2,"format":"bit"}},
              {"name":"继电器4","unit":"","params":{"function":5,"address":3,"format":"bit"}}]}},
  {"name":"门磁与警灯","type":"IO","board":{"type":"IO","ifname":"IO-1","name":"门磁与警灯",
    "params":{"mode":"gpio","chip":"/dev/gpiochip0"},
    "input":[{"name":"门磁","unit":"","thresholds":[{"level":1,"high":0.5,"low":null}],"params":{"line":0}}],
    "output":[{"name":"警灯","unit":"","params":{"line":1}}]}},
  {"name":"移动与亮度","type":"VIDEO","board":{"type":"VIDEO","ifname":"VIDEO-1","name":"视频分析","params":{},
    "input":[{"name":"移动","unit":"%","params":{"measure":"motion"}},
             {"name":"亮度","unit":"%","params":{"measure":"brightness"}}],"output":[]}},
  {"name":"ZigBee 温湿度","type":"ZIGBEE","board":{"type":"ZIGBEE","ifname":"ZIGBEE-1","name":"温湿度节点",
    "params":{"mode":"mqtt","broker":"localhost","topic":"zigbee2mqtt/node1"},
    "input":[{"name":"温度","unit":"℃","params":{"key":"temperature"}},
             {"name":"湿度","unit":"%RH","params":{"key":"humidity"}}],"output":[]}},
  {"name":"ZigBee 插座","type":"ZIGBEE","board":{"type":"ZIGBEE","ifname":"ZIGBEE-1","name":"插座",
    "params":{"mode":"mqtt","broker":"localhost","topic":"zigbee2mqtt/plug1"},
    "input":[{"name":"功率","unit":"W","params":{"key":"power"}}],
    "output":[{"name":"开关","unit":"","params":{"key":"state"}}]}},
  {"name":"计算值","type":"SOFT","board":{"type":"SOFT","ifname":"SOFT-1","name":"计算值","params":{},
    "input":[{"name":"计算值","unit":"","params":{"expression":"1"}}],"output":[]}},
  {"name":"二维码位移","type":"QR","board":{"type":"QR","ifname":"QR-1","name":"二维码","params":{},
    "input":[{"name":"X","unit":"mm","params":{"axis":"QRcode_x"}},
             {"name":"Y","unit":"mm","params":{"axis":"QRcode_y"}},
             {"name":"Z","unit":"mm","params":{"axis":"QRcode_z"}}],"output":[]}},
  {"name":"激光光斑位移","type":"LASER","board":{"type":"LASER","ifname":"LASER-1","name":"激光光斑","params":{},
    "input":[{"name":"X","unit":"mm","params":{"axis":"laser_x"}},
             {"name":"Y","unit":"mm","params":{"axis":"laser_y"}}],"output":[]}},
  {"name":"定位标签","type":"POSITION","board":{"type":"POSITION","ifname":"POSITION-1","name":"定位标签",
    "params":{"mode":"mqtt","broker":"localhost","topic":"position/tag1"},
    "info":{"locations":[{"x":"0","y":"0"},{"x":"10","y":"0"},{"x":"10","y":"10"}]},
    "input":[{"name":"X坐标","unit":"m","params":{"axis":"x","key":"x"}},
             {"name":"Y坐标","unit":"m","params":{"axis":"y","key":"y"}}],"output":[]}}
])json";

} // namespace

Json boardTemplates() {
    return Json::parse(templates);
}

} // namespace ipncsdk::sensor
