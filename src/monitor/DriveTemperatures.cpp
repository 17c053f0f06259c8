#include "monitor/DriveTemperatures.h"

namespace calorivo {

std::string driveTemperatureStringFromDictionary(const DriveDictionary* drive,
                                                 const TemperatureReader& reader) {
    return drive != nullptr ? reader.convertDegreesToString(drive->temp) : std::string();
}

void DriveTemperatures::createSmartController() {
    const std::lock_guard lock(reading_);
    if (smartController_ == nullptr && makeController_) smartController_ = makeController_();
}

void DriveTemperatures::getDiskTemps() {
    const std::lock_guard lock(reading_);
    if (smartController_ == nullptr) return;
    // Asked under the lock: a check that was on its way as the drives were switched off must not fill the
    // list after it was cleared.
    if (isWanted_ && !isWanted_()) return;
    smartController_->update();
    smartInfo_.assign(smartController_->allDisks());
}

std::vector<float> DriveTemperatures::driveTemperatures() {
    std::vector<float> temperatures;
    for (const DriveDictionary& drive : smartInfo_.drives())
        temperatures.push_back(driveTemperatureFromDictionary(&drive));
    return temperatures;
}

}  // namespace calorivo
