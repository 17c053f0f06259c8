#include "monitor/Fans.h"

#include "monitor/HardwareText.h"
#include "platform/Format.h"
#include "smc/SmcClient.h"
#include "smc/SmcReaders.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>
#include <utility>

namespace calorivo {

namespace {

/// One of a fan's keys: "F", one digit, and what is asked for.
class FanKey {
  public:
    FanKey(std::size_t position, std::string_view subject) {
        // Kept: a key has room for one digit. From the eleventh fan on it is the first of the number, so that
        // fan 10 reads like fan 1.
        while (position >= 10) position /= 10;
        characters_ = {'F', static_cast<char>('0' + position), subject[0], subject[1]};
    }
    // NOLINTNEXTLINE(google-explicit-constructor): the readers take keys as texts.
    operator std::string_view() const { return {characters_.data(), characters_.size()}; }

  private:
    std::array<char, 4> characters_{};
};

constexpr std::string_view speedFormat = "%d RPM";

std::string speedText(std::int32_t rpm) { return format(speedFormat, rpm); }

std::string fanName(std::size_t position) {
    constexpr std::size_t nameStart = 4;  // four bytes of other data come before it
    SmcValue value;
    if (smcReadKey(FanKey(position, "ID"), value) != io_return::success)
        return format("Fan %d", position + 1);
    std::string name = textFromHardware(std::span(value.bytes).subspan(nameStart));
    if (name == "Left side") name = "Left Side";
    return name;
}

FanModel builtFan(std::size_t position) {
    FanModel fan;
    fan.fanNumber = static_cast<std::int32_t>(position);
    fan.name = fanName(position);
    fan.minRPM = smcFanSpeed(FanKey(position, "Mn"));
    fan.maxRPM = smcFanSpeed(FanKey(position, "Mx"));
    fan.minRPMAsString = speedText(fan.minRPM);
    fan.maxRPMAsString = speedText(fan.maxRPM);
    fan.warningRPM = static_cast<float>(fan.maxRPM) * 0.75F;
    fan.criticalRPM = static_cast<float>(fan.maxRPM) * 0.9F;
    fan.actualRPMSensorName = format("F%dAc", position);
    return fan;
}

void putLeftSideFirst(std::vector<FanModel>& fans) {
    if (fans.size() != 2 || fans[0].name != "Right Side" || fans[1].name != "Left Side") return;
    std::swap(fans[0], fans[1]);
    std::swap(fans[0].fanNumber, fans[1].fanNumber);
}

}  // namespace

void Fans::getAllFanSensors() {
    const auto count = static_cast<std::size_t>(std::max(lists_.numFans.get(), 0));
    std::vector<FanModel> fans;
    fans.reserve(count);
    for (std::size_t position = 0; position < count; ++position) fans.push_back(builtFan(position));
    putLeftSideFirst(fans);
    // Kept: nothing was set, but finding the fans has always been a moment at which the store is written.
    userDefaults_.synchronize();
    setFansArray(std::move(fans));
}

void Fans::updateFans() {
    double total = 0.0;
    for (std::size_t position = 0; position < fansArray_.size(); ++position) {
        FanModel& fan = fansArray_[position];
        // Kept: the key follows the position and not `actualRPMSensorName`. Two fans that changed places show
        // their own limits, but the speed of the place where they stand.
        std::int32_t speed = smcFanSpeed(FanKey(position, "Ac"));
        if (speed == 0) speed = fan.minRPM;
        if (speed != fan.actualRPM || fan.actualRPMAsString.empty()) {
            fan.actualRPM = speed;
            fan.actualRPMAsString.clear();
            appendFormat(fan.actualRPMAsString, speedFormat, {speed});
        }
        total += speed;
    }
    fansArrayObservers_.announce();
    const std::int32_t count = lists_.numFans;
    const std::int32_t before = avgRPM;
    avgRPM = count > 0 ? static_cast<std::int32_t>(total / count) : 0;
    if (avgRPM != before || avgRPMAsString.get().empty())
        avgRPMAsString = speedText(avgRPM);
    else
        avgRPMAsString.announce();  // the same text need not be made again
}

void Fans::setFansArray(std::vector<FanModel> fans) {
    fansArray_ = std::move(fans);
    fansArrayObservers_.announce();
}

void Fans::insertObjectInFansArrayAtIndex(FanModel fan, std::size_t index) {
    const auto place = static_cast<std::ptrdiff_t>(std::min(index, fansArray_.size()));
    fansArray_.insert(fansArray_.begin() + place, std::move(fan));
    fansArrayObservers_.announce();
}

void Fans::removeObjectFromFansArrayAtIndex(std::size_t index) {
    if (index >= fansArray_.size()) return;
    fansArray_.erase(fansArray_.begin() + static_cast<std::ptrdiff_t>(index));
    fansArrayObservers_.announce();
}

}  // namespace calorivo
