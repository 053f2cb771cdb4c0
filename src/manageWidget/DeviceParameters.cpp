#include "manageWidget/DeviceParameters.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace corvanta::manage {
namespace {

using Page = ParameterPage;
using Kind = ParameterKind;

constexpr const char* MainStream = QT_TRANSLATE_NOOP("DeviceParameters", "主码流");
constexpr const char* LightStream = QT_TRANSLATE_NOOP("DeviceParameters", "子码流");
constexpr const char* Colours = QT_TRANSLATE_NOOP("DeviceParameters", "色彩");
constexpr const char* Direction = QT_TRANSLATE_NOOP("DeviceParameters", "画面方向");
constexpr const char* Snapshots = QT_TRANSLATE_NOOP("DeviceParameters", "抓拍");
constexpr const char* Alarms = QT_TRANSLATE_NOOP("DeviceParameters", "报警");
constexpr const char* Recordings = QT_TRANSLATE_NOOP("DeviceParameters", "录像");
constexpr const char* Server = QT_TRANSLATE_NOOP("DeviceParameters", "FTP服务器");
constexpr const char* Uploads = QT_TRANSLATE_NOOP("DeviceParameters", "上传内容");
constexpr const char* Corners = QT_TRANSLATE_NOOP("DeviceParameters", "左上角|右上角|左下角|右下角");
constexpr const char* PushWays =
    QT_TRANSLATE_NOOP("DeviceParameters", "不保存|上传FTP|保存到SD卡|上传FTP并保存到SD卡");

constexpr int Byte = 255;
constexpr int Day = 86400; // s
constexpr int Hour = 3600; // s
constexpr int ShortText = 64;

// Names and limits are the device's (docs/service-protocol.md).
const std::vector<Parameter>& table() {
    static const std::vector<Parameter> rows = {
        {"bitrate1", Page::Video, Kind::Number, MainStream, QT_TRANSLATE_NOOP("DeviceParameters", "码率"), 64, 16384,
         QT_TRANSLATE_NOOP("DeviceParameters", "kbit/s")},
        {"framerate1", Page::Video, Kind::Number, MainStream, QT_TRANSLATE_NOOP("DeviceParameters", "帧率"), 1, 60,
         QT_TRANSLATE_NOOP("DeviceParameters", "帧/秒")},
        {"bitrate2", Page::Video, Kind::Number, LightStream, QT_TRANSLATE_NOOP("DeviceParameters", "码率"), 64, 16384,
         QT_TRANSLATE_NOOP("DeviceParameters", "kbit/s")},
        {"framerate2", Page::Video, Kind::Number, LightStream, QT_TRANSLATE_NOOP("DeviceParameters", "帧率"), 1, 60,
         QT_TRANSLATE_NOOP("DeviceParameters", "帧/秒")},
        {"brightness", Page::Image, Kind::Number, Colours, QT_TRANSLATE_NOOP("DeviceParameters", "亮度"), 0, Byte},
        {"contrast", Page::Image, Kind::Number, Colours, QT_TRANSLATE_NOOP("DeviceParameters", "对比度"), 0, Byte},
        {"saturation", Page::Image, Kind::Number, Colours, QT_TRANSLATE_NOOP("DeviceParameters", "饱和度"), 0, Byte},
        {"sharpness", Page::Image, Kind::Number, Colours, QT_TRANSLATE_NOOP("DeviceParameters", "锐度"), 0, Byte},
        {"hue", Page::Image, Kind::Number, Colours, QT_TRANSLATE_NOOP("DeviceParameters", "色调"), 0, Byte},
        {"mirror", Page::Image, Kind::Flag, Direction, QT_TRANSLATE_NOOP("DeviceParameters", "左右镜像")},
        {"flip", Page::Image, Kind::Flag, Direction, QT_TRANSLATE_NOOP("DeviceParameters", "上下翻转")},
        {"datestampenable1", Page::Osd, Kind::Flag, MainStream, QT_TRANSLATE_NOOP("DeviceParameters", "显示日期")},
        {"timestampenable1", Page::Osd, Kind::Flag, MainStream, QT_TRANSLATE_NOOP("DeviceParameters", "显示时间")},
        {"logoenable1", Page::Osd, Kind::Flag, MainStream, QT_TRANSLATE_NOOP("DeviceParameters", "显示标志")},
        {"logoposition1", Page::Osd, Kind::Choice, MainStream, QT_TRANSLATE_NOOP("DeviceParameters", "标志位置"), 0,
         3, "", Corners},
        {"textenable1", Page::Osd, Kind::Flag, MainStream, QT_TRANSLATE_NOOP("DeviceParameters", "显示文字")},
        {"detailinfo1", Page::Osd, Kind::Text, MainStream, QT_TRANSLATE_NOOP("DeviceParameters", "文字内容"), 0,
         ShortText},
        {"datestampenable2", Page::Osd, Kind::Flag, LightStream, QT_TRANSLATE_NOOP("DeviceParameters", "显示日期")},
        {"timestampenable2", Page::Osd, Kind::Flag, LightStream, QT_TRANSLATE_NOOP("DeviceParameters", "显示时间")},
        {"logoenable2", Page::Osd, Kind::Flag, LightStream, QT_TRANSLATE_NOOP("DeviceParameters", "显示标志")},
        {"logoposition2", Page::Osd, Kind::Choice, LightStream, QT_TRANSLATE_NOOP("DeviceParameters", "标志位置"), 0,
         3, "", Corners},
        {"textenable2", Page::Osd, Kind::Flag, LightStream, QT_TRANSLATE_NOOP("DeviceParameters", "显示文字")},
        {"detailinfo2", Page::Osd, Kind::Text, LightStream, QT_TRANSLATE_NOOP("DeviceParameters", "文字内容"), 0,
         ShortText},
        {"jpgpushtype", Page::Record, Kind::Choice, Snapshots, QT_TRANSLATE_NOOP("DeviceParameters", "抓拍保存方式"),
         0, 3, "", PushWays},
        {"jpgtimerduration", Page::Record, Kind::Number, Snapshots,
         QT_TRANSLATE_NOOP("DeviceParameters", "定时抓拍间隔"), 0, Day, QT_TRANSLATE_NOOP("DeviceParameters", "秒")},
        {"alarmenablejpg", Page::Record, Kind::Flag, Snapshots, QT_TRANSLATE_NOOP("DeviceParameters", "报警时抓拍")},
        {"alarmjpgformart", Page::Record, Kind::Number, Snapshots, QT_TRANSLATE_NOOP("DeviceParameters", "抓拍格式"),
         0, 9},
        {"motionenable", Page::Record, Kind::Flag, Alarms, QT_TRANSLATE_NOOP("DeviceParameters", "移动侦测")},
        {"exttriggerinput", Page::Record, Kind::Flag, Alarms, QT_TRANSLATE_NOOP("DeviceParameters", "外部触发输入")},
        {"alarmduration", Page::Record, Kind::Number, Alarms, QT_TRANSLATE_NOOP("DeviceParameters", "报警持续时间"),
         0, Hour, QT_TRANSLATE_NOOP("DeviceParameters", "秒")},
        {"sdaenable", Page::Record, Kind::Flag, Recordings, QT_TRANSLATE_NOOP("DeviceParameters", "报警录像到SD卡")},
        {"sdrenable", Page::Record, Kind::Flag, Recordings, QT_TRANSLATE_NOOP("DeviceParameters", "持续录像到SD卡")},
        {"packetTime", Page::Record, Kind::Number, Recordings, QT_TRANSLATE_NOOP("DeviceParameters", "打包时长"), 1,
         120, QT_TRANSLATE_NOOP("DeviceParameters", "分钟")},
        {"recordduration", Page::Record, Kind::Number, Recordings,
         QT_TRANSLATE_NOOP("DeviceParameters", "报警录像时长"), 0, Day, QT_TRANSLATE_NOOP("DeviceParameters", "秒")},
        {"schedulalarmtiming", Page::Record, Kind::Text, Recordings,
         QT_TRANSLATE_NOOP("DeviceParameters", "布防时段"), 0, 1000},
        {"ftpenable", Page::Ftp, Kind::Flag, Server, QT_TRANSLATE_NOOP("DeviceParameters", "启用FTP上传")},
        {"ftpip", Page::Ftp, Kind::Text, Server, QT_TRANSLATE_NOOP("DeviceParameters", "服务器地址"), 0, Byte},
        {"ftpport", Page::Ftp, Kind::Number, Server, QT_TRANSLATE_NOOP("DeviceParameters", "端口"), 1, 65535},
        {"ftpusr", Page::Ftp, Kind::Text, Server, QT_TRANSLATE_NOOP("DeviceParameters", "用户名"), 0, ShortText},
        {"ftppwd", Page::Ftp, Kind::Secret, Server, QT_TRANSLATE_NOOP("DeviceParameters", "密码"), 0, ShortText},
        {"ftprecord", Page::Ftp, Kind::Flag, Uploads, QT_TRANSLATE_NOOP("DeviceParameters", "上传录像")},
        {"ftpjpg", Page::Ftp, Kind::Flag, Uploads, QT_TRANSLATE_NOOP("DeviceParameters", "上传图片")},
        {"ftpdat", Page::Ftp, Kind::Flag, Uploads, QT_TRANSLATE_NOOP("DeviceParameters", "上传数据")},
        {"ftpoffsaveday", Page::Ftp, Kind::Number, Uploads, QT_TRANSLATE_NOOP("DeviceParameters", "断网后保存"), 0,
         365, QT_TRANSLATE_NOOP("DeviceParameters", "天")},
    };
    return rows;
}

QString translated(const char* text) {
    return *text == '\0' ? QString() : QCoreApplication::translate("DeviceParameters", text);
}

bool hasControls(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar one) { return one.category() == QChar::Other_Control; });
}

