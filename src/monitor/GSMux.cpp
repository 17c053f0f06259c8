#include "monitor/GSMux.h"

#include "platform/Dispatch.h"
#include "platform/Format.h"
#include "platform/SystemLog.h"

#include <array>
#include <chrono>

namespace calorivo {

namespace {

namespace selector = graphics_switch::selector;
namespace state = graphics_switch::state;

constexpr std::uint64_t oldStylePolicy = 2;
constexpr std::chrono::seconds policySettles(1);

}  // namespace

void GSMux::logResult(const char* pattern, kern_return_t result) {
    parts_.systemLog.log(format(pattern, result));
}

bool GSMux::switcherOpen() {
    AppleGraphicsControl& control = parts_.control;
    io_iterator_t services = 0;
    kern_return_t result = control.IOServiceGetMatchingServices(
        kIOMasterPortDefault, control.IOServiceMatching("AppleGraphicsControl"), services);
    if (result != io_return::success) {
        logResult("IOServiceGetMatchingServices returned 0x%08x.", result);
        return false;
    }
    const io_service_t service = control.IOIteratorNext(services);
    control.IOObjectRelease(services);
    if (service == 0) {
        parts_.systemLog.log("No matching drivers found.");
        return false;
    }
    io_connect_t connection = 0;
    result = control.IOServiceOpen(service, control.machTaskSelf(), 0, connection);
    control.IOObjectRelease(service);
    if (result != io_return::success) {
        logResult("IOServiceOpen returned 0x%08x.", result);
        return false;
    }
    connection_ = connection;
    std::uint32_t outputCount = 0;
    result = control.IOConnectCallScalarMethod(connection, selector::open, {}, nullptr, outputCount);
    if (result != io_return::success) {
        // Kept: the connection stays, so that switcherClose gives it back.
        logResult("IOConnectCallScalarMethod returned 0x%08x.", result);
        return false;
    }
    parts_.systemLog.log("Driver connection opened.");
    return true;
}

void GSMux::switcherClose() {
    if (!isOpen()) return;
    std::uint32_t outputCount = 0;
    kern_return_t result =
        parts_.control.IOConnectCallScalarMethod(connection_, selector::close, {}, nullptr, outputCount);
    if (result != io_return::success) logResult("IOConnectCallScalarMethod returned 0x%08x.", result);
    result = parts_.control.IOServiceClose(connection_);
    if (result != io_return::success) logResult("IOServiceClose returned 0x%08x.", result);
    connection_ = 0;
    parts_.systemLog.log("Driver connection closed.");
}

std::uint64_t GSMux::getMuxState(std::uint64_t state) {
    const std::array<std::uint64_t, 2> input{graphics_switch::number, state};
    std::uint64_t value = 0;
    std::uint32_t outputCount = 1;
    const kern_return_t result = parts_.control.IOConnectCallScalarMethod(connection_, selector::getMuxState,
                                                                          input, &value, outputCount);
    if (result != io_return::success) {
        logResult("getMuxState returned 0x%08x.", result);
        return 0;
    }
    parts_.systemLog.log(
        format("getMuxState was successful (count=%d, value=0x%08llx).", outputCount, value));
    return value;
}

void GSMux::setMuxState(std::uint64_t state, std::uint64_t value) {
    const std::array<std::uint64_t, 3> input{graphics_switch::number, state, value};
    std::uint32_t outputCount = 0;
    const kern_return_t result = parts_.control.IOConnectCallScalarMethod(connection_, selector::setMuxState,
                                                                          input, nullptr, outputCount);
    if (result != io_return::success)
        logResult("setMuxState returned 0x%08x.", result);
    else
        parts_.systemLog.log("setMuxState was successful.");
}

bool GSMux::setMode(std::int32_t mode) {
    if (!isOpen()) return false;
    switch (mode) {
        case GSMuxMode::integratedOnly:
        case GSMuxMode::discreteOnly:
            chooseOnly(mode);
            break;
        case GSMuxMode::dynamicSwitching:
            setMuxState(state::dynamicSwitchingEnabled, 1);
            setMuxState(state::switchPolicy, 0);
            setMuxState(state::dynamicSwitching, 1);
            break;
        case GSMuxMode::toggle:
            setMuxState(state::forceSwitch, 0);
            break;
        default:
            break;  // Kept: an unknown mode is no failure.
    }
    return true;
}

void GSMux::chooseOnly(std::int32_t mode) {
    setMuxState(state::dynamicSwitching, 0);
    if (!parts_.is2010MacBookPro()) {
        setMuxState(state::dynamicSwitchingDisabled, 1);
        setMuxState(state::switchPolicy, oldStylePolicy);
    }
    parts_.dispatch.sleep(policySettles);
    const bool wantsIntegrated = mode == GSMuxMode::integratedOnly;
    if (isUsingIntegratedGPU() != wantsIntegrated) setMuxState(state::forceSwitch, 0);
}

bool GSMux::isUsingIntegratedGPU() { return isOpen() && getMuxState(state::graphicsSelection) != 0; }

// Kept: without a connection this is true. The one who asks does so only after a successful open.
bool GSMux::isUsingDiscreteGPU() { return !isUsingIntegratedGPU(); }

bool GSMux::isUsingDynamicSwitching() { return isOpen() && getMuxState(state::dynamicSwitching) != 0; }

// Kept: asks even without a connection, which logs the driver's refusal.
bool GSMux::isUsingOldStyleSwitchPolicy() { return getMuxState(state::switchPolicy) == oldStylePolicy; }

bool GSMux::isOnIntegratedOnlyMode() {
    return isUsingIntegratedGPU() && (isUsingOldStyleSwitchPolicy() || parts_.is2010MacBookPro());
}

bool GSMux::isOnDiscreteOnlyMode() {
    return isUsingDiscreteGPU() && (isUsingOldStyleSwitchPolicy() || parts_.is2010MacBookPro());
}

}  // namespace calorivo
