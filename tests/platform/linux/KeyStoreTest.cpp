#include "platform/linux/KeyStore.h"

#include "TemporaryFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>

namespace calorivo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view name = "sensor-keys";

KeyStore loaded(const std::string& folder) {
    KeyStore store(folder);
    store.load();
    return store;
}

std::vector<std::string> filesIn(const std::string& folder) {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        files.push_back(entry.path().filename());
    return files;
}

TEST(KeyStore, KeepsPairsInAPrivateFolderThatItCreates) {
    const TemporaryFolder folder;
    const std::string state = folder.path("a/b/calorivo");
    KeyStore store = loaded(state);
    store.assign("TC1C", "/d|coretemp|temp2|Core 0");
    store.assign("F3", "/d|nct|fan2|a\tb\nc\\d");
    store.save();
    EXPECT_THAT(store.problems(), IsEmpty());
    EXPECT_EQ(folder.read("a/b/calorivo/sensor-keys"),
              "F3\t/d|nct|fan2|a\\tb\\nc\\\\d\nTC1C\t/d|coretemp|temp2|Core 0\n");
    for (const char* part : {"a", "a/b", "a/b/calorivo"}) {
        struct stat status {};
        ASSERT_EQ(::stat(folder.path(part).c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777U, 0700U) << part;
    }
    EXPECT_THAT(filesIn(state), ElementsAre("sensor-keys"));

    const KeyStore again = loaded(state);
    EXPECT_EQ(again.keyOf("/d|coretemp|temp2|Core 0"), "TC1C");
    EXPECT_EQ(again.keyOf("/d|nct|fan2|a\tb\nc\\d"), "F3");
    EXPECT_EQ(again.identityOf("TC1C"), "/d|coretemp|temp2|Core 0");
    EXPECT_TRUE(again.isTaken("F3"));
    EXPECT_FALSE(again.isTaken("F4"));
    EXPECT_EQ(again.keyOf("another"), "");
    EXPECT_EQ(again.identityOf("TC2C"), "");
}

TEST(KeyStore, WritesNothingWithoutAFolderOrNews) {
    KeyStore nowhere("");
    nowhere.load();
    nowhere.assign("TC1C", "a");
    nowhere.save();
    EXPECT_EQ(nowhere.keyOf("a"), "TC1C");
    EXPECT_THAT(nowhere.problems(), IsEmpty());

    const TemporaryFolder folder;
    KeyStore store = loaded(folder.path("state"));
    store.save();
    EXPECT_FALSE(std::filesystem::exists(folder.path("state")));
}

TEST(KeyStore, ReportsAndKeepsDamagedLines) {
    const TemporaryFolder folder;
    const std::string file = folder.write(std::string(name),
                                          "TC1C\ta\n"
                                          "no tabulator\n"
                                          "\n"
                                          "XC1C\tb\n"
                                          "TC1C\tc\n"
                                          "TC2C\ta\n"
                                          "TC3C\tbad \\x escape\n"
                                          "TC4C\t\n"
                                          "F1\t/d|chip|temp1|\n"
                                          "TC5C\t/d|chip|fan1|\n"
                                          "TC0C\td\n"
                                          "TN0G\te\n"
                                          "TC6C\tf \\");
    KeyStore store = loaded(folder.path());
    EXPECT_THAT(
        store.problems(),
        ElementsAre(
            file + ":2: no tabulator between key and sensor", file + ":4: no key that this sensor can have",
            file + ":5: its key or sensor has a line already",
            file + ":6: its key or sensor has a line already", file + ":7: no sensor that can be read",
            file + ":8: no sensor that can be read", file + ":9: no key that this sensor can have",
            file + ":10: no key that this sensor can have", file + ":11: no key that this sensor can have",
            file + ":12: no key that this sensor can have", file + ":13: no sensor that can be read"));
    EXPECT_EQ(store.keyOf("a"), "TC1C");
    EXPECT_EQ(store.keyOf("b"), "");
    EXPECT_FALSE(store.isTaken("TC2C"));
    store.assign("TC9C", "z");
    store.save();
    EXPECT_EQ(folder.read(std::string(name)),
              "TC1C\ta\n"
              "TC9C\tz\n"
              "no tabulator\n"
              "XC1C\tb\n"
              "TC1C\tc\n"
              "TC2C\ta\n"
              "TC3C\tbad \\x escape\n"
              "TC4C\t\n"
              "F1\t/d|chip|temp1|\n"
              "TC5C\t/d|chip|fan1|\n"
              "TC0C\td\n"
              "TN0G\te\n"
              "TC6C\tf \\\n");
}

TEST(KeyStore, KeepsWhatAnotherProcessHasWrittenMeanwhile) {
    const TemporaryFolder folder;
    folder.write(std::string(name), "TC1C\ta\n");
    KeyStore first = loaded(folder.path());
    KeyStore second = loaded(folder.path());
    first.assign("TC2C", "b");
    first.assign("TC3C", "c");
    first.assign("TC4C", "d");
    first.save();
    second.assign("TC2C", "other");
    second.assign("TC5C", "c");
    second.assign("TC6C", "e");
    second.save();
    EXPECT_EQ(folder.read(std::string(name)), "TC1C\ta\nTC2C\tother\nTC4C\td\nTC5C\tc\nTC6C\te\n");
    EXPECT_EQ(second.keyOf("d"), "TC4C");
}

TEST(KeyStore, DoesNotSaveReservedKeys) {
    const TemporaryFolder folder;
    folder.write(std::string(name), "TA0P\ta\n");
    KeyStore store = loaded(folder.path());
    store.reserve("TA0P");
    store.reserve("TB0T");
    EXPECT_TRUE(store.isTaken("TB0T"));
    EXPECT_EQ(store.keyOf("a"), "");
    store.assign("TN0x", "a");
    EXPECT_TRUE(store.isTaken("TA0P"));
    EXPECT_EQ(store.keyOf("a"), "TN0x");
    store.save();
    EXPECT_EQ(folder.read(std::string(name)), "TN0x\ta\n");
}

TEST(KeyStore, GivesAReleasedKeyToAnother) {
    const TemporaryFolder folder;
    folder.write(std::string(name), "F0\t/d|a|fan1|\n");
    KeyStore store = loaded(folder.path());
    store.release("F0");
    store.release("F1");
    EXPECT_FALSE(store.isTaken("F0"));
    store.assign("F0", "/d|b|fan1|");
    store.save();
    EXPECT_EQ(folder.read(std::string(name)), "F0\t/d|b|fan1|\n");
}

/// Puts something that is no file of ours in the file's place, and expects one problem and no change.
void expectRefused(const TemporaryFolder& folder, const std::string& reason) {
    const std::string file = folder.path(std::string(name));
    const auto before = std::filesystem::symlink_status(file).type();
    KeyStore store = loaded(folder.path());
    store.assign("TC1C", "a");
    store.save();
    store.assign("TC2C", "b");
    store.save();
    EXPECT_THAT(store.problems(), ElementsAre(file + ": " + reason));
    EXPECT_EQ(std::filesystem::symlink_status(file).type(), before);
    EXPECT_THAT(filesIn(folder.path()), testing::Not(testing::Contains(testing::StartsWith("sensor-keys."))));
    EXPECT_EQ(store.keyOf("b"), "TC2C");
}

TEST(KeyStore, NeverWritesInThePlaceOfAnythingElse) {
    const TemporaryFolder fifo;
    ASSERT_EQ(::mkfifo(fifo.path(std::string(name)).c_str(), 0600), 0);
    expectRefused(fifo, "it is no regular file");

    const TemporaryFolder directory;
    std::filesystem::create_directory(directory.path(std::string(name)));
    expectRefused(directory, "it is a folder");

    const TemporaryFolder link;
    std::filesystem::create_symlink(link.write("target", "TC7C\tx\n"), link.path(std::string(name)));
    expectRefused(link, "it is a symbolic link");
    EXPECT_EQ(link.read("target"), "TC7C\tx\n");

    const TemporaryFolder dangling;
    std::filesystem::create_symlink(dangling.path("absent"), dangling.path(std::string(name)));
    expectRefused(dangling, "it is a symbolic link");

    const TemporaryFolder big;
    big.write(std::string(name), std::string((1U << 20U) + 1, '\n'));
    expectRefused(big, "it is longer than 1048576 bytes");
    EXPECT_EQ(big.read(std::string(name)).size(), (1U << 20U) + 1);
}

TEST(KeyStore, NeverWritesInThePlaceOfWhatHasComeSinceLoading) {
    const TemporaryFolder folder;
    const std::string file = folder.path(std::string(name));
    KeyStore store = loaded(folder.path());
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    store.assign("TC1C", "a");
    store.save();
    EXPECT_THAT(store.problems(), ElementsAre(file + ": not written: it is no regular file"));
    EXPECT_EQ(std::filesystem::status(file).type(), std::filesystem::file_type::fifo);
}

TEST(KeyStore, ReportsOnceThatItCannotWrite) {
    const TemporaryFolder folder;
    const std::string blocked = folder.write("file", "") + "/state";
    KeyStore store(blocked);
    store.assign("TC1C", "a");
    store.save();
    store.assign("TC2C", "b");
    store.save();
    EXPECT_THAT(store.problems(), ElementsAre(blocked + "/sensor-keys: not written: Not a directory"));
    EXPECT_EQ(store.keyOf("b"), "TC2C");
}

TEST(KeyStore, ReportsStatesThatAreTooLong) {
    const TemporaryFolder folder;
    KeyStore store = loaded(folder.path());
    store.assign("TC1C", std::string(1U << 20U, 'x'));
    store.save();
    EXPECT_THAT(store.problems(),
                ElementsAre(folder.path(std::string(name)) + ": not written: there are too many sensors"));
    EXPECT_THAT(filesIn(folder.path()), IsEmpty());
}

TEST(KeyStore, LeavesTheOldFileWhenTheDiskIsFull) {
    const TemporaryFolder folder;
    folder.write(std::string(name), "TC1C\ta\n");
    KeyStore store = loaded(folder.path());
    store.assign("TC2C", std::string(3000, 'x'));

    // A limit on the length of files stands for a full disk.
    rlimit old{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &old), 0);
    const rlimit small{.rlim_cur = 1000, .rlim_max = old.rlim_max};
    const auto oldHandler = ::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    store.save();
    ::setrlimit(RLIMIT_FSIZE, &old);
    ::signal(SIGXFSZ, oldHandler);

    EXPECT_THAT(store.problems(),
                ElementsAre(folder.path(std::string(name)) + ": not written: File too large"));
    EXPECT_EQ(folder.read(std::string(name)), "TC1C\ta\n");
    EXPECT_THAT(filesIn(folder.path()), ElementsAre("sensor-keys"));
}

