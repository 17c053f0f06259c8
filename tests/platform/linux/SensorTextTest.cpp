#include "platform/linux/SensorText.h"

#include <gtest/gtest.h>

#include <array>

namespace calorivo {
namespace {

TEST(SensorText, MakesOneLineOfValidText) {
    struct Row {
        std::string text;
        std::string cleaned;
    };
    const std::array rows{
        Row{"", ""},
        Row{" \t CPU \r\n fan\x7f ", "CPU fan"},
        Row{"%s %n 100%", "%s %n 100%"},
        Row{"K\xc3\xbchler \xe2\x82\xac \xf0\x9f\x94\xa5", "K\xc3\xbchler \xe2\x82\xac \xf0\x9f\x94\xa5"},
        Row{"\xc3", "\xef\xbf\xbd"},
        Row{"a\xe2\x82", "a\xef\xbf\xbd\xef\xbf\xbd"},
        Row{"\xc0\xaf", "\xef\xbf\xbd\xef\xbf\xbd"},
        Row{"\xed\xa0\x80", "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd"},
        Row{"\xf4\x90\x80\x80", "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd"},
        Row{"\x80", "\xef\xbf\xbd"},
        Row{"a\xe2\x80\xa8"
            "b\xc2\x85"
            "c\xe2\x80\xae"
            "d",
            "a b c d"},
        Row{std::string("a\0b", 3), "a b"},
        Row{std::string(100, 'x'), std::string(100, 'x')},
        Row{std::string(101, 'x'), std::string(100, 'x') + "\xe2\x80\xa6"},
        Row{std::string(99, 'x') + "\xc3\xbc", std::string(99, 'x') + "\xe2\x80\xa6"},
        Row{std::string(99, 'x') + " yy", std::string(99, 'x') + "\xe2\x80\xa6"},
    };
    for (const Row& row : rows) EXPECT_EQ(cleanedText(row.text), row.cleaned) << row.text;
}

TEST(SensorText, TellsEqualTextsApart) {
    std::array<std::string, 8> texts{"a", "b", "a", "a 2", "", "a", "", "b"};
    std::vector<std::string*> pointers;
    for (std::string& text : texts) pointers.push_back(&text);
    makeUnique(pointers);
    EXPECT_EQ(texts, (std::array<std::string, 8>{"a", "b", "a 3", "a 2", "", "a 4", "", "b 2"}));
}

}  // namespace
}  // namespace calorivo
