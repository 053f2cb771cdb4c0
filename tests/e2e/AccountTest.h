#pragma once

#include "e2e/ProgramTest.h"

#include <QString>

/// What the tests of accounts share: two computers on one store of the service, and the dialogs of accounts and
/// friends. The user sits at the first one; the programs are not started.
class AccountTest : public ProgramTest {
    Q_OBJECT
protected:
    static const inline QString Register = QStringLiteral("注册账号");
    static const inline QString Recover = QStringLiteral("找回密码");
    static const inline QString Rebind = QStringLiteral("重新绑定电脑");
    static const inline QString Person = QStringLiteral("个人信息");
    static const inline QString Friends = QStringLiteral("好友管理");
    static const inline QString Groups = QStringLiteral("分组管理");
    static const inline QString Rights = QStringLiteral("权限设置");
    static const inline QString GetCode = QStringLiteral("获取验证码");
    static const inline QString Next = QStringLiteral("下一步");
    static const inline QString Submit = QStringLiteral("提交");
    static const inline QString Close = QStringLiteral("关闭");
    static const inline QString Save = QStringLiteral("保存");
    static const inline QString Delete = QStringLiteral("删除");

    // Each of these is a failure of the test when it does not come about.
    /// Clicks a field of a dialog and writes this in place of what it holds.
    void fill(const QString& title, const QString& field, const QString& text);
    /// Waits for a tip with this text and closes it.
    void closeTip(const QString& text);
    /// Waits for the next text message in the program's own window, reads its code and closes the window.
    void readCode(QString& code);
    /// On a flow's first page: asks for a code, goes on, enters the code and goes on.
    void enterCode(const QString& flow);
    /// On a flow's last page.
    void enterPasswords(const QString& flow, const QString& password, const QString& repeated);
    /// Registers a number from the sign-in dialog's link and comes back to that dialog, with the number in it.
    void registerNumber(const QString& number, const QString& password);
    /// Opens the sign-in dialog and signs in; with devices or groups in the tree then.
    void signInAs(const QString& number, const QString& password);
    void signOut();
    /// Opens a dialog by the account's menu.
    void openFromMenu(const QString& title);
    /// Opens a dialog by the menu of a row of the device tree.
    void openFromRow(const QString& row, const QString& title);
    /// Chooses a file in a file dialog by its path.
    void chooseFile(const QString& title, const QString& path);
    /// Closes it by its button.
    void closeDialog(const QString& title);
    /// A list or table that a dialog shows.
    Accessible listIn(const QString& title, const QString& list) const;
    /// A row of it by one of its texts; null when there is none.
    Accessible rowIn(const QString& title, const QString& list, const QString& text) const;
    /// Clicks such a row, turning the wheel where it has to.
    void clickRow(const QString& title, const QString& list, const QString& text);
    /// Ticks or clears such a row, which is in sight.
    void tickRow(const QString& title, const QString& list, const QString& text);

protected slots:
    void init();

private:
    void shareStore(const QString& store) const;

    QString lastMessage_;
};