/// A process that writes the state again and again until it is killed.
pid_t writer(const std::string& folder, char mark) {
    const pid_t child = ::fork();
    if (child != 0) return child;
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (;;) {
        KeyStore store(folder);
        for (char c = 'a'; c <= 'z'; ++c) store.assign({'T', mark, c, 'x'}, std::string(200, c) + mark);
        store.save();
    }
}

TEST(KeyStore, IsWholeWheneverItIsReadWhileOthersWriteAndAreKilled) {
    const TemporaryFolder folder;
    const std::array writers{writer(folder.path(), 'N'), writer(folder.path(), 'M')};
    int found = 0;
    for (int i = 0; i < 300; ++i) {
        const KeyStore store = loaded(folder.path());
        EXPECT_THAT(store.problems(), IsEmpty());
        for (const char mark : {'N', 'M'}) {
            int pairs = 0;
            for (char c = 'a'; c <= 'z'; ++c)
                if (!store.keyOf(std::string(200, c) + mark).empty()) ++pairs;
            EXPECT_TRUE(pairs == 0 || pairs == 26) << pairs;
            found += pairs;
        }
        // Wait for the writers where the first one has not come so far yet.
        if (found == 0) {
            i = 0;
            ::sched_yield();
        }
    }
    for (const pid_t child : writers) {
        EXPECT_EQ(::kill(child, SIGKILL), 0);
        EXPECT_EQ(::waitpid(child, nullptr, 0), child);
    }
    EXPECT_THAT(loaded(folder.path()).problems(), IsEmpty());
}

}  // namespace
}  // namespace calorivo
