#pragma once

#include "base/ServiceCode.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

namespace soci {
class session;
}

namespace ipncsdk::store {

/// The service's store: one connection to a SQL database, used by one thread at a time.
///
/// Everything above this class and `DatabaseFile` speaks portable SQL with bound parameters, so that a database
/// server can stand in the file's place.
class Database final {
public:
    /// Works on the open connection and says how it ended. Exceptions of the connection are turned into
    /// `ServiceCode::StoreError`.
    using Work = std::function<ServiceCode(soci::session&)>;

    Database();
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    /// Takes over an open connection.
    void use(std::unique_ptr<soci::session> session);
    /// Ends the connection; later work is answered with `StoreError`.
    void close();

    /// Runs `work` in a transaction that is rolled back when the result is not `Done`. `what` names the work in
    /// the log. Not callable from inside `work`.
    ServiceCode change(const char* what, const Work& work);
    /// Runs `work`, which only reads, on one consistent state of the store.
    ServiceCode read(const char* what, const Work& work);

private:
    std::mutex mutex_;
    std::unique_ptr<soci::session> session_; ///< null while there is no store
};

} // namespace ipncsdk::store
