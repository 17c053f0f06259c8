#include "ui/qt/SensorTableModel.h"

#include "MainWindowFixture.h"
#include "sensors/Areas.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace calorivo {
namespace {

using Texts = std::vector<std::string>;

/// Two CPU sensors at 61 and 47.5 degrees, one GPU sensor at 70 and a drive at 37; "All" is chosen. The model
/// stands by itself: nothing paints it.
class SensorTableModelTest : public test::MainWindowFixture {
  protected:
    void SetUp() override {
        smc().setTemperature("TC0C", 61).setTemperature("TC1C", 47.5).setTemperature("TG0D", 70);
        drives = {{"Disk ", " A1", 37}};
        start();
        choose("All");
        sensors = std::make_unique<SensorTableModel>(delegate->sensorTable(), delegate->sourceList(),
                                                     delegate->lists(), nullptr);
        tester = std::make_unique<QAbstractItemModelTester>(
            sensors.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
        sensors->reload();
        spy = std::make_unique<QSignalSpy>(sensors.get(), &QAbstractItemModel::dataChanged);
    }
    void checkAndReload() {
        check();
        sensors->reload();
    }
    /// What was announced since the last time, each as "row,column", a range with both of its corners.
    [[nodiscard]] Texts announced() const {
        Texts all;
        for (const QList<QVariant>& arguments : *spy) {
            const auto first = arguments.at(0).toModelIndex();
            const auto last = arguments.at(1).toModelIndex();
            std::string text = std::to_string(first.row()) + "," + std::to_string(first.column());
            if (last != first) text += "-" + std::to_string(last.row()) + "," + std::to_string(last.column());
            all.push_back(text);
        }
        spy->clear();
        return all;
    }
    [[nodiscard]] Texts identifiers() const {
        Texts all;
        for (int row = 0; row < sensors->rowCount(); ++row) all.push_back(sensors->identifierOfRow(row));
        return all;
    }
    [[nodiscard]] QVariant data(int row, int column, int role) const {
        return sensors->data(sensors->index(row, column), role);
    }
    /// Paints the bars of all rows.
    void paintBars() {
        for (int row = 0; row < sensors->rowCount(); ++row) static_cast<void>(sensors->levelBarToPaint(row));
    }
    /// 0 when there is no bar.
    [[nodiscard]] float maximumOf(const char* identifier) const {
        const auto& cells = delegate->lists().sensorNameToCustomCellMap;
        const auto cell = cells.find(identifier);
        return cell != cells.end() ? cell->second.maxUsedValue() : 0.0F;
    }
    void resetMaximums() {
        delegate->checkCycle().resetMaxTempsClicked();
        sensors->repaint();
    }

    std::unique_ptr<SensorTableModel> sensors;
    std::unique_ptr<QAbstractItemModelTester> tester;
    std::unique_ptr<QSignalSpy> spy;
};

TEST_F(SensorTableModelTest, ShowsEachRowOfTheTable) {
    Texts texts;
    for (int row = 0; row < sensors->rowCount(); ++row)
        for (int column = 0; column < sensors->columnCount(); ++column)
            texts.push_back(data(row, column, Qt::DisplayRole).toString().toStdString());
    EXPECT_EQ(texts, (Texts{"CPU Core 1", "61°C", "", "CPU Core 2", "48°C", "", "GPU Diode ", "70°C", "",
                            "Disk (A1)", "37°C", ""}));
    EXPECT_EQ(identifiers(), (Texts{"TC0C", "TC1C", "TG0D", "A1"}));
    EXPECT_EQ(sensors->sensorKeyOfRow(2), SensorKey("TG0D"));
    EXPECT_EQ(sensors->sensorKeyOfRow(3), std::nullopt);
}

TEST_F(SensorTableModelTest, ASensorThatIsInADriveHasNoRowBesideIt) {
    sensors->setDriveMeasuredBy([](const std::string& key) { return key == "TG0D" ? "A1" : ""; });
    sensors->reload();
    EXPECT_EQ(identifiers(), (Texts{"TC0C", "TC1C", "A1"}));
    EXPECT_EQ(data(2, SensorTableModel::nameColumn, Qt::DisplayRole), QStringLiteral("Disk (A1)"));
    sensors->setFilter(QStringLiteral("gpu"));
    EXPECT_EQ(identifiers(), Texts{});
    sensors->setFilter({});
    drives.clear();
    check();
    sensors->reload();
    EXPECT_EQ(identifiers(), (Texts{"TC0C", "TC1C", "TG0D"})) << "the drive has gone";
    choose("GPU");
    drives = {{"Disk ", " A1", 37}};
    check();
    sensors->reload();
    EXPECT_EQ(identifiers(), Texts{"TG0D"}) << "an area without drives";
}

TEST_F(SensorTableModelTest, TellsTheHeaders) {
    Texts headers;
    for (int column = 0; column < sensors->columnCount(); ++column)
        headers.push_back(
            sensors->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().toStdString());
    EXPECT_EQ(headers, (Texts{"Sensor", "Temperature", "Level"}));
}

TEST_F(SensorTableModelTest, AnnouncesNothingWhenNothingChanged) {
    checkAndReload();
    EXPECT_EQ(announced(), Texts{});
}

TEST_F(SensorTableModelTest, AnnouncesOnlyTheCellsThatLookDifferent) {
    smc().setTemperature("TC1C", 52);
    checkAndReload();
    EXPECT_EQ(announced(), (Texts{"1,1", "1,2"}));
    EXPECT_EQ(data(1, SensorTableModel::valueColumn, Qt::DisplayRole).toString(), QStringLiteral("52°C"));
}

TEST_F(SensorTableModelTest, AnnouncesABarThatMovesWithinOneText) {
    smc().setTemperature("TC0C", 61.5);
    checkAndReload();
    EXPECT_EQ(announced(), (Texts{"0,1", "0,2"}));
    smc().setTemperature("TC0C", 62);
    checkAndReload();
    EXPECT_EQ(announced(), (Texts{"0,2"}));
    smc().setTemperature("TC0C", 62.125);  // less than anybody sees
    checkAndReload();
    EXPECT_EQ(announced(), Texts{});
}

TEST_F(SensorTableModelTest, AnnouncesTheTextsAloneWhenTheUnitChanges) {
    delegate->keys().setValueForKey(std::int32_t{1}, "tempUnit");
    sensors->reload();
    EXPECT_EQ(announced(), (Texts{"0,1", "1,1", "2,1", "3,1"}));
    EXPECT_EQ(data(3, SensorTableModel::valueColumn, Qt::DisplayRole).toString(), QStringLiteral("99°F"));
}

TEST_F(SensorTableModelTest, InsertsAndRemovesRowsWhenAreaOrDrivesChange) {
    QSignalSpy inserted(sensors.get(), &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(sensors.get(), &QAbstractItemModel::rowsRemoved);
    QSignalSpy reset(sensors.get(), &QAbstractItemModel::modelReset);
    choose("CPU");
    sensors->reload();
    EXPECT_EQ(identifiers(), (Texts{"TC0C", "TC1C"}));
    EXPECT_EQ(inserted.count(), 0);
    ASSERT_EQ(removed.count(), 1);
    EXPECT_EQ(removed.at(0).at(1).toInt(), 2);
    EXPECT_EQ(removed.at(0).at(2).toInt(), 3);
    choose("Hard Drive");
    sensors->reload();
    EXPECT_EQ(identifiers(), (Texts{"A1"}));
    drives.insert(drives.begin(), {"New", "B2", 44});
    check();
    sensors->reload();
    EXPECT_EQ(identifiers(), (Texts{"B2", "A1"}));
    choose("All");
    sensors->reload();
    EXPECT_EQ(identifiers(), (Texts{"TC0C", "TC1C", "TG0D", "B2", "A1"}));
    EXPECT_EQ(reset.count(), 0);
    EXPECT_EQ(announced(), Texts{});
    EXPECT_EQ(data(3, SensorTableModel::valueColumn, Qt::DisplayRole).toString(), QStringLiteral("44°C"));
}

TEST_F(SensorTableModelTest, AnnouncesTheValuesOfRowsThatMoved) {
    drives.insert(drives.begin(), {"New", "B2", 44});
    drives.back().temp = 39;
    checkAndReload();
    EXPECT_EQ(identifiers(), (Texts{"TC0C", "TC1C", "TG0D", "B2", "A1"}));
    EXPECT_EQ(announced(), (Texts{"4,1", "4,2"}));
}

TEST_F(SensorTableModelTest, IsEmptyForATagOfNoArea) {
    delegate->sourceList().setActiveAreaTag(6);
    sensors->reload();
    EXPECT_EQ(identifiers(), Texts{});
}

TEST_F(SensorTableModelTest, FiltersByNameAndIdentifierInCapitalsOrNot) {
    struct Row {
        const char* filter;
        Texts expected;
    };
    const Row rows[] = {{"core", {"TC0C", "TC1C"}},
                        {"tg0", {"TG0D"}},
                        {" Diode ", {"TG0D"}},
                        {"a1", {"A1"}},
                        {"61", {}},
                        {"DISK", {"A1"}},
                        {"", {"TC0C", "TC1C", "TG0D", "A1"}}};
    for (const Row& row : rows) {
        sensors->setFilter(QString::fromUtf8(row.filter));
        EXPECT_EQ(identifiers(), row.expected) << row.filter;
    }
}

TEST_F(SensorTableModelTest, RefreshesTheRightRowsBehindAFilter) {
    sensors->setFilter(QStringLiteral("gpu"));
    smc().setTemperature("TC0C", 80).setTemperature("TG0D", 73);
    checkAndReload();
    EXPECT_EQ(announced(), (Texts{"0,1", "0,2"}));
    EXPECT_EQ(sensors->valueOfRow(0), QStringLiteral("73°C"));
    EXPECT_EQ(sensors->levelBarToPaint(0)->objectValue(), 73.0);
}

TEST_F(SensorTableModelTest, GivesTheBarWithItsValueAndItsMaximum) {
    smc().setTemperature("TC0C", 55);
    checkAndReload();
    const auto* const bar = sensors->levelBarToPaint(0);
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->objectValue(), 55.0);
    EXPECT_EQ(bar->maxUsedValue(), 61.0F);
}

// Kept: a drive has its maximum from being shown: what nobody sees is not recorded.
TEST_F(SensorTableModelTest, RecordsADriveWhenItsBarIsPaintedAndOnlyThen) {
    EXPECT_EQ(maximumOf("A1"), 0.0F);
    paintBars();
    EXPECT_EQ(maximumOf("A1"), 37.0F);
    drives.front().temp = 49;
    checkAndReload();
    EXPECT_EQ(announced(), (Texts{"3,1", "3,2"}));
    EXPECT_EQ(maximumOf("A1"), 37.0F);
    drives.front().temp = 40;
    checkAndReload();
    paintBars();
    EXPECT_EQ(maximumOf("A1"), 40.0F);
}

TEST_F(SensorTableModelTest, MakesNoBarForADriveThatWasNotPainted) {
    checkAndReload();
    EXPECT_EQ(data(3, SensorTableModel::levelColumn, Qt::ToolTipRole), QVariant());
    EXPECT_EQ(data(3, SensorTableModel::levelColumn, Qt::AccessibleTextRole).toString(),
              QStringLiteral("37°C"));
    EXPECT_EQ(delegate->lists().sensorNameToCustomCellMap.count("A1"), 0U);
}

TEST_F(SensorTableModelTest, ShowsNoTicksAfterAResetUntilTheNextSample) {
    paintBars();
    resetMaximums();
    EXPECT_EQ(announced(), (Texts{"0,2", "1,2", "2,2", "3,2"}));
    for (int row = 0; row < sensors->rowCount(); ++row)
        EXPECT_EQ(sensors->levelBarToPaint(row)->tickRectangle({0, 0, 120, 10}), std::nullopt) << row;
    EXPECT_EQ(sensors->levelBarToPaint(3)->objectValue(), 37.0);
    checkAndReload();
    EXPECT_EQ(announced(), (Texts{"0,2", "1,2", "2,2", "3,2"}));
    EXPECT_EQ(sensors->levelBarToPaint(0)->maxUsedValue(), 61.0F);
    EXPECT_EQ(sensors->levelBarToPaint(3)->maxUsedValue(), 37.0F);
}

TEST_F(SensorTableModelTest, RecordsNothingForRowsThatTheFilterLetsInAfterAReset) {
    paintBars();
    sensors->setFilter(QStringLiteral("core"));
    resetMaximums();
    sensors->setFilter({});
    paintBars();
    EXPECT_EQ(maximumOf("A1"), 0.0F);
}

TEST_F(SensorTableModelTest, TellsTheMaximumInToolTipAndForScreenReaders) {
    smc().setTemperature("TC0C", 55);
    checkAndReload();
    constexpr int level = SensorTableModel::levelColumn;
    EXPECT_EQ(data(0, level, Qt::ToolTipRole).toString(),
              QStringLiteral("Maximum Recorded Temperature: 61°C"));
    EXPECT_EQ(data(0, level, Qt::AccessibleTextRole).toString(), QStringLiteral("55°C, highest 61°C"));
    resetMaximums();
    EXPECT_EQ(data(0, level, Qt::AccessibleTextRole).toString(), QStringLiteral("55°C"));
    EXPECT_EQ(data(0, SensorTableModel::nameColumn, Qt::ToolTipRole).toString(), QStringLiteral("TC0C"));
}

}  // namespace
}  // namespace calorivo
