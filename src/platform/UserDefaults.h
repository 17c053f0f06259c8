#pragma once

#include "platform/KeyValueCoding.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace calorivo {

/// The user's preferences store, as far as the engine needs it.
class UserDefaults {
  public:
    UserDefaults() = default;
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;
    virtual ~UserDefaults() = default;

    /// Brings the store on disk up to date with what was set.
    virtual void synchronize() = 0;
};

/// A property list's dictionary: its keys with their values.
using PropertyList = std::vector<std::pair<std::string, Value>>;

/// The whole store: values under text keys, over registered defaults. Main thread, unless the store says
/// more.
class StandardUserDefaults : public UserDefaults {
  public:
    /// The stored value, else the registered default, else nil.
    [[nodiscard]] virtual Value objectForKey(std::string_view key) const = 0;
    /// nil removes the key, so that its registered default is seen again.
    virtual void setObjectForKey(const Value& value, std::string_view key) = 0;
    /// Adds to what was registered before. Nothing of it is stored.
    virtual void registerDefaults(const PropertyList& defaults) = 0;
};

}  // namespace calorivo
