#include "ui/CellMapArchive.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace calorivo {
namespace {

QZTemperatureLevelIndicatorCell cellWith(double value, float maximum) {
    QZTemperatureLevelIndicatorCell cell(
        {.minValue = 5, .maxValue = 115, .warningValue = 75, .criticalValue = 99});
    cell.setObjectValue(value);
    cell.setMaxUsedValue(maximum);
    return cell;
}

/// Blocks written by hand.
class Block {
  public:
    Block& text(std::string_view text) {
        data_.insert(data_.end(), text.begin(), text.end());
        return *this;
    }
    Block& bytes(std::initializer_list<int> bytes) {
        for (const int byte : bytes) data_.push_back(static_cast<std::uint8_t>(byte));
        return *this;
    }
    Block& header(int cells) { return text("CLCM").bytes({1, 0, cells, 0, 0, 0}); }
    Block& cell(std::string_view name, int fields) {
        return bytes({static_cast<int>(name.size()), 0, 0, 0}).text(name).bytes({fields, 0});
    }
    /// 61.5 as a double.
    Block& field(std::string_view key) {
        return bytes({static_cast<int>(key.size())}).text(key).bytes({0, 0, 0, 0, 0, 0xC0, 0x4E, 0x40});
    }
    [[nodiscard]] const Data& data() const { return data_; }

  private:
    Data data_;
};

QZTemperatureLevelIndicatorCell recorded() {
    QZTemperatureLevelIndicatorCell cell;
    cell.setMaxUsedValue(61.5F);
    return cell;
}

TEST(CellMapArchive, GivesBackWhatWasArchived) {
    const CellMap cells{{"TC0P", cellWith(47.3, 61.25F)}, {"", cellWith(-3, 0)}, {"WD 12°", cellWith(0, 33)}};
    EXPECT_EQ(unarchivedCellMap(archivedCellMap(cells)), cells);
    EXPECT_EQ(unarchivedCellMap(archivedCellMap({})), CellMap{});
}

TEST(CellMapArchive, KeepsAMaximumBelowTheValue) {
    const CellMap cells{{"TC0P", cellWith(70, 20)}};
    EXPECT_EQ(unarchivedCellMap(archivedCellMap(cells)), cells);
}

TEST(CellMapArchive, IsEqualForEqualMaps) {
    CellMap one;
    CellMap other;
    for (int i = 0; i < 40; ++i) one[std::to_string(i)] = cellWith(i, 90);
    for (int i = 39; i >= 0; --i) other[std::to_string(i)] = cellWith(i, 90);
    EXPECT_EQ(archivedCellMap(one), archivedCellMap(other));
}

TEST(CellMapArchive, ReadsTheFieldsThatThereAre) {
    const Block block =
        Block().header(2).cell("TC0P", 2).field("futureValue").field("maxUsedValue").cell("TC1P", 0);
    EXPECT_EQ(unarchivedCellMap(block.data()), (CellMap{{"TC0P", recorded()}, {"TC1P", {}}}));
}

TEST(CellMapArchive, IsNoneUnlessItIsWhole) {
    const Data whole = Block().header(1).cell("TC0P", 1).field("maxUsedValue").data();
    ASSERT_EQ(unarchivedCellMap(whole), (CellMap{{"TC0P", recorded()}}));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Data part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(unarchivedCellMap(part), std::nullopt) << length;
    }
    Data longer = whole;
    longer.push_back(0);
    EXPECT_EQ(unarchivedCellMap(longer), std::nullopt);
}

TEST(CellMapArchive, IsNoneForAnotherKindOrVersion) {
    EXPECT_EQ(unarchivedCellMap(Block().text("bplist00").bytes({0, 0, 0, 0}).data()), std::nullopt);
    EXPECT_EQ(unarchivedCellMap(Block().text("CLCM").bytes({2, 0, 0, 0, 0, 0}).data()), std::nullopt);
}

TEST(CellMapArchive, IsNoneWithValuesThatNoCellHas) {
    const auto withField = [](std::string_view key, std::initializer_list<int> value) {
        return Block()
            .header(1)
            .cell("T", 1)
            .bytes({static_cast<int>(key.size())})
            .text(key)
            .bytes(value)
            .data();
    };
    // Not a number, infinite, far too large; and a range that ends before it begins.
    EXPECT_EQ(unarchivedCellMap(withField("maxUsedValue", {0, 0, 0, 0, 0, 0, 0xF8, 0x7F})), std::nullopt);
    EXPECT_EQ(unarchivedCellMap(withField("maxUsedValue", {0, 0, 0, 0, 0, 0, 0xF0, 0x7F})), std::nullopt);
    EXPECT_EQ(unarchivedCellMap(withField("objectValue", {0, 0, 0, 0, 0, 0, 0xF0, 0x47})), std::nullopt);
    EXPECT_EQ(unarchivedCellMap(withField("maxValue", {0, 0, 0, 0, 0, 0, 0x4E, 0xC0})), std::nullopt);
}

TEST(CellMapArchive, IsNoneWithANameTwice) {
    EXPECT_EQ(unarchivedCellMap(Block().header(2).cell("TC0P", 0).cell("TC0P", 0).data()), std::nullopt);
}

TEST(CellMapArchive, IsNoneForCountsAndLengthsBeyondTheBlock) {
    EXPECT_EQ(unarchivedCellMap(Block().text("CLCM").bytes({1, 0, 0xFF, 0xFF, 0xFF, 0xFF}).data()),
              std::nullopt);
    EXPECT_EQ(unarchivedCellMap(Block().header(1).bytes({0xFF, 0xFF, 0xFF, 0xFF}).text("TC0P").data()),
              std::nullopt);
    EXPECT_EQ(unarchivedCellMap(Block().header(1).cell("TC0P", 200).field("maxUsedValue").data()),
              std::nullopt);
}

}  // namespace
}  // namespace calorivo
