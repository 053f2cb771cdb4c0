#include "sensor/OrderBook.h"

#include <utility>
#include <vector>

namespace ipncsdk::sensor {

namespace {

constexpr std::int64_t longestLife = 60'000; ///< milliseconds

} // namespace

OrderBook::OrderBook(SampleFile& file)
    : file_(file) {}

std::int64_t OrderBook::place(const Order& order, std::int64_t now) {
    SampleFile::Statement insert(file_, "insert into orders (kind, pid, value, madeat) values (?, ?, ?, ?)");
    insert.bind(static_cast<std::int64_t>(order.kind))
        .bind(std::int64_t{order.pid})
        .bind(order.value)
        .bind(now)
        .step();
    return file_.lastId();
}

std::optional<ServiceCode> OrderBook::outcome(std::int64_t number) {
    SampleFile::Statement read(file_, "select code from orders where id = ?");
    if (!read.bind(number).step())
        return ServiceCode::WriteFailed;
    return read.isNull(0) ? std::nullopt : std::make_optional(static_cast<ServiceCode>(read.whole(0)));
}

void OrderBook::remove(std::int64_t number) {
    SampleFile::Statement(file_, "delete from orders where id = ?").bind(number).step();
}

void OrderBook::serve(std::int64_t now, const std::function<ServiceCode(const Order& order)>& carryOut) {
    std::vector<std::pair<std::int64_t, Order>> waiting;
    bool old = false;
    {
        SampleFile::Statement read(file_, "select id, kind, pid, value, madeat, code from orders");
        while (read.step()) {
            old = old || now - read.whole(4) > longestLife;
            if (read.isNull(5) && now - read.whole(4) <= longestLife)
                waiting.emplace_back(read.whole(0), Order{static_cast<Kind>(read.whole(1)),
                                                          static_cast<int>(read.whole(2)), read.real(3)});
        }
    }
    for (const auto& [number, order] : waiting) {
        const auto code = static_cast<std::int64_t>(carryOut(order));
        SampleFile::Statement(file_, "update orders set code = ? where id = ?").bind(code).bind(number).step();
    }
    if (old)
        SampleFile::Statement(file_, "delete from orders where madeat < ?").bind(now - longestLife).step();
}

} // namespace ipncsdk::sensor
