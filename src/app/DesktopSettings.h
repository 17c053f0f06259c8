#pragma once

#include "platform/KeyValueCoding.h"
#include "platform/Property.h"
#include "platform/StatusBar.h"
#include "platform/UserDefaults.h"

#include <cstdint>

namespace calorivo {

enum class ColorScheme { automatic = 0, light = 1, dark = 2 };

/// What the desktop itself remembers, beside the preferences: how things look and where they stand. Held by
/// the same store, under keys of its own, and written at the moments when the preferences are. Main thread.
struct DesktopSettings {
    /// A TitlePlace.
    Property<std::int32_t> titlePlace;
    /// A ColorScheme.
    Property<std::int32_t> colorScheme;
    /// As the toolkit packs them; empty for none.
    Property<Data> mainWindowGeometry;
    Property<Data> mainWindowSplitter;
    Property<Data> sensorTableHeader;
    Property<Data> fanTableHeader;
    Property<bool> showsDetails;

    void load(const StandardUserDefaults& store);
    /// Sets the keys; it is the store's user who synchronizes it.
    void save(StandardUserDefaults& store) const;
};

}  // namespace calorivo
