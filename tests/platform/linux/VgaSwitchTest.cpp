#include "platform/linux/VgaSwitch.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace calorivo {

void PrintTo(const VgaSwitch& state, std::ostream* stream) {
    *stream << (state.isDiscreteInUse ? "discrete" : "integrated") << (state.isDynamic ? ", dynamic" : "");
}

namespace {

constexpr VgaSwitch integrated{.isDiscreteInUse = false, .isDynamic = false};
constexpr VgaSwitch discrete{.isDiscreteInUse = true, .isDynamic = false};
constexpr VgaSwitch dynamicIntegrated{.isDiscreteInUse = false, .isDynamic = true};
constexpr VgaSwitch dynamicDiscrete{.isDiscreteInUse = true, .isDynamic = true};

TEST(VgaSwitch, SaysWhichProcessorIsInUse) {
    struct Row {
        std::string text;
        VgaSwitch state;
    };
    for (const Row& row : {
             Row{"0:IGD:+:Pwr:0000:00:02.0\n1:DIS: :Off:0000:01:00.0\n", integrated},
             Row{"0:IGD:+:Pwr:0000:00:02.0\n1:DIS: :Pwr:0000:01:00.0\n", integrated},
             Row{"0:IGD: :Off:0000:00:02.0\n1:DIS:+:Pwr:0000:01:00.0\n", discrete},
             Row{"1:DIS:+:Pwr:0000:01:00.0\n0:IGD: :Pwr:0000:00:02.0\n", discrete},
             Row{"0:IGD:+:Pwr:0000:00:02.0\n1:DIS: :DynOff:0000:01:00.0\n", dynamicIntegrated},
             Row{"0:IGD:+:Pwr:0000:00:02.0\n1:DIS: :DynPwr:0000:01:00.0\n", dynamicDiscrete},
             Row{"0:IGD: :Pwr:0000:00:02.0\n1:DIS:+:DynPwr:0000:01:00.0\n", dynamicDiscrete},
             // The sound part follows its processor: it counts for nothing.
             Row{"0:IGD:+:Pwr:0000:00:02.0\n1:DIS: :Off:0000:01:00.0\n2:DIS-Audio: :DynPwr:0000:01:00.1\n",
                 integrated},
             Row{"0:IGD:+:Pwr:0000:00:02.0\n1:IGD-Audio: :Pwr:0000:00:03.0\n12:DIS: :Off:0000:01:00.0\n",
                 integrated},
             Row{"0:IGD:+:Pwr:0000:00:02.0\n1:DIS: :DynOff:0000:01:00.0\n2:DIS: :DynPwr:0000:02:00.0\n",
                 dynamicDiscrete},
         })
        EXPECT_EQ(parseVgaSwitch(row.text), row.state) << row.text;
}

TEST(VgaSwitch, IsNotBelievedWhenItsTextIsDamaged) {
    const std::string good = "0:IGD:+:Pwr:0000:00:02.0\n1:DIS: :Off:0000:01:00.0\n";
    ASSERT_TRUE(parseVgaSwitch(good));
    for (std::size_t length = 0; length < good.size(); ++length)
        EXPECT_EQ(parseVgaSwitch(good.substr(0, length)), std::nullopt) << length;
    for (const std::string& text : {
             std::string("\n"),
             std::string("nonsense\n"),
             std::string(4096, '\0'),
             std::string(4096, ':'),
             good + "garbage\n",
             good + '\n',
             "x" + good,
             std::string("0:IGD: :Pwr:0000:00:02.0\n1:DIS: :Off:0000:01:00.0\n"),
             std::string("0:IGD:+:Pwr:0000:00:02.0\n1:DIS:+:Pwr:0000:01:00.0\n"),
             std::string("0:DIS:+:Pwr:0000:02:00.0\n1:DIS: :Off:0000:01:00.0\n"),
             std::string("0:IGD:+:Pwr:0000:02:00.0\n1:IGD: :Off:0000:01:00.0\n"),
             std::string("0:IGD:+:Pwr:0000:00:02.0\n1:XYZ: :Off:0000:01:00.0\n"),
             std::string("0:IGD:+:Pwr:0000:00:02.0\n1:DIS:-:Off:0000:01:00.0\n"),
             std::string("0:IGD:+:Pwr:0000:00:02.0\n1:DIS: :Half:0000:01:00.0\n"),
             std::string("0:IGD:+:Pwr:0000:00:02.0\n1:DIS: :Off:\n"),
             std::string("0:IGD:+:Pwr:0000:00:02.0\n:DIS: :Off:0000:01:00.0\n"),
             std::string("0:IGD:+:Pwr:0000:00:02.0\n-1:DIS: :Off:0000:01:00.0\n"),
         })
        EXPECT_EQ(parseVgaSwitch(text), std::nullopt) << text;
}

}  // namespace
}  // namespace calorivo
