#pragma once

#include <sys/types.h>

#include <ctime>
#include <functional>
#include <string>

namespace calorivo {

/// What the trash needs to know of the system. `Trash::system` gives the real one.
struct TrashSystem {
    /// "$XDG_DATA_HOME": the home trash is in it.
    std::string dataFolder;
    uid_t user = 0;
    /// The device of an entry, links not followed; that of the nearest folder above for one that is missing.
    std::function<dev_t(const std::string& path)> deviceOf;
    /// The folder on which the file system of a path is mounted.
    std::function<std::string(const std::string& path)> topFolderOf;
    /// Gives an entry another name, which must not be taken. Returns 0 or an error number.
    std::function<int(const std::string& from, const std::string& to)> rename;
    std::function<std::time_t()> now;
};

/// The user's trash, as desktops on Linux share it: the one in the home folder for what is on the same file
/// system, else one at the top of the file system it is on; where there can be none, in the home folder
/// again, by copying. Nothing is erased that is not in a trash as a whole. Any thread.
class Trash {
  public:
    [[nodiscard]] static TrashSystem system(std::string dataFolder);

    explicit Trash(TrashSystem system) : system_(std::move(system)) {}

    /// Puts the entry into the trash; a link itself, not what it leads to. `path` is absolute. Returns the
    /// reason of a failure ("Permission denied"); empty on success. After a failure the entry stands where it
    /// was; where it could be copied but not wholly removed, the copy stays in the trash too.
    [[nodiscard]] std::string put(const std::string& path) const;

  private:
    [[nodiscard]] std::string putHome(const std::string& path) const;
    /// In a trash folder that exists or can be made; `recordedPath` is where a restorer will put it back.
    [[nodiscard]] std::string putInto(const std::string& trash, const std::string& path,
                                      const std::string& recordedPath) const;
    [[nodiscard]] std::string topTrash(const std::string& topFolder) const;
    [[nodiscard]] int moveEntry(const std::string& from, const std::string& to) const;
    [[nodiscard]] std::string infoText(const std::string& recordedPath) const;

    TrashSystem system_;
};

}  // namespace calorivo
