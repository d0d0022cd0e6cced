#pragma once

#include "tessara/backend/TSRError.h"

#include <optional>
#include <type_traits>
#include <utility>
#include <variant>

namespace tessara {

/// Ends the program: the side of a result that is not there was read.
[[noreturn]] void resultMisuse(bool askedForValue);

/// The outcome of a backend call: a decoded value or an error. Reading the side that is
/// not there is a programming error and ends the program.
template <typename T> class TSRResult {
public:
    /// A success.
    TSRResult(T value)
        : storage_(std::in_place_index<0>, std::move(value)) {}
    /// A failure.
    ///@{
    TSRResult(TSRError error)
        : storage_(std::in_place_index<1>, std::move(error)) {}
    TSRResult(TSRNetworkError error)
        : TSRResult(TSRError(std::move(error))) {}
    TSRResult(TSRBackendError error)
        : TSRResult(TSRError(std::move(error))) {}
    ///@}

    bool isSuccess() const { return storage_.index() == 0; } ///< True when it holds a value.

    /// The value; on a failure the program ends.
    ///@{
    const T& value() const& {
        requireSuccess();
        return std::get<0>(storage_);
    }
    T& value() & {
        requireSuccess();
        return std::get<0>(storage_);
    }
    T&& value() && {
        requireSuccess();
        return std::get<0>(std::move(storage_));
    }
    ///@}

    /// The error; on a success the program ends.
    const TSRError& error() const {
        if (isSuccess())
            resultMisuse(false);
        return std::get<1>(storage_);
    }

    /// Same outcome with the value passed through `fn`; an error is passed on unchanged.
    template <typename F> auto map(F&& fn) const -> TSRResult<std::invoke_result_t<F, const T&>> {
        if (isSuccess())
            return std::forward<F>(fn)(std::get<0>(storage_));
        return std::get<1>(storage_);
    }

private:
    void requireSuccess() const {
        if (!isSuccess())
            resultMisuse(true);
    }

    std::variant<T, TSRError> storage_;
};

/// The outcome of a call that answers no document (the file upload).
template <> class TSRResult<void> {
public:
    static TSRResult success() { return TSRResult(); } ///< A success.
    /// A failure.
    ///@{
    TSRResult(TSRError error)
        : error_(std::move(error)) {}
    TSRResult(TSRNetworkError error)
        : error_(TSRError(std::move(error))) {}
    TSRResult(TSRBackendError error)
        : error_(TSRError(std::move(error))) {}
    ///@}

    bool isSuccess() const { return !error_.has_value(); } ///< True when no error is held.

    /// The error; on a success the program ends.
    const TSRError& error() const {
        if (isSuccess())
            resultMisuse(false);
        return *error_;
    }

private:
    TSRResult() = default;
    std::optional<TSRError> error_;
};

} // namespace tessara
