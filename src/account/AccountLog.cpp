#include "account/AccountLog.h"

#include "base/OperationLog.h"

#include <QCoreApplication>
#include <QDateTime>

#include <array>

namespace corvanta::account {
namespace {

struct Wording {
    Change change;
    const char* kind;
    const char* text;
};

constexpr const char* Account = QT_TRANSLATE_NOOP("AccountLog", "账号");
constexpr const char* Groups = QT_TRANSLATE_NOOP("AccountLog", "分组管理");
constexpr const char* Friends = QT_TRANSLATE_NOOP("AccountLog", "好友管理");
constexpr const char* Rights = QT_TRANSLATE_NOOP("AccountLog", "权限设置");

constexpr std::array Wordings{
    Wording{Change::Registered, Account, QT_TRANSLATE_NOOP("AccountLog", "注册账号")},
    Wording{Change::Recovered, Account, QT_TRANSLATE_NOOP("AccountLog", "找回密码")},
    Wording{Change::PasswordChanged, Account, QT_TRANSLATE_NOOP("AccountLog", "修改密码")},
    Wording{Change::Rebound, Account, QT_TRANSLATE_NOOP("AccountLog", "重新绑定电脑")},
    Wording{Change::Unbound, Account, QT_TRANSLATE_NOOP("AccountLog", "解除电脑绑定")},
    Wording{Change::Nickname, Account, QT_TRANSLATE_NOOP("AccountLog", "设置昵称")},
    Wording{Change::HeadPicture, Account, QT_TRANSLATE_NOOP("AccountLog", "保存头像")},
    Wording{Change::GroupAdded, Groups, QT_TRANSLATE_NOOP("AccountLog", "新增分组")},
    Wording{Change::GroupEdited, Groups, QT_TRANSLATE_NOOP("AccountLog", "编辑分组")},
    Wording{Change::GroupDeleted, Groups, QT_TRANSLATE_NOOP("AccountLog", "删除分组")},
    Wording{Change::FriendAdded, Friends, QT_TRANSLATE_NOOP("AccountLog", "添加好友")},
    Wording{Change::FriendEdited, Friends, QT_TRANSLATE_NOOP("AccountLog", "编辑好友信息")},
    Wording{Change::FriendDeleted, Friends, QT_TRANSLATE_NOOP("AccountLog", "删除好友")},
    Wording{Change::Shared, Rights, QT_TRANSLATE_NOOP("AccountLog", "分享设备给好友")},
    Wording{Change::ShareEnded, Rights, QT_TRANSLATE_NOOP("AccountLog", "取消分享设备")},
};

} // namespace

void logChange(OperationLog& log, const QString& user, Change change, const QString& detail) {
    for (const Wording& wording : Wordings) {
        if (wording.change == change)
            log.addOperateLog(user, QDateTime::currentDateTime(),
                              QCoreApplication::translate("AccountLog", wording.kind),
                              QCoreApplication::translate("AccountLog", wording.text), detail);
    }
}

} // namespace corvanta::account
