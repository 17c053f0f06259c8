#pragma once

#include <sys/types.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// Reading and writing the preferences file so that no moment is left at which it is not whole.

namespace calorivo {

/// More than any preferences take. Of a longer file the beginning is read.
inline constexpr std::size_t preferencesFileLimit = std::size_t{4} << 20U;

/// What stands at the file's place.
struct PreferencesFile {
    enum class State { absent, read, unusable };
    State state = State::absent;
    std::string text;
    /// Whether there is more than `text`.
    bool isTooLong = false;
    /// Of an unusable file: what is wrong with it.
    std::string reason;
};

/// Reads a regular file. Anything else is unusable; it never waits.
[[nodiscard]] PreferencesFile readPreferencesFile(const std::string& path);

/// Where a path leads by its symbolic links, whether or not there is a file in the end: such a file is
/// replaced behind the link, so that the link stays. The path itself for a loop.
[[nodiscard]] std::string behindSymbolicLinks(const std::string& path);

/// Gives the file a second name, "PATH.damaged-N" with the first free N from 1, which it keeps when it is
/// replaced. Returns that name; the former one for a file that has such a name already; empty when no name
/// could be given.
[[nodiscard]] std::string keepAside(const std::string& path);

/// The right to replace a preferences file, together with its content to be. It holds a lock that other
/// instances respect; a process that ends in whatever way leaves none behind.
class PreferencesFileWriter {
  public:
    /// Creates the file's folder for its owner only. Waits so long for another instance to end its writing.
    explicit PreferencesFileWriter(const std::string& path, int patienceMilliseconds = 1000);
    ~PreferencesFileWriter();
    PreferencesFileWriter(const PreferencesFileWriter&) = delete;
    PreferencesFileWriter& operator=(const PreferencesFileWriter&) = delete;

    /// Why nothing can be written, or could not; empty while all is well.
    [[nodiscard]] const std::string& problem() const { return problem_; }

    /// The file becomes `text`, at once and on the disk; when that fails it stays as it was. A new file is
    /// for its owner only, an old one keeps its permissions. Once only.
    bool replaceWith(std::string_view text);

  private:
    void open(int patienceMilliseconds);
    bool fail();
    [[nodiscard]] mode_t permissions() const;

    std::string path_;
    std::string temporary_;
    std::string problem_;
    int descriptor_ = -1;
    bool isLocked_ = false;
};

}  // namespace calorivo
