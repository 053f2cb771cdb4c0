#include "account/AccountLog.h"

#include "base/OperationLog.h"

#include <QDateTime>

#include <array>

namespace corvanta::account {
namespace {

struct Wording {
    Change change;
    const char* kind;
    const char* text;
};

// What a log holds is Chinese, whatever the interface speaks.
constexpr const char* Account = "账号";
constexpr const char* Groups = "分组管理";
constexpr const char* Friends = "好友管理";
constexpr const char* Rights = "权限设置";

constexpr std::array Wordings{
    Wording{Change::Registered, Account, "注册账号"},      Wording{Change::Recovered, Account, "找回密码"},
    Wording{Change::PasswordChanged, Account, "修改密码"}, Wording{Change::Rebound, Account, "重新绑定电脑"},
    Wording{Change::Unbound, Account, "解除电脑绑定"},     Wording{Change::Nickname, Account, "设置昵称"},
    Wording{Change::HeadPicture, Account, "保存头像"},     Wording{Change::GroupAdded, Groups, "新增分组"},
    Wording{Change::GroupEdited, Groups, "编辑分组"},      Wording{Change::GroupDeleted, Groups, "删除分组"},
    Wording{Change::FriendAdded, Friends, "添加好友"},     Wording{Change::FriendEdited, Friends, "编辑好友信息"},
    Wording{Change::FriendDeleted, Friends, "删除好友"},   Wording{Change::Shared, Rights, "分享设备给好友"},
    Wording{Change::ShareEnded, Rights, "取消分享设备"},
};

} // namespace

void logChange(OperationLog& log, const QString& user, Change change, const QString& detail) {
    for (const Wording& wording : Wordings) {
        if (wording.change == change)
            log.addOperateLog(user, QDateTime::currentDateTime(), QString::fromUtf8(wording.kind),
                              QString::fromUtf8(wording.text), detail);
    }
}

} // namespace corvanta::account
