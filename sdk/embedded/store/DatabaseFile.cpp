#include "store/DatabaseFile.h"

#include "base/LocalTime.h"
#include "base/Log.h"
#include "base/ReplaceFile.h"
#include "store/ContentFiles.h"
#include "store/Schema.h"

#include <soci/soci.h>
#include <soci/sqlite3/soci-sqlite3.h>

#include <optional>
#include <system_error>
#include <utility>

namespace ipncsdk::store {

namespace {

namespace fs = std::filesystem;

enum class Finding {
    Sound,      ///< tables of ours, checked whole
    Older,      ///< tables of an earlier version of ours, checked whole
    Empty,      ///< no tables at all: a first start, or one that did not finish
    Damaged,    ///< not a store of ours, or broken
    Unavailable ///< can't be reached or is held by another program: says nothing about its content
};

struct Inspected {
    Finding finding = Finding::Unavailable;
    std::unique_ptr<soci::session> session;
    std::string reason;
};

// Extended result codes carry the plain code in the low byte.
constexpr int corrupt = 11;
constexpr int notADatabase = 26;

bool meansDamage(const soci::sqlite3_soci_error& error) {
    const int code = error.result() & 0xff;
    return code == corrupt || code == notADatabase;
}

std::string utf8(const fs::path& path) {
    const auto text = path.u8string();
    return {text.begin(), text.end()};
}

std::unique_ptr<soci::session> connect(const fs::path& file, std::chrono::milliseconds busyTimeout) {
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(busyTimeout).count();
    auto session = std::make_unique<soci::session>(soci::sqlite3,
                                                   "db=\"" + utf8(file) + "\" timeout=" + std::to_string(seconds));
    // The first statement reads the file's head, so it is the one that finds a file of another kind.
    std::string mode;
    *session << "pragma journal_mode = wal", soci::into(mode);
    *session << "pragma synchronous = normal";
    *session << "pragma foreign_keys = on";
    return session;
}

/// True when SQLite's own check of pages, indexes and keys finds nothing.
bool passesCheck(soci::session& sql, std::string& reason) {
    std::string result;
    sql << "pragma integrity_check(1)", soci::into(result);
    if (result != "ok") {
        reason = result;
        return false;
    }
    return true;
}

Finding findingOf(SchemaState state) {
    switch (state) {
    case SchemaState::Current:
        return Finding::Sound;
    case SchemaState::Older:
        return Finding::Older;
    case SchemaState::Faulty:
        break;
    }
    return Finding::Damaged;
}

Inspected inspect(const fs::path& file, std::chrono::milliseconds busyTimeout) {
    Inspected inspected;
    try {
        inspected.session = connect(file, busyTimeout);
        soci::session& sql = *inspected.session;
        long long tableCount = 0;
        sql << "select count(*) from sqlite_master", soci::into(tableCount);
        if (!passesCheck(sql, inspected.reason)) {
            inspected.finding = Finding::Damaged;
        } else if (tableCount == 0) {
            inspected.finding = Finding::Empty;
        } else {
            inspected.finding = findingOf(inspectSchema(sql, inspected.reason));
        }
    } catch (const soci::sqlite3_soci_error& error) {
        inspected.reason = error.get_error_message();
        inspected.finding = meansDamage(error) ? Finding::Damaged : Finding::Unavailable;
    } catch (const std::exception& error) {
        inspected.reason = error.what();
    }
    return inspected;
}

/// Renames the file and its companions; returns the new name, or nothing when the file could not be renamed.
std::optional<fs::path> setAside(const fs::path& file, const Clock& clock) {
    fs::path target = file;
    target += ".damaged-" + localTime(clock, "%Y%m%d%H%M%S");
    std::error_code error;
    for (int attempt = 2; fs::exists(target, error); ++attempt) {
        target = file;
        target += ".damaged-" + localTime(clock, "%Y%m%d%H%M%S") + "-" + std::to_string(attempt);
    }
    error = replaceFile(file, target);
    if (error) {
        logLine("the damaged store can't be renamed: " + error.message());
        return std::nullopt;
    }
    // What the damaged store refers to goes with it: the new one would remove it.
    for (const char* companion : {"-wal", "-shm", ContentFiles::suffix}) {
        fs::path from = file;
        from += companion;
        if (!fs::exists(from, error))
            continue;
        fs::path to = target;
        to += companion;
        error = replaceFile(from, to);
        if (error)
            logLine("a file beside the damaged store can't be renamed: " + error.message());
    }
    return target;
}

/// Makes or migrates the tables in one transaction.
bool complete(Inspected& inspected, const StoreContent& content) {
    try {
        soci::session& sql = *inspected.session;
        soci::transaction transaction(sql);
        if (inspected.finding == Finding::Empty) {
            createSchema(sql);
            content.fill(sql);
        } else {
            migrateSchema(sql);
            content.upgrade(sql);
        }
        transaction.commit();
        return true;
    } catch (const std::exception& error) {
        inspected.reason = error.what();
        return false;
    }
}

bool isIncomplete(const Inspected& inspected) {
    return inspected.finding == Finding::Empty || inspected.finding == Finding::Older;
}

/// SQLite keeps a number for each connection that changes when another one has committed.
class DataVersion final : public ChangeProbe {
public:
    explicit DataVersion(std::unique_ptr<soci::session> session)
        : session_(std::move(session))
        , last_(read()) {}

