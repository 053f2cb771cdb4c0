#include "e2e/Program.h"
#include "support/RtspServer.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <csignal>

namespace {
const QString SignIn = QStringLiteral("^登录$");
const QString Tip = QStringLiteral("^提示$");
constexpr int Patience = 120000; // ms; a sanitized program under software GL is slow
} // namespace

class tst_Program final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void firstStart();
    void signInIsRefusedAndGranted();
    void layoutsZoomAndEnd();
    void oneInstance();
    void networkCamera();
    void crashIsReported();
    void resizedAtItsEdge();

private:
    void startAndSignIn();
    void writeServiceConfig(const QByteArray& cameras) const;
    QVariant stored(const QString& key) const;

    std::unique_ptr<QTemporaryDir> dir_;
    QString home_;
    QString data_;
    std::unique_ptr<Program> program_;
};

void tst_Program::init() {
    dir_ = std::make_unique<QTemporaryDir>();
    home_ = dir_->filePath(QStringLiteral("run"));
    data_ = dir_->filePath(QStringLiteral("data 数据"));
    QVERIFY(QDir().mkpath(home_) && QDir().mkpath(data_));
    QVERIFY(QFile::setPermissions(home_, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner));
    program_ = std::make_unique<Program>(home_, data_);
}

void tst_Program::cleanup() {
    const QString log = program_->log();
    program_.reset();
    QVERIFY2(!log.contains(QStringLiteral("Sanitizer")), qPrintable(log));
}

void tst_Program::startAndSignIn() {
    QVERIFY(program_->start());
    QTRY_VERIFY_WITH_TIMEOUT(!program_->frame().isEmpty(), Patience);
    QTRY_VERIFY_WITH_TIMEOUT(Program::isEmptyTile(program_->tile(8, 9)), Patience); // drawn
    Program::click(program_->accountButton());
    QTRY_VERIFY_WITH_TIMEOUT(Program::hasWindow(SignIn), Patience);
    Program::key(QStringLiteral("Return"));
    QTRY_VERIFY_WITH_TIMEOUT(!Program::hasWindow(SignIn), Patience);
    // The tree is filled in the same step as the tiles' names.
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(data_ + QStringLiteral("/service/service.db")), Patience);
}

