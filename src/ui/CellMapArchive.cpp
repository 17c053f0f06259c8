#include "ui/CellMapArchive.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>
#include <utility>

namespace calorivo {

namespace {

constexpr std::string_view signature = "CLCM";
constexpr std::uint16_t version = 1;
/// Far beyond any temperature; a block with more than this is damaged.
constexpr double largestValue = 1e9;

/// One number of a cell under the key by which it is archived.
struct Field {
    std::string_view key;
    double (*get)(const QZTemperatureLevelIndicatorCell& cell);
    void (*set)(QZTemperatureLevelIndicatorCell& cell, double value);
};

template <double LevelRange::*Limit>
constexpr Field rangeField(std::string_view key) {
    return {key, [](const QZTemperatureLevelIndicatorCell& cell) { return cell.range().*Limit; },
            [](QZTemperatureLevelIndicatorCell& cell, double value) {
                LevelRange range = cell.range();
                range.*Limit = value;
                cell.setRange(range);
            }};
}

/// The value comes before the maximum: setting it may raise the maximum.
constexpr std::array<Field, 6> fields{{
    rangeField<&LevelRange::minValue>("minValue"),
    rangeField<&LevelRange::maxValue>("maxValue"),
    rangeField<&LevelRange::warningValue>("warningValue"),
    rangeField<&LevelRange::criticalValue>("criticalValue"),
    {"objectValue", [](const QZTemperatureLevelIndicatorCell& cell) { return cell.objectValue(); },
     [](QZTemperatureLevelIndicatorCell& cell, double value) {
         const float maximum = cell.maxUsedValue();
         cell.setObjectValue(value);
         cell.setMaxUsedValue(maximum);
     }},
    {"maxUsedValue",
     [](const QZTemperatureLevelIndicatorCell& cell) { return static_cast<double>(cell.maxUsedValue()); },
     [](QZTemperatureLevelIndicatorCell& cell, double value) {
         cell.setMaxUsedValue(static_cast<float>(value));
     }},
}};

class Writer {
  public:
    template <typename Number>
    void number(Number value) {
        for (std::size_t i = 0; i < sizeof(Number); ++i)
            data_.push_back(static_cast<std::uint8_t>((std::uint64_t{value} >> (8 * i)) & 0xFFU));
    }
    void text(std::string_view text) { data_.insert(data_.end(), text.begin(), text.end()); }
    [[nodiscard]] Data take() { return std::move(data_); }

  private:
    Data data_;
};

/// Reads from the front. After a failure every value is 0 or empty and `isGood` stays false.
class Reader {
  public:
    explicit Reader(const Data& data) : rest_(data.begin(), data.end()) {}

    template <typename Number>
    Number number() {
        const std::string bytes = text(sizeof(Number));
        std::uint64_t value = 0;
        for (std::size_t i = bytes.size(); i > 0; --i)
            value = (value << 8) | static_cast<std::uint8_t>(bytes[i - 1]);
        return static_cast<Number>(value);
    }
    std::string text(std::size_t length) {
        if (!isGood_ || rest_.size() - position_ < length) {
            isGood_ = false;
            return {};
        }
        position_ += length;
        return rest_.substr(position_ - length, length);
    }
    [[nodiscard]] bool isGood() const { return isGood_; }
    [[nodiscard]] bool isAtEnd() const { return isGood_ && position_ == rest_.size(); }

  private:
    std::string rest_;
    std::size_t position_ = 0;
    bool isGood_ = true;
};

/// The cell's fields; false when they cannot be used.
bool readFields(Reader& reader, QZTemperatureLevelIndicatorCell& cell) {
    const auto count = reader.number<std::uint16_t>();
    for (std::uint16_t i = 0; i < count && reader.isGood(); ++i) {
        const std::string key = reader.text(reader.number<std::uint8_t>());
        const double value = std::bit_cast<double>(reader.number<std::uint64_t>());
        if (!(std::abs(value) <= largestValue)) return false;
        for (const Field& field : fields)
            if (field.key == key) field.set(cell, value);
    }
    return reader.isGood() && cell.range().maxValue > cell.range().minValue;
}

}  // namespace

Data archivedCellMap(const CellMap& cells) {
    std::map<std::string_view, const QZTemperatureLevelIndicatorCell*> sorted;
    for (const auto& [name, cell] : cells) sorted.emplace(name, &cell);
    Writer writer;
    writer.text(signature);
    writer.number(version);
    writer.number(static_cast<std::uint32_t>(sorted.size()));
    for (const auto& [name, cell] : sorted) {
        writer.number(static_cast<std::uint32_t>(name.size()));
        writer.text(name);
        writer.number(static_cast<std::uint16_t>(fields.size()));
        for (const Field& field : fields) {
            writer.number(static_cast<std::uint8_t>(field.key.size()));
            writer.text(field.key);
            writer.number(std::bit_cast<std::uint64_t>(field.get(*cell)));
        }
    }
    return writer.take();
}

std::optional<CellMap> unarchivedCellMap(const Data& data) {
    Reader reader(data);
    if (reader.text(signature.size()) != signature || reader.number<std::uint16_t>() != version)
        return std::nullopt;
    CellMap cells;
    const auto count = reader.number<std::uint32_t>();
    for (std::uint32_t i = 0; i < count; ++i) {
        std::string name = reader.text(reader.number<std::uint32_t>());
        QZTemperatureLevelIndicatorCell cell;
        if (!readFields(reader, cell) || !cells.emplace(std::move(name), cell).second) return std::nullopt;
    }
    if (!reader.isAtEnd()) return std::nullopt;
    return cells;
}

}  // namespace calorivo
