#pragma once

#include "platform/SysCtl.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace calorivo::test {

/// System values in memory.
class FakeSysCtl final : public SysCtl {
  public:
    FakeSysCtl& set(const std::string& name, std::string value) {
        values_[name] = std::move(value);
        return *this;
    }

    /// Every call as "name size" for the size alone, "name value" for the value.
    std::vector<std::string> calls;
    /// Makes the calls with a buffer fail.
    bool failsToCopy = false;

    int sysctlbyname(std::string_view name, char* buffer, std::size_t& size) override {
        calls.push_back(std::string(name) + (buffer == nullptr ? " size" : " value"));
        const auto found = values_.find(name);
        const std::size_t needed = found == values_.end() ? 0 : found->second.size() + 1;
        if (buffer == nullptr) {
            size = needed;
            return needed == 0 ? -1 : 0;
        }
        if (failsToCopy || needed == 0 || size < needed) return -1;
        std::copy_n(found->second.c_str(), needed, buffer);
        size = needed;
        return 0;
    }

  private:
    std::map<std::string, std::string, std::less<>> values_;
};

}  // namespace calorivo::test
