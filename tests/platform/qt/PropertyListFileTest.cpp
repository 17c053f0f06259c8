#include "platform/qt/PropertyListFile.h"

#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <limits>
#include <string>
#include <utility>

namespace calorivo {
namespace {

std::string listOf(const std::string& content) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n" + content +
           "\n</dict>\n</plist>\n";
}

PropertyListFile parse(const std::string& xml) {
    return parsePropertyList(QByteArray::fromStdString(xml), "a.plist");
}

TEST(PropertyListFile, ReadsEveryKindOfValueInOrder) {
    const PropertyListFile list = parse(
        "<?xml version=\"1.0\"?><!DOCTYPE plist SYSTEM \"http://nowhere.invalid/list.dtd\"><!-- a list -->" +
        listOf("<key>yes</key><true/><key>no</key><false></false><!-- numbers -->"
               "<key>whole</key><integer> -42 </integer><key>fraction</key><real>2.5e1</real>"
               "<key>text &amp; more</key><string> a &lt;b&gt; °C </string><key>empty</key><string/>"
               "<key>data</key><data>\n\tAAEC\n\t/w==\n</data>")
            .substr(39));
    EXPECT_EQ(list.problem, "");
    EXPECT_EQ(list.dictionary, (PropertyList{{"yes", true},
                                             {"no", false},
                                             {"whole", -42},
                                             {"fraction", 25.0},
                                             {"text & more", " a <b> °C "},
                                             {"empty", ""},
                                             {"data", Data{0, 1, 2, 255}}}));
}

TEST(PropertyListFile, ReadsAnEmptyDictionary) {
    EXPECT_EQ(parse("<plist><dict/></plist>").dictionary, PropertyList{});
}

TEST(PropertyListFile, SaysWhereAListIsDamaged) {
    const std::pair<std::string, std::string> rows[] = {
        {"", "a.plist:1: Premature end of document."},
        {"\n\n<html/>", "a.plist:3: it is no property list"},
        {"<plist>\n<array/></plist>", "a.plist:2: the list is no dictionary"},
        {"<plist/>", "a.plist:1: the list is no dictionary"},
        {"<plist><dict/>\n<dict/></plist>", "a.plist:2: there is more than one dictionary"},
        {listOf("<true/>"), "a.plist:4: there is a value without a key"},
        {listOf("<key>a</key>"), "a.plist:5: the key \"a\" has no value"},
        {listOf("<key>a</key><true/>\n<key>a</key><true/>"), "a.plist:5: the key \"a\" is there twice"},
        {listOf("<key>a</key>\n<date>2000-01-01</date>"), "a.plist:5: <date> is no value"},
        {listOf("<key>a</key>\n<array><true/></array>"), "a.plist:5: Expected character data."},
        {listOf("<key>a</key><integer>99999999999</integer>"), "a.plist:4: \"99999999999\" is no <integer>"},
        {listOf("<key>a</key><integer>4 2</integer>"), "a.plist:4: \"4 2\" is no <integer>"},
        {listOf("<key>a</key><integer/>"), "a.plist:4: \"\" is no <integer>"},
        {listOf("<key>a</key><real>warm</real>"), "a.plist:4: \"warm\" is no <real>"},
        {listOf("<key>a</key><true>no</true>"), "a.plist:4: \"no\" is no <true>"},
        {listOf("<key>a</key><data>A*==</data>"), "a.plist:4: \"A*==\" is no <data>"},
        {"<plist><dict><key>a</key>\n<tr", "a.plist:2: Premature end of document."},
        {"<plist><dict><key>a</key><true/></dict>", "a.plist:1: Premature end of document."},
    };
    for (const auto& [xml, problem] : rows) {
        SCOPED_TRACE(xml);
        const PropertyListFile list = parse(xml);
        EXPECT_EQ(list.problem, problem);
        EXPECT_FALSE(list.dictionary.has_value());
    }
}

TEST(PropertyListFile, IsNotFooledByEntities) {
    std::string bomb = "<!DOCTYPE plist [<!ENTITY a \"aaaaaaaaaa\">";
    for (char name = 'b'; name <= 'j'; ++name) {
        const std::string before = std::string("&") + static_cast<char>(name - 1) + ';';
        bomb += std::string("<!ENTITY ") + name + " \"";
        for (int i = 0; i < 10; ++i) bomb += before;
        bomb += "\">";
    }
    bomb += "]><plist><dict><key>a</key><string>&j;</string></dict></plist>";
    EXPECT_FALSE(parse(bomb).dictionary.has_value());
    const PropertyListFile external = parse(
        "<!DOCTYPE plist [<!ENTITY a SYSTEM \"/etc/passwd\">]><plist><dict><key>a</key>"
        "<string>&a;</string></dict></plist>");
    EXPECT_TRUE(!external.dictionary || external.dictionary->front().second == Value(""));
}

TEST(PropertyListFile, EveryBeginningOfAListIsRefused) {
    const std::string whole = listOf("<key>a</key><integer>80</integer><key>b</key><data>AAEC</data>");
    ASSERT_TRUE(parse(whole).dictionary.has_value());
    for (std::size_t length = 0; length + 2 < whole.size(); ++length)
        EXPECT_FALSE(parse(whole.substr(0, length)).dictionary.has_value()) << length;
}

TEST(PropertyListFile, SaysWhyAFileCannotBeRead) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.path("fifo").c_str(), 0600), 0);
    const std::pair<std::string, std::string> rows[] = {
        {folder.path("absent"), "No such file or directory"},
        {folder.path(), "it is no regular file"},
        {folder.path("fifo"), "it is no regular file"},
        {folder.write("long", std::string((1 << 20) + 1, ' ')), "it is longer than a megabyte"},
    };
    for (const auto& [path, reason] : rows) {
        const PropertyListFile list = readPropertyListFile(path);
        EXPECT_EQ(list.problem, path + ": " + reason);
        EXPECT_FALSE(list.dictionary.has_value());
    }
    EXPECT_EQ(readPropertyListFile(folder.write("good", listOf("<key>k</key><true/>"))).dictionary,
              (PropertyList{{"k", true}}));
}

}  // namespace
}  // namespace calorivo
