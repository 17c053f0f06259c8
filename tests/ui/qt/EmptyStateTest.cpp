#include "ui/qt/EmptyState.h"

#include "MainWindowFixture.h"
#include "ui/qt/MainWindowStatus.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace calorivo {
namespace {

using EmptyStateTest = test::MainWindowFixture;

TEST_F(EmptyStateTest, SaysWhatToDoWithoutSensorsBySource) {
    struct Row {
        const char* source;
        const char* file;
        const char* headline;
        const char* advice;
    };
    const Row rows[] = {
        {"none", "", "No temperature sensors were found", "sensors-detect"},
        {"hwmon", "", "No temperature sensors were found", "modprobe coretemp"},
        {"applesmc", "", "No temperature sensors were found", "modprobe -r applesmc"},
        {"simulated", "", "No temperature sensors were found", "calorivo --help"},
        {"keysfile", "dump.txt", "The keys file “dump.txt” holds no temperatures", "[sp78]"},
        {"keysfile", "", "The keys file holds no temperatures", "[sp78]"},
    };
    for (const Row& row : rows) {
        const EmptyStateText text = noSensorsText(row.source, QString::fromUtf8(row.file), {});
        EXPECT_EQ(text.headline, QString::fromUtf8(row.headline)) << row.source;
        EXPECT_TRUE(text.advice.contains(QString::fromUtf8(row.advice))) << text.advice.toStdString();
    }
    EXPECT_TRUE(noSensorsText("none", {}, {}).advice.contains(QStringLiteral("calorivo --simulate")));
    EXPECT_TRUE(noSensorsText("keysfile", {}, {QStringLiteral("a:1: b"), QStringLiteral("a:2: c")})
                    .advice.endsWith(QStringLiteral("\n\na:1: b\na:2: c")));
}

TEST_F(EmptyStateTest, StandsInThePlaceOfATableWithoutSensors) {
    provider.name = "keysfile";
    provider.told = {"dump.txt:3: no key"};
    sourceDetail = "/home/me/dump.txt";
    start();
    show();
    EXPECT_FALSE(table().isVisible());
    EXPECT_TRUE(child<EmptyState>("emptyState").isVisible());
    EXPECT_EQ(child<QLabel>("emptyStateHeadline").text(),
              QStringLiteral("The keys file “dump.txt” holds no temperatures"));
    EXPECT_TRUE(child<QLabel>("emptyStateAdvice").text().endsWith(QStringLiteral("dump.txt:3: no key")));
    EXPECT_FALSE(child<QPushButton>("clearFilter").isVisible());
    EXPECT_EQ(child<QLabel>("averageComputer").text(), QStringLiteral("N/A"));
    EXPECT_FALSE(child<QWidget>("fanSection").isVisible());
    const auto& status = child<MainWindowStatus>("statusLine");
    EXPECT_EQ(status.machine(), QStringLiteral("Model1,2 · Keys file dump.txt"));
    EXPECT_EQ(status.toolTip(), QStringLiteral("/home/me/dump.txt"));
}

TEST_F(EmptyStateTest, SaysThatNoRowMatchesAndOffersToClearTheFilter) {
    smc().setTemperature("TC0C", 61).setTemperature("TG0D", 70);
    start();
    show();
    auto& filter = child<QLineEdit>("sensorFilter");
    filter.setText(QStringLiteral("diode"));
    EXPECT_EQ(child<QLabel>("emptyStateHeadline").text(),
              QStringLiteral("No sensor in “CPU” matches “diode”"));
    EXPECT_TRUE(child<EmptyState>("emptyState").isVisible());
    choose("GPU");
    EXPECT_TRUE(table().isVisible());
    choose("CPU");
    QTest::mouseClick(&child<QPushButton>("clearFilter"), Qt::LeftButton);
    EXPECT_EQ(filter.text(), QString());
    EXPECT_TRUE(table().isVisible());
    EXPECT_EQ(window->focusWidget(), &table());
}

TEST_F(EmptyStateTest, SaysThatAnAreaHasNoRowsAnyMore) {
    smc().setTemperature("TC0C", 61);
    drives = {{"Disk", "A1", 37}};
    start();
    choose("Hard Drive");
    show();
    EXPECT_TRUE(table().isVisible());
    drives.clear();
    check();
    EXPECT_EQ(child<QLabel>("emptyStateHeadline").text(), QStringLiteral("No sensors in “Hard Drive”"));
    EXPECT_FALSE(table().isVisible());
}

TEST(SourceInWords, SaysWhereTheValuesComeFrom) {
    EXPECT_EQ(sourceInWords("applesmc", {}), QStringLiteral("Apple SMC"));
    EXPECT_EQ(sourceInWords("hwmon", {}), QStringLiteral("hwmon"));
    EXPECT_EQ(sourceInWords("simulated", {}), QStringLiteral("Simulated Mac"));
    EXPECT_EQ(sourceInWords("keysfile", QStringLiteral("/a/b.txt")), QStringLiteral("Keys file b.txt"));
    EXPECT_EQ(sourceInWords("none", {}), QStringLiteral("No sensors"));
}

}  // namespace
}  // namespace calorivo
