#include "logs/LogKinds.h"

#include <QCoreApplication>

namespace corvanta::logs {

const std::array<Kind, 4>& kinds() {
    static constexpr std::array<Kind, 4> Kinds{{
        {QT_TRANSLATE_NOOP("Logs", "报警日志"),
         {QT_TRANSLATE_NOOP("Logs", "编号"), QT_TRANSLATE_NOOP("Logs", "报警设备ID/IP"),
          QT_TRANSLATE_NOOP("Logs", "报警时间"), QT_TRANSLATE_NOOP("Logs", "报警类型"),
          QT_TRANSLATE_NOOP("Logs", "报警信息")}},
        {QT_TRANSLATE_NOOP("Logs", "登陆日志"),
         {QT_TRANSLATE_NOOP("Logs", "编号"), QT_TRANSLATE_NOOP("Logs", "用户登录名"),
          QT_TRANSLATE_NOOP("Logs", "登入时间"), QT_TRANSLATE_NOOP("Logs", "登出时间")}},
        {QT_TRANSLATE_NOOP("Logs", "操作日志"),
         {QT_TRANSLATE_NOOP("Logs", "编号"), QT_TRANSLATE_NOOP("Logs", "操作用户"),
          QT_TRANSLATE_NOOP("Logs", "操作时间"), QT_TRANSLATE_NOOP("Logs", "操作类型"),
          QT_TRANSLATE_NOOP("Logs", "操作信息"), QT_TRANSLATE_NOOP("Logs", "附加信息")}},
        {QT_TRANSLATE_NOOP("Logs", "错误日志"),
         {QT_TRANSLATE_NOOP("Logs", "编号"), QT_TRANSLATE_NOOP("Logs", "用户名"),
          QT_TRANSLATE_NOOP("Logs", "发生时间"), QT_TRANSLATE_NOOP("Logs", "错误类型"),
          QT_TRANSLATE_NOOP("Logs", "错误信息")}},
    }};
    return Kinds;
}

QString tabText(int type) {
    if (type < 0 || type >= static_cast<int>(kinds().size()))
        return {};
    return QCoreApplication::translate("Logs", kinds()[static_cast<std::size_t>(type)].tab);
}

QStringList columnTexts(int type) {
    QStringList result;
    if (type < 0 || type >= static_cast<int>(kinds().size()))
        return result;
    for (const char* const column : kinds()[static_cast<std::size_t>(type)].columns) {
        if (column != nullptr)
            result += QCoreApplication::translate("Logs", column);
    }
    return result;
}

} // namespace corvanta::logs
