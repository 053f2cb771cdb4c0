#include "SettingsDialogTest.h"

#include "base/Settings.h"
#include "base/ui/Style.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QScrollArea>
#include <QTreeWidget>
#include <QtTest>

namespace {

const char* const Lists = R"({"ipnclist":[{"ipncid":"a","nickname":"大门","type":"video","online":true},
    {"ipncid":"b","name":"后门","type":"video","online":false},{"ipncid":"c","name":"走廊","type":"video"},
    {"ipncid":"s","name":"S","type":"sensor"}],
    "group":[{"id":"1","name":"一楼","ipnclist":["a","b","s"]},{"id":"2","name":"二楼","ipnclist":["c"]}]})";

} // namespace

void SettingsDialogTest::initTestCase() {
    corvanta::applyStyle();
}

void SettingsDialogTest::init() {
    sdk_.reset();
    sdk_.setDocument(R"({"type":"phoneid"})", R"({"phoneid":"13800138000"})");
    sdk_.setDocument(R"({"type":"ipnclist"})", Lists);
    dir_ = std::make_unique<QTemporaryDir>();
    qputenv("XDG_CONFIG_HOME", dir_->path().toLocal8Bit());
    manager_ = std::make_unique<AppManager>(AppPaths(dir_->path()), ui_, *ipncsdk::ZELIPNCSDK::GetInstance());
    sdk_.sendToClient(R"({"type":"freshlist"})");
    QTRY_COMPARE(manager_->context().devices.groups().size(), 2);
    settings().set(QStringLiteral("later version"), QVariantList{1, QVariantMap{{"x", 2}}});
    settings().save();
    questions_ = 0;
}

void SettingsDialogTest::cleanup() {
    dialog_.reset();
    manager_.reset();
    qunsetenv("XDG_CONFIG_HOME");
}

void SettingsDialogTest::open() {
    applied_.clear();
    dialog_ = std::make_unique<SettingsDialog>(manager_->context());
    connect(dialog_.get(), &SettingsDialog::sigApplied, this,
            [this](const QStringList& changed) { applied_ += changed; });
    dialog_->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog_.get()));
    QApplication::setActiveWindow(dialog_.get());
}

void SettingsDialogTest::click(const char* name) {
    auto* const button = find<QAbstractButton>(name);
    for (QWidget* parent = button->parentWidget(); parent != nullptr; parent = parent->parentWidget()) {
        if (auto* const area = qobject_cast<QScrollArea*>(parent))
            area->ensureWidgetVisible(button);
    }
    QVERIFY2(button->isVisible() && button->isEnabled(), name);
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
}

void SettingsDialogTest::type(const char* name, const QString& text) {
    auto* const field = find<QWidget>(name);
    QVERIFY2(field->isVisible() && field->isEnabled(), name);
    field->setFocus();
    QTest::keySequence(field, QKeySequence::SelectAll);
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, text);
}

void SettingsDialogTest::choose(const char* name, const QString& text) {
    auto* const combo = find<QComboBox>(name);
    QVERIFY2(combo->isVisible() && combo->isEnabled(), name);
    const int wanted = combo->findText(text);
    QVERIFY2(wanted >= 0, qPrintable(text));
    while (combo->currentIndex() != wanted)
        QTest::keyClick(combo, combo->currentIndex() < wanted ? Qt::Key_Down : Qt::Key_Up);
}

bool SettingsDialogTest::tick(const QString& device) {
    auto* const tree = find<QTreeWidget>("pollTree");
    const auto items = tree->findItems(device, Qt::MatchExactly | Qt::MatchRecursive);
    if (items.size() != 1)
        return false;
    tree->scrollToItem(items[0]);
    const QRect row = tree->visualItemRect(items[0]);
    const Qt::CheckState before = items[0]->checkState(0);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(row.left() + 12, row.center().y()));
    return items[0]->checkState(0) != before;
}

QStringList SettingsDialogTest::texts(const char* list) const {
    QStringList result;
    auto* const widget = find<QListWidget>(list);
    for (int row = 0; row < widget->count(); ++row)
        result += widget->item(row)->text();
    return result;
}

QString SettingsDialogTest::problem() const {
    auto* const label = find<QLabel>("problem");
    return label->isVisible() ? label->text() : QString();
}

QVariantMap SettingsDialogTest::fileValues() const {
    manager_->context().settings.finishSaving();
    Settings read(dir_->filePath(QStringLiteral("config/set.json")));
    read.load();
    return read.values();
}

void SettingsDialogTest::answer(const char* button) {
    QTimer::singleShot(0, dialog_.get(), [this, button] {
        auto* const box = QApplication::activeModalWidget();
        QVERIFY(box != nullptr);
        QCOMPARE(box->findChild<QLabel*>(QStringLiteral("tipText"))->text(), QStringLiteral("放弃修改?"));
        ++questions_;
        QTest::mouseClick(box->findChild<QAbstractButton*>(QLatin1String(button)), Qt::LeftButton);
    });
}
