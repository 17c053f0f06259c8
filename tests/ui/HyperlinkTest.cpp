#include "ui/Hyperlink.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

AttributedString linked(std::size_t location, std::size_t length) {
    return {"See the page",
            {{{location, length},
              {.link = "https://example.org/page",
               .foregroundColor = Color{0, 0, 1, 1},
               .underlineStyle = UnderlineStyle::single}}}};
}

AttributedString hyperlink(std::int32_t start) {
    return Hyperlink::hyperlinkFromStringStartingAtIndexWithURL("See the page", start,
                                                                "https://example.org/page");
}

TEST(Hyperlink, LooksAndWorksLikeALinkFromItsStartToTheEnd) {
    EXPECT_EQ(hyperlink(8), linked(8, 4));
    EXPECT_EQ(hyperlink(0), linked(0, 12));
}

TEST(Hyperlink, IsEmptyAtTheEndOfTheText) { EXPECT_EQ(hyperlink(12), linked(12, 0)); }

TEST(Hyperlink, TakesTheNearestEndForAStartOutsideOfTheText) {
    EXPECT_EQ(hyperlink(13), linked(12, 0));
    EXPECT_EQ(hyperlink(-5), linked(0, 12));
}

}  // namespace
}  // namespace calorivo
