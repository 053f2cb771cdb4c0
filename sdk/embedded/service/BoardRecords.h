#pragma once

#include "base/JsonText.h"
#include "base/ServiceCode.h"
#include "sensor/Board.h"
#include "sensor/LatestValues.h"
#include "store/Devices.h"
#include "store/StoreKey.h"

#include <functional>
#include <string>
#include <vector>

namespace ipncsdk::service {

/// The boards of a device in the two places where its record has them: "interfaces", and "extend"."sublist" for
/// sub-devices. Passwords in them are sealed with the store's key.
class BoardRecords final {
public:
    /// Takes the JSON texts of the store.
    BoardRecords(const std::string& interfaces, const std::string& extend);

    /// All boards as the store has them, interfaces first.
    [[nodiscard]] std::vector<Json> all() const;
    /// The board with this pid; null when there is none.
    [[nodiscard]] Json board(int pid) const;
    void put(const Json& board);
    void remove(int pid);
    /// Calls the function with each input and output; it may change them.
    void forEachPort(const std::function<void(Json& port, bool isInput)>& function);

    [[nodiscard]] const Json& interfaces() const { return interfaces_; }
    [[nodiscard]] const Json& extend() const { return extend_; }

private:
    void forEachList(const std::function<void(Json& list)>& function);

    Json interfaces_;
    Json extend_;
};

/// A board with the password as it is, for who talks to the device.
Json opened(Json board, const store::StoreKey& key);

/// Both places as clients may see them: passwords masked, the newest readings written in.
void showToClients(BoardRecords& records, const sensor::LatestValues& latest, bool deviceOnline);

/// What became of a change of boards.
struct BoardChange {
    ServiceCode code = ServiceCode::Done;
    std::string text; ///< for the user, Chinese; may be empty
    Json record;      ///< the board as it stands now
};

// All of these work in the caller's transaction and throw what the connection throws. A change that fails leaves the
// store as it was.

/// Enters a board, or replaces the one with its "pid".
BoardChange submitBoard(soci::session& sql, const store::Device& device, const Json& submitted,
                        const store::StoreKey& key);
BoardChange deleteBoard(soci::session& sql, const store::Device& device, int pid);
/// Changes what an input has besides its parameters.
BoardChange changeInput(soci::session& sql, const store::Device& device, int pid, const Json& changes);

} // namespace ipncsdk::service
