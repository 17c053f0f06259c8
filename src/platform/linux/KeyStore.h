#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// Remembers which key stands for which sensor, in the text file "sensor-keys" of the state folder: one line
/// "KEY<TAB>identity" each. A known sensor keeps its key for ever; the key of one that has vanished stays
/// reserved. A damaged line is passed over and reported, and is kept in the file; a file that cannot be
/// written is reported once and nothing else happens.
class KeyStore {
  public:
    /// An empty folder name: nothing is read or written.
    explicit KeyStore(std::string folder) : folder_(std::move(folder)) {}

    void load();
    /// Writes the file whole, through a temporary file that takes its place, only when something is new since
    /// load().
    void save();

    /// The key of this identity; empty when it is not known.
    [[nodiscard]] std::string keyOf(std::string_view identity) const;
    [[nodiscard]] bool isTaken(std::string_view key) const;
    /// Remembers a new pair. Neither key nor identity may be known yet.
    void assign(std::string key, std::string identity);

    /// Keeps a key from being given to anybody; not saved.
    void reserve(std::string key);

    [[nodiscard]] const std::vector<std::string>& problems() const { return problems_; }

  private:
    std::string folder_;
    std::map<std::string, std::string, std::less<>> keyByIdentity_;
    std::map<std::string, std::string, std::less<>> identityByKey_;
    std::vector<std::string> damagedLines_;
    std::vector<std::string> problems_;
    bool isChanged_ = false;
};

}  // namespace calorivo
