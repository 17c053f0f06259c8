#include "platform/linux/LinuxSmc.h"

#include "platform/linux/LinuxMachine.h"
#include "platform/linux/MachineModel.h"

namespace calorivo {

LinuxSmc::LinuxSmc(LinuxSmcOptions options) : options_(std::move(options)) {}
LinuxSmc::~LinuxSmc() = default;

std::string_view LinuxSmc::sourceName() const { return machine_ ? machine_->sourceName() : "none"; }

std::optional<std::string> LinuxSmc::modelName() const { return machineModel(options_.sys); }

std::vector<ModelTableEntry> LinuxSmc::machineSensors() const {
    return machine_ ? machine_->machineSensors() : std::vector<ModelTableEntry>{};
}

std::optional<KeyOrigin> LinuxSmc::originOf(std::string_view key) {
    return machine_ ? machine_->originOf(smcCode(key)) : std::nullopt;
}

std::string LinuxSmc::driveMeasuredBy(std::string_view key) {
    return machine_ ? machine_->driveMeasuredBy(smcCode(key)) : std::string();
}

std::vector<std::string> LinuxSmc::problems() const {
    return machine_ ? machine_->problems() : std::vector<std::string>{};
}

bool LinuxSmc::isPresent() {
    if (!machine_) machine_ = std::make_unique<Machine>(options_);
    return machine_->isPresent();
}

kern_return_t LinuxSmc::open() { return machine_ ? io_return::success : io_return::noDevice; }

void LinuxSmc::close() { machine_.reset(); }

std::optional<std::uint32_t> LinuxSmc::keyAt(std::uint32_t index) { return machine_->keyAt(index); }

kern_return_t LinuxSmc::keyInformation(std::uint32_t key, SmcKeyInformation& information) {
    return machine_->keyInformation(key, information);
}

kern_return_t LinuxSmc::readBytes(std::uint32_t key, std::span<std::uint8_t, 32> bytes) {
    return machine_->readBytes(key, bytes);
}

}  // namespace calorivo