bool isFlag(const QVariant& value) {
    return value.userType() == QMetaType::Bool || value.toString() == QLatin1String("0") ||
           value.toString() == QLatin1String("1");
}

bool isSame(const QVariant& one, const QVariant& other) {
    if (one.userType() == QMetaType::Bool || other.userType() == QMetaType::Bool)
        return one.toInt() == other.toInt();
    return one.toString() == other.toString();
}

} // namespace

QString Parameter::labelText() const {
    return translated(label);
}

QString Parameter::sectionText() const {
    return translated(section);
}

QString Parameter::fullText() const {
    return translated(QT_TRANSLATE_NOOP("DeviceParameters", "%1%2")).arg(sectionText(), labelText());
}

QString Parameter::unitText() const {
    return translated(unit);
}

QStringList Parameter::choiceTexts() const {
    return translated(choices).split(QLatin1Char('|'), Qt::SkipEmptyParts);
}

const std::vector<Parameter>& parameters() {
    return table();
}

std::vector<Parameter> parametersOf(ParameterPage page) {
    std::vector<Parameter> rows;
    std::copy_if(table().begin(), table().end(), std::back_inserter(rows),
                 [page](const Parameter& one) { return one.page == page; });
    return rows;
}

const Parameter* parameter(const QString& name) {
    const auto row = std::find_if(table().begin(), table().end(),
                                  [&name](const Parameter& one) { return name == QLatin1String(one.name); });
    return row == table().end() ? nullptr : &*row;
}

