#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <Lum/URI.h>

namespace {

using Lum::URI;

TEST(PathNames, OfFilesAndDirectories) {
    struct Row {
        const char* path;
        const char* name;
        const char* stem;
        const char* extension;
        const char* component;
        const char* afterRemoval;
    };
    for (const Row& row : std::vector<Row>{
             {"/a/b.txt", "b.txt", "b", ".txt", "b.txt", "/a/"},
             {"/a/b.tar.gz", "b.tar.gz", "b.tar", ".gz", "b.tar.gz", "/a/"},
             {"/a/.profile", ".profile", "", "", ".profile", "/a/"},
             {"/a/b.", "b.", "b", ".", "b.", "/a/"},
             {"/a.b/c", "c", "c", "", "c", "/a.b/"},
             {"/a/b%20c%2Fd.x", "d.x", "d", ".x", "d.x", "/a/b%20c/"},
             {"/a/b%4/c",
              "b\x04"
              "c",
              "b\x04"
              "c",
              "",
              "b\x04"
              "c",
              "/a/"},  // the escape takes the "/"
             {"/a/b/", "", "", "", "b", "/a/"},
             {"/a%2F", "", "", "", "", "/a/"},
             {"//", "", "", "", "", "/"},
             {"/", "", "", "", "", "/"},
         }) {
        URI uri(std::string("http://h") + row.path + "?q#f");
        EXPECT_EQ(uri.GetFilename(false), row.name) << row.path;
        EXPECT_EQ(uri.GetFilename(true), row.stem) << row.path;
        EXPECT_EQ(uri.GetExtension(false), row.extension) << row.path;
        EXPECT_EQ(uri.GetExtension(true), row.extension + (row.extension[0] == '.' ? 1 : 0)) << row.path;
        EXPECT_EQ(uri.GetLastPathComponent(), row.component) << row.path;
        EXPECT_EQ(uri.RemoveLastPathComponent(), row.component) << row.path;
        EXPECT_EQ(uri, std::string("http://h") + row.afterRemoval) << row.path;
    }
    for (const char* type : {"txt", ".TXT", "name.Txt", "a.b.txt"}) {
        EXPECT_TRUE(URI("http://h/b.txt").IsOfFileType(type)) << type;
        EXPECT_FALSE(URI("http://h/b.txt/").IsOfFileType(type)) << type;
    }
    EXPECT_FALSE(URI("http://h/b").IsOfFileType(""));
    EXPECT_FALSE(URI("http://h/b.").IsOfFileType("."));
}

}  // namespace
