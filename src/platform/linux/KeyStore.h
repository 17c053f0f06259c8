#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace calorivo {

/// Remembers which key stands for which sensor, in the text file "sensor-keys" of the state folder: one line
/// "KEY<TAB>identity" each, in which \t, \n and \\ stand for a tabulator, a line end and a backslash of the
/// identity. A known sensor keeps its key for ever; the key of one that has vanished stays reserved. A
/// damaged line is passed over and reported, and is kept in the file. A file that cannot be used (longer than
/// 1 MiB, a folder, a FIFO, a symbolic link) or written is reported once, is left as it is, and nothing else
/// happens.
class KeyStore {
  public:
    /// An empty folder name: nothing is read or written.
    explicit KeyStore(std::string folder) : folder_(std::move(folder)) {}

    void load();
    /// Writes the file whole, through a temporary file that takes its place, only when something is new since
    /// load(). What another process has written meanwhile is kept where it does not contradict. Creates the
    /// folder, for its owner only.
    void save();

    /// The key of this identity; empty when it is not known or its key has been reserved.
    [[nodiscard]] std::string keyOf(std::string_view identity) const;
    /// The identity of this key; empty when no sensor has it.
    [[nodiscard]] std::string identityOf(std::string_view key) const;
    [[nodiscard]] bool isTaken(std::string_view key) const;
    /// Remembers a new pair. `key` must not be taken; `identity` must not have a key of its own.
    void assign(std::string key, std::string identity);
    /// Makes the key of a vanished sensor free again.
    void release(std::string_view key);
    /// Takes a key that belongs to something else, for this run only: it is not saved.
    void reserve(std::string key) { reserved_.insert(std::move(key)); }

    /// "file:line: reason" or "file: reason".
    [[nodiscard]] const std::vector<std::string>& problems() const { return problems_; }

  private:
    [[nodiscard]] std::string path() const;
    [[nodiscard]] bool mergeFile();
    [[nodiscard]] std::string text() const;
    void giveUp(const std::string& reason);
    bool add(const std::string& key, const std::string& identity);

    std::string folder_;
    /// Identities are long and begin alike: hashing one costs less than comparing it with ten.
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };
    std::unordered_map<std::string, std::string, Hash, std::equal_to<>> keyByIdentity_;
    std::map<std::string, std::string, std::less<>> identityByKey_;
    std::set<std::string, std::less<>> reserved_;
    std::vector<std::string> damagedLines_;
    std::vector<std::string> problems_;
    bool isChanged_ = false;
    /// The file is none of ours, or writing failed: nothing is written any more.
    bool isGivenUp_ = false;
};

}  // namespace calorivo