std::optional<QString> problem(const Parameter& parameter, const QVariant& value) {
    const auto wrong = [&parameter](const char* text) {
        return QCoreApplication::translate("DeviceParameters", text).arg(parameter.labelText());
    };
    switch (parameter.kind) {
    case Kind::Flag:
        if (!isFlag(value))
            return wrong(QT_TRANSLATE_NOOP("DeviceParameters", "“%1”只能是开或关!"));
        return std::nullopt;
    case Kind::Number:
    case Kind::Choice: {
        bool isNumber = false;
        const int number = value.toString().toInt(&isNumber);
        if (!isNumber || number < parameter.least || number > parameter.most)
            return wrong(QT_TRANSLATE_NOOP("DeviceParameters", "“%1”应在%2到%3之间!"))
                .arg(parameter.least)
                .arg(parameter.most);
        return std::nullopt;
    }
    case Kind::Text:
    case Kind::Secret:
        if (value.toString().toUcs4().size() > parameter.most)
            return wrong(QT_TRANSLATE_NOOP("DeviceParameters", "“%1”最多%2个字符!")).arg(parameter.most);
        if (hasControls(value.toString()))
            return wrong(QT_TRANSLATE_NOOP("DeviceParameters", "“%1”不能包含控制字符!"));
        return std::nullopt;
    }
    return std::nullopt;
}

std::optional<QString> problem(const QVariantMap& values) {
    for (const Parameter& one : table()) {
        const auto value = values.constFind(one.key());
        if (value == values.constEnd())
            continue;
        if (auto text = problem(one, *value))
            return text;
    }
    return std::nullopt;
}

QVariantMap changed(const QVariantMap& before, const QVariantMap& after) {
    QVariantMap result;
    for (auto one = after.begin(); one != after.end(); ++one) {
        const auto known = before.constFind(one.key());
        if (known == before.constEnd() || !isSame(*known, one.value()))
            result.insert(one.key(), one.value());
    }
    return result;
}

QString describe(const QVariantMap& values) {
    QStringList texts;
    for (const Parameter& one : table()) {
        const auto value = values.constFind(one.key());
        if (value == values.constEnd())
            continue;
        const bool isSecret = one.kind == Kind::Secret;
        texts += QString::fromUtf8(one.section) + QString::fromUtf8(one.label) + QLatin1Char(':') +
                 (isSecret ? QStringLiteral("***") : value->toString());
    }
    return texts.join(QStringLiteral("; "));
}

} // namespace corvanta::manage
