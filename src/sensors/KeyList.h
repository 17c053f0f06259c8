#pragma once

#include "sensors/SensorKey.h"

#include <cstddef>
#include <initializer_list>
#include <unordered_map>
#include <utility>
#include <vector>

namespace calorivo {

/// An ordered list of sensor keys in which a key may stand more than once, with membership tests in constant
/// time.
class KeyList {
  public:
    KeyList() = default;
    KeyList(std::initializer_list<SensorKey> keys) {
        for (const SensorKey key : keys) append(key);
    }

    void append(SensorKey key) {
        keys_.push_back(key);
        ++occurrences_[key];
    }
    void append(const KeyList& others) {
        occurrences_.reserve(occurrences_.size() + others.occurrences_.size());
        for (const SensorKey key : others.keys_) append(key);
    }
    /// Replaces the contents.
    void assign(std::vector<SensorKey> keys) {
        keys_ = std::move(keys);
        occurrences_.clear();
        occurrences_.reserve(keys_.size());
        for (const SensorKey key : keys_) ++occurrences_[key];
    }
    void clear() { assign({}); }

    /// True when some element equals the key: the whole key, case-sensitively.
    [[nodiscard]] bool containsString(SensorKey key) const {
        return occurrences_.find(key) != occurrences_.end();
    }

    [[nodiscard]] std::size_t count() const { return keys_.size(); }
    [[nodiscard]] bool isEmpty() const { return keys_.empty(); }
    [[nodiscard]] SensorKey operator[](std::size_t index) const { return keys_[index]; }
    [[nodiscard]] auto begin() const { return keys_.begin(); }
    [[nodiscard]] auto end() const { return keys_.end(); }
    [[nodiscard]] const std::vector<SensorKey>& keys() const { return keys_; }

    friend bool operator==(const KeyList& a, const KeyList& b) { return a.keys_ == b.keys_; }

  private:
    std::vector<SensorKey> keys_;
    std::unordered_map<SensorKey, std::size_t> occurrences_;
};

}  // namespace calorivo
