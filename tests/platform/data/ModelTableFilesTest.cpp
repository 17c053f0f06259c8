#include "platform/data/ModelTableFiles.h"

#include "platform/data/AreaNames.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace calorivo::test {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

constexpr const char* goodSensor = R"({"key": "TC7C", "name": "Core Seven", "area": "CPU"})";

/// A folder of its own for each test.
class ModelTableFolder : public testing::Test {
  protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "model-tables-XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        folder_ = pattern;
    }
    void TearDown() override { fs::remove_all(folder_); }

    void write(const std::string& name, const std::string& text) {
        std::ofstream(folder_ + "/" + name, std::ios::binary) << text;
    }
    static std::string table(const std::string& identifier, const std::string& comment = "none") {
        return R"({"comment": ")" + comment + R"(", "identifier": ")" + identifier + R"(", "sensors": [)" +
               goodSensor + "]}";
    }
    [[nodiscard]] ModelTableFiles read(std::string_view onlyIdentifier = {}) const {
        return readModelTables(folder_, areaNames, onlyIdentifier);
    }
    [[nodiscard]] Texts identifiers(std::string_view onlyIdentifier = {}) const {
        Texts all;
        for (const ModelTable& each : read(onlyIdentifier).tables) all.push_back(each.identifier);
        return all;
    }

    std::string folder_;
};

TEST_F(ModelTableFolder, IsReadInTheOrderOfItsFileNames) {
    write("b.json", table("Box2,1"));
    write("a.json", table("Box3,1"));
    write("c.json", table("Box1,1"));
    write("c.json.old", table("Box4,1"));
    write("readme.txt", "x");
    EXPECT_EQ(read().problems, Texts{});
    EXPECT_EQ(identifiers(), (Texts{"Box3,1", "Box2,1", "Box1,1"}));
}

TEST_F(ModelTableFolder, GivesTheGoodTablesBesideTheBrokenOnes) {
    write("a.json", "{");
    write("b.json", table("Box2,1"));
    write("c.json", "[]");
    EXPECT_EQ(identifiers(), (Texts{"Box2,1"}));
    EXPECT_EQ(
        read().problems,
        (Texts{folder_ + "/a.json:1:2: syntax error while parsing object key - unexpected end of input; "
                         "expected string literal",
               folder_ + "/c.json: not an object"}));
}

TEST_F(ModelTableFolder, ReportsASecondTableForTheSameMachine) {
    write("a.json", table("Box2,1"));
    write("b.json", table("Box3,1"));
    write("c.json", table("Box2,1"));
    EXPECT_EQ(identifiers(), (Texts{"Box2,1", "Box3,1"}));
    EXPECT_EQ(read().problems,
              Texts{folder_ + "/c.json: not used: " + folder_ + "/a.json has the same identifier"});
}

TEST_F(ModelTableFolder, GivesTheOneTableThatIsWanted) {
    write("a.json", table("Box2,1"));
    write("b.json", table("Box3,1", "as Box2,1 but larger"));
    write("c.json", "broken, and about another machine");
    EXPECT_EQ(identifiers("Box2,1"), (Texts{"Box2,1"}));
    EXPECT_EQ(read("Box2,1").problems, Texts{});
    EXPECT_EQ(identifiers("Box9,9"), Texts{});
    EXPECT_EQ(identifiers("box2,1"), Texts{});
}

TEST_F(ModelTableFolder, FindsAnIdentifierThatIsWrittenWithEscapes) {
    write("a.json", table(R"(Box2\u002c1)"));
    EXPECT_EQ(identifiers("Box2,1"), (Texts{"Box2,1"}));
}

TEST_F(ModelTableFolder, ReportsAFileThatIsTooLarge) {
    const std::string text = table("Box2,1");
    write("a.json", text + std::string(1024 * 1024 - text.size(), ' '));
    write("b.json", table("Box3,1") + std::string(1024 * 1024, ' '));
    EXPECT_EQ(identifiers(), (Texts{"Box2,1"}));
    EXPECT_EQ(read().problems, Texts{folder_ + "/b.json: larger than 1 MiB"});
}

TEST_F(ModelTableFolder, NeverWaitsForWhatIsNoFile) {
    fs::create_directory(folder_ + "/a.json");
    ASSERT_EQ(mkfifo((folder_ + "/b.json").c_str(), 0600), 0);
    fs::create_symlink("nowhere", folder_ + "/c.json");
    write("d", table("Box2,1"));
    fs::create_symlink("d", folder_ + "/d.json");
    fs::create_symlink("e.json", folder_ + "/e.json");
    EXPECT_EQ(identifiers(), (Texts{"Box2,1"}));
    EXPECT_EQ(read().problems,
              (Texts{folder_ + "/a.json: not a regular file", folder_ + "/b.json: not a regular file",
                     folder_ + "/c.json: No such file or directory",
                     folder_ + "/e.json: Too many levels of symbolic links"}));
}

TEST_F(ModelTableFolder, ReportsAFileThatItMayNotRead) {
    write("a.json", table("Box2,1"));
    fs::permissions(folder_, fs::perms(0755));
    fs::permissions(folder_ + "/a.json", fs::perms::none);
    // The superuser may read every file: nobody is asked to.
    const bool isSuperuser = geteuid() == 0;
    if (isSuperuser && seteuid(65534) != 0) GTEST_SKIP() << "the superuser here cannot become somebody else";
    const Texts problems = read().problems;
    if (isSuperuser) {
        ASSERT_EQ(seteuid(0), 0);
    }
    EXPECT_EQ(problems, Texts{folder_ + "/a.json: cannot be read"});
}

TEST_F(ModelTableFolder, GivesNothingWhenItIsAbsent) {
    const ModelTableFiles files = readModelTables(folder_ + "/none", areaNames);
    EXPECT_TRUE(files.tables.empty());
    EXPECT_EQ(files.problems, Texts{});
}

TEST_F(ModelTableFolder, OpensOnlyTheFileThatIsNamedForTheMachine) {
    write("Box2,1.json", table("Box2,1"));
    write("Box3,1.json", table("Box4,1"));
    write("Box5,1.json", "no table");
    const auto named = [this](const std::string& identifier) {
        return readModelTableNamed(folder_, identifier, areaNames);
    };
    ASSERT_EQ(named("Box2,1").tables.size(), 1U);
    EXPECT_EQ(named("Box2,1").tables[0].identifier, "Box2,1");
    EXPECT_EQ(named("Box2,1").problems, Texts{}) << "the broken file of another machine";
    EXPECT_TRUE(named("Box3,1").tables.empty()) << "it holds another machine's";
    EXPECT_EQ(named("Box5,1").problems.size(), 1U);
    for (const char* const absent : {"Box6,1", "", "../Box2,1", "x/Box2,1"}) {
        EXPECT_TRUE(named(absent).tables.empty()) << absent;
        EXPECT_EQ(named(absent).problems, Texts{}) << absent;
    }
}

TEST_F(ModelTableFolder, ReportsWhatIsNoFolder) {
    write("file", "");
    EXPECT_EQ(readModelTables(folder_ + "/file", areaNames).problems,
              Texts{folder_ + "/file: Not a directory"});
}

}  // namespace
}  // namespace calorivo::test
