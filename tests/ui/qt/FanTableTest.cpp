#include "ui/qt/FanTable.h"

#include "MainWindowFixture.h"
#include "ui/qt/FanTableModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace calorivo {
namespace {

using Texts = std::vector<std::string>;

class FanTableTest : public test::MainWindowFixture {
  protected:
    void SetUp() override {
        smc().setTemperature("TC0C", 61);
        smc().addFan(1800, 1200, 6000, "Left").addFan(2000, 1000, 5000, "Right");
        start();
        fans = std::make_unique<FanTableModel>(delegate->fans(), nullptr);
        tester = std::make_unique<QAbstractItemModelTester>(
            fans.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
        fans->reload();
    }
    [[nodiscard]] Texts texts(int role) const {
        Texts all;
        for (int row = 0; row < fans->rowCount(); ++row)
            for (int column = 0; column < fans->columnCount(); ++column)
                all.push_back(fans->data(fans->index(row, column), role).toString().toStdString());
        return all;
    }
    [[nodiscard]] Texts announcedAfterACheck() {
        QSignalSpy spy(fans.get(), &QAbstractItemModel::dataChanged);
        check();
        fans->reload();
        Texts all;
        for (const QList<QVariant>& arguments : spy) {
            const auto cell = arguments.at(0).toModelIndex();
            EXPECT_EQ(cell, arguments.at(1).toModelIndex());
            all.push_back(std::to_string(cell.row()) + "," + std::to_string(cell.column()));
        }
        return all;
    }

    std::unique_ptr<FanTableModel> fans;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

TEST_F(FanTableTest, ShowsNameSpeedAndLimits) {
    EXPECT_EQ(texts(Qt::DisplayRole), (Texts{"Left", "1800 RPM", "", "1200 RPM", "6000 RPM",  //
                                             "Right", "2000 RPM", "", "1000 RPM", "5000 RPM"}));
    EXPECT_EQ(texts(Qt::AccessibleTextRole), (Texts{"", "", "1800 RPM, from 1200 RPM to 6000 RPM", "", "",  //
                                                    "", "", "2000 RPM, from 1000 RPM to 5000 RPM", "", ""}));
}

TEST_F(FanTableTest, GivesABarFromTheLowestToTheHighestSpeedWithoutATick) {
    const auto* const bar = fans->levelBarToPaint(1);
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->filledFraction(), 0.25);
    EXPECT_EQ(bar->range(),
              (LevelRange{.minValue = 1000, .maxValue = 5000, .warningValue = 3750, .criticalValue = 4500}));
    EXPECT_EQ(bar->tickRectangle({0, 0, 100, 10}), std::nullopt);
}

TEST_F(FanTableTest, AnnouncesOnlyTheCellsThatLookDifferent) {
    EXPECT_EQ(announcedAfterACheck(), Texts{});
    smc().setSpeed("F1Ac", 2001);
    EXPECT_EQ(announcedAfterACheck(), Texts{"1,1"});
    smc().setSpeed("F1Ac", 2100);
    EXPECT_EQ(announcedAfterACheck(), (Texts{"1,1", "1,2"}));
    EXPECT_EQ(fans->levelBarToPaint(1)->objectValue(), 2100.0);
}

TEST_F(FanTableTest, TakesOverOtherFans) {
    delegate->fans().removeObjectFromFansArrayAtIndex(0);
    fans->reload();
    EXPECT_EQ(texts(Qt::DisplayRole), (Texts{"Right", "2000 RPM", "", "1000 RPM", "5000 RPM"}));
}

TEST_F(FanTableTest, HasNoBarWhereTheLimitsAreNotKnown) {
    FanModel unknown = delegate->fans().fansArray().front();
    unknown.minRPM = -1;
    unknown.maxRPM = -1;
    FanModel stuck = unknown;
    stuck.minRPM = stuck.maxRPM = 2000;
    delegate->fans().setFansArray({unknown, stuck});
    fans->reload();
    EXPECT_EQ(fans->levelBarToPaint(0), nullptr);
    EXPECT_EQ(fans->levelBarToPaint(1), nullptr);
}

TEST_F(FanTableTest, LeavesTheLimitsToTheToolTipWhereTheyDoNotFit) {
    FanTable view;
    view.setFanModel(*fans);
    view.resize(900, 200);
    view.show();
    settle();
    EXPECT_FALSE(view.isColumnHidden(FanTableModel::minimumColumn));
    EXPECT_FALSE(view.isColumnHidden(FanTableModel::maximumColumn));
    view.resize(300, 200);
    settle();
    EXPECT_TRUE(view.isColumnHidden(FanTableModel::minimumColumn));
    EXPECT_TRUE(view.isColumnHidden(FanTableModel::maximumColumn));
}

TEST_F(FanTableTest, GoesAwayWithTheLastFan) {
    show();
    EXPECT_TRUE(child<QWidget>("fanSection").isVisible());
    delegate->fans().setFansArray({});
    EXPECT_FALSE(child<QWidget>("fanSection").isVisible());
}

}  // namespace
}  // namespace calorivo
