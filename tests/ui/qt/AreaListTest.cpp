#include "ui/qt/AreaList.h"

#include "MainWindowFixture.h"

#include <QSignalSpy>

namespace calorivo {
namespace {

using Texts = std::vector<std::string>;

class AreaListTest : public test::MainWindowFixture {
  protected:
    void SetUp() override {
        smc().setTemperature("TC0C", 61).setTemperature("TG0D", 70);
        start();
        show();
    }
    [[nodiscard]] AreaList& list() const { return child<AreaList>("areaList"); }
    /// Every entry; the selected one with a star.
    [[nodiscard]] Texts entries() const {
        Texts all;
        for (int row = 0; row < list().count(); ++row)
            all.push_back(list().item(row)->text().toStdString() +
                          (list().item(row)->isSelected() ? "*" : ""));
        return all;
    }
};

TEST_F(AreaListTest, ShowsTheAreasWithTheirIconsAndTheFirstBelowAllSelected) {
    EXPECT_EQ(entries(), (Texts{"All", "CPU*", "GPU"}));
    for (int row = 0; row < list().count(); ++row) EXPECT_FALSE(list().item(row)->icon().isNull()) << row;
}

TEST_F(AreaListTest, ChoosesTheAreaThatTheUserSelects) {
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Down);
    EXPECT_EQ(entries(), (Texts{"All", "CPU", "GPU*"}));
    EXPECT_EQ(delegate->sourceList().activeAreaTag.get(), 1);
    EXPECT_EQ(rows(), (Texts{"TG0D 70°C"}));
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, list().visualItemRect(list().item(0)).center());
    EXPECT_EQ(delegate->sourceList().activeAreaTag.get(), allAreasTag);
    EXPECT_EQ(rows(), (Texts{"TC0C 61°C", "TG0D 70°C"}));
}

TEST_F(AreaListTest, FollowsTheSourceList) {
    choose("All");
    EXPECT_EQ(entries(), (Texts{"All*", "CPU", "GPU"}));
    drives = {{"Disk", "A1", 37}};
    delegate->keys().setValueForKey(true, "checkDriveTemps");
    EXPECT_EQ(entries(), (Texts{"All*", "CPU", "GPU", "Hard Drive"}));
    choose("Hard Drive");
    delegate->keys().setValueForKey(false, "checkDriveTemps");
    EXPECT_EQ(entries(), (Texts{"All", "CPU", "GPU"}));
}

TEST_F(AreaListTest, ChoosesNothingByItself) {
    QSignalSpy spy(&list(), &QListWidget::itemSelectionChanged);
    delegate->sourceList().setupSourceList();
    EXPECT_EQ(delegate->sourceList().activeAreaTag.get(), 0);
    EXPECT_EQ(entries(), (Texts{"All", "CPU*", "GPU"}));
}

}  // namespace
}  // namespace calorivo
