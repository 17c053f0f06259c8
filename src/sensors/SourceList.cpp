#include "sensors/SourceList.h"

#include <algorithm>
#include <utility>

namespace calorivo {

namespace {

/// Null for a tag of no area: 6, 8 and everything outside of 0 to 18.
const Area* areaTagged(std::int32_t tag) {
    const auto* const found =
        std::find_if(areas.begin(), areas.end(), [tag](const Area& area) { return area.tag == tag; });
    return found != areas.end() ? found : nullptr;
}

Image templateImage(std::string_view name) { return {std::string(name), true}; }

}  // namespace

SourceList::SourceList(const SensorLists& lists, const SmartInfo& smartInfo,
                       const Property<bool>& checkDriveTemps, std::function<void()> reloadTable)
    : lists_(lists),
      smartInfo_(smartInfo),
      checkDriveTemps_(checkDriveTemps),
      reloadTable_(std::move(reloadTable)) {}

void SourceList::setupSourceList() {
    // An index that no entry had yet, as at the start, selects the entry that comes to stand there.
    const bool isIndexWaiting = selectedObjects().empty() && !sourceListSelectedIndexes.get().empty();
    Entries entries;
    entries.reserve(areas.size());
    for (const Area& area : areas) {
        // Everything has an entry even when there is nothing.
        const std::size_t count =
            area.tag == allAreasTag
                ? 1
                : (lists_.*area.sensors).count() + (area.tag == hardDriveAreaTag ? smartInfo_.count() : 0);
        addAreaToSourceListWithNameWithIconWithTag(count, entries, std::string(area.name),
                                                   templateImage(area.icon), area.tag);
    }
    sourceListNames = std::move(entries);
    if (!isIndexWaiting) selectActiveArea();
    selectedObjectsObservers_.announce();
}

void SourceList::addAreaToSourceListWithNameWithIconWithTag(std::size_t areaCount, Entries& sourceList,
                                                            std::string name, Image icon, std::int32_t tag) {
    if (areaCount == 0) return;
    icon.isTemplate = true;
    sourceList.push_back({std::move(name), std::move(icon), tag});
}

void SourceList::selectActiveArea() {
    const Entries& entries = sourceListNames;
    const auto active = std::find_if(entries.begin(), entries.end(), [this](const SourceListModel& entry) {
        return entry.tag == activeAreaTag;
    });
    Indexes indexes;
    if (active != entries.end()) indexes.insert(static_cast<std::size_t>(active - entries.begin()));
    sourceListSelectedIndexes = std::move(indexes);
}

std::size_t SourceList::drivesOf(const Area& area) const {
    if (area.tag == hardDriveAreaTag) return smartInfo_.count();
    return area.tag == allAreasTag && checkDriveTemps_ ? smartInfo_.count() : 0;
}

std::size_t SourceList::numberOfRowsInTableView(TableView table) const {
    if (table != TableView::cpuTableView) return 0;
    const Area* const area = areaTagged(activeAreaTag);
    return area != nullptr ? (lists_.*area->sensors).count() + drivesOf(*area) : 0;
}

TableRow SourceList::row(std::size_t row) const {
    const Area* const area = areaTagged(activeAreaTag);
    if (area == nullptr) return {};
    const KeyList& sensors = lists_.*area->sensors;
    // Kept: "Hard Drive" begins with the drives, "All" ends with them.
    const std::size_t firstSensor = area->tag == hardDriveAreaTag ? smartInfo_.count() : 0;
    if (row >= firstSensor && row - firstSensor < sensors.count()) return sensors[row - firstSensor];
    if (area->tag != hardDriveAreaTag && area->tag != allAreasTag) return {};
    const auto drive = smartInfo_.drive(row < firstSensor ? row : row - sensors.count());
    return drive ? TableRow(*drive) : TableRow();
}

std::optional<std::string> SourceList::getTemperatureSensorNameForRow(std::size_t row) const {
    const TableRow shown = this->row(row);
    if (const auto* key = std::get_if<SensorKey>(&shown)) return key->text();
    if (const auto* drive = std::get_if<DriveDictionary>(&shown)) return std::string(trimmed(drive->serial));
    return std::nullopt;
}

void SourceList::setActiveAreaTag(std::int32_t tag) {
    activeAreaTag = tag;
    if (reloadTable_) reloadTable_();
}

void SourceList::setSourceListSelectedIndexes(Indexes indexes) {
    sourceListSelectedIndexes = std::move(indexes);
    selectedObjectsObservers_.announce();
}

SourceList::Entries SourceList::selectedObjects() const {
    const Entries& entries = sourceListNames;
    Entries selected;
    for (const std::size_t index : sourceListSelectedIndexes.get())
        if (index < entries.size()) selected.push_back(entries[index]);
    return selected;
}

}  // namespace calorivo
