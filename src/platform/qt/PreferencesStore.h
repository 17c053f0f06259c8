#pragma once

#include "platform/SystemLog.h"
#include "platform/UserDefaults.h"
#include "platform/qt/PreferencesStoreText.h"

#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// The user's preferences in one file, which other programs and people may read and change.
///
/// It is read once, and written by synchronize() alone, when something was set to another value. Writing
/// replaces the whole file at once; what was changed in it meanwhile stays, except for the keys that were
/// set here: for those the last one to write wins. Any thread; whoever asks while another one writes waits
/// for the disk.
class PreferencesStore final : public StandardUserDefaults {
  public:
    /// `path` may be empty, for preferences that end with the program, or a symbolic link to the file. A
    /// damaged file is kept aside, and what is whole of it is used. `systemLog` hears of the first failure to
    /// write; it must outlive this object.
    PreferencesStore(std::string path, SystemLog& systemLog);

    [[nodiscard]] Value objectForKey(std::string_view key) const override;
    void setObjectForKey(const Value& value, std::string_view key) override;
    void registerDefaults(const PropertyList& defaults) override;
    /// What cannot be written stays in memory, and is tried again the next time.
    void synchronize() override;

    /// For the user: what is wrong with the file, as "FILE:LINE: reason", and where it is kept. Empty when
    /// nothing is.
    [[nodiscard]] const std::vector<std::string>& problems() const { return problems_; }

  private:
    void tell(const std::vector<PreferencesStoreText::Problem>& found, bool isTooLong);
    [[nodiscard]] std::string write();

    const std::string path_;
    SystemLog& systemLog_;
    /// Guards what follows, but for the problems, which are those of the beginning.
    mutable std::mutex lock_;
    PreferencesStoreText text_;
    std::map<std::string, Value, std::less<>> defaults_;
    /// What was set and is not written yet; nil for what was removed.
    std::map<std::string, Value, std::less<>> changes_;
    std::vector<std::string> problems_;
    bool isDamaged_ = false;
    bool hasLoggedFailure_ = false;
};

}  // namespace calorivo
