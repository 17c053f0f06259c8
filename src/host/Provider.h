#pragma once

#include "host/SourceOptions.h"
#include "platform/Dispatch.h"
#include "platform/SensorProvider.h"
#include "platform/linux/LinuxPaths.h"

#include <memory>
#include <string_view>

namespace calorivo {

/// The source of values that the options name; the machine itself when they name none. `keysText` is the
/// contents of the keys file. `dispatch` must outlive the provider.
[[nodiscard]] std::unique_ptr<SensorProvider> makeProvider(const SourceOptions& options,
                                                           std::string_view keysText, const LinuxPaths& paths,
                                                           const Dispatch& dispatch);

}  // namespace calorivo
