#include "platform/qt/PreferencesStoreFile.h"

#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace calorivo {
namespace {

using std::filesystem::perms;

std::vector<std::string> filesIn(const TemporaryFolder& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path()))
        names.push_back(entry.path().lexically_relative(folder.path()).string());
    std::sort(names.begin(), names.end());
    return names;
}

bool replace(const std::string& path, std::string_view text) {
    return PreferencesFileWriter(path).replaceWith(text);
}

perms permissionsOf(const std::string& path) { return std::filesystem::status(path).permissions(); }

TEST(PreferencesStoreFile, ANewFileAndItsFoldersAreForTheirOwnerOnly) {
    const TemporaryFolder folder;
    ASSERT_TRUE(replace(folder.path("a/b/file"), "text"));
    EXPECT_EQ(folder.read("a/b/file"), "text");
    EXPECT_EQ(permissionsOf(folder.path("a/b/file")), perms::owner_read | perms::owner_write);
    EXPECT_EQ(permissionsOf(folder.path("a")), perms::owner_all);
    EXPECT_EQ(permissionsOf(folder.path("a/b")), perms::owner_all);
    EXPECT_EQ(filesIn(folder), (std::vector<std::string>{"a", "a/b", "a/b/file"}));
}

TEST(PreferencesStoreFile, AnOldFileKeepsItsPermissions) {
    const TemporaryFolder folder;
    const std::string path = folder.write("file", "a longer text than the new one");
    const perms chosen = perms::owner_read | perms::owner_write | perms::group_read;
    std::filesystem::permissions(path, chosen);
    ASSERT_TRUE(replace(path, "new"));
    EXPECT_EQ(folder.read("file"), "new");
    EXPECT_EQ(permissionsOf(path), chosen);
}

TEST(PreferencesStoreFile, ASymbolicLinkStaysAndItsTargetIsReplaced) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.path("dotfiles"));
    folder.write("dotfiles/real", "old");
    std::filesystem::create_symlink("dotfiles/second", folder.path("first"));
    std::filesystem::create_symlink("real", folder.path("dotfiles/second"));
    ASSERT_TRUE(replace(folder.path("first"), "new"));
    EXPECT_EQ(folder.read("dotfiles/real"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("first")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("dotfiles/second")));

    std::filesystem::create_symlink(folder.path("dotfiles/to-be"), folder.path("dangling"));
    ASSERT_TRUE(replace(folder.path("dangling"), "new"));
    EXPECT_EQ(folder.read("dotfiles/to-be"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("dangling")));
}

TEST(PreferencesStoreFile, WhatAKilledProcessLeftIsUsedAgain) {
    const TemporaryFolder folder;
    folder.write("file.new", "half of a much longer text");
    ASSERT_TRUE(replace(folder.path("file"), "whole"));
    EXPECT_EQ(folder.read("file"), "whole");
    EXPECT_EQ(filesIn(folder), std::vector<std::string>{"file"});
}

TEST(PreferencesStoreFile, OneOfTwoWritersGivesUpInTheEnd) {
    const TemporaryFolder folder;
    PreferencesFileWriter first(folder.path("file"));
    constexpr int shortPatience = 30;
    PreferencesFileWriter second(folder.path("file"), shortPatience);
    EXPECT_EQ(first.problem(), "");
    EXPECT_EQ(second.problem(), "another instance is writing it");
    EXPECT_FALSE(second.replaceWith("second"));
    EXPECT_TRUE(first.replaceWith("first"));
    EXPECT_EQ(folder.read("file"), "first");
    EXPECT_TRUE(replace(folder.path("file"), "third"));
}

TEST(PreferencesStoreFile, AFailureLeavesTheFileAndNothingElse) {
    const TemporaryFolder folder;
    const std::string blocked = folder.write("blocked", "");
    EXPECT_EQ(PreferencesFileWriter(blocked + "/file").problem(), "Not a directory");
    std::filesystem::create_directory(folder.path("folder"));
    PreferencesFileWriter writer(folder.path("folder"));
    EXPECT_FALSE(writer.replaceWith("text"));
    EXPECT_EQ(writer.problem(), "Is a directory");
    { const PreferencesFileWriter unused(folder.path("unused")); }
    EXPECT_EQ(filesIn(folder), (std::vector<std::string>{"blocked", "folder", "folder.new"}));
}

TEST(PreferencesStoreFile, ReadsRegularFilesOnlyAndNeverWaits) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.path("fifo").c_str(), 0600), 0);
    using State = PreferencesFile::State;
    EXPECT_EQ(readPreferencesFile(folder.path("absent")).state, State::absent);
    EXPECT_EQ(readPreferencesFile(folder.path("fifo")).state, State::unusable);
    EXPECT_EQ(readPreferencesFile(folder.path()).reason, "it is no regular file");
    const PreferencesFile file = readPreferencesFile(folder.write("file", std::string(200'000, 'x')));
    EXPECT_EQ(file.state, State::read);
    EXPECT_EQ(file.text, std::string(200'000, 'x'));
    EXPECT_FALSE(file.isTooLong);
}

TEST(PreferencesStoreFile, ReadsTheWholeLinesAtTheBeginningOfAHugeFile) {
    const TemporaryFolder folder;
    const std::string path = folder.write("huge", "a=1\nb=2\n");
    std::filesystem::resize_file(path, std::uintmax_t{1} << 32);
    const PreferencesFile file = readPreferencesFile(path);
    EXPECT_TRUE(file.isTooLong);
    EXPECT_EQ(file.text, "a=1\nb=2\n");
}

TEST(PreferencesStoreFile, KeepsADamagedFileUnderAFreeName) {
    const TemporaryFolder folder;
    const std::string path = folder.write("file", "one");
    folder.write("file.damaged-1", "earlier");
    std::filesystem::create_symlink("nowhere", folder.path("file.damaged-2"));
    EXPECT_EQ(keepAside(path), folder.path("file.damaged-3"));
    // Until the file is replaced it is the same one.
    EXPECT_EQ(keepAside(path), folder.path("file.damaged-3"));
    ASSERT_TRUE(replace(path, "two"));
    EXPECT_EQ(keepAside(path), folder.path("file.damaged-4"));
    EXPECT_EQ(folder.read("file.damaged-1"), "earlier");
    EXPECT_EQ(folder.read("file.damaged-3"), "one");
    EXPECT_EQ(folder.read("file.damaged-4"), "two");
    EXPECT_EQ(keepAside(folder.path("absent")), "");
}

TEST(PreferencesStoreFile, FollowsSymbolicLinksToTheirEnd) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink("loop", folder.path("loop"));
    EXPECT_EQ(behindSymbolicLinks(folder.path("loop")), folder.path("loop"));
    EXPECT_EQ(behindSymbolicLinks(folder.path("plain")), folder.path("plain"));
}

}  // namespace
}  // namespace calorivo
