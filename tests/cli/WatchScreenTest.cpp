#include "cli/WatchScreen.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace calorivo {
namespace {

using Lines = std::vector<std::string>;
using Keys = std::vector<WatchKey>;

const Style plain(false);

ScreenContents contentsOf(int rows) {
    ScreenContents contents{"Title", {"titles"}, "check 3, every 5 s"};
    for (int i = 1; i <= rows; ++i) contents.table.push_back("row " + std::to_string(i));
    return contents;
}

TEST(WatchScreen, FillsTheScreenExactly) {
    WatchScreen screen;
    EXPECT_EQ(screen.lines(contentsOf(2), {80, 7}, plain),
              (Lines{"Title", "", "titles", "row 1", "row 2", "", "q quits   check 3, every 5 s"}));
}

TEST(WatchScreen, SaysWhichRowsItShowsWhenNotAllFit) {
    WatchScreen screen;
    EXPECT_EQ(screen.lines(contentsOf(9), {80, 6}, plain),
              (Lines{"Title", "", "titles", "row 1", "row 2", "q quits   ↑↓ 1–2 of 9   check 3, every 5 s"}));
}

TEST(WatchScreen, CutsItsOwnLinesToTheWidth) {
    WatchScreen screen;
    EXPECT_EQ(screen.lines(contentsOf(1), {4, 5}, plain), (Lines{"Tit…", "", "titles", "row 1", "q q…"}));
}

TEST(WatchScreen, MovesWithinTheTable) {
    struct Row {
        Keys keys;
        std::string firstRow;
    };
    // Ten rows, three on the screen at a time.
    const Row rows[] = {
        {{}, "row 1"},
        {{WatchKey::up}, "row 1"},
        {{WatchKey::down, WatchKey::down}, "row 3"},
        {{WatchKey::pageDown}, "row 4"},
        {{WatchKey::pageDown, WatchKey::up}, "row 3"},
        {{WatchKey::pageDown, WatchKey::pageDown, WatchKey::pageDown, WatchKey::pageDown}, "row 8"},
        {{WatchKey::end}, "row 8"},
        {{WatchKey::end, WatchKey::down}, "row 8"},
        {{WatchKey::end, WatchKey::pageUp}, "row 5"},
        {{WatchKey::end, WatchKey::home}, "row 1"},
        {{WatchKey::quit}, "row 1"},
    };
    for (const Row& row : rows) {
        WatchScreen screen;
        ASSERT_EQ(screen.lines(contentsOf(10), {80, 7}, plain)[3], "row 1");
        for (const WatchKey key : row.keys) screen.move(key);
        EXPECT_EQ(screen.lines(contentsOf(10), {80, 7}, plain)[3], row.firstRow);
    }
}

TEST(WatchScreen, AGreaterScreenBringsTheEndBackIntoSight) {
    WatchScreen screen;
    ASSERT_EQ(screen.lines(contentsOf(10), {80, 7}, plain).size(), 7U);
    screen.move(WatchKey::end);
    const Lines lines = screen.lines(contentsOf(10), {80, 20}, plain);
    EXPECT_EQ(lines[3], "row 1");
    EXPECT_EQ(lines.size(), 20U);
}

TEST(WatchScreen, SurvivesScreensOfAnySize) {
    for (std::size_t rows = 0; rows < 6; ++rows)
        for (std::size_t columns = 0; columns < 3; ++columns) {
            WatchScreen screen;
            const Lines lines = screen.lines(contentsOf(10), {columns, rows}, plain);
            screen.move(WatchKey::pageDown);
            EXPECT_EQ(lines.size(), std::max<std::size_t>(rows, 1));
        }
    WatchScreen screen;
    EXPECT_EQ(screen.lines({"Title", {}, "status"}, {80, 4}, plain),
              (Lines{"Title", "", "", "q quits   status"}));
}

TEST(WatchScreen, RepaintsOnlyTheLinesThatDiffer) {
    EXPECT_EQ(repaintText({}, {"a", "b"}), "\033[1;1Ha\033[K\033[2;1Hb\033[K");
    EXPECT_EQ(repaintText({"a", "b", "c"}, {"a", "x", "c"}), "\033[2;1Hx\033[K");
    EXPECT_EQ(repaintText({"a", "b"}, {"a", "b"}), "");
    EXPECT_EQ(repaintText({"a"}, {"a", "100% %d"}), "\033[2;1H100% %d\033[K");
}

TEST(WatchKeys, ReadWhatKeyboardsSend) {
    struct Row {
        std::string input;
        Keys keys;
    };
    const Row rows[] = {
        {"q", {WatchKey::quit}},
        {"jk", {WatchKey::down, WatchKey::up}},
        {"\033[A\033[B", {WatchKey::up, WatchKey::down}},
        {"\033OA\033OB", {WatchKey::up, WatchKey::down}},
        {"\033[5~\033[6~", {WatchKey::pageUp, WatchKey::pageDown}},
        {"gG \033[H\033[F",
         {WatchKey::home, WatchKey::end, WatchKey::pageDown, WatchKey::home, WatchKey::end}},
        {"x\033[Cyz", {}},
        {"\033\033[A", {WatchKey::up}},
        {"", {}},
    };
    for (const Row& row : rows) EXPECT_EQ(WatchKeys().parse(row.input), row.keys) << row.input;
}

TEST(WatchKeys, ASequenceMayComeInPieces) {
    WatchKeys keys;
    EXPECT_EQ(keys.parse("\033"), Keys{});
    EXPECT_EQ(keys.parse("["), Keys{});
    EXPECT_EQ(keys.parse("6"), Keys{});
    EXPECT_EQ(keys.parse("~j"), (Keys{WatchKey::pageDown, WatchKey::down}));
}

}  // namespace
}  // namespace calorivo
