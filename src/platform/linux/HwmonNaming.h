#pragma once

#include "platform/linux/HwmonChip.h"
#include "platform/linux/KeyStore.h"

#include <cstddef>
#include <string>
#include <vector>

namespace calorivo {

/// One channel with its key and, for temperatures, the name and area that it is shown under.
struct NamedChannel {
    std::size_t chip = 0;
    std::size_t channel = 0;
    /// Temperatures: "TC1C". Fans: "F0", the beginning of all keys of that fan.
    std::string key;
    /// What people call it. For fans: the label, empty when there is none.
    std::string name;
    /// The name of an area of the source list: "CPU". Empty for fans.
    std::string area;
    /// More channels whose maximum this key shows as well, as (chip, channel) pairs: several batteries under
    /// one key.
    std::vector<std::pair<std::size_t, std::size_t>> maximumOf;
    friend bool operator==(const NamedChannel&, const NamedChannel&) = default;
};

struct HwmonNames {
    /// In the order of the chips' identities and the channels' numbers.
    std::vector<NamedChannel> channels;
    /// Rules that could not be used, "file:line: reason".
    std::vector<std::string> problems;
};

/// Gives every useful channel a key, a readable name and an area, by the rules in `ruleFiles` (a later file
/// wins) and by what `store` remembers; new assignments go into `store`. Channels that a rule skips are left
/// out, as are inputs without a sensor, and fans beyond the tenth. `pciIds` is the file with the names of PCI
/// devices.
///
/// All keys are different, and so are all names of temperatures. A key that the store knows is kept, so the
/// keys of fans may have gaps: "F0" and "F2" when the fan between them is gone. The caller loads the store
/// before and saves it afterwards.
[[nodiscard]] HwmonNames nameHwmonChannels(const std::vector<HwmonChip>& chips, KeyStore& store,
                                           const std::vector<std::string>& ruleFiles,
                                           const std::string& pciIds);

}  // namespace calorivo
