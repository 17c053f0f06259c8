#include "monitor/TemperatureReader.h"

#include "platform/Format.h"
#include "sensors/SensorRules.h"
#include "smc/SmcReaders.h"

namespace calorivo {

namespace {

constexpr std::string_view degreeSign = "\u00B0";
/// An integrated GPU never gets this hot: above it the sensor counts as unreadable.
constexpr double integratedGPULimit = 95.0;
/// A powered-down GPU does not warm up by more than this between two readings.
constexpr double retainedGPUJump = 40.0;

/// In the user's unit, whatever the temperature is.
double inUnit(double celsius, std::int32_t tempUnit) {
    if (tempUnit == 0) return celsius;
    // Kept: the factor is the single-precision number next to 1.8. Texts and logs have always been rounded
    // from its products.
    constexpr auto factor = static_cast<double>(1.8F);
    return celsius * factor + 32.0;
}

}  // namespace

double TemperatureReader::getTemperatureForSensor(std::optional<SensorKey> key) {
    if (!key) return 0.0;
    const double celsius =
        retained(*key, lists_.isUsingKeysFile ? valueFromKeysFile(*key) : valueFromSMC(*key));
    cache_.insert_or_assign(*key, celsius);
    return celsius;
}

double TemperatureReader::getCachedTemperatureForSensor(SensorKey key) {
    const auto cached = cache_.find(key);
    return cached != cache_.end() ? cached->second : getTemperatureForSensor(key);
}

double TemperatureReader::valueFromKeysFile(SensorKey key) const {
    const auto found = lists_.fakeSensorToTempMap.find(key);
    return found != lists_.fakeSensorToTempMap.end() ? found->second : 0.0;
}

double TemperatureReader::valueFromSMC(SensorKey key) const {
    const double celsius = smcTemperature(key.view());
    return celsius > integratedGPULimit && isSensorIntegratedGPU(lists_, key) ? 0.0 : celsius;
}

double TemperatureReader::retained(SensorKey key, double celsius) const {
    if (retainingGPUModel_.empty() || lists_.modelName != retainingGPUModel_) return celsius;
    if (gpu_.currentGPUType != 0 || !isSensorDiscreteGPU(lists_, key)) return celsius;
    const auto cached = cache_.find(key);
    const double previous = cached != cache_.end() ? cached->second : 0.0;
    const bool isImplausible = celsius - previous > retainedGPUJump || !isTempValid(celsius);
    return previous > 0.0 && isImplausible ? previous : celsius;
}

double TemperatureReader::convertDegrees(double celsius) const {
    return isTempValid(celsius) ? inUnit(celsius, preferences_.tempUnit) : 0.0;
}

std::string TemperatureReader::convertDegreesToString(double celsius) const {
    if (!isTempValid(celsius)) return "N/A";
    return format("%.0f%@", inUnit(celsius, preferences_.tempUnit), degreesLabelString());
}

std::string TemperatureReader::degreesLabelString() const {
    return format(preferences_.tempUnit != 0 ? "%@F" : "%@C", degreeSign);
}

}  // namespace calorivo
