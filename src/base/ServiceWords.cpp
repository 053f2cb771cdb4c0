#include "base/ServiceWords.h"

#include <QCoreApplication>

#include <array>

namespace corvanta {

namespace {

/// For the translators' tool: the words that are looked up below.
[[maybe_unused]] constexpr std::array words = {
    QT_TRANSLATE_NOOP("ServiceWords", "01 读线圈"),
    QT_TRANSLATE_NOOP("ServiceWords", "02 读离散输入"),
    QT_TRANSLATE_NOOP("ServiceWords", "03 读保持寄存器"),
    QT_TRANSLATE_NOOP("ServiceWords", "04 读输入寄存器"),
    QT_TRANSLATE_NOOP("ServiceWords", "05 写线圈"),
    QT_TRANSLATE_NOOP("ServiceWords", "06 写单个寄存器"),
    QT_TRANSLATE_NOOP("ServiceWords", "16 写多个寄存器"),
    QT_TRANSLATE_NOOP("ServiceWords", "16位无符号"),
    QT_TRANSLATE_NOOP("ServiceWords", "16位有符号"),
    QT_TRANSLATE_NOOP("ServiceWords", "32位无符号"),
    QT_TRANSLATE_NOOP("ServiceWords", "32位有符号"),
    QT_TRANSLATE_NOOP("ServiceWords", "32位浮点"),
    QT_TRANSLATE_NOOP("ServiceWords", "GPIO 芯片或目录"),
    QT_TRANSLATE_NOOP("ServiceWords", "上"),
    QT_TRANSLATE_NOOP("ServiceWords", "串口"),
    QT_TRANSLATE_NOOP("ServiceWords", "串口 Modbus RTU"),
    QT_TRANSLATE_NOOP("ServiceWords", "主机"),
    QT_TRANSLATE_NOOP("ServiceWords", "主题"),
    QT_TRANSLATE_NOOP("ServiceWords", "二维码"),
    QT_TRANSLATE_NOOP("ServiceWords", "亮度"),
    QT_TRANSLATE_NOOP("ServiceWords", "从站地址"),
    QT_TRANSLATE_NOOP("ServiceWords", "位"),
    QT_TRANSLATE_NOOP("ServiceWords", "停止位"),
    QT_TRANSLATE_NOOP("ServiceWords", "偶校验"),
    QT_TRANSLATE_NOOP("ServiceWords", "功能码"),
    QT_TRANSLATE_NOOP("ServiceWords", "取反"),
    QT_TRANSLATE_NOOP("ServiceWords", "否"),
    QT_TRANSLATE_NOOP("ServiceWords", "坐标"),
    QT_TRANSLATE_NOOP("ServiceWords", "奇校验"),
    QT_TRANSLATE_NOOP("ServiceWords", "字节顺序"),
    QT_TRANSLATE_NOOP("ServiceWords", "定位传感器"),
    QT_TRANSLATE_NOOP("ServiceWords", "宽"),
    QT_TRANSLATE_NOOP("ServiceWords", "寄存器地址"),
    QT_TRANSLATE_NOOP("ServiceWords", "密码"),
    QT_TRANSLATE_NOOP("ServiceWords", "左"),
    QT_TRANSLATE_NOOP("ServiceWords", "引脚"),
    QT_TRANSLATE_NOOP("ServiceWords", "数据位"),
    QT_TRANSLATE_NOOP("ServiceWords", "数据格式"),
    QT_TRANSLATE_NOOP("ServiceWords", "数据键"),
    QT_TRANSLATE_NOOP("ServiceWords", "无"),
    QT_TRANSLATE_NOOP("ServiceWords", "是"),
    QT_TRANSLATE_NOOP("ServiceWords", "服务器"),
    QT_TRANSLATE_NOOP("ServiceWords", "校验"),
    QT_TRANSLATE_NOOP("ServiceWords", "模拟"),
    QT_TRANSLATE_NOOP("ServiceWords", "波特率"),
    QT_TRANSLATE_NOOP("ServiceWords", "测量"),
    QT_TRANSLATE_NOOP("ServiceWords", "激光光斑"),
    QT_TRANSLATE_NOOP("ServiceWords", "用户名"),
    QT_TRANSLATE_NOOP("ServiceWords", "移动"),
    QT_TRANSLATE_NOOP("ServiceWords", "端口"),
    QT_TRANSLATE_NOOP("ServiceWords", "网络 Modbus TCP"),
    QT_TRANSLATE_NOOP("ServiceWords", "表达式"),
    QT_TRANSLATE_NOOP("ServiceWords", "视频分析"),
    QT_TRANSLATE_NOOP("ServiceWords", "超时(ms)"),
    QT_TRANSLATE_NOOP("ServiceWords", "跟随第几路输出(0 为否)"),
    QT_TRANSLATE_NOOP("ServiceWords", "软件接口"),
    QT_TRANSLATE_NOOP("ServiceWords", "连接方式"),
    QT_TRANSLATE_NOOP("ServiceWords", "通用输入输出"),
    QT_TRANSLATE_NOOP("ServiceWords", "采集周期(ms)"),
    QT_TRANSLATE_NOOP("ServiceWords", "高"),
    // linkage rules and notifications
    QT_TRANSLATE_NOOP("ServiceWords", "与"),
    QT_TRANSLATE_NOOP("ServiceWords", "或"),
    QT_TRANSLATE_NOOP("ServiceWords", "短信"),
    QT_TRANSLATE_NOOP("ServiceWords", "APP通知"),
    QT_TRANSLATE_NOOP("ServiceWords", "阈值报警"),
    QT_TRANSLATE_NOOP("ServiceWords", "设备离线"),
    QT_TRANSLATE_NOOP("ServiceWords", "其他报警"),
};

} // namespace

QString serviceWord(const QString& word) {
    return word.isEmpty() ? word : QCoreApplication::translate("ServiceWords", word.toUtf8().constData());
}

} // namespace corvanta
