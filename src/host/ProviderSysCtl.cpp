#include "host/ProviderSysCtl.h"

#include <utility>

namespace calorivo {

int ProviderSysCtl::sysctlbyname(std::string_view name, char* buffer, std::size_t& size) {
    if (name == "hw.model" && !std::exchange(isAsked_, true)) model_ = provider_.modelName();
    const std::optional<std::string> model = name == "hw.model" ? model_ : std::nullopt;
    const std::size_t needed = model ? model->size() + 1 : 0;
    const std::size_t room = std::exchange(size, needed);
    if (!model) return -1;
    if (buffer == nullptr) return 0;
    if (room < needed) return -1;
    buffer[model->copy(buffer, model->size())] = '\0';
    return 0;
}

}  // namespace calorivo
