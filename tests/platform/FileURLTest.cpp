#include "platform/FileURL.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

TEST(FileURL, WritesAndReadsPaths) {
    struct Row {
        const char* path;
        const char* url;
    };
    for (const Row& row :
         {Row{"/home/me/Calorivo Log.csv", "file:///home/me/Calorivo%20Log.csv"}, Row{"/", "file:///"},
          Row{"/a%20b", "file:///a%2520b"}, Row{"/50%", "file:///50%25"}, Row{"/a#b?c", "file:///a%23b%3Fc"},
          Row{"/Größe", "file:///Gr%C3%B6%C3%9Fe"}, Row{"/x\xff\n", "file:///x%FF%0A"},
          Row{"/a-b.c_d~e/f", "file:///a-b.c_d~e/f"}}) {
        EXPECT_EQ(fileURLWithPath(row.path), row.url);
        EXPECT_EQ(pathOfFileURL(row.url), row.path);
    }
}

TEST(FileURL, ReadsWhatOthersWrite) {
    EXPECT_EQ(pathOfFileURL("file:///a b%2f%zz%4"), "/a b/%zz%4");
    for (const char* url : {"", "file:", "file://", "file://host/a", "https:///a", "/a", "file://a"})
        EXPECT_EQ(pathOfFileURL(url), "") << url;
}

TEST(FileURL, CutsTheLastComponent) {
    EXPECT_EQ(URLByDeletingLastPathComponent("file:///home/me/a.csv"), "file:///home/me/");
    EXPECT_EQ(URLByDeletingLastPathComponent("file:///a"), "file:///");
    EXPECT_EQ(URLByDeletingLastPathComponent(""), "");
}

}  // namespace
}  // namespace calorivo
