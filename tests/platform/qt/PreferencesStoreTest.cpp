#include "platform/qt/PreferencesStore.h"

#include "platform/linux/TemporaryFolder.h"
#include "platform/std/ThreadQueue.h"
#include "support/RecordingPlatform.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace calorivo {
namespace {

using Lines = std::vector<std::string>;

/// A folder for a file of preferences, and the log that its stores write to.
struct Desk {
    [[nodiscard]] PreferencesStore open() { return PreferencesStore(path, log); }
    [[nodiscard]] std::string text() const { return folder.read("calorivo.ini"); }
    void write(std::string_view text) const { folder.write("calorivo.ini", text); }
    /// Sets the file's time to the beginning of the epoch; whoever writes it changes that.
    void age() const { std::filesystem::last_write_time(path, {}); }
    [[nodiscard]] bool isAged() const {
        return std::filesystem::last_write_time(path) == std::filesystem::file_time_type{};
    }

    TemporaryFolder folder;
    std::string path = folder.path("calorivo.ini");
    test::Calls logged;
    test::RecordingSystemLog log{logged};
};

// The rating prompt counts on a queue of its own.
TEST(PreferencesStore, IsUsedByTwoThreads) {
    constexpr std::int32_t rounds = 40;
    Desk desk;
    PreferencesStore store = desk.open();
    store.registerDefaults({{"count", std::int32_t{0}}});
    ThreadQueue queue("count");
    for (std::int32_t i = 1; i <= rounds; ++i) {
        queue.async([&store] {
            store.setObjectForKey(store.objectForKey("count").intValue() + 1, "count");
            store.synchronize();
        });
        store.setObjectForKey(i, "mine");
        if (i % 10 == 0) store.synchronize();
    }
    queue.sync([] {});
    store.synchronize();
    EXPECT_EQ(desk.open().objectForKey("count").intValue(), rounds);
    EXPECT_EQ(desk.open().objectForKey("mine").intValue(), rounds);
}

TEST(PreferencesStore, KeepsWhatWasSetWithItsType) {
    Desk desk;
    {
        PreferencesStore store = desk.open();
        store.setObjectForKey(7, "tempUnit");
        store.setObjectForKey(true, "showAlerts");
        store.setObjectForKey(2.0, "threshold");
        store.setObjectForKey("5", "name");
        store.setObjectForKey(Data{0, 255}, "logFileBookmarkData");
        store.synchronize();
    }
    const PreferencesStore store = desk.open();
    EXPECT_EQ(store.objectForKey("tempUnit"), Value(7));
    EXPECT_EQ(store.objectForKey("showAlerts"), Value(true));
    EXPECT_EQ(store.objectForKey("threshold"), Value(2.0));
    EXPECT_EQ(store.objectForKey("name"), Value("5"));
    EXPECT_EQ(store.objectForKey("logFileBookmarkData"), Value((Data{0, 255})));
    EXPECT_EQ(store.objectForKey("absent"), Value());
    EXPECT_EQ(store.problems(), Lines{});
    EXPECT_EQ(desk.logged, Lines{});
}

TEST(PreferencesStore, AKeyReadAsAnotherTypeFollowsTheConversionsOfValues) {
    Desk desk;
    desk.write("number=\"12 rpm\"\nflag=\"yes\"\nwhole=2.9\n");
    const PreferencesStore store = desk.open();
    EXPECT_EQ(store.objectForKey("number").intValue(), 12);
    EXPECT_TRUE(store.objectForKey("flag").boolValue());
    EXPECT_EQ(store.objectForKey("whole").intValue(), 2);
}

TEST(PreferencesStore, RegisteredDefaultsAreSeenAndNeverStored) {
    Desk desk;
    PreferencesStore store = desk.open();
    store.registerDefaults({{"limit", 90}, {"unit", 0}});
    store.registerDefaults({{"limit", 80}});
    EXPECT_EQ(store.objectForKey("limit"), Value(80));
    store.setObjectForKey(70, "limit");
    store.synchronize();
    EXPECT_EQ(store.objectForKey("limit"), Value(70));
    EXPECT_EQ(desk.text(), "[General]\nlimit=70\n");
    store.setObjectForKey({}, "limit");
    EXPECT_EQ(store.objectForKey("limit"), Value(80));
    store.synchronize();
    EXPECT_EQ(store.objectForKey("limit"), Value(80));
    EXPECT_EQ(desk.text(), "[General]\n");
}

TEST(PreferencesStore, WritesOnlyWhenItIsToldToAndSomethingChanged) {
    Desk desk;
    PreferencesStore store = desk.open();
    store.synchronize();
    store.setObjectForKey({}, "absent");
    store.synchronize();
    EXPECT_FALSE(std::filesystem::exists(desk.path));
    store.setObjectForKey(1, "a");
    EXPECT_FALSE(std::filesystem::exists(desk.path));
    store.synchronize();
    desk.age();
    store.synchronize();
    store.setObjectForKey(1, "a");
    store.synchronize();
    store.setObjectForKey(2, "a");
    store.setObjectForKey(1, "a");
    store.synchronize();
    EXPECT_TRUE(desk.isAged());
    store.setObjectForKey(true, "a");
    store.synchronize();
    EXPECT_EQ(desk.text(), "[General]\na=true\n");
}

TEST(PreferencesStore, WhatOthersWroteStaysExceptForTheKeysThatWereSet) {
    Desk desk;
    desk.write("# mine\n[General]\na=1\nb=1\nc=1\nforeign=@Rect(1)\n");
    PreferencesStore store = desk.open();
    store.setObjectForKey(2, "a");
    store.setObjectForKey({}, "c");
    desk.write("# mine\n[General]\na=5\nb=5\nc=5\nnew=5\nforeign=@Rect(1)\n[Other]\nx\n");
    store.synchronize();
    EXPECT_EQ(desk.text(), "# mine\n[General]\na=2\nb=5\nnew=5\nforeign=@Rect(1)\n[Other]\nx\n");
    EXPECT_EQ(store.objectForKey("b"), Value(5));
}

TEST(PreferencesStore, WritesEverythingWhenTheFileIsGone) {
    Desk desk;
    desk.write("[General]\na=1\nb=1\n");
    PreferencesStore store = desk.open();
    std::filesystem::remove(desk.path);
    store.setObjectForKey(2, "b");
    store.synchronize();
    EXPECT_EQ(desk.text(), "[General]\na=1\nb=2\n");
}

TEST(PreferencesStore, ADamagedFileIsKeptAsideToldAndUsedAsFarAsItIsWhole) {
    Desk desk;
    const std::string damaged = "a=1\nnonsense\nb=\xFF\nc=3\nlimit=8";
    desk.write(damaged);
    PreferencesStore store = desk.open();
    EXPECT_EQ(store.problems(), (Lines{
                                    desk.path + ":2: it is neither KEY=VALUE nor a comment",
                                    desk.path + ":3: it is not UTF-8",
                                    desk.path + ":5: it has no end: the file was cut off",
                                    desk.path + ": the damaged file is kept as " + desk.path + ".damaged-1",
                                }));
    EXPECT_EQ(store.objectForKey("a"), Value(1));
    EXPECT_EQ(store.objectForKey("c"), Value(3));
    EXPECT_EQ(store.objectForKey("limit"), Value());
    EXPECT_EQ(desk.folder.read("calorivo.ini.damaged-1"), damaged);
    // Nothing was set, but what was told once is not to be told again.
    store.synchronize();
    EXPECT_EQ(desk.text(), "a=1\nc=3\n");
    EXPECT_EQ(desk.folder.read("calorivo.ini.damaged-1"), damaged);
    EXPECT_EQ(desk.open().problems(), Lines{});
}

TEST(PreferencesStore, ManyProblemsAreToldInFewLines) {
    Desk desk;
    std::string text;
    for (int i = 0; i < 500; ++i) text += "nonsense\n";
    desk.write(text);
    const Lines problems = desk.open().problems();
    ASSERT_EQ(problems.size(), 12U);
    EXPECT_EQ(problems.at(9), desk.path + ":10: it is neither KEY=VALUE nor a comment");
    EXPECT_EQ(problems.at(10), desk.path + ": and 490 more");
}

TEST(PreferencesStore, AFileThatIsDamagedMeanwhileCostsNothing) {
    Desk desk;
    desk.write("[General]\na=1\nb=1\n");
    PreferencesStore store = desk.open();
    desk.write("[General]\na=9\nrubbish\n");
    store.setObjectForKey(3, "c");
    store.synchronize();
    EXPECT_EQ(desk.text(), "[General]\na=9\nb=1\nc=3\n");
    EXPECT_EQ(desk.folder.read("calorivo.ini.damaged-1"), "[General]\na=9\nrubbish\n");
}

TEST(PreferencesStore, AHugeFileIsUsedAsFarAsItIsRead) {
    Desk desk;
    desk.write("a=1\n");
    std::filesystem::resize_file(desk.path, std::uintmax_t{1} << 30);
    PreferencesStore store = desk.open();
    EXPECT_EQ(store.objectForKey("a"), Value(1));
    EXPECT_EQ(store.problems(),
              (Lines{desk.path + ": it is longer than 4194304 bytes",
                     desk.path + ": the damaged file is kept as " + desk.path + ".damaged-1"}));
    store.synchronize();
    EXPECT_EQ(desk.text(), "a=1\n");
}

TEST(PreferencesStore, WhatIsNoFileIsToldAndNeverReplaced) {
    Desk desk;
    std::filesystem::create_directory(desk.path);
    PreferencesStore store = desk.open();
    EXPECT_EQ(store.problems(), Lines{desk.path + ": it is no regular file"});
    store.setObjectForKey(1, "a");
    store.synchronize();
    EXPECT_TRUE(std::filesystem::is_directory(desk.path));
    EXPECT_EQ(store.objectForKey("a"), Value(1));
}

TEST(PreferencesStore, WhatCannotBeWrittenStaysAndIsLoggedOnce) {
    Desk desk;
    const std::string blocked = desk.folder.write("blocked", "");
    PreferencesStore store(blocked + "/calorivo.ini", desk.log);
    for (int i = 1; i <= 3; ++i) {
        store.setObjectForKey(i, "a");
        store.synchronize();
    }
    EXPECT_EQ(store.objectForKey("a"), Value(3));
    EXPECT_EQ(desk.logged, Lines{"log The preferences cannot be written to " + blocked +
                                 "/calorivo.ini: Not a directory"});
    std::filesystem::remove(blocked);
    store.synchronize();
    EXPECT_EQ(desk.folder.read("blocked/calorivo.ini"), "[General]\na=3\n");
}

/// While it lives, no file of this process can grow beyond a few bytes.
class FullDisk {
  public:
    FullDisk() : formerAction_(signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &former_);
        const rlimit tight{4, former_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &tight);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &former_);
        signal(SIGXFSZ, formerAction_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

  private:
    sighandler_t formerAction_;
    rlimit former_{};
};

TEST(PreferencesStore, AFullDiskLeavesTheOldFile) {
    Desk desk;
    desk.write("[General]\na=1\n");
    PreferencesStore store = desk.open();
    store.setObjectForKey(2, "a");
    {
        const FullDisk disk;
        store.synchronize();
    }
    EXPECT_EQ(desk.text(), "[General]\na=1\n");
    EXPECT_EQ(store.objectForKey("a"), Value(2));
    EXPECT_EQ(desk.logged,
              Lines{"log The preferences cannot be written to " + desk.path + ": File too large"});
    EXPECT_FALSE(std::filesystem::exists(desk.path + ".new"));
    store.synchronize();
    EXPECT_EQ(desk.text(), "[General]\na=2\n");
}

TEST(PreferencesStore, WithoutAPathItLastsAsLongAsTheProgram) {
    Desk desk;
    PreferencesStore store("", desk.log);
    store.setObjectForKey(1, "a");
    store.synchronize();
    EXPECT_EQ(store.objectForKey("a"), Value(1));
    EXPECT_EQ(desk.logged, Lines{});
}

/// Writes ever new values until it is killed.
[[noreturn]] void writeForever(const std::string& path) {
    test::Calls ignored;
    test::RecordingSystemLog log(ignored);
    PreferencesStore store(path, log);
    for (int round = 0;; ++round) {
        for (int key = 0; key < 20; ++key) store.setObjectForKey(round, "key" + std::to_string(key));
        store.setObjectForKey(std::string(static_cast<std::size_t>(round % 50) * 100, 'x'), "filler");
        store.synchronize();
    }
}

TEST(PreferencesStore, IsWholeWheneverTheProgramIsKilled) {
    Desk desk;
    std::mt19937 random(20);  // NOLINT(cert-msc51-cpp): the same moments in every run
    int lastRound = -1;
    for (int kill = 0; kill < 250; ++kill) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) writeForever(desk.path);
        usleep(static_cast<useconds_t>(random() % 6000));
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        ASSERT_EQ(waitpid(child, nullptr, 0), child);
        const PreferencesStore store = desk.open();
        ASSERT_EQ(store.problems(), Lines{});
        const Value round = store.objectForKey("key0");
        if (round.isNil() && lastRound < 0) continue;
        ASSERT_FALSE(round.isNil());
        lastRound = round.intValue();
        for (int key = 0; key < 20; ++key) ASSERT_EQ(store.objectForKey("key" + std::to_string(key)), round);
        ASSERT_EQ(store.objectForKey("filler").stringValue().size(),
                  static_cast<std::size_t>(lastRound % 50) * 100);
    }
    EXPECT_GE(lastRound, 0) << "no child ever wrote";
    PreferencesStore store = desk.open();
    store.setObjectForKey(-1, "key0");
    store.synchronize();
    EXPECT_FALSE(std::filesystem::exists(desk.path + ".new"));
}

}  // namespace
}  // namespace calorivo
