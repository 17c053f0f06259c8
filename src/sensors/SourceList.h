#pragma once

#include "platform/Image.h"
#include "platform/Property.h"
#include "sensors/Areas.h"
#include "sensors/SensorLists.h"
#include "sensors/SmartInfo.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

namespace calorivo {

/// One entry of the source list.
struct SourceListModel {
    std::string name;
    Image icon;
    std::int32_t tag = 0;
    friend bool operator==(const SourceListModel&, const SourceListModel&) = default;
};

/// What one row of the sensor table shows: nothing, a sensor or a drive.
using TableRow = std::variant<std::monostate, SensorKey, DriveDictionary>;

enum class TableView { cpuTableView, other };

/// The areas on the left of the main window, and what the selected one shows on the right. Main thread.
class SourceList {
  public:
    using Entries = std::vector<SourceListModel>;
    using Indexes = std::set<std::size_t>;

    /// All must outlive this object. `reloadTable` is called when another area is chosen; it may be empty.
    SourceList(const SensorLists& lists, const SmartInfo& smartInfo, const Property<bool>& checkDriveTemps,
               std::function<void()> reloadTable);

    /// Builds the list anew. The chosen area stays chosen, and is selected as long as it is listed.
    void setupSourceList();
    /// Appends the entry unless its area holds nothing.
    static void addAreaToSourceListWithNameWithIconWithTag(std::size_t areaCount, Entries& sourceList,
                                                           std::string name, Image icon, std::int32_t tag);

    [[nodiscard]] std::size_t numberOfRowsInTableView(TableView table) const;
    /// The key of the row's sensor, or the trimmed serial number of its drive; none for no row.
    [[nodiscard]] std::optional<std::string> getTemperatureSensorNameForRow(std::size_t row) const;
    [[nodiscard]] TableRow row(std::size_t row) const;

    /// The tag of the chosen area.
    Property<std::int32_t> activeAreaTag;
    void setActiveAreaTag(std::int32_t tag);

    Property<Entries> sourceListNames;
    /// At first the area below "All".
    Property<Indexes> sourceListSelectedIndexes{Indexes{1}};
    void setSourceListSelectedIndexes(Indexes indexes);
    /// The selected entries, in the order of the list.
    [[nodiscard]] Entries selectedObjects() const;
    [[nodiscard]] Observation observeSelectedObjects(std::function<void()> tell) {
        return selectedObjectsObservers_.add(std::move(tell));
    }

  private:
    [[nodiscard]] std::size_t drivesOf(const Area& area) const;
    void selectActiveArea();

    const SensorLists& lists_;
    const SmartInfo& smartInfo_;
    const Property<bool>& checkDriveTemps_;
    std::function<void()> reloadTable_;
    Observers selectedObjectsObservers_;
};

}  // namespace calorivo
