#pragma once

#include "monitor/TemperatureReader.h"
#include "platform/SensorProvider.h"
#include "sensors/Areas.h"
#include "sensors/SensorKey.h"
#include "sensors/SensorNaming.h"
#include "smc/SmcClient.h"

#include <optional>
#include <string>
#include <vector>

namespace calorivo {

/// What an explanation draws on.
struct ExplanationParts {
    const SensorLists& lists;
    const SensorNaming& naming;
    TemperatureReader& reader;
    SensorProvider& provider;
};

/// Where the reading of one key comes from and what becomes of it.
struct Explanation {
    SensorKey key;
    std::string source;
    KeyOrigin origin;
    /// As the controller answers now; size 0 for no data.
    SmcValue value;
    /// What the bytes say by their type; none for types that are not decoded.
    std::optional<double> decoded;
    /// What the program reads; none for keys that are no temperatures.
    std::optional<double> reading;
    std::string readingText;
    bool isValid = false;
    std::string name;
    /// Which rule or table gave the name.
    std::string naming;
    /// Which rules or table gave the area; empty when none did.
    std::vector<std::string> grouping;
    /// Null when it is in no area.
    const Area* area = nullptr;
    bool isShown = false;
    /// Why it is not shown; empty when it is.
    std::string hiddenReason;
};

/// None for a key that neither the source nor the lists know. The sensors must have been discovered.
[[nodiscard]] std::optional<Explanation> explain(SensorKey key, const ExplanationParts& parts);

}  // namespace calorivo
