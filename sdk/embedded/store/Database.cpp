#include "store/Database.h"

#include "base/Log.h"

#include <soci/soci.h>

#include <utility>

namespace ipncsdk::store {

Database::Database() = default;

Database::~Database() = default;

void Database::use(std::unique_ptr<soci::session> session) {
    const std::lock_guard lock(mutex_);
    session_ = std::move(session);
}

void Database::close() {
    const std::lock_guard lock(mutex_);
    session_.reset();
}

ServiceCode Database::change(const char* what, const Work& work) {
    const std::lock_guard lock(mutex_);
    if (!session_)
        return ServiceCode::StoreError;
    try {
        soci::transaction transaction(*session_);
        // A transaction that reads before it writes can't write any more once another process has. One that begins
        // with writing waits for its turn instead.
        *session_ << "update facts set value = value where name = 'schemaversion'";
        const ServiceCode code = work(*session_);
        if (code == ServiceCode::Done)
            transaction.commit();
        return code;
    } catch (const std::exception& error) {
        logLine(std::string("the store refused to ") + what + ": " + error.what());
        return ServiceCode::StoreError;
    }
}

ServiceCode Database::read(const char* what, const Work& work) {
    const std::lock_guard lock(mutex_);
    if (!session_)
        return ServiceCode::StoreError;
    try {
        // The transaction gives all statements of `work` the same state; there is nothing to commit.
        soci::transaction transaction(*session_);
        return work(*session_);
    } catch (const std::exception& error) {
        logLine(std::string("the store refused to ") + what + ": " + error.what());
        return ServiceCode::StoreError;
    }
}

} // namespace ipncsdk::store
