#include "base/ServerErrors.h"

#include <QCoreApplication>

#include <array>

namespace corvanta::serverErrors {
namespace {

struct Entry {
    int number;
    const char* code;
    const char* text;
};

// Numbers and codes are the service's (docs/service-protocol.md).
constexpr std::array Table{
    Entry{1, "(not supported)", QT_TRANSLATE_NOOP("ServerErrors", "服务器不支持该操作!")},
    Entry{2, "(bad request)", QT_TRANSLATE_NOOP("ServerErrors", "请求内容有误!")},
    Entry{3, "(not login)", QT_TRANSLATE_NOOP("ServerErrors", "当前未登录，请先登录!")},
    Entry{4, "(not phonenumber)", QT_TRANSLATE_NOOP("ServerErrors", "该手机号未注册!")},
    Entry{5, "(password error)", QT_TRANSLATE_NOOP("ServerErrors", "账号或密码错误!")},
    Entry{6, "(not authority)", QT_TRANSLATE_NOOP("ServerErrors", "没有该操作的权限!")},
    Entry{7, "(not ipnc)", QT_TRANSLATE_NOOP("ServerErrors", "设备不存在!")},
    Entry{8, "(not group)", QT_TRANSLATE_NOOP("ServerErrors", "分组不存在!")},
    Entry{9, "(group not empty)", QT_TRANSLATE_NOOP("ServerErrors", "分组下还有设备，无法删除!")},
    Entry{10, "(ipnc offline)", QT_TRANSLATE_NOOP("ServerErrors", "设备不在线!")},
    Entry{11, "(try later)", QT_TRANSLATE_NOOP("ServerErrors", "尝试次数过多，请稍后再试!")},
    Entry{12, "(not bind)", QT_TRANSLATE_NOOP("ServerErrors", "该账号已与当前电脑解除绑定，请重新绑定!")},
    Entry{13, "(phonenumber exist)", QT_TRANSLATE_NOOP("ServerErrors", "该手机已注册!")},
    Entry{14, "(checkcode error)", QT_TRANSLATE_NOOP("ServerErrors", "输入的验证码不正确")},
    Entry{15, "(checkcode timeout)", QT_TRANSLATE_NOOP("ServerErrors", "验证码已超时!")},
    Entry{16, "(not friend)", QT_TRANSLATE_NOOP("ServerErrors", "该用户不是您的好友!")},
    Entry{17, "(friend exist)", QT_TRANSLATE_NOOP("ServerErrors", "该用户已经是您的好友,无需重复添加!")},
    Entry{18, "(ipnc exist)", QT_TRANSLATE_NOOP("ServerErrors", "该设备已被添加!")},
    Entry{19, "(file error)", QT_TRANSLATE_NOOP("ServerErrors", "文件无法读取或格式不正确!")},
    Entry{20, "(store error)", QT_TRANSLATE_NOOP("ServerErrors", "服务器数据保存失败!")},
    Entry{21, "(sms error)", QT_TRANSLATE_NOOP("ServerErrors", "短信发送失败，请稍后再试!")},
    Entry{22, "(sms limit)", QT_TRANSLATE_NOOP("ServerErrors", "验证码发送过于频繁，请稍后再试!")},
    Entry{23, "(friend self)", QT_TRANSLATE_NOOP("ServerErrors", "不能添加自己为好友!")},
    Entry{24, "(word error)", QT_TRANSLATE_NOOP("ServerErrors", "设备验证码错误!")},
    Entry{25, "(camera password)", QT_TRANSLATE_NOOP("ServerErrors", "摄像机的用户名或密码错误!")},
    Entry{26, "(camera clock)", QT_TRANSLATE_NOOP("ServerErrors", "摄像机时间与本机相差过大，请先校时!")},
    Entry{27, "(onvif fault)", QT_TRANSLATE_NOOP("ServerErrors", "摄像机拒绝了请求!")},
    Entry{28, "(no media)", QT_TRANSLATE_NOOP("ServerErrors", "摄像机没有可用的视频流!")},
    Entry{29, "(in use)", QT_TRANSLATE_NOOP("ServerErrors", "正被联动策略使用，无法删除!")},
    Entry{30, "(unknown input)", QT_TRANSLATE_NOOP("ServerErrors", "采集输入或控制输出不存在!")},
    Entry{31, "(write failed)", QT_TRANSLATE_NOOP("ServerErrors", "控制输出写入失败!")},
    Entry{32, "(limit)", QT_TRANSLATE_NOOP("ServerErrors", "数量已达上限!")},
    Entry{33, "(not main account)", QT_TRANSLATE_NOOP("ServerErrors", "非主账号无操作权限!")},
    Entry{34, "(map not empty)", QT_TRANSLATE_NOOP("ServerErrors", "请先删除该地图上的所有标记点!")},
    Entry{35, "(not map)", QT_TRANSLATE_NOOP("ServerErrors", "地图不存在!")},
    Entry{36, "(not marker)", QT_TRANSLATE_NOOP("ServerErrors", "标记点不存在!")},
    Entry{37, "(file exist)", QT_TRANSLATE_NOOP("ServerErrors", "已有同名文件!")},
    Entry{404, "(http 404)", QT_TRANSLATE_NOOP("ServerErrors", "Http请求返回未发现文件404")},
    Entry{500, "(http error)", QT_TRANSLATE_NOOP("ServerErrors", "Http请求服务器返回出错")},
};

// Service texts are shown as plain text, but they may be long: what a tip can hold is enough to recognise them.
constexpr int LongestCode = 64;
constexpr int LongestText = 300;

QString translated(const char* text) {
    return QCoreApplication::translate("ServerErrors", text);
}

QString unknown(const QString& what) {
    return translated(QT_TRANSLATE_NOOP("ServerErrors", "操作失败(%1)")).arg(what.left(LongestCode));
}

} // namespace

QString text(const QString& code) {
    for (const Entry& entry : Table) {
        if (code == QLatin1String(entry.code))
            return translated(entry.text);
    }
    return unknown(code);
}

QString codeOf(const QVariantMap& reply) {
    const QString inner = reply.value(QStringLiteral("resp")).toMap().value(QStringLiteral("errcode")).toString();
    return inner.isEmpty() ? reply.value(QStringLiteral("errcode")).toString() : inner;
}

namespace {
/// What the code of a failed reply says.
QString textOfCode(const QVariantMap& reply, const QString& code) {
    if (!code.isEmpty())
        return text(code);
    const int number = reply.value(QStringLiteral("retcode")).toInt();
    for (const Entry& entry : Table) {
        if (entry.number == number)
            return translated(entry.text);
    }
    return unknown(QString::number(number));
}
} // namespace

QString textOfReply(const QVariantMap& reply) {
    const QString code = codeOf(reply);
    QString own =
        reply.value(QStringLiteral("resp")).toMap().value(QStringLiteral("text")).toString().left(LongestText);
    // Of these the service says in the user's words what is wrong; with others come the words of a device.
    const bool isSentence = code == QLatin1String("(bad request)") || code == QLatin1String("(unknown input)");
    if (isSentence && !own.isEmpty())
        return own;
    return own.isEmpty() ? textOfCode(reply, code) : textOfCode(reply, code) + QLatin1Char('\n') + own;
}

QString noReplyText() {
    return translated(QT_TRANSLATE_NOOP("ServerErrors", "服务器没有响应，请稍后再试!"));
}

bool isSuccess(const QVariantMap& reply) {
    const QVariant state = reply.value(QStringLiteral("resp")).toMap().value(QStringLiteral("state"));
    return state.toString() == QLatin1String("ok");
}

} // namespace corvanta::serverErrors
