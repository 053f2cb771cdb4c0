#pragma once

#include <optional>
#include <string>
#include <utility>

namespace ipncsdk::onvif {

/// Why a camera did not do what it was asked for.
enum class Refusal {
    None,
    BadAddress,   ///< the address is none of a device service
    Unreachable,  ///< host not found, connection refused, no route
    TimedOut,     ///< no answer in time
    NoOnvif,      ///< what answered is not understood: no SOAP, too long, too deep
    Password,     ///< user name or password refused
    Clock,        ///< the camera refuses the time in the digest
    Fault,        ///< the camera understood and refused; `text` has its reason
    NotSupported, ///< the camera has not what the operation is about
    NoMedia,      ///< no stream that can be shown
    Cancelled
};

/// Why something failed: for a `Fault` the camera's own reason, as plain text of bounded length.
struct Failure {
    Refusal refusal = Refusal::None;
    std::string text;
};

/// A value, or why there is none.
template <typename T>
class [[nodiscard]] Outcome {
public:
    Outcome(T value)
        : value_(std::move(value)) {} // NOLINT: a value is a whole outcome
    Outcome(Failure failure)
        : failure_(std::move(failure)) {} // NOLINT: so is a failure

    explicit operator bool() const { return value_.has_value(); }
    T& operator*() { return *value_; }
    const T& operator*() const { return *value_; }
    T* operator->() { return &*value_; }
    const T* operator->() const { return &*value_; }
    [[nodiscard]] const Failure& failure() const { return failure_; }

private:
    std::optional<T> value_;
    Failure failure_;
};

/// The outcome of what has no value.
struct Done {};

} // namespace ipncsdk::onvif
