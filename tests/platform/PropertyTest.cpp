#include "platform/Property.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>

namespace calorivo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Heard = std::vector<std::string>;

TEST(Property, HoldsItsValue) {
    Property<int> number(5);
    Property<std::string> text("five");
    const Property<bool> flag;
    EXPECT_EQ(number.get(), 5);
    EXPECT_EQ(text.get(), "five");
    EXPECT_FALSE(flag);
    number = 6;
    text = "six";
    EXPECT_EQ(number + 1, 7);
    EXPECT_EQ(text.get(), "six");
}

TEST(Property, AnnouncesEveryAssignmentEqualOrNot) {
    Property<int> number(5);
    std::vector<int> heard;
    const Observation observation = number.observe([&] { heard.push_back(number); });
    number = 6;
    number = 6;
    number.set(7);
    EXPECT_THAT(heard, ElementsAre(6, 6, 7));
}

TEST(Property, StoresSilentlyAndAnnouncesWhenAsked) {
    Property<std::string> text("old");
    Heard heard;
    const Observation observation = text.observe([&] { heard.push_back(text.get()); });
    text.store("new");
    EXPECT_THAT(heard, IsEmpty());
    EXPECT_EQ(text.get(), "new");
    text.announce();
    EXPECT_THAT(heard, ElementsAre("new"));
}

TEST(Property, TellsItsObserversInTheOrderOfTheirComing) {
    Property<int> number;
    Heard heard;
    const Observation first = number.observe([&] { heard.push_back("first"); });
    const Observation second = number.observe([&] { heard.push_back("second"); });
    number = 3;
    EXPECT_THAT(heard, ElementsAre("first", "second"));
}

TEST(Observation, EndsWhenItIsDroppedOrReplaced) {
    Property<int> number;
    Heard heard;
    Observation observation = number.observe([&] { heard.push_back("first"); });
    observation = number.observe([&] { heard.push_back("second"); });
    number = 1;
    observation.drop();
    observation.drop();
    number = 2;
    {
        const Observation brief = number.observe([&] { heard.push_back("third"); });
    }
    number = 3;
    EXPECT_THAT(heard, ElementsAre("second"));
}

TEST(Observation, GoesOnWhereItIsMovedTo) {
    Property<int> number;
    Heard heard;
    auto observation = std::make_unique<Observation>(number.observe([&] { heard.push_back("told"); }));
    Observation moved = std::move(*observation);
    observation.reset();
    Observation& itself = moved;
    moved = std::move(itself);
    number = 1;
    EXPECT_THAT(heard, ElementsAre("told"));
}

TEST(Observation, MayOutliveWhatItObserves) {
    Observation observation;
    auto token = std::make_shared<int>(4);
    {
        Property<int> number;
        observation = number.observe([token] { ++*token; });
        number = 1;
    }
    EXPECT_EQ(*token, 5);
    EXPECT_EQ(token.use_count(), 1);
    observation.drop();
}

TEST(Observers, MayBeDroppedByThemselvesWhileBeingTold) {
    Property<int> number;
    Heard heard;
    Observation own;
    const auto token = std::make_shared<std::string>("own");
    own = number.observe([&heard, &own, token] {
        own = {};
        heard.push_back(*token);  // what the observer holds is still there
    });
    const Observation next = number.observe([&] { heard.push_back("next"); });
    number = 1;
    number = 2;
    EXPECT_THAT(heard, ElementsAre("own", "next", "next"));
    EXPECT_EQ(token.use_count(), 1);
}

TEST(Observers, AreNotToldAfterAnotherOneDroppedThem) {
    Property<int> number;
    Heard heard;
    Observation second;
    const Observation first = number.observe([&] {
        heard.push_back("first");
        second.drop();
    });
    second = number.observe([&] { heard.push_back("second"); });
    number = 1;
    EXPECT_THAT(heard, ElementsAre("first"));
}

TEST(Observers, HearTheNextAnnouncementWhenAddedDuringOne) {
    Property<int> number;
    Heard heard;
    Observation added;
    const Observation first = number.observe([&] {
        heard.push_back("first");
        if (number == 1) added = number.observe([&] { heard.push_back("added"); });
    });
    number = 1;
    EXPECT_THAT(heard, ElementsAre("first"));
    number = 2;
    EXPECT_THAT(heard, ElementsAre("first", "first", "added"));
}

TEST(Observers, MayAssignWhileBeingTold) {
    Property<int> number;
    std::vector<int> heard;
    const Observation limiter = number.observe([&] {
        if (number > 10) number = 10;
    });
    const Observation listener = number.observe([&] { heard.push_back(number); });
    number = 12;
    EXPECT_THAT(heard, ElementsAre(10, 10));
}

TEST(Observers, HearNoMoreOnceOneDestroyedTheProperty) {
    auto number = std::make_unique<Property<int>>(1);
    Heard heard;
    const Observation first = number->observe([&] {
        heard.push_back("first");
        number.reset();
    });
    const Observation second = number->observe([&] { heard.push_back("second"); });
    Property<int>& assigned = *number;
    assigned = 2;
    EXPECT_EQ(number, nullptr);
    EXPECT_THAT(heard, ElementsAre("first"));
}

TEST(Observers, MayHoldTheirOwnObservationWithoutLeaking) {
    const auto token = std::make_shared<int>(0);
    {
        Property<int> number;
        const auto own = std::make_shared<Observation>();
        *own = number.observe([own, token] { ++*token; });
        number = 1;
    }
    EXPECT_EQ(*token, 1);
    EXPECT_EQ(token.use_count(), 1);
}

TEST(Observers, MayHoldTheObservationsOfOthers) {
    Property<int> number;
    Heard heard;
    auto inner = std::make_shared<Observation>(number.observe([&] { heard.push_back("inner"); }));
    Observation outer = number.observe([&heard, inner] { heard.push_back("outer"); });
    const Observation last = number.observe([&] { heard.push_back("last"); });
    inner.reset();
    outer.drop();  // takes the inner one with it
    number = 1;
    EXPECT_THAT(heard, ElementsAre("last"));
}

TEST(Property, LetsAnotherThreadReadItsNumber) {
    Property<double> number(1.0);
    std::atomic<bool> isRead = false;
    std::thread reader([&] {
        double last = 0;
        while ((last = number.get()) < 1000) EXPECT_GE(last, 1.0);
        isRead = true;
    });
    for (int i = 2; i <= 1000; ++i) number = i;
    reader.join();
    EXPECT_TRUE(isRead);
}

}  // namespace
}  // namespace calorivo
