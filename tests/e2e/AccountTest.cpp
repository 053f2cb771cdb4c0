#include "e2e/AccountTest.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QtTest>

#include <utility>

using Role = Accessible::Role;
using State = Accessible::State;

namespace {
const QString Messages = QStringLiteral("短信");
} // namespace

void AccountTest::init() {
    STEP(ProgramTest::init());
    const QString store = data() + QStringLiteral("/service/store.db");
    STEP(shareStore(store));
    STEP(addComputer());
    STEP(shareStore(store));
    sitAt(0);
}

void AccountTest::shareStore(const QString& store) const {
    QVERIFY(QDir().mkpath(data() + QStringLiteral("/config")));
    QFile file(data() + QStringLiteral("/config/service.json"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const QByteArray content = QJsonDocument(QJsonObject{{QStringLiteral("store"), store}}).toJson();
    QCOMPARE(file.write(content), qint64(content.size()));
}

void AccountTest::fill(const QString& title, const QString& field, const QString& text) {
    STEP(clickIn(title, field));
    Desktop::keys({QStringLiteral("ctrl+a"), QStringLiteral("Delete")});
    Desktop::type(text);
}

void AccountTest::closeTip(const QString& text) {
    const auto isShown = [&] {
        return program().isActive(Tip) && !program().dialog(Tip).find(text).isNull();
    };
    QVERIFY2(QTest::qWaitFor(isShown, Desktop::Patience), qPrintable(text));
    answer(Tip, QStringLiteral("确定"));
}

void AccountTest::readCode(QString& code) {
    static const QRegularExpression wording(
        QStringLiteral("^【监控平台】验证码：(\\d{6})，60秒内有效，请勿告诉他人。$"));
    QString message;
    const auto isNew = [&] {
        const Accessible list = program().dialog(Messages).find(Role::Tree, Messages);
        QString row;
        for (const Accessible::Seen& cell : list.children()) {
            if (cell.role != Role::Cell)
                continue;
            row += cell.name;
            if (!wording.match(cell.name).hasMatch())
                continue;
            message = cell.name;
            break; // the newest is the first
        }
        return !message.isEmpty() && std::exchange(lastMessage_, row) != row;
    };
    COMES(isNew());
    code = wording.match(message).captured(1);
    COMES((Desktop::activate(QStringLiteral("^短信$"), program().pid()), program().isActive(Messages)));
    STEP(clickIn(Messages, Close));
    COMES(program().dialog(Messages).isNull());
}

void AccountTest::enterCode(const QString& flow) {
    STEP(clickIn(flow, GetCode));
    QString code;
    STEP(readCode(code));
    STEP(clickIn(flow, Next));
    STEP(fill(flow, QStringLiteral("验证码"), code));
    Desktop::keys({QStringLiteral("Return")});
}

void AccountTest::enterPasswords(const QString& flow, const QString& password, const QString& repeated) {
    const QString fresh = flow == Register ? QString() : QStringLiteral("新");
    STEP(fill(flow, QStringLiteral("输入%1密码").arg(fresh), password));
    STEP(fill(flow, QStringLiteral("再次输入%1密码").arg(fresh), repeated));
    clickIn(flow, Submit);
}

void AccountTest::registerNumber(const QString& number, const QString& password) {
    STEP(clickIn(SignIn, QStringLiteral("免费注册")));
    STEP(fill(Register, QStringLiteral("手机号"), number));
    STEP(enterCode(Register));
    STEP(enterPasswords(Register, password, password));
    STEP(answer(Tip, SignIn));
    COMES(program().isActive(SignIn));
}

void AccountTest::signInAs(const QString& number, const QString& password) {
    STEP(openSignIn());
    typeSignIn(number, password);
    waitForDevices(true);
}

void AccountTest::signOut() {
    STEP(clickButton(Account));
    STEP(chooseEntry(SignOut));
    waitForDevices(false);
}

void AccountTest::openFromMenu(const QString& title) {
    STEP(clickButton(Account));
    STEP(chooseEntry(title));
    COMES(program().isActive(title));
}

void AccountTest::openFromRow(const QString& row, const QString& title) {
    QRect place;
    STEP(reveal(row, place));
    Desktop::clickRight(place.center());
    STEP(chooseEntry(title));
    COMES(program().isActive(title));
}

void AccountTest::chooseFile(const QString& title, const QString& path) {
    STEP(fill(title, QStringLiteral("文件名"), path));
    Desktop::keys({QStringLiteral("Return")});
    COMES(program().dialog(title).isNull());
}

void AccountTest::closeDialog(const QString& title) {
    STEP(clickIn(title, Close));
    COMES(program().dialog(title).isNull());
    COMES(Program::isActive(window().window()));
}

Accessible AccountTest::listIn(const QString& title, const QString& list) const {
    return program().dialog(title).find([&list](const Accessible::Seen& seen) {
        return seen.name == list &&
               (seen.role == Role::Tree || seen.role == Role::List || seen.role == Role::Table) &&
               seen.thing.has(State::Showing);
    });
}

Accessible AccountTest::rowIn(const QString& title, const QString& list, const QString& text) const {
    for (const Accessible::Seen& row : listIn(title, list).children()) {
        if (row.name == text && (row.role == Role::Cell || row.role == Role::ListItem))
            return row.thing;
    }
    return {};
}

void AccountTest::tickRow(const QString& title, const QString& list, const QString& text) {
    constexpr int box = 12; // px, the middle of the box before the text
    COMES(program().isActive(title));
    Accessible row;
    COMES(!(row = rowIn(title, list, text)).isNull());
    const QRect place = Program::placeInActive(program().dialog(title), row);
    Desktop::click({place.left() + box, place.center().y()});
}

void AccountTest::clickRow(const QString& title, const QString& list, const QString& text) {
    constexpr int head = 40; // px, above the rows
    constexpr int foot = 8;  // px
    COMES(program().isActive(title));
    const Accessible dialog = program().dialog(title);
    const QRect area = Program::placeInActive(dialog, listIn(title, list)).adjusted(0, head, 0, -foot);
    QPoint place;
    const auto isSeen = [&] {
        const Accessible row = rowIn(title, list, text);
        if (row.isNull())
            return false;
        place = Program::placeInActive(dialog, row).center();
        if (place.y() >= area.top() && place.y() <= area.bottom())
            return true;
        Desktop::turnWheel(area.center(), place.y() > area.center().y());
        return false;
    };
    COMES(isSeen());
    Desktop::click(place);
}
