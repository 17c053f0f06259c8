#pragma once

#include "platform/linux/DriveReading.h"

#include <span>
#include <string>
#include <vector>

namespace calorivo {

/// A drive that is to be read: its present name, and what tells it from every other.
struct DriveRequest {
    std::string name;
    std::string identity;
};

/// What came of it.
struct DriveAnswer {
    enum class State {
        read,
        /// It is still being read: what was known of it goes on to hold.
        late,
        /// It has not answered for so long that it is given up, until it does.
        hung,
        /// It could not be asked.
        failed,
    };
    State state = State::late;
    DriveReading reading;
};

/// Reads drives, whatever they do. One thread at a time.
class DriveReaders {
  public:
    DriveReaders() = default;
    DriveReaders(const DriveReaders&) = delete;
    DriveReaders& operator=(const DriveReaders&) = delete;
    virtual ~DriveReaders() = default;

    /// One answer for each request, in their order. Never waits for longer than a moment that the reader
    /// states, even if a drive never answers.
    [[nodiscard]] virtual std::vector<DriveAnswer> read(std::span<const DriveRequest> requests) = 0;
};

}  // namespace calorivo
