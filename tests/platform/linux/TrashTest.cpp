#include "platform/linux/Trash.h"

#include "platform/linux/FileOperationsCopy.h"
#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

namespace calorivo {
namespace {

namespace fs = std::filesystem;

/// A home and a stick, which counts as another device, in one folder. Time stands still.
class TrashTest : public testing::Test {
  protected:
    TrashTest() {
        fs::create_directories(data);
        fs::create_directories(stick);
        system.deviceOf = [this](const std::string& path) -> dev_t {
            return path.starts_with(stick) ? 2 : 1;
        };
        system.topFolderOf = [this](const std::string& path) {
            return path.starts_with(stick) ? stick : "/";
        };
        system.now = [] { return std::time_t{1'700'000'000}; };
    }

    std::string write(const std::string& name, std::string_view text = "x") {
        fs::create_directories(fs::path(folder.path(name)).parent_path());
        return folder.write(name, text);
    }
    std::string put(const std::string& path) const { return Trash(system).put(path); }
    std::vector<std::string> namesIn(const std::string& path) const {
        std::vector<std::string> names;
        if (fs::exists(path))
            for (const auto& entry : fs::directory_iterator(path))
                names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
    static std::string info(const std::string& path) {
        return "[Trash Info]\nPath=" + path + "\nDeletionDate=2023-11-14T22:13:20\n";
    }
    static mode_t modeOf(const std::string& path) {
        struct stat status {};
        return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
    }

    const TemporaryFolder folder;
    const std::string root = fs::canonical(folder.path()).string();
    const std::string data = root + "/home/data";
    const std::string stick = root + "/stick";
    const std::string uid = std::to_string(::geteuid());
    TrashSystem system = Trash::system(data);
};

TEST_F(TrashTest, PutsAFileIntoTheHomeTrash) {
    const std::string path = write("home/my old app 100%.txt", "text");
    EXPECT_EQ(put(path), "");
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ(folder.read("home/data/Trash/files/my old app 100%.txt"), "text");
    EXPECT_EQ(folder.read("home/data/Trash/info/my old app 100%.txt.trashinfo"),
              info(root + "/home/my%20old%20app%20100%25.txt"));
    for (const char* part : {"/Trash", "/Trash/files", "/Trash/info"}) EXPECT_EQ(modeOf(data + part), 0700U);
    EXPECT_FALSE(fs::exists(data + "/Trash/directorysizes"));
}

TEST_F(TrashTest, EscapesEveryByteThatIsNotPlain) {
    EXPECT_EQ(put(write("home/ü\n'\"&=[a]~_.-")), "");
    EXPECT_EQ(folder.read("home/data/Trash/info/ü\n'\"&=[a]~_.-.trashinfo"),
              info(root + "/home/%C3%BC%0A%27%22%26%3D%5Ba%5D~_.-"));
}

TEST_F(TrashTest, RecordsTheSizeOfAFolder) {
    write("home/Calorivo 3/bin/run", "12345");
    write("home/Calorivo 3/data", "123");
    EXPECT_EQ(put(root + "/home/Calorivo 3"), "");
    struct stat status {};
    ASSERT_EQ(::stat((data + "/Trash/info/Calorivo 3.trashinfo").c_str(), &status), 0);
    EXPECT_EQ(folder.read("home/data/Trash/directorysizes"),
              "8 " + std::to_string(status.st_mtim.tv_sec) + " Calorivo%203\n");
    write("home/Calorivo 3/data", "1");
    EXPECT_EQ(put(root + "/home/Calorivo 3"), "");
    EXPECT_NE(folder.read("home/data/Trash/directorysizes").find("\n1 "), std::string::npos);
}

TEST_F(TrashTest, GivesEachEntryANameOfItsOwn) {
    for (int i = 0; i < 3; ++i) EXPECT_EQ(put(write("home/app", std::to_string(i))), "");
    EXPECT_EQ(namesIn(data + "/Trash/files"), (std::vector<std::string>{"app", "app.2", "app.3"}));
    EXPECT_EQ(namesIn(data + "/Trash/info"),
              (std::vector<std::string>{"app.2.trashinfo", "app.3.trashinfo", "app.trashinfo"}));
    EXPECT_EQ(folder.read("home/data/Trash/files/app.3"), "2");
}

TEST_F(TrashTest, NeverReplacesAnEntryWithoutInformation) {
    write("home/data/Trash/files/app", "orphan");
    EXPECT_EQ(put(write("home/app", "new")), "");
    EXPECT_EQ(folder.read("home/data/Trash/files/app"), "orphan");
    EXPECT_EQ(folder.read("home/data/Trash/files/app.2"), "new");
    EXPECT_EQ(namesIn(data + "/Trash/info"), std::vector<std::string>{"app.2.trashinfo"});
}

TEST_F(TrashTest, TakesALinkItself) {
    write("home/target/file", "kept");
    fs::create_directory_symlink(root + "/home/target", root + "/home/link");
    EXPECT_EQ(put(root + "/home/link"), "");
    EXPECT_TRUE(fs::is_symlink(data + "/Trash/files/link"));
    EXPECT_EQ(folder.read("home/target/file"), "kept");
}

TEST_F(TrashTest, ShortensANameThatIsTooLong) {
    std::string name;
    while (name.size() < 250) name += "ü";
    EXPECT_EQ(put(write("home/" + name)), "");
    EXPECT_EQ(namesIn(data + "/Trash/files"), std::vector<std::string>{name.substr(0, 230)});
}

TEST_F(TrashTest, RefusesWhatIsNoEntryOfAFolder) {
    for (const std::string& path : {std::string("/"), std::string(), std::string("relative"), root + "/.",
                                    root + "/..", root + "/home/"})
        EXPECT_EQ(put(path), "Invalid argument") << path;
    EXPECT_EQ(put(root + "/home/missing"), "No such file or directory");
    EXPECT_EQ(put(root + "/missing/file"), "No such file or directory");
}

TEST_F(TrashTest, CannotTakeTheTrashItself) {
    EXPECT_EQ(put(write("home/app")), "");
    EXPECT_NE(put(data + "/Trash"), "");
    EXPECT_EQ(folder.read("home/data/Trash/files/app"), "x");
    EXPECT_EQ(namesIn(data + "/Trash/info"), std::vector<std::string>{"app.trashinfo"});
}

// Other file systems.

TEST_F(TrashTest, UsesATrashOfTheUsersOwnAtTheTopOfAnotherFileSystem) {
    EXPECT_EQ(put(write("stick/sub folder/app")), "");
    const std::string trash = stick + "/.Trash-" + uid;
    EXPECT_EQ(namesIn(trash + "/files"), std::vector<std::string>{"app"});
    // So that it is found again wherever the stick is mounted.
    EXPECT_EQ(folder.read("stick/.Trash-" + uid + "/info/app.trashinfo"), info("sub%20folder/app"));
    EXPECT_EQ(modeOf(trash), 0700U);
    EXPECT_FALSE(fs::exists(data + "/Trash"));
}

TEST_F(TrashTest, PrefersTheSharedTrashWithTheStickyBit) {
    fs::create_directory(stick + "/.Trash");
    fs::permissions(stick + "/.Trash", fs::perms{01777});
    EXPECT_EQ(put(write("stick/app")), "");
    EXPECT_EQ(folder.read("stick/.Trash/" + uid + "/info/app.trashinfo"), info("app"));
    EXPECT_FALSE(fs::exists(stick + "/.Trash-" + uid));
}

TEST_F(TrashTest, DistrustsASharedTrashThatIsALinkOrNotSticky) {
    fs::create_directory(stick + "/.Trash");
    fs::permissions(stick + "/.Trash", fs::perms{0777});
    EXPECT_EQ(put(write("stick/app")), "");
    EXPECT_EQ(namesIn(stick + "/.Trash-" + uid + "/files"), std::vector<std::string>{"app"});
    fs::remove(stick + "/.Trash");
    fs::create_directory(root + "/elsewhere");
    fs::permissions(root + "/elsewhere", fs::perms{01777});
    fs::create_directory_symlink(root + "/elsewhere", stick + "/.Trash");
    EXPECT_EQ(put(write("stick/app")), "");
    EXPECT_EQ(namesIn(stick + "/.Trash-" + uid + "/files"), (std::vector<std::string>{"app", "app.2"}));
    EXPECT_EQ(namesIn(root + "/elsewhere"), std::vector<std::string>{});
}

TEST_F(TrashTest, UsesTheHomeTrashWhereThereCanBeNoOther) {
    // A file and a link where the user's folders would be.
    write("stick/.Trash-" + uid, "in the way");
    EXPECT_EQ(put(write("stick/app", "text")), "");
    EXPECT_EQ(folder.read("home/data/Trash/files/app"), "text");
    EXPECT_EQ(folder.read("home/data/Trash/info/app.trashinfo"), info(stick + "/app"));
    fs::remove(stick + "/.Trash-" + uid);
    fs::create_directory(root + "/elsewhere");
    fs::create_directory_symlink(root + "/elsewhere", stick + "/.Trash-" + uid);
    EXPECT_EQ(put(write("stick/app")), "");
    EXPECT_EQ(namesIn(root + "/elsewhere"), std::vector<std::string>{});
    EXPECT_EQ(namesIn(data + "/Trash/files"), (std::vector<std::string>{"app", "app.2"}));
}

TEST_F(TrashTest, CopiesAndRemovesWhatCannotBeRenamed) {
    write("home/Calorivo/bin/run", "12345");
    fs::permissions(root + "/home/Calorivo/bin/run", fs::perms{0755});
    system.rename = [](const std::string&, const std::string&) { return EXDEV; };
    EXPECT_EQ(put(root + "/home/Calorivo"), "");
    EXPECT_FALSE(fs::exists(root + "/home/Calorivo"));
    EXPECT_EQ(folder.read("home/data/Trash/files/Calorivo/bin/run"), "12345");
    EXPECT_EQ(modeOf(data + "/Trash/files/Calorivo/bin/run"), 0755U);
}

TEST_F(TrashTest, LeavesTheEntryAndNothingElseWhenItCannotBeMoved) {
    const std::string path = write("home/app", "text");
    for (const int error : {EACCES, EROFS, ENOSPC}) {
        system.rename = [error](const std::string&, const std::string&) { return error; };
        EXPECT_EQ(put(path), std::generic_category().message(error));
    }
    EXPECT_EQ(folder.read("home/app"), "text");
    EXPECT_EQ(namesIn(data + "/Trash/info"), std::vector<std::string>{});
    EXPECT_EQ(namesIn(data + "/Trash/files"), std::vector<std::string>{});
}

TEST_F(TrashTest, LeavesTheEntryWhenItCannotBeCopiedWhole) {
    write("home/app/file");
    ASSERT_EQ(::mkfifo((root + "/home/app/fifo").c_str(), 0600), 0);
    system.rename = [](const std::string&, const std::string&) { return EXDEV; };
    EXPECT_EQ(put(root + "/home/app"), std::generic_category().message(ENOTSUP));
    EXPECT_EQ(namesIn(root + "/home/app"), (std::vector<std::string>{"fifo", "file"}));
    EXPECT_EQ(namesIn(data + "/Trash/info"), std::vector<std::string>{});
    EXPECT_EQ(namesIn(data + "/Trash/files"), std::vector<std::string>{});
}

TEST_F(TrashTest, LeavesTheEntryWithoutATrash) {
    const std::string path = write("home/app", "text");
    write("home/data/Trash", "in the way");
    EXPECT_NE(put(path), "");
    EXPECT_EQ(folder.read("home/app"), "text");
}

TEST_F(TrashTest, FindsDeviceAndTopFolderOfTheRealSystem) {
    const TrashSystem real = Trash::system(data);
    struct stat status {};
    ASSERT_EQ(::stat(root.c_str(), &status), 0);
    EXPECT_EQ(real.deviceOf(root + "/not/yet/there"), status.st_dev);
    EXPECT_EQ(real.topFolderOf("/proc/self/status"), "/proc");
}

TEST_F(TrashTest, TakesFromAnotherRealDevice) {
    struct stat here {};
    struct stat there {};
    if (::stat("/dev/shm", &there) != 0 || ::stat(root.c_str(), &here) != 0 || here.st_dev == there.st_dev ||
        ::access("/dev/shm", W_OK) != 0)
        GTEST_SKIP() << "no second file system that can be written";
    std::string other = "/dev/shm/calorivo-XXXXXX";
    ASSERT_NE(::mkdtemp(other.data()), nullptr);
    TrashSystem real = Trash::system(data);
    // Not the machine's own trash folder at the top.
    real.topFolderOf = [&other](const std::string&) { return other + "/missing"; };
    fs::create_directory(other + "/app");
    EXPECT_EQ(Trash(real).put(other + "/app"), "");
    EXPECT_EQ(namesIn(data + "/Trash/files"), std::vector<std::string>{"app"});
    EXPECT_EQ(namesIn(other), std::vector<std::string>{});
    EXPECT_EQ(removeTree(other), 0);
}

}  // namespace
}  // namespace calorivo
