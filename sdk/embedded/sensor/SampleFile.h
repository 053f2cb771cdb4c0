#pragma once

#include "base/Clock.h"
#include "sensor/Reading.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace ipncsdk::sensor {

/// The file of samples did not do what it was told.
class SampleError final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Times of samples: milliseconds since 1970, in UTC.
std::int64_t toMilliseconds(std::chrono::system_clock::time_point time);
std::chrono::system_clock::time_point fromMilliseconds(std::int64_t time);

/// A connection to the file that holds the samples. One thread at a time; throws `SampleError`.
///
///     samples   what was read, as it was read
///     minutes   means, least and greatest values of minutes, in place of samples that are older
///     latest    the newest reading of each input and output, also of those that keep no samples
///     orders    what processes that do not read the boards want of the one that does
class SampleFile final {
public:
    /// Opens the file and makes what is missing.
    explicit SampleFile(const std::filesystem::path& file);
    ~SampleFile();
    SampleFile(const SampleFile&) = delete;
    SampleFile& operator=(const SampleFile&) = delete;

    /// Opens the file once. One that is damaged is renamed with ".damaged-yyyyMMddhhmmss" behind its name, and a new
    /// one is begun; `notice` gets a sentence for the user then. False when no file can be used.
    static bool prepare(const std::filesystem::path& file, const Clock& clock, std::string& notice);

    /// A prepared statement, which is made ready again when this is destroyed.
    class Statement final {
    public:
        Statement(SampleFile& file, const char* text);
        ~Statement();
        Statement(const Statement&) = delete;
        Statement& operator=(const Statement&) = delete;

        Statement& bind(std::int64_t value);
        Statement& bind(double value);
        /// Goes on to the next row; false when there is none.
        bool step();
        /// Makes ready for other values.
        void again();

        [[nodiscard]] std::int64_t whole(int column) const;
        [[nodiscard]] double real(int column) const;
        [[nodiscard]] bool isNull(int column) const;

    private:
        SampleFile& file_;
        sqlite3_stmt* const statement_;
        int bound_ = 0;
    };

    /// Runs statements without parameters.
    void run(const char* statements);
    /// Runs a function in one transaction that may write.
    template <typename Function>
    void change(Function&& function) {
        run("begin immediate");
        try {
            function();
            run("commit");
        } catch (...) {
            rollBack();
            throw;
        }
    }

    /// True when another connection has written since the last call.
    bool changedByOthers();
    [[nodiscard]] std::int64_t lastId() const;
    [[nodiscard]] int changedRows() const;

private:
    friend class Statement;
    void rollBack() noexcept;
    [[noreturn]] void fail(const char* what) const;

    struct Close {
        void operator()(sqlite3* database) const;
    };
    std::unique_ptr<sqlite3, Close> database_;
    std::int64_t version_ = 0;
};

} // namespace ipncsdk::sensor
