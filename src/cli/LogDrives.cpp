#include "cli/LogDrives.h"

#include "platform/Format.h"
#include "sensors/SensorRules.h"

#include <utility>

namespace calorivo {

LogDrives::LogDrives(std::unique_ptr<SmartController> controller, const TemperatureReader& reader)
    : drives_(smartInfo_, [&controller] { return std::move(controller); }), reader_(reader) {
    drives_.createSmartController();
    drives_.getDiskTemps();
    columns_ = smartInfo_.drives();
}

std::string LogDrives::titles(std::string_view unit) const {
    std::string text;
    for (const DriveDictionary& drive : columns_)
        appendFormat(text, ",%@ (%@)", {driveModelFromDictionary(&drive).value_or(""), unit});
    return text;
}

std::string LogDrives::readFields() {
    drives_.getDiskTemps();
    std::string text;
    for (const DriveDictionary& column : columns_) {
        const double celsius = smartInfo_.temperatureOfDriveWithSerial(column.serial).value_or(0);
        if (isTempValid(celsius))
            appendFormat(text, ",%.0f", {reader_.convertDegrees(celsius)});
        else
            text += ",N/A";
    }
    return text;
}

}  // namespace calorivo
