#include "ui/qt/KeyBinding.h"

#include <gtest/gtest.h>

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QTest>

#include <algorithm>
#include <memory>
#include <vector>

namespace calorivo {
namespace {

/// A number whose setter writes down what it is asked for, and stores at most 50.
class KeyBindingTest : public testing::Test {
  protected:
    KeyBindingTest() {
        keys.define("flag", flag, [this](bool isSet) {
            assigned.push_back(isSet ? 1 : 0);
            if (!refuses) flag = isSet;
        });
        keys.define("number", number, [this](std::int32_t value) {
            assigned.push_back(value);
            number = std::min(value, 50);
            if (afterwards) afterwards();
        });
    }

    Property<bool> flag;
    Property<std::int32_t> number{7};
    KeyValueCoding keys;
    std::vector<int> assigned;
    bool refuses = false;
    std::function<void()> afterwards;
};

TEST_F(KeyBindingTest, ShowingNeverWrites) {
    QCheckBox box;
    QSlider slider;
    QSpinBox spin;
    QComboBox combo;
    combo.addItems({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    KeyBinding::bind(box, keys, "flag");
    KeyBinding::bind(slider, keys, "number");
    KeyBinding::bind(spin, keys, "number");
    KeyBinding::bind(combo, keys, "number");
    flag = true;
    number = 2;
    EXPECT_TRUE(box.isChecked());
    EXPECT_EQ(slider.value(), 2);
    EXPECT_EQ(spin.value(), 2);
    EXPECT_EQ(combo.currentIndex(), 2);
    number = 1000;
    EXPECT_EQ(slider.value(), slider.maximum());
    EXPECT_EQ(spin.value(), spin.maximum());
    EXPECT_EQ(combo.currentIndex(), -1);
    EXPECT_EQ(assigned, std::vector<int>{});
}

TEST_F(KeyBindingTest, WhatTheProgramDoesToACheckBoxIsNotWritten) {
    QCheckBox box;
    KeyBinding::bind(box, keys, "flag");
    box.setChecked(true);
    EXPECT_EQ(assigned, std::vector<int>{});
    EXPECT_FALSE(flag.get());
}

TEST_F(KeyBindingTest, ShowsWhatTheKeySaysAfterASetterThatRefuses) {
    QCheckBox box;
    KeyBinding::bind(box, keys, "flag");
    refuses = true;
    QTest::keyClick(&box, Qt::Key_Space);
    EXPECT_EQ(assigned, std::vector<int>{1});
    EXPECT_FALSE(box.isChecked());
}

TEST_F(KeyBindingTest, ShowsWhatTheKeySaysAfterASetterThatBounds) {
    QSlider slider;
    KeyBinding::bind(slider, keys, "number");
    QTest::keyClick(&slider, Qt::Key_End);
    EXPECT_EQ(assigned, std::vector<int>{99});
    EXPECT_EQ(slider.value(), 50);
}

TEST_F(KeyBindingTest, DoesNotAssignWhatTheKeyHolds) {
    QButtonGroup group;
    QRadioButton seven;
    QRadioButton eight;
    group.addButton(&seven, 7);
    group.addButton(&eight, 8);
    KeyBinding::bind(group, keys, "number", 8);
    seven.click();
    EXPECT_EQ(assigned, std::vector<int>{});
    eight.click();
    EXPECT_EQ(assigned, std::vector<int>{8});
    number = 33;
    EXPECT_TRUE(eight.isChecked());
    eight.click();
    EXPECT_EQ(assigned, (std::vector<int>{8, 8})) << "33 is shown as 8, but is not 8";
}

TEST_F(KeyBindingTest, NamesTheControlForItsKeyUnlessItHasAName) {
    QCheckBox unnamed;
    KeyBinding::bind(unnamed, keys, "flag");
    EXPECT_EQ(unnamed.objectName(), QStringLiteral("flag"));
    QCheckBox named;
    named.setObjectName(QStringLiteral("other"));
    KeyBinding::bind(named, keys, "flag");
    EXPECT_EQ(named.objectName(), QStringLiteral("other"));
}

TEST_F(KeyBindingTest, EndsWithItsControl) {
    auto box = std::make_unique<QCheckBox>();
    KeyBinding::bind(*box, keys, "flag");
    box.reset();
    flag = true;
    EXPECT_TRUE(flag.get());
}

TEST_F(KeyBindingTest, MayEndInTheSetterThatItCalls) {
    QSpinBox box;
    KeyBinding::bind(box, keys, "number");
    // As in an alert during which a window is closed for good.
    afterwards = [binding = box.children().constLast()] { delete binding; };
    box.setValue(9);
    EXPECT_EQ(number.get(), 9);
}

TEST_F(KeyBindingTest, FollowsAKeyAsLongAsTheOwnerLives) {
    auto owner = std::make_unique<QObject>();
    std::vector<int> told;
    KeyBinding::follow(*owner, keys, "number", [&] { told.push_back(number); });
    number = 8;
    owner.reset();
    number = 9;
    EXPECT_EQ(told, (std::vector<int>{7, 8}));
}

}  // namespace
}  // namespace calorivo
