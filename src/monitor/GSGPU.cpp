#include "monitor/GSGPU.h"

#include "monitor/GPUChangeObserver.h"
#include "monitor/GSMux.h"
#include "platform/AppleGraphicsControl.h"
#include "platform/Dispatch.h"
#include "platform/Format.h"
#include "platform/SystemLog.h"

#include <algorithm>
#include <chrono>
#include <string_view>
#include <utility>
#include <variant>

namespace calorivo {

namespace {

constexpr std::string_view legacyIntegratedName = "NVIDIA GeForce 9400M";
constexpr std::string_view legacyDiscreteName = "NVIDIA GeForce 9600M GT";
constexpr std::string_view integratedMaker = "Intel";
/// After this the switch has settled.
constexpr std::chrono::milliseconds switchSettles(500);

bool isIntegratedName(const std::string& name) { return name.starts_with(integratedMaker); }

bool equalsIgnoringCase(std::string_view text, std::string_view lower) {
    const auto lowered = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::ranges::equal(text, lower, {}, lowered);
}

bool isDisplay(const RegistryProperties& properties) {
    const auto found = properties.find("IOName");
    const auto* const name = found == properties.end() ? nullptr : std::get_if<std::string>(&found->second);
    return name != nullptr && equalsIgnoringCase(*name, "display");
}

/// The model's bytes up to the first zero; none when they are missing, empty or no ASCII.
std::optional<std::string> modelText(const RegistryProperties& properties) {
    const auto found = properties.find("model");
    const auto* const data =
        found == properties.end() ? nullptr : std::get_if<std::vector<std::uint8_t>>(&found->second);
    if (data == nullptr) return std::nullopt;
    std::string text(data->begin(), std::ranges::find(*data, std::uint8_t{0}));
    const bool isASCII = std::ranges::all_of(text, [](unsigned char c) { return c < 0x80; });
    if (text.empty() || !isASCII) return std::nullopt;
    return text;
}

}  // namespace

/// One observer, and the queue that it is told on. The last member goes first, so that no callback finds the
/// queue gone.
struct GSGPU::Registration {
    GPUChangeObserver& observer;
    std::unique_ptr<Queue> notificationQueue;
    Observation callback;
};

GSGPU::GSGPU(GSGPUParts parts) : parts_(std::move(parts)) {}
GSGPU::~GSGPU() = default;

std::vector<std::string> GSGPU::findGPUNames() {
    AppleGraphicsControl& control = parts_.control;
    std::vector<std::string> names;
    io_iterator_t services = 0;
    if (control.IOServiceGetMatchingServices(kIOMasterPortDefault, control.IOServiceMatching("IOPCIDevice"),
                                             services) != io_return::success)
        return names;
    while (const io_service_t service = control.IOIteratorNext(services)) {
        RegistryProperties properties;
        if (control.IORegistryEntryCreateCFProperties(service, properties) == io_return::success &&
            isDisplay(properties)) {
            if (auto name = modelText(properties)) names.push_back(std::move(*name));
        }
        control.IOObjectRelease(service);
    }
    control.IOObjectRelease(services);
    return names;
}

const std::vector<std::string>& GSGPU::getGPUNames() {
    const std::scoped_lock guard(lock_);
    if (!names_) names_ = findGPUNames();
    return *names_;
}

bool GSGPU::isLegacyMachine() {
    const auto& names = getGPUNames();
    const std::scoped_lock guard(lock_);
    if (!isLegacy_)
        isLegacy_ = std::ranges::find(names, legacyIntegratedName) != names.end() &&
                    std::ranges::find(names, legacyDiscreteName) != names.end();
    return *isLegacy_;
}

std::optional<std::string> GSGPU::integratedGPUName() {
    if (parts_.isUsingKeysFile && parts_.isUsingKeysFile()) return std::nullopt;
    const bool isLegacy = isLegacyMachine();
    const auto& names = getGPUNames();
    const std::scoped_lock guard(lock_);
    if (!integratedName_) {
        const auto found = std::ranges::find_if(names, isIntegratedName);
        if (isLegacy)
            integratedName_.emplace(legacyIntegratedName);
        else
            integratedName_.emplace(found == names.end() ? std::nullopt : std::optional(*found));
    }
    return *integratedName_;
}

std::optional<std::string> GSGPU::discreteGPUName() {
    const bool isLegacy = isLegacyMachine();
    const auto& names = getGPUNames();
    const std::scoped_lock guard(lock_);
    if (!discreteName_) {
        const auto found = std::ranges::find_if_not(names, isIntegratedName);
        if (isLegacy)
            discreteName_ = legacyDiscreteName;
        else
            discreteName_ = found == names.end() ? "GPU" : *found;
    }
    return discreteName_;
}

bool GSGPU::is2010MacBookPro() {
    const std::scoped_lock guard(lock_);
    // Kept: what that machine would need is switched off, so no machine is that one.
    if (!std::exchange(isWarningLogged_, true))
        parts_.systemLog.log("Nuke it from orbit switching disabled.");
    return false;
}

Observation GSGPU::registerForGPUChangeNotifications(GPUChangeObserver& observer) {
    const auto registration = std::make_shared<Registration>(
        Registration{observer, parts_.dispatch.makeSerialQueue("gpu-notification"), {}});
    registration->callback = parts_.displays.CGDisplayRegisterReconfigurationCallback(
        [this, target = registration.get()](CGDirectDisplayID display, CGDisplayChangeSummaryFlags flags) {
            displayWasReconfigured(*target, display, flags);
        });
    registration_ = registration;
    return Observation([owned = registration]() mutable { owned.reset(); });
}

void GSGPU::fireManualChangeNotification() {
    if (const auto registration = registration_.lock())
        displayWasReconfigured(*registration, parts_.displays.CGMainDisplayID(), kCGDisplaySetModeFlag);
}

void GSGPU::displayWasReconfigured(Registration& registration, CGDirectDisplayID display,
                                   CGDisplayChangeSummaryFlags flags) {
    if ((flags & kCGDisplayAddFlag) != 0 || !parts_.displays.CGDisplayIsBuiltin(display)) {
        if (!isLegacyMachine())
            parts_.systemLog.log("A non-built-in display reconfiguration callback has been triggered.");
    }
    // Kept: also for a display that is not built in.
    if ((flags & kCGDisplaySetModeFlag) == 0) return;
    registration.notificationQueue->async([this, &observer = registration.observer] { notify(observer); });
}

void GSGPU::notify(GPUChangeObserver& observer) {
    parts_.dispatch.sleep(switchSettles);
    const bool integrated = parts_.mux.isUsingIntegratedGPU();
    parts_.systemLog.log(format("Notification: GPU changed. Integrated? %d", integrated));
    observer.GPUDidChangeTo(integrated ? 0 : 1);
}

}  // namespace calorivo
