#include "e2e/Program.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <utility>

namespace {

void setUp(QProcessEnvironment& environment, const QString& runtime) {
#ifdef Q_OS_WIN
    for (const char* name : {"TEMP", "TMP"})
        environment.insert(QLatin1String(name), QDir::toNativeSeparators(runtime));
#else
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime);
    environment.insert(QStringLiteral("TMPDIR"), runtime);
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
#endif
    const QString preload = QStringLiteral(CORVANTA_PRELOAD);
    if (!preload.isEmpty()) {
        environment.insert(QStringLiteral("LD_PRELOAD"), preload);
        // The library that is preloaded comes before the sanitizer's on purpose, and replaces one function.
        environment.insert(QStringLiteral("ASAN_OPTIONS"), environment.value(QStringLiteral("ASAN_OPTIONS")) +
                                                               QStringLiteral(":verify_asan_link_order=0"));
    }
}

/// What the program stores of itself, as data of alarms, is to lie in a folder of the test's own.
void giveDrive(const QString& data) {
    const QString key = QStringLiteral("盘符文件夹");
    const QString path = data + QStringLiteral("/config/set.json");
    QFile file(path);
    QJsonObject settings;
    if (file.open(QIODevice::ReadOnly))
        settings = QJsonDocument::fromJson(file.readAll()).object();
    file.close();
    if (settings.contains(key))
        return;
    settings.insert(key, QJsonArray{data + QStringLiteral("/disk/")});
    QDir().mkpath(data + QStringLiteral("/config"));
    if (file.open(QIODevice::WriteOnly))
        file.write(QJsonDocument(settings).toJson());
}

} // namespace

Program::Program(const ScreenReader& reader, QString runtime, QString data)
    : reader_(reader)
    , runtime_(std::move(runtime))
    , data_(std::move(data)) {}

Program::~Program() {
    kill();
}

bool Program::start(const QString& installation) {
    said_.clear();
    giveDrive(data_);
    QDir().mkpath(runtime_);
    QFile::setPermissions(runtime_, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    process_.setProcessChannelMode(QProcess::MergedChannels);
    QProcessEnvironment environment = reader_.environment();
    setUp(environment, runtime_);
    process_.setProcessEnvironment(environment);
    // Where the program is tested as it is handed on, that is another one than the built one.
    const QString program = qEnvironmentVariable("CORVANTA_PROGRAM", QStringLiteral(CORVANTA_PROGRAM));
    if (installation.isEmpty())
        process_.start(program, {QStringLiteral("--data"), data_});
    else
        process_.start(installation, QStringList());
    return process_.waitForStarted(Desktop::Patience);
}

void Program::kill() {
    process_.kill();
    process_.waitForFinished(Desktop::Patience);
}

void Program::crash() const {
    reader_.crash(pid());
}

std::optional<int> Program::exitCode() {
    // Events go on: an ending program may still ask the accessibility bus.
    if (!QTest::qWaitFor([this] { return process_.state() == QProcess::NotRunning; }, Desktop::Patience))
        return std::nullopt;
    return process_.exitStatus() == QProcess::NormalExit ? std::optional(process_.exitCode()) : std::nullopt;
}

const QString& Program::log() {
    // Also what no event has told of yet: what the program shows, it has said before.
    while (process_.state() == QProcess::Running && process_.waitForReadyRead(0)) {
    }
    if (process_.isOpen()) // it was started
        said_ += process_.readAll();
    log_ = QString::fromUtf8(said_);
    return log_;
}

QVariant Program::stored(const QString& key) const {
    QFile file(data_ + QStringLiteral("/config/set.json"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object().value(key).toVariant();
}

Accessible Program::dialog(const QString& title) const {
    for (const Accessible::Seen& window : accessible().children()) {
        if (window.name == title && window.thing.has(Accessible::State::Showing))
            return window.thing;
    }
    return {};
}

bool Program::isActive(const Accessible& window) {
    const auto active = Desktop::activePlace();
    if (!active || !window.has(Accessible::State::Active))
        return false;
    // On a display with scaling, what the program counts in may end in the middle of a pixel.
    const QSize difference = window.place().size() - active->size();
    return qAbs(difference.width()) <= 1 && qAbs(difference.height()) <= 1;
}

QRect Program::placeInActive(const Accessible& window, const Accessible& thing) {
    const QPoint corner = Desktop::activePlace().value_or(QRect()).topLeft();
    return thing.place().translated(corner - window.place().topLeft());
}
