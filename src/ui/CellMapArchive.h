#pragma once

#include "platform/KeyValueCoding.h"
#include "ui/QZTemperatureLevelIndicatorCell.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>

namespace calorivo {

/// One cell for each sensor, by its key or, for a drive, its serial number.
/// Most identifiers are keys of four characters, looked up at every check: they are hashed as one number.
struct IdentifierHash {
    std::size_t operator()(const std::string& identifier) const noexcept {
        if (identifier.size() != 4) return std::hash<std::string>{}(identifier);
        std::uint32_t characters = 0;
        std::memcpy(&characters, identifier.data(), sizeof characters);
        return static_cast<std::size_t>((characters * std::uint64_t{0x9E3779B97F4A7C15}) >> 32);
    }
};
using CellMap = std::unordered_map<std::string, QZTemperatureLevelIndicatorCell, IdentifierHash>;

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
