#include "app/DesktopSettings.h"

#include <string_view>

namespace calorivo {

namespace {

/// Calls `use(key, property)` for each setting.
template <typename Settings, typename Use>
void forEachSetting(Settings& settings, const Use& use) {
    use("desktopTitlePlace", settings.titlePlace);
    use("desktopColorScheme", settings.colorScheme);
    use("desktopMainWindowGeometry", settings.mainWindowGeometry);
    use("desktopMainWindowSplitter", settings.mainWindowSplitter);
    use("desktopSensorTableHeader", settings.sensorTableHeader);
    use("desktopFanTableHeader", settings.fanTableHeader);
    use("desktopShowsDetails", settings.showsDetails);
}

std::int32_t known(std::int32_t choice) { return choice >= 0 && choice <= 2 ? choice : 0; }

void assign(Property<std::int32_t>& property, const Value& value) { property = known(value.intValue()); }
void assign(Property<bool>& property, const Value& value) { property = value.boolValue(); }
void assign(Property<Data>& property, const Value& value) { property = value.dataValue(); }

}  // namespace

void DesktopSettings::load(const StandardUserDefaults& store) {
    forEachSetting(
        *this, [&store](std::string_view key, auto& property) { assign(property, store.objectForKey(key)); });
}

void DesktopSettings::save(StandardUserDefaults& store) const {
    forEachSetting(*this, [&store](std::string_view key, const auto& property) {
        store.setObjectForKey(Value(property.get()), key);
    });
}

}  // namespace calorivo
