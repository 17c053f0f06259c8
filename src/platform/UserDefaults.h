#pragma once

namespace calorivo {

/// The user's preferences store.
class UserDefaults {
  public:
    UserDefaults() = default;
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;
    virtual ~UserDefaults() = default;

    /// Brings the store on disk up to date with what was set.
    virtual void synchronize() = 0;
};

}  // namespace calorivo
