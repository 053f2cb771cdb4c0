#include "TestSdk.h"

#include "world/FirstWorld.h"

#include <QFile>
#include <QProcess>

#include <algorithm>
#include <fstream>
#include <future>
#include <thread>
#include <utility>

namespace ipncsdk::test {

namespace {

constexpr std::chrono::seconds patience{60};

} // namespace

bool waitFor(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

void Received::add(const std::string& text) {
    const std::lock_guard lock(mutex_);
    messages_.push_back(Json::parse(text));
}

std::vector<Json> Received::all() const {
    const std::lock_guard lock(mutex_);
    return messages_;
}

std::vector<Json> Received::ofType(const std::string& type) const {
    std::vector<Json> found;
    for (const Json& message : all()) {
        if (textAt(message, "type") == type)
            found.push_back(message);
    }
    return found;
}

Json Received::waitForType(const std::string& type) const {
    return waitFor([&] { return !ofType(type).empty(); }) ? ofType(type).front() : Json();
}

void Received::clear() {
    const std::lock_guard lock(mutex_);
    messages_.clear();
}

TestSdk::TestSdk(api::HubFactory makeHub, int searchPort, bool sensors)
    : runtime(options(std::move(makeHub), searchPort, sensors)) {}

api::RuntimeOptions TestSdk::options(api::HubFactory makeHub, int searchPort, bool sensors) const {
    api::RuntimeOptions options;
    options.root = folder.path().toStdString();
    options.clock = clock;
    options.makeHub = [script = hub](media::HubOptions hubOptions) {
        return std::make_unique<FakeHub>(script, std::move(hubOptions));
    };
    if (makeHub)
        options.makeHub = std::move(makeHub);
    options.passwordCost = service::PasswordHasher::least();
    options.storeTimeout = std::chrono::seconds(1);
    options.followsVideo = false; // tests count the streams that they open
    options.discovery.port = static_cast<std::uint16_t>(searchPort);
    options.discovery.loopbackOnly = true;
    options.sensors = sensors;
    return options;
}

emReturnValue TestSdk::start() {
    const emReturnValue started = runtime.startup();
    if (started != emSuccess)
        return started;
    return runtime.setClientCallback([this](const std::string& message, std::string&) { client.add(message); });
}

Json TestSdk::ask(const Json& message) {
    // The callback may come after the wait was given up: what it writes to is its own.
    auto response = std::make_shared<std::promise<std::string>>();
    auto future = response->get_future();
    int id = 0;
    runtime.requestMessage(toText(message), id, [response](const std::string& text) { response->set_value(text); });
    if (id <= 0 || future.wait_for(patience) != std::future_status::ready)
        return {};
    return Json::parse(future.get());
}

Json TestSdk::askAccount(const std::string& operation, const Json& params) {
    const char* key = operation == "logon" ? "reqtype" : "clienttype";
    return ask({{"reqtype", "urlreq"}, {"urlreq", {{key, operation}, {"params", params}}}});
}

Json TestSdk::askDevice(const Json& message) {
    Json request = message;
    request["reqtype"] = "p2pmsg";
    return ask(request);
}

Json TestSdk::command(const Json& message) {
    auto result = std::make_shared<std::promise<std::string>>();
    auto future = result->get_future();
    runtime.setConfig(toText(message), [result](const std::string& text) { result->set_value(text); });
    return future.wait_for(patience) == std::future_status::ready ? Json::parse(future.get()) : Json();
}

Json TestSdk::document(const std::string& name) {
    std::string text;
    runtime.getConfig(toText({{"type", name}}), text);
    return text.empty() ? Json() : Json::parse(text);
}

Json TestSdk::device(const std::string& ipncid) {
    const Json list = document("ipnclist");
    for (const Json& record : list.at("ipnclist")) {
        if (record.at("ipncid") == ipncid)
            return record;
    }
    return {};
}

bool TestSdk::signIn() {
    return signIn(world::firstPhone);
}

bool TestSdk::signIn(const std::string& phone) {
    const Json response = askAccount("logon", {{"phonenumber", phone}, {"phonepassword", world::firstPassword}});
    return integerAt(response, "retcode") == 0;
}

bool TestSdk::registerAndSignIn(const std::string& phone) {
    askAccount("logincode", {{"countrycode", "86"}, {"phonenumber", phone}});
    askAccount("checkmessagecode", {{"phonenumber", phone}, {"checkcode", codeFor(phone)}});
    const Json done = askAccount("loginphone", {{"phonenumber", phone}, {"phonepassword", world::firstPassword}});
    return codeOf(done) == 0 && signIn(phone);
}

std::string TestSdk::codeFor(const std::string& phone) const {
    const std::string mark = "验证码：";
    std::ifstream in(path("service/outbox.jsonl"));
    std::string code;
    for (std::string line; std::getline(in, line);) {
        const Json message = Json::parse(line);
        const std::string text = message.at("text").get<std::string>();
        if (message.at("phonenumber") == phone)
            code = text.substr(text.find(mark) + mark.size(), 6);
    }
    return code;
}

void TestSdk::joinStoreOf(const TestSdk& other) const {
    write("config/service.json",
          toText({{"store", textOf(other.path("service/service.db"))}, {"cameras", Json::array()}}));
}

void TestSdk::joinComputerOf(const TestSdk& other) const {
    std::filesystem::create_directories(path("config"));
    std::filesystem::copy_file(other.path("config/computer.id"), path("config/computer.id"));
}

void TestSdk::settle() {
    // The second round is behind what the first one's tasks posted.
    command({{"type", "try"}});
    command({{"type", "try"}});
}

std::filesystem::path TestSdk::path(const std::string& relative) const {
    return pathOf(folder.path().toStdString()) / pathOf(relative);
}

void TestSdk::write(const std::string& relative, const std::string& content) const {
    std::filesystem::create_directories(path(relative).parent_path());
    std::ofstream(path(relative), std::ios::binary) << content;
}

void TestSdk::openShell(QProcess& shell, const std::string& statement) const {
    QStringList arguments{folder.filePath(QStringLiteral("service/service.db"))};
    if (!statement.empty())
        arguments += QString::fromStdString(statement);
    shell.setProcessChannelMode(QProcess::MergedChannels);
    shell.start(QStringLiteral(SQLITE3_SHELL), arguments);
}

std::string TestSdk::sqlite(const std::string& statement) const {
    QProcess shell;
    openShell(shell, statement);
    if (!shell.waitForFinished())
        return "no shell";
    std::string output = shell.readAll().toStdString();
    std::erase(output, '\r');
    while (!output.empty() && output.back() == '\n')
        output.pop_back();
    return output;
}

std::vector<std::string> TestSdk::filesIn(const std::string& relative) const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path(relative)))
        names.push_back(textOf(entry.path().filename()));
    std::sort(names.begin(), names.end());
    return names;
}

int codeOf(const Json& response) {
    return static_cast<int>(integerAt(response, "retcode").value_or(-1));
}

std::filesystem::path pathOf(const std::string& text) {
    return std::u8string(text.begin(), text.end());
}

std::string textOf(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

QByteArray contentOf(const std::filesystem::path& file) {
    QFile in(QString::fromStdString(textOf(file)));
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
}

std::string withDrive(std::string message) {
#ifdef Q_OS_WIN
    for (std::size_t at = 0; (at = message.find("\"/", at)) != std::string::npos;)
        message.insert(at + 1, "C:");
#endif
    return message;
}

Json openMessage(const std::string& ipncid) {
    return {
        {"avreq",
         {{"ipncid", ipncid}, {"reqtype", "avreq"}, {"hd", false}, {"recvdecodeavdata", true}, {"maxopentime", 0}}}};
}

} // namespace ipncsdk::test
