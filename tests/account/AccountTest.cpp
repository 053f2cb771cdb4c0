#include "account/AccountTest.h"

#include "base/JsonText.h"
#include "base/ui/Style.h"
#include "database/SqlHelp.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>

namespace {

/// The operation and the parameters of an account request.
std::pair<QString, QVariantMap> operationOf(const std::string& json) {
    const QVariantMap inner = corvanta::json::parseObject(json).value(QStringLiteral("urlreq")).toMap();
    const QString under = inner.value(QStringLiteral("reqtype")).toString();
    return {under.isEmpty() ? inner.value(QStringLiteral("clienttype")).toString() : under,
            inner.value(QStringLiteral("params")).toMap()};
}

} // namespace

void AccountTest::initTestCase() {
    corvanta::applyStyle();
    qunsetenv("DBUS_SESSION_BUS_ADDRESS"); // the user's own secrets are none of a test's
    qputenv("XDG_RUNTIME_DIR", "/nonexistent");
}

void AccountTest::init() {
    sdk_.reset();
    script_ = std::make_shared<Script>();
    sdk_.setDocument(R"({"type":"phoneid"})", R"({"phoneid":"13800138000"})");
    sdk_.onRequest = [script = script_](const FakeSdk::Request& request) -> std::vector<std::string> {
        const std::lock_guard lock(script->mutex);
        const auto it = script->answers.find(operationOf(request.json).first.toStdString());
        if (it == script->answers.end())
            return {error("(not supported)").toStdString()};
        return it->second.empty() ? std::vector<std::string>() : std::vector<std::string>{it->second};
    };
    dir_ = std::make_unique<QTemporaryDir>();
    manager_ = std::make_unique<AppManager>(AppPaths(dir_->path()), ui_, *ipncsdk::ZELIPNCSDK::GetInstance());
}

void AccountTest::cleanup() {
    manager_.reset();
}

void AccountTest::answer(const char* type, const QByteArray& reply) {
    const std::lock_guard lock(script_->mutex);
    script_->answers[type] = reply.toStdString();
}

QByteArray AccountTest::ok(const char* rest) {
    return QByteArray(R"({"retcode":0,"resp":{"state":"ok")") + (*rest == '\0' ? "" : ",") + rest + "}}";
}

QByteArray AccountTest::error(const char* code) {
    return QByteArray(R"({"retcode":1,"resp":{"state":"error","errcode":")") + code + "\"}}";
}

QList<QVariantMap> AccountTest::sent(const char* type) const {
    QList<QVariantMap> result;
    for (const FakeSdk::Request& request : sdk_.requests()) {
        const auto [operation, parameters] = operationOf(request.json);
        if (operation == QLatin1String(type))
            result += parameters;
    }
    return result;
}

void AccountTest::show(QWidget& dialog) {
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QApplication::setActiveWindow(&dialog);
}

void AccountTest::click(const QWidget& dialog, const char* name) {
    auto* const button = find<QAbstractButton>(dialog, name);
    QVERIFY2(button->isVisible() && button->isEnabled(), name);
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
}

void AccountTest::type(const QWidget& dialog, const char* name, const QString& text) {
    auto* const edit = find<QLineEdit>(dialog, name);
    edit->setFocus();
    edit->selectAll();
    edit->insert(text); // as a paste does
}

TipDialog* AccountTest::openTip() {
    return qobject_cast<TipDialog*>(QApplication::activeModalWidget());
}

QString AccountTest::tip(bool accept) {
    if (!QTest::qWaitFor([] { return isTipOpen(); }))
        return QStringLiteral("no tip");
    TipDialog* const open = openTip();
    const QString text = open->text();
    open->findChild<QPushButton*>(accept ? QStringLiteral("tipOk") : QStringLiteral("tipCancel"))->click();
    return text;
}

QStringList AccountTest::log() {
    QStringList rows;
    const auto all = context().database.queryLogs(SqlHelp::OperateLog, {}, {}, true, -1, -1);
    for (const QStringList& row : all)
        rows += row.mid(3).join(QLatin1Char('|'));
    return rows;
}

void AccountTest::checkNames(const QWidget& dialog) {
    for (const QWidget* const control : dialog.findChildren<QWidget*>()) {
        const bool isOurs = !control->objectName().startsWith(QStringLiteral("qt_"));
        const bool isControl = control->inherits("QAbstractButton") || control->inherits("QLineEdit") ||
                               control->inherits("QComboBox") || control->inherits("QAbstractItemView");
        const bool isInside = control->parentWidget()->inherits("QComboBoxPrivateContainer") ||
                              control->parentWidget()->inherits("QLineEdit") || control->inherits("QHeaderView") ||
                              control->inherits("QTableCornerButton") || control->parentWidget()->inherits("QTabBar");
        if (!isOurs || !isControl || isInside)
            continue;
        QVERIFY2(!control->objectName().isEmpty(), control->metaObject()->className());
        QVERIFY2(!control->accessibleName().isEmpty(), qPrintable(control->objectName()));
    }
}
