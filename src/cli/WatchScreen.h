#pragma once

#include "cli/Style.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

struct ScreenSize {
    std::size_t columns = 80;
    std::size_t rows = 24;
    friend bool operator==(const ScreenSize&, const ScreenSize&) = default;
};

/// What the watch shows: a title that always stays, a table whose first line stays, and a last line.
struct ScreenContents {
    std::string title;
    std::vector<std::string> table;
    std::string status;
};

enum class WatchKey { up, down, pageUp, pageDown, home, end, quit };

/// Turns what the keyboard sends into keys. A sequence may come in pieces; what is not known is passed over.
class WatchKeys {
  public:
    [[nodiscard]] std::vector<WatchKey> parse(std::string_view input);

  private:
    std::string rest_;
};

/// Which part of the table is on the screen.
class WatchScreen {
  public:
    /// Exactly `size.rows` lines. The place is moved if it lies past the end.
    [[nodiscard]] std::vector<std::string> lines(const ScreenContents& contents, const ScreenSize& size,
                                                 const Style& style);
    /// Moves the place; the next call of lines() keeps it within the table. Quit moves nothing.
    void move(WatchKey key);

  private:
    std::size_t place_ = 0;
    std::size_t page_ = 1;
    std::size_t lastPlace_ = 0;
};

/// What a terminal that shows `before` must be sent to show `now`: only the lines that differ.
[[nodiscard]] std::string repaintText(const std::vector<std::string>& before,
                                      const std::vector<std::string>& now);

}  // namespace calorivo
