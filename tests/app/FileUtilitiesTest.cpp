#include "app/FileUtilities.h"

#include "app/MemoryFiles.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace calorivo {
namespace {

using namespace SymlinksAndAliases;
using test::MemoryLinks;

TEST(FileUtilities, StandardizesAPathAsText) {
    struct Row {
        std::string path;
        std::string standardized;
    };
    const Row rows[] = {{"/", "/"},
                        {"", ""},
                        {"/a//b///c", "/a/b/c"},
                        {"/a/./b/.", "/a/b"},
                        {"/a/b/../c", "/a/c"},
                        {"/a/../..", "/"},
                        {"/a/b/", "/a/b"},
                        {"//a", "/a"},
                        {"a/../../b", "../b"},
                        {"/ a/b c ", "/ a/b c "},
                        {"/a/..b/...", "/a/..b/..."}};
    for (const Row& row : rows) EXPECT_EQ(stringByStandardizingPath(row.path), row.standardized) << row.path;
}

TEST(FileUtilities, TakesAPathApart) {
    struct Row {
        std::string path;
        std::vector<std::string> components;
        std::string last;
        std::string folder;
        std::string extension;
    };
    const Row rows[] = {{"/", {"/"}, "/", "/", ""},
                        {"", {}, "", "", ""},
                        {"/a", {"/", "a"}, "a", "/", ""},
                        {"/a/b.app", {"/", "a", "b.app"}, "b.app", "/a", "app"},
                        {"/a//b.c.app/", {"/", "a", "b.c.app"}, "b.c.app", "/a", "app"},
                        {"b", {"b"}, "b", "", ""},
                        {"a/b", {"a", "b"}, "b", "a", ""},
                        {"/a.app/b", {"/", "a.app", "b"}, "b", "/a.app", ""},
                        {"/a/.app", {"/", "a", ".app"}, ".app", "/a", ""},
                        {"/a/b.", {"/", "a", "b."}, "b.", "/a", ""}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path);
        EXPECT_EQ(pathComponents(row.path), row.components);
        EXPECT_EQ(lastPathComponent(row.path), row.last);
        EXPECT_EQ(stringByDeletingLastPathComponent(row.path), row.folder);
        EXPECT_EQ(pathExtension(row.path), row.extension);
    }
}

TEST(FileUtilities, AppendsAComponentWithOneSeparator) {
    EXPECT_EQ(stringByAppendingPathComponent("/a", "b"), "/a/b");
    EXPECT_EQ(stringByAppendingPathComponent("/", "b"), "/b");
    EXPECT_EQ(stringByAppendingPathComponent("", "b"), "b");
}

struct Resolution {
    std::string path;
    std::optional<std::string> resolved;
};

TEST(SymlinksAndAliases, ResolvesEveryComponent) {
    MemoryLinks links;
    links.folder("/real").folder("/real/apps").file("/real/apps/tool").file("/plain");
    links.link("/link", "/real").link("/real/relative", "../real/apps").link("/chain", "link");
    links.alias("/alias", "/real/apps").link("/dangling", "/nowhere").alias("/toDangling", "/dangling");
    const Resolution rows[] = {
        {"/", "/"},
        {"/real/apps/tool", "/real/apps/tool"},
        {"/link/apps", "/real/apps"},
        {"/chain/apps/tool", "/real/apps/tool"},
        {"/real/relative/tool", "/real/apps/tool"},
        {"/alias/tool", "/real/apps/tool"},
        {"/link/./apps//../apps/", "/real/apps"},
        {"/plain", "/plain"},
        // The step up is taken in the text, before any link is followed.
        {"/link/../plain", "/plain"},
        {"relative", std::nullopt},
        {"", std::nullopt},
        {"./real", std::nullopt},
        {"/missing", std::nullopt},
        {"/real/missing/tool", std::nullopt},
        {"/dangling", std::nullopt},
        {"/toDangling", std::nullopt},
    };
    for (const Resolution& row : rows)
        EXPECT_EQ(stringByResolvingSymlinksAndAliases(row.path, links), row.resolved) << row.path;
}

