#pragma once

#include "platform/Dispatch.h"
#include "platform/Format.h"

#include <mutex>
#include <string>
#include <string_view>
#include <utility>

namespace calorivo {

/// One row of the log while it grows. Main thread, check queue and log queue share it: each call is whole,
/// and the text written is whatever the row holds when it is written.
class CSVRow {
  public:
    CSVRow() = default;
    explicit CSVRow(std::string text) : text_(std::move(text)) {}
    CSVRow(const CSVRow&) = delete;
    CSVRow& operator=(const CSVRow&) = delete;

    void append(std::string_view field) {
        const std::lock_guard lock(mutex_);
        text_.append(field);
    }
    /// Appends the pattern, filled as `format` fills it.
    template <typename... Arguments>
    void appendFormat(std::string_view pattern, const Arguments&... arguments) {
        const std::lock_guard lock(mutex_);
        calorivo::appendFormat(text_, pattern, {FormatArgument(arguments)...});
    }
    void assign(std::string_view text) {
        const std::lock_guard lock(mutex_);
        text_.assign(text);
    }
    /// Drops one trailing comma, if there is one.
    void removeCommaSuffix() {
        const std::lock_guard lock(mutex_);
        if (text_.ends_with(',')) text_.pop_back();
    }
    [[nodiscard]] std::string text() const {
        const std::lock_guard lock(mutex_);
        return text_;
    }

  private:
    mutable std::mutex mutex_;
    std::string text_;
};

/// The date and time fields of a row, each with its comma, both of the same moment in the local time zone.
/// Any thread.
[[nodiscard]] std::string createCSVRowPrefix(WallTime time);

}  // namespace calorivo