QVariant tst_Program::stored(const QString& key) const {
    QFile file(data_ + QStringLiteral("/config/set.json"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object().toVariantMap().value(key);
}

void tst_Program::firstStart() {
    startAndSignIn();
    if (QTest::currentTestFailed())
        return;
    Program::click(program_->layoutButton(2)); // 3 x 3
    const QRect first = program_->tile(3, 0);
    Program::click(program_->treeRow(1), 1, 2);
    QVERIFY2(Program::isLive(first, Patience), qPrintable(program_->log()));
    QVERIFY(program_->log().contains(QStringLiteral("\"avreq\"")));
    // Opened again it ends.
    Program::click(program_->treeRow(1), 1, 2);
    QTRY_VERIFY_WITH_TIMEOUT(Program::isEmptyTile(first), Patience);
    // By the keyboard: the row is current, Enter opens.
    Program::key(QStringLiteral("Down"));
    Program::key(QStringLiteral("Return"));
    QVERIFY(Program::isLive(program_->tile(3, 1), Patience));
    // The tile's menu ends it: the entry is reached by the keyboard from below.
    Program::click(program_->tile(3, 1).center(), 3);
    Program::key(QStringLiteral("Up"));
    Program::key(QStringLiteral("Return"));
    QTRY_VERIFY_WITH_TIMEOUT(Program::isEmptyTile(program_->tile(3, 1)), Patience);
}

void tst_Program::signInIsRefusedAndGranted() {
    startAndSignIn();
    if (QTest::currentTestFailed())
        return;
    Program::click(program_->accountButton()); // signs out
    Program::click(program_->layoutButton(2));
    QTRY_VERIFY_WITH_TIMEOUT(program_->log().contains(QStringLiteral("\"logout\"")), Patience);
    QTRY_VERIFY_WITH_TIMEOUT((Program::click(program_->accountButton()), Program::hasWindow(SignIn)), Patience);
    const auto tryPassword = [](const QString& password) {
        Program::key(QStringLiteral("ctrl+a"));
        Program::type(QStringLiteral("13800138000"));
        Program::key(QStringLiteral("Tab"));
        Program::key(QStringLiteral("ctrl+a"));
        Program::type(password);
        Program::key(QStringLiteral("Return"));
        Program::key(QStringLiteral("shift+Tab"));
    };
    tryPassword(QStringLiteral("wrong-one"));
    QTRY_VERIFY_WITH_TIMEOUT(program_->log().contains(QStringLiteral("wrong-one")), Patience);
    QVERIFY(Program::hasWindow(SignIn));
    QTRY_VERIFY_WITH_TIMEOUT((tryPassword(QStringLiteral("corvanta-8000")), !Program::hasWindow(SignIn)), Patience);
    Program::click(program_->treeRow(1), 1, 2);
    QVERIFY(Program::isLive(program_->tile(3, 0), Patience));
}

void tst_Program::layoutsZoomAndEnd() {
    startAndSignIn();
    if (QTest::currentTestFailed())
        return;
    const int sides[] = {1, 2, 3, 4, 6, 8};
    for (int number = 0; number < 6; ++number) {
        Program::click(program_->layoutButton(number));
        QTRY_COMPARE_WITH_TIMEOUT(stored(QStringLiteral("fwidget_row")).toInt(), sides[number], Patience);
        QCOMPARE(stored(QStringLiteral("fwidget_col")).toInt(), sides[number]);
    }
    Program::click(program_->layoutButton(1));
    Program::click(program_->tile(2, 3).center(), 1, 2);
    QTRY_COMPARE_WITH_TIMEOUT(stored(QStringLiteral("VideoZoomDisplayIndex")).toInt(), 3, Patience);
    Program::click(program_->tile(1, 0).center(), 1, 2);
    QTRY_COMPARE_WITH_TIMEOUT(stored(QStringLiteral("VideoZoomDisplayIndex")).toInt(), -1, Patience);
    // Enter is the answer that keeps the program.
    Program::click(program_->closeButton());
    QTRY_VERIFY_WITH_TIMEOUT(Program::hasWindow(Tip), Patience);
    Program::key(QStringLiteral("Return"));
    QTRY_VERIFY_WITH_TIMEOUT(!Program::hasWindow(Tip), Patience);
    QVERIFY(program_->isRunning());
    Program::click(program_->closeButton());
    QTRY_VERIFY_WITH_TIMEOUT(Program::hasWindow(Tip), Patience);
    Program::key(QStringLiteral("Left"));
    Program::key(QStringLiteral("space"));
    QCOMPARE(program_->waitForEnd(), 0);
    QVERIFY(program_->log().contains(QStringLiteral("~AppManager()")));
    QCOMPARE(stored(QStringLiteral("fwidget_row")).toInt(), 2);
}

void tst_Program::oneInstance() {
    QVERIFY(program_->start());
    QTRY_VERIFY_WITH_TIMEOUT(!program_->frame().isEmpty(), Patience);
    const auto isRefused = [this] {
        Program second(home_, data_);
        QVERIFY(second.start());
        QTRY_VERIFY_WITH_TIMEOUT(Program::hasWindow(Tip), Patience);
        Program::key(QStringLiteral("Return"));
        QCOMPARE(second.waitForEnd(), 0);
        QVERIFY(program_->isRunning());
    };
    isRefused();
    program_->kill(); // as if it had crashed: nothing is cleaned up
    QVERIFY(program_->start());
    QTRY_VERIFY_WITH_TIMEOUT(!program_->frame().isEmpty(), Patience);
    isRefused();
}

void tst_Program::writeServiceConfig(const QByteArray& cameras) const {
    QDir(data_).mkpath(QStringLiteral("config"));
    QFile file(data_ + QStringLiteral("/config/service.json"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("{\"store\":\"service/service.db\",\"cameras\":[" + cameras + "]}");
}

// A camera served by a program of others; it goes away and comes back; its password is wrong.
void tst_Program::networkCamera() {
    RtspServer server(
        {QStringLiteral("--user"), QStringLiteral("viewer"), QStringLiteral("--password"), QStringLiteral("secret")});
    QVERIFY(server.start());
    const QByteArray url = QByteArray::fromStdString(server.url("/live"));
    const auto camera = [&url](const char* id, const char* password) {
        return QByteArray("{\"ipncid\":\"") + id + "\",\"name\":\"porch\",\"main\":\"" + url +
               "\",\"user\":\"viewer\",\"password\":\"" + password + "\",\"group\":\"园区大门\"}";
    };
    writeServiceConfig(camera("good", "secret") + "," + camera("bad", "wrong"));
    startAndSignIn();
    if (QTest::currentTestFailed())
        return;
    // Room for all rows of the group.
    Program::drag(program_->frame().bottomRight() - QPoint(1, 1), QPoint(1270, 710));
    QTRY_VERIFY_WITH_TIMEOUT(program_->frame().height() > 650, Patience);
    Program::click(program_->layoutButton(3)); // 4 x 4: the group's nine cameras come first
    Program::click(program_->treeRow(10), 1, 2);
    const QRect good = program_->tile(4, 9);
    // The test picture has a field of noise in it.
    QVERIFY2(Program::isLive(good, Patience), qPrintable(program_->log()));
    server.stop();
    QTRY_VERIFY_WITH_TIMEOUT(!Program::isLive(good, 1000), Patience);
    QVERIFY(server.start());
    QVERIFY(Program::isLive(good, Patience));

    Program::click(program_->treeRow(11), 1, 2);
    const QRect bad = program_->tile(4, 10);
    QTRY_VERIFY_WITH_TIMEOUT(program_->log().contains(QStringLiteral("refuses user name or password")), Patience);
    QTRY_VERIFY_WITH_TIMEOUT(Program::isEmptyTile(bad), Patience);
    QVERIFY(!program_->log().contains(QStringLiteral("wrong")));
    // A text stands in the middle of it.
    const QImage middle = Program::look(QRect(bad.center() - QPoint(40, 10), QSize(80, 20)));
    QSet<QRgb> colours;
    for (int x = 0; x < middle.width(); ++x)
        colours.insert(middle.pixel(x, middle.height() / 2));
    QVERIFY(colours.size() > 3);
}

void tst_Program::crashIsReported() {
    QVERIFY(program_->start());
    QTRY_VERIFY_WITH_TIMEOUT(!program_->frame().isEmpty(), Patience);
    if (!QByteArray(CORVANTA_SANITIZER).isEmpty())
        QSKIP("the sanitizer's own handler takes the signal");
    ::kill(static_cast<pid_t>(program_->pid()), SIGSEGV);
    QTRY_VERIFY_WITH_TIMEOUT(Program::hasWindow(QStringLiteral("^程序崩溃$")), Patience);
    Program::key(QStringLiteral("Return"));
    QTRY_VERIFY_WITH_TIMEOUT(!Program::hasWindow(QStringLiteral("^程序崩溃$")), Patience);
    const QStringList reports = QDir(data_).entryList({QStringLiteral("*.DMP")});
    QCOMPARE(reports.size(), 1);
    QVERIFY(
        QRegularExpression(QStringLiteral("^\\d{4}_\\d{2}_\\d{2}_\\d{6}\\.DMP$")).match(reports.first()).hasMatch());
    // The next start is a start like any other.
    QCOMPARE(program_->waitForEnd(), -1);
    QVERIFY(program_->start());
    QTRY_VERIFY_WITH_TIMEOUT(!program_->frame().isEmpty(), Patience);
}

void tst_Program::resizedAtItsEdge() {
    QVERIFY(program_->start());
    QTRY_VERIFY_WITH_TIMEOUT(!program_->frame().isEmpty(), Patience);
    QTRY_VERIFY_WITH_TIMEOUT(Program::isEmptyTile(program_->tile(8, 9)), Patience);
    QCOMPARE(program_->frame().size(), QSize(1152, 648)); // nine tenths of the screen
    Program::drag(program_->frame().bottomRight() - QPoint(1, 1), program_->frame().topLeft() + QPoint(50, 50));
    QTRY_COMPARE_WITH_TIMEOUT(program_->frame().size(), QSize(688, 392), Patience);
    Program::drag(program_->frame().bottomRight() - QPoint(1, 1), program_->frame().bottomRight() + QPoint(200, 150));
    QTRY_VERIFY_WITH_TIMEOUT(program_->frame().width() > 850 && program_->frame().height() > 500, Patience);
}

QTEST_MAIN(tst_Program)
#include "tst_Program.moc"