TEST(SymlinksAndAliases, ResolvesARelativeDestinationAgainstTheLinksOwnFolder) {
    MemoryLinks links;
    links.folder("/a").folder("/a/b").link("/a/b/link", "../target").file("/a/target");
    EXPECT_EQ(stringByConditionallyResolvingSymlink("/a/b/link", links), "/a/target");
    EXPECT_EQ(stringByIterativelyResolvingSymlinkOrAlias("/a/b/link", links), "/a/target");
}

TEST(SymlinksAndAliases, StopsAtAFolderThatAnAliasStandsFor) {
    MemoryLinks links;
    links.alias("/alias", "/folder").folder("/folder");
    EXPECT_EQ(stringByIterativelyResolvingSymlinkOrAlias("/alias", links), "/folder");
}

TEST(SymlinksAndAliases, GoesThroughLinksAndAliasesInTurn) {
    MemoryLinks links;
    links.link("/1", "2").alias("/2", "/3").link("/3", "/4").file("/4");
    EXPECT_EQ(stringByIterativelyResolvingSymlinkOrAlias("/1", links), "/4");
}

TEST(SymlinksAndAliases, HasNoResultWhenALinkCannotBeRead) {
    class UnreadableLink final : public FileLinks {
      public:
        [[nodiscard]] std::optional<FileType> lstat(const std::string&) const override {
            return FileType::symbolicLink;
        }
        [[nodiscard]] std::optional<std::string> destinationOfSymbolicLink(
            const std::string&) const override {
            return std::nullopt;
        }
        [[nodiscard]] std::optional<std::string> resolveAliasFile(const std::string&) const override {
            return "/never";
        }
    };
    EXPECT_EQ(stringByIterativelyResolvingSymlinkOrAlias("/link", UnreadableLink()), std::nullopt);
}

TEST(SymlinksAndAliases, MakesOneHopOrNone) {
    MemoryLinks links;
    links.link("/link", "/next").link("/next", "/end").alias("/alias", "/link").file("/file");
    EXPECT_EQ(stringByConditionallyResolvingSymlink("/link", links), "/next");
    EXPECT_EQ(stringByConditionallyResolvingSymlink("/file", links), std::nullopt);
    EXPECT_EQ(stringByConditionallyResolvingAlias("/alias", links), "/link");
    EXPECT_EQ(stringByConditionallyResolvingAlias("/file", links), std::nullopt);
    EXPECT_EQ(stringByResolvingSymlink("/link", links), "/next");
    EXPECT_EQ(stringByResolvingSymlink("/file", links), "/file");
    EXPECT_EQ(stringByResolvingAlias("/alias", links), "/link");
    EXPECT_EQ(stringByResolvingAlias("/file", links), "/file");
}

// A cycle of links never ends by itself: it goes on for as long as it may.
TEST(SymlinksAndAliases, FollowsACycleUntilItIsAbandoned) {
    MemoryLinks links;
    links.link("/a", "b").link("/b", "a");
    int hops = 0;
    const auto result =
        stringByResolvingSymlinksAndAliases("/a", links, [&hops] { return ++hops <= 10'000; });
    EXPECT_EQ(result, std::nullopt);
    EXPECT_EQ(hops, 10'001);
    EXPECT_EQ(links.lookups, 10'001);
}

TEST(SymlinksAndAliases, SharesABudgetOfHopsAmongTheComponents) {
    MemoryLinks links;
    links.folder("/x").link("/a", "x").link("/x/b", "c").file("/x/c");
    EXPECT_EQ(stringByResolvingSymlinksAndAliases("/a/b", links, hopBudget(2)), "/x/c");
    EXPECT_EQ(stringByResolvingSymlinksAndAliases("/a/b", links, hopBudget(1)), std::nullopt);
}

}  // namespace
}  // namespace calorivo
