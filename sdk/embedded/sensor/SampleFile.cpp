#include "sensor/SampleFile.h"

#include "base/LocalTime.h"
#include "base/Log.h"
#include "base/ReplaceFile.h"

#include <sqlite3.h>

#include <system_error>
#include <utility>

namespace ipncsdk::sensor {

namespace {

namespace fs = std::filesystem;

constexpr int busyTimeout = 5000; ///< milliseconds

constexpr auto tables =
    "create table if not exists samples (pid integer not null, time integer not null, value real not null,"
    " state integer not null, primary key (pid, time)) without rowid;"
    "create table if not exists minutes (pid integer not null, time integer not null, mean real not null,"
    " low real not null, high real not null, count integer not null, primary key (pid, time)) without rowid;"
    "create table if not exists latest (pid integer not null primary key, time integer not null,"
    " value real not null, state integer not null);"
    "create table if not exists orders (id integer primary key autoincrement, kind integer not null,"
    " pid integer not null, value real not null, madeat integer not null, code integer);";

std::string utf8(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

bool setAside(const fs::path& file, const Clock& clock) {
    fs::path target = file;
    target += ".damaged-" + localTime(clock, "%Y%m%d%H%M%S");
    const std::error_code error = replaceFile(file, target);
    for (const char* companion : {"-wal", "-shm"}) {
        std::error_code absent;
        fs::path beside = file;
        beside += companion;
        fs::remove(beside, absent);
    }
    return !error;
}

} // namespace

std::int64_t toMilliseconds(std::chrono::system_clock::time_point time) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(time.time_since_epoch()).count();
}

std::chrono::system_clock::time_point fromMilliseconds(std::int64_t time) {
    return std::chrono::system_clock::time_point(std::chrono::milliseconds(time));
}

void SampleFile::Close::operator()(sqlite3* database) const {
    sqlite3_close_v2(database);
}

SampleFile::SampleFile(const fs::path& file) {
    sqlite3* database = nullptr;
    const int result = sqlite3_open_v2(utf8(file).c_str(), &database,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    database_.reset(database);
    if (result != SQLITE_OK)
        fail("open");
    sqlite3_busy_timeout(database, busyTimeout);
    // A power cut may cost the last seconds, never the file. Rows of many inputs touch many pages, so the journal is
    // brought in seldom.
    run("pragma journal_mode = wal; pragma synchronous = normal; pragma wal_autocheckpoint = 8000;");
    run(tables);
    changedByOthers();
}

SampleFile::~SampleFile() = default;

bool SampleFile::prepare(const fs::path& file, const Clock& clock, std::string& notice) {
    for (const bool again : {false, true}) {
        try {
            SampleFile opened(file);
            Statement(opened, "select count(*) from latest").step();
            return true;
        } catch (const SampleError& error) {
            logLine(std::string("the file of samples can't be used: ") + error.what());
            const std::string reason = error.what();
            const bool damaged = reason.find("malformed") != std::string::npos ||
                                 reason.find("not a database") != std::string::npos ||
                                 reason.find("no such column") != std::string::npos;
            if (again || !damaged || !setAside(file, clock))
                return false;
            notice = "传感器数据文件已损坏, 原文件已另存, 已新建数据文件。";
        }
    }
    return false;
}

void SampleFile::fail(const char* what) const {
    throw SampleError(std::string(what) + ": " + (database_ ? sqlite3_errmsg(database_.get()) : "no memory"));
}

void SampleFile::run(const char* statements) {
    if (sqlite3_exec(database_.get(), statements, nullptr, nullptr, nullptr) != SQLITE_OK)
        fail("run");
}

void SampleFile::rollBack() noexcept {
    sqlite3_exec(database_.get(), "rollback", nullptr, nullptr, nullptr);
}

bool SampleFile::changedByOthers() {
    Statement statement(*this, "pragma data_version");
    const std::int64_t now = statement.step() ? statement.whole(0) : version_;
    return std::exchange(version_, now) != now;
}

std::int64_t SampleFile::lastId() const {
    return sqlite3_last_insert_rowid(database_.get());
}

int SampleFile::changedRows() const {
    return sqlite3_changes(database_.get());
}

namespace {

sqlite3_stmt* prepared(sqlite3* database, const char* text) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database, text, -1, &statement, nullptr);
    return statement;
}

} // namespace

SampleFile::Statement::Statement(SampleFile& file, const char* text)
    : file_(file)
    , statement_(prepared(file.database_.get(), text)) {
    if (statement_ == nullptr)
        file_.fail("prepare");
}

SampleFile::Statement::~Statement() {
    sqlite3_finalize(statement_);
}

SampleFile::Statement& SampleFile::Statement::bind(std::int64_t value) {
    sqlite3_bind_int64(statement_, ++bound_, value);
    return *this;
}

SampleFile::Statement& SampleFile::Statement::bind(double value) {
    sqlite3_bind_double(statement_, ++bound_, value);
    return *this;
}

bool SampleFile::Statement::step() {
    const int result = sqlite3_step(statement_);
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        file_.fail("step");
    return result == SQLITE_ROW;
}

void SampleFile::Statement::again() {
    sqlite3_reset(statement_);
    bound_ = 0;
}

std::int64_t SampleFile::Statement::whole(int column) const {
    return sqlite3_column_int64(statement_, column);
}

double SampleFile::Statement::real(int column) const {
    return sqlite3_column_double(statement_, column);
}

bool SampleFile::Statement::isNull(int column) const {
    return sqlite3_column_type(statement_, column) == SQLITE_NULL;
}

} // namespace ipncsdk::sensor
