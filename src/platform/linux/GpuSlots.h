#pragma once

#include "platform/linux/HwmonChip.h"
#include "platform/linux/KeySlots.h"
#include "platform/linux/KeyStore.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// One GPU with a temperature, and the number under which its keys stand.
struct GpuSlot {
    std::size_t chip = 0;
    bool isIntegrated = false;
    /// The third character of its edge and hot-spot keys; NUL when there is none yet or none is left.
    char slot = '\0';
    friend bool operator==(const GpuSlot&, const GpuSlot&) = default;
};

/// A GPU that is known as part of a processor, by its numbers and its place on the bus.
[[nodiscard]] bool isProcessorGPU(std::uint32_t vendor, std::uint32_t device, std::string_view address);
/// A GPU that is part of the processor. `gpus` are all chips of GPUs, itself among them.
[[nodiscard]] bool isIntegratedGPU(const HwmonChip& chip, const std::vector<const HwmonChip*>& gpus);

/// Gives each GPU that has no slot one whose keys are free: the integrated one or the only one "0", the first
/// discrete one "1". "0" and "1" together stand for an integrated and a discrete GPU that take turns, so two
/// discrete ones never get both.
void chooseGpuSlots(std::vector<GpuSlot>& gpus, const KeyStore& store);

/// The key of a GPU family in a slot: edge TG0D, hot spot TG0P, memory four numbers higher TG4D.
[[nodiscard]] std::string gpuKey(KeyFamily family, char slot);
/// The opposite: the slot to which the key of a family belongs; NUL when to none.
[[nodiscard]] char gpuSlotOf(KeyFamily family, std::string_view key);

}  // namespace calorivo
