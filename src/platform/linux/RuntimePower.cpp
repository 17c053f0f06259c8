#include "platform/linux/RuntimePower.h"

#include "platform/linux/HwmonScan.h"
#include "platform/linux/Sysfs.h"

#include <unistd.h>

#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace calorivo {

namespace {

using std::chrono::nanoseconds;

/// The device falls asleep a little later than it may.
constexpr nanoseconds slack = std::chrono::seconds(1);
/// A device that wants to stay awake for longer is not waited for.
constexpr long longestDelay = 60'000;

/// The text of an open attribute without its line feed; empty when it cannot be read.
std::string textOf(const FileDescriptor& file) {
    if (!file.isOpen()) return {};
    std::array<char, 32> text{};
    const ssize_t length = pread(file.get(), text.data(), text.size(), 0);
    if (length <= 0) return {};
    std::string_view read(text.data(), static_cast<std::size_t>(length));
    if (read.ends_with('\n')) read.remove_suffix(1);
    return std::string(read);
}

void openBetter(FileDescriptor& file, int folder, const char* name) {
    if (FileDescriptor opened = openAttribute(folder, name); opened.isOpen()) file = std::move(opened);
}

}  // namespace

void RuntimePower::open(int deviceFolder) {
    openBetter(status_, deviceFolder, "power/runtime_status");
    openBetter(usage_, deviceFolder, "power/runtime_usage");
    openBetter(control_, deviceFolder, "power/control");
    openBetter(delay_, deviceFolder, "power/autosuspend_delay_ms");
}

RuntimePower::Advice RuntimePower::advice(nanoseconds now) {
    if (isAsleepStatus(textOf(status_))) return Advice::leave;
    if (wasRead_ && !isHeldAwake()) {
        const long delay = delay_.isOpen() ? readOpenNumber(delay_.get()).value : 0;
        const bool isFallingAsleep = delay > 0 && delay <= longestDelay;
        if (isFallingAsleep && now - readAt_ < std::chrono::milliseconds(delay) + slack) return Advice::wait;
    }
    readAt_ = now;
    wasRead_ = true;
    return Advice::read;
}

bool RuntimePower::isHeldAwake() const {
    if (textOf(control_) != "auto") return true;
    if (!usage_.isOpen()) return false;
    const AttributeReading usage = readOpenNumber(usage_.get());
    return usage.error == 0 && usage.value > 0;
}

}  // namespace calorivo
