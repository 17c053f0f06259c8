#pragma once

#include "platform/KeyValueCoding.h"
#include "ui/QZTemperatureLevelIndicatorCell.h"

#include <optional>
#include <string>
#include <unordered_map>

namespace calorivo {

/// One cell for each sensor, by its key or, for a drive, its serial number.
using CellMap = std::unordered_map<std::string, QZTemperatureLevelIndicatorCell>;

/// The cells as a block of bytes; equal maps give equal blocks.
///
/// All numbers little-endian: "CLCM", the version (2 bytes), the number of cells (4); for each cell, in byte
/// order of their names, the name's length (4), the name and the number of its fields (2); for each field the
/// length of its key (1), the key and the value (8, as a double).
[[nodiscard]] Data archivedCellMap(const CellMap& cells);

/// None when the block is no archive of cells of this version, whole to the last byte. A field that is
/// missing keeps its value in a new cell; a field that is not known is passed over.
[[nodiscard]] std::optional<CellMap> unarchivedCellMap(const Data& data);

}  // namespace calorivo