    bool changed() override {
        try {
            const long long now = read();
            return std::exchange(last_, now) != now;
        } catch (const std::exception& error) {
            logLine(std::string("the store can't be watched: ") + error.what());
            return false;
        }
    }

private:
    long long read() {
        long long version = 0;
        *session_ << "pragma data_version", soci::into(version);
        return version;
    }

    std::unique_ptr<soci::session> session_;
    long long last_;
};

OpenedFile unavailable(const fs::path& file, const std::string& reason) {
    logLine("the store " + utf8(file) + " can't be used: " + reason);
    return {nullptr, nullptr, "服务数据库 " + utf8(file.filename()) + " 无法使用: " + reason};
}

} // namespace

std::unique_ptr<ChangeProbe> watchDatabaseFile(const fs::path& file, std::chrono::milliseconds busyTimeout) {
    try {
        return std::make_unique<DataVersion>(connect(file, busyTimeout));
    } catch (const std::exception& error) {
        logLine(std::string("changes of other programs will not be seen: ") + error.what());
        return nullptr;
    }
}

OpenedFile openDatabaseFile(const fs::path& file, std::chrono::milliseconds busyTimeout, const Clock& clock,
                            const StoreContent& content) {
    if (utf8(file).find('"') != std::string::npos)
        return unavailable(file, "its path holds a quotation mark");
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    if (error)
        return unavailable(file, error.message());

    OpenedFile opened;
    Inspected inspected = inspect(file, busyTimeout);
    if (inspected.finding == Finding::Damaged) {
        inspected.session.reset();
        logLine("the store " + utf8(file) + " is damaged: " + inspected.reason);
        const auto target = setAside(file, clock);
        if (!target)
            return unavailable(file, inspected.reason);
        opened.notice = "服务数据库已损坏, 原文件保存为 " + utf8(target->filename()) + ", 已新建数据库。";
        inspected = inspect(file, busyTimeout);
    }
    if (isIncomplete(inspected) && !complete(inspected, content)) {
        // Another process may have done it in the meantime.
        const std::string reason = inspected.reason;
        inspected = inspect(file, busyTimeout);
        if (inspected.finding != Finding::Sound)
            return unavailable(file, reason);
    } else if (!isIncomplete(inspected) && inspected.finding != Finding::Sound) {
        return unavailable(file, inspected.reason);
    }
    opened.changes = watchDatabaseFile(file, busyTimeout);
    opened.session = std::move(inspected.session);
    return opened;
}

} // namespace ipncsdk::store
