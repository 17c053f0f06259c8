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
