#include "Platform/Resources/Resources.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <bit>
#include <csignal>
#include <string>
#include <tuple>
#include <vector>

#include <Lum/Platform.h>
#include <Lum/ResourceFile.h>

#include "tests/Resources/Files.h"

namespace {

using Files::Code;
using Files::Fork;
using Files::Number;
using Files::Pascal;
using namespace Lum::Platform;
using namespace std::string_literals;

std::string BytesOf(Handle handle) {
    return handle == nullptr ? "(none)" : std::string(*handle, static_cast<std::size_t>(GetHandleSize(handle)));
}

Handle Set(Handle handle, std::string_view bytes) {
    SetHandleSize(handle, static_cast<Size>(bytes.size()));
    bytes.copy(*handle, bytes.size());
    ChangedResource(handle);  // An error that nobody reads, if it is no resource yet.
    return handle;
}

Handle HandleWith(std::string_view bytes) { return Set(NewHandle(0), bytes); }

const unsigned char* Name(const std::string& pascal) { return reinterpret_cast<const unsigned char*>(pascal.data()); }

std::string StringOfList(ResID list, short index) {
    Str255 text;
    GetIndString(text, list, index);
    return {reinterpret_cast<const char*>(text) + 1, text[0]};
}

class ResourceFile : public testing::Test {
protected:
    short Open(std::string_view name, bool writable = false) {
        return m_Open.emplace_back(OpenResourceFile(m_Folder / name, writable));
    }
    short Open(std::string_view name, const std::string& bytes, bool writable = false) {
        Files::Write(m_Folder / name, bytes);
        return Open(name, writable);
    }
    ~ResourceFile() override {
        for (const short reference : m_Open) {
            CloseResourceFile(reference);
        }
    }
    Files::Folder m_Folder;
    std::vector<short> m_Open;
};

/// A file whose attributes and last reserved byte, which is the application's, are not 0.
std::string Marked(const std::vector<Files::Row>& rows) {
    const std::string file = Fork(rows);
    const auto number = [&](std::size_t at) { return static_cast<std::size_t>(static_cast<unsigned char>(file[at])); };
    const std::size_t map = number(6) << 8 | number(7);
    return std::string(file).replace(255, 1, "*").replace(map + 22, 2, "\x81\x1F");
}

const std::string kFile = Marked({{"TEXT", 128, "abc"}, {"STR ", -1, "\x01\xE9", "Some Thing", 0x20}});

TEST_F(ResourceFile, ReadsTheLayout) {
    const short reference = Open("a", kFile);
    ASSERT_GT(reference, 0);
    EXPECT_EQ(BytesOf(GetResource(Code("TEXT"), 128)), "abc");
    EXPECT_EQ(BytesOf(reinterpret_cast<Handle>(GetString(-1))), "\x01\xE9");
    EXPECT_EQ(GetResource(Code("text"), 128), nullptr);
    const Handle named = Get1NamedResource(Code("STR "), Name(Pascal("sOME tHING")));
    EXPECT_EQ(named, GetResource(Code("STR "), -1)) << "a resource has one handle";
    EXPECT_EQ(Get1NamedResource(Code("STR "), Name(Pascal("Some Thin"))), nullptr);
    EXPECT_EQ(Get1NamedResource(Code("TEXT"), Name(Pascal(""))), nullptr) << "no name is not the empty name";
    EXPECT_EQ(Get1NamedResource(Code("STR "), nullptr), nullptr);
    const std::vector<ResourceEntry> entries = ListResources(reference);
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].name + entries[0].bytes + entries[1].name + entries[1].bytes,
              "Some Thing\x01\xE9"
              "abc");
    EXPECT_TRUE(CloseResourceFile(reference));
    EXPECT_FALSE(CloseResourceFile(reference));
    EXPECT_EQ(GetHandleSize(named), 0);
    EXPECT_TRUE(ListResources(reference).empty());
}

TEST_F(ResourceFile, WritesTheLayoutAndKeepsWhatItDoesNotKnow) {
    const short reference = Open("a", kFile, true);
    Set(GetResource(Code("TEXT"), 128), "new");
    ASSERT_TRUE(UpdateResourceFile(reference));
    EXPECT_EQ(Files::Read(m_Folder / "a"), Marked({{"STR ", -1, "\x01\xE9", "Some Thing", 0x20}, {"TEXT", 128, "new"}}))
        << "by type, then by number";
}

TEST_F(ResourceFile, MakesAFileWhereNoneIs) {
    const short reference = Open("new", true);
    ASSERT_GT(reference, 0);
    EXPECT_EQ(ExplainResourceFile(m_Folder / "new"), "") << "an empty one, at once";
    AddResource(HandleWith("x"), Code("TEXT"), UniqueID(Code("TEXT")), Name(Pascal("n")));
    AddResource(HandleWith("y"), Code("TEXT"), UniqueID(Code("TEXT")), nullptr);
    EXPECT_EQ(ResError(), 0);
    EXPECT_TRUE(CloseResourceFile(reference)) << "and writes first";
    EXPECT_EQ(Files::Read(m_Folder / "new"), Fork({{"TEXT", 128, "x", "n"}, {"TEXT", 129, "y"}}));
    EXPECT_EQ(Open("none", false), -1);
    EXPECT_EQ(Open("no/folder", true), -1);
    EXPECT_EQ(OpenResourceFile(m_Folder.Path(), true), -1);
    ASSERT_EQ(mkfifo((m_Folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(Open("pipe", false), -1) << "nobody waits for its writer";
}

TEST_F(ResourceFile, RefusesFilesThatDoNotHoldTogether) {
    // "STR " 1 and 2, both with a name; the numbers of its parts, and what they are replaced by.
    const std::string good = Fork({{"STR ", 1, "ab", "x"}, {"STR ", 2, "cd", "y"}});
    const std::size_t map = 256 + 12, references = map + 28 + 2 + 8;
    const std::tuple<const char*, std::size_t, int, std::uint64_t, const char*> damages[] = {
        {"none", 0, 4, 256, ""},
        {"data one byte outside", 8, 4, good.size() - 255, "data or map lie outside the file"},
        {"map size that wraps 32 bits", 12, 4, 0xFFFFFFFF, "data or map lie outside the file"},
        {"map of nothing", 12, 4, 29, "the map is too short"},
        {"map in the header", 4, 4, 15, "header, data and map overlap"},
        {"data in the map", 8, 4, 13, "header, data and map overlap"},
        {"types in the map's header", map + 24, 2, 27, "a list begins outside the map"},
        {"types at the map's end", map + 24, 2, good.size() - map - 1, "a list begins outside the map"},
        {"names behind the map", map + 26, 2, good.size() - map + 1, "a list begins outside the map"},
        {"too many types", map + 28, 2, 0xFFFE, "the type list ends outside the map"},
        {"types that leave no room for references", map + 28, 2, 3, "reference lists overlap"},
        {"too many references", map + 34, 2, 0xFFFE, "a reference list lies outside the map"},
        {"references in the type list", map + 36, 2, 0, "a resource's data lies outside the data"},
        {"a name outside", references + 2, 2, 0xFFFE, "a name lies outside the map"},
        {"a name that ends outside", good.size() - 2, 1, 2, "a name lies outside the map"},
        {"data of the first one byte too long", 256, 4, 3, "resources share data"},
        {"data of the last one byte too long", 262, 4, 3, "a resource's data lies outside the data"},
        {"data of the first too long for the file", 256, 4, 0xFFFFFFFC, "a resource's data lies outside the data"},
    };
    for (const auto& [what, offset, size, number, problem] : damages) {
        std::string bytes = good;
        bytes.replace(offset, static_cast<std::size_t>(size), Number(number, size));
        Files::Write(m_Folder / "bad", bytes);
        EXPECT_EQ(ExplainResourceFile(m_Folder / "bad"), problem) << what;
        EXPECT_EQ(Open("bad") > 0, *problem == '\0') << what;
    }
    // Two types, the first of which is to have the other's reference as well.
    const std::string shared = Fork({{"STR ", 1, "a"}, {"TEXT", 2, "b"}}).replace(256 + 10 + 34, 2, Number(1, 2));
    Files::Write(m_Folder / "shared", shared);
    EXPECT_EQ(ExplainResourceFile(m_Folder / "shared"), "reference lists overlap");
    for (std::size_t size = 0; size < good.size(); ++size) {
        EXPECT_EQ(Open("cut", good.substr(0, size)), -1) << size;
    }
    Files::Write(m_Folder / "big", Number(16, 4) + Number(16 + 0x1000001, 4) + Number(0x1000001, 4) + Number(30, 4));
    std::filesystem::resize_file(m_Folder / "big", 16 + 0x1000001 + 30);
    EXPECT_EQ(ExplainResourceFile(m_Folder / "big"), "more data than the layout has room for");
}

TEST_F(ResourceFile, IsSearchedNewestFirst) {
    Open("old", Fork({{"STR ", 1, "old 1", "one"}, {"STR ", 2, "old 2"}}));
    const std::string rows = Fork({{"STR ", 1, "new 1"}, {"STR ", 1, "again", "Two"}, {"STR ", 129, "", "two"}});
    const short newer = Open("new", rows);
    EXPECT_EQ(BytesOf(GetResource(Code("STR "), 1)), "new 1");
    EXPECT_EQ(BytesOf(GetResource(Code("STR "), 2)), "old 2");
    EXPECT_EQ(Get1NamedResource(Code("STR "), Name(Pascal("one"))), nullptr);
    EXPECT_EQ(BytesOf(Get1NamedResource(Code("STR "), Name(Pascal("two")))), "again");
    EXPECT_EQ(UniqueID(Code("STR ")), 128);
    CloseResourceFile(newer);
    EXPECT_EQ(BytesOf(GetResource(Code("STR "), 1)), "old 1");
    EXPECT_EQ(BytesOf(Get1NamedResource(Code("STR "), Name(Pascal("ONE")))), "old 1");
}

TEST_F(ResourceFile, ListsGiveStringsByNumber) {
    const std::string whole = Files::List({"first", "", std::string(255, 'z')});
    Open("a", Fork({{"STR#", 200, whole},
                    {"STR#", 201, whole.substr(0, whole.size() - 1)},
                    {"STR#", 202, Number(0xFFFF, 2) + Pascal("only")},
                    {"STR#", 203, "\x01"},
                    {"STR#", 205, Number(40, 2) + std::string(40, '\0')}}));
    EXPECT_EQ(StringOfList(200, 1), "first");
    EXPECT_EQ(StringOfList(200, 2), "");
    EXPECT_EQ(StringOfList(200, 3), std::string(255, 'z'));
    EXPECT_EQ(StringOfList(202, 1), "only");
    for (const auto& [list, index] :
         {std::pair<ResID, short>{200, 0}, {200, -1}, {200, 4}, {201, 3}, {202, 2}, {203, 1}, {204, 1}}) {
        EXPECT_EQ(StringOfList(list, index), "") << list << ' ' << index;
    }
    const std::string longList = Number(40, 2) + Pascal("x") + std::string(38, '\0') + Pascal("last");
    const std::string asLong = Number(40, 2) + std::string(38, '\0') + Pascal("x") + Pascal("last");
    for (const std::string& bytes : {longList, Number(40, 2) + std::string(40, '\0'), longList, asLong}) {
        Set(GetResource(Code("STR#"), 205), bytes);
        EXPECT_EQ(StringOfList(205, 40), bytes.ends_with('t') ? "last" : "") << "not of the list that was there";
    }
}

TEST_F(ResourceFile, TheIndexIsInTheHostsOrderInMemoryAndKeptWhereItIsNotMarked) {
    const std::string index = "\x00\x02\x01\x00\x00\x01\x00\x07!"s;
    const std::string host = std::endian::native == std::endian::little ? "\x02\x00\x00\x01\x01\x00\x07\x00!"s : index;
    const short reference = Open("a", Fork({{"STRm", 0, index}, {"TEXT", 1, "t"}}), true);
    const Handle handle = GetResource(Code("STRm"), 0);
    EXPECT_EQ(BytesOf(handle), host);
    const std::string sorted = host.substr(4, 4) + host.substr(0, 4) + "!";
    sorted.copy(*handle, sorted.size());
    Set(GetResource(Code("TEXT"), 1), "T");
    ASSERT_TRUE(UpdateResourceFile(reference));
    EXPECT_EQ(Files::Read(m_Folder / "a"), Fork({{"STRm", 0, index}, {"TEXT", 1, "T"}}));
    EXPECT_EQ(BytesOf(GetResource(Code("STRm"), 0)), sorted);
    ChangedResource(handle);
    ASSERT_TRUE(CloseResourceFile(reference));
    EXPECT_EQ(Files::Read(m_Folder / "a"), Fork({{"STRm", 0, "\x00\x01\x00\x07\x00\x02\x01\x00!"s}, {"TEXT", 1, "T"}}));
    // The index stays empty for callers that still have it: its slot is not used again.
    const Handle other = NewHandle(8);
    SetHandleSize(handle, 8);
    EXPECT_EQ(GetHandleSize(handle), 0);
    EXPECT_EQ(*handle, nullptr);
    DisposeHandle(other);
}

TEST_F(ResourceFile, ForReadingOnlyTakesNoChange) {
    const short reference = Open("a", kFile);
    ChangedResource(GetResource(Code("TEXT"), 128));
    EXPECT_EQ(ResError(), opWrErr);
    const Handle handle = HandleWith("x");
    AddResource(handle, Code("TEXT"), 5, nullptr);
    EXPECT_EQ(ResError(), opWrErr);
    EXPECT_FALSE(UpdateResourceFile(reference));
    EXPECT_TRUE(CloseResourceFile(reference));
    AddResource(handle, Code("TEXT"), 5, nullptr);
    EXPECT_EQ(ResError(), resFNotFound);
    EXPECT_EQ(BytesOf(handle), "x") << "still the caller's";
    DisposeHandle(handle);
    EXPECT_EQ(Files::Read(m_Folder / "a"), kFile);
}

TEST_F(ResourceFile, IsOpenForWritingOnceAndReplacedBehindItsLink) {
    Files::Write(m_Folder / "a", kFile);
    permissions(m_Folder / "a", std::filesystem::perms{0640});
    std::filesystem::create_symlink("a", m_Folder / "link");
    std::filesystem::create_hard_link(m_Folder / "a", m_Folder / "old");
    const short reference = Open("link", true);
    EXPECT_EQ(Open("a", true), -1);
    EXPECT_GT(Open("a", false), 0);
    CloseResourceFile(m_Open.back());
    Set(GetResource(Code("TEXT"), 128), "new");
    ASSERT_TRUE(CloseResourceFile(reference));
    EXPECT_EQ(Files::Read(m_Folder / "old"), kFile) << "whoever has the file open reads the old one whole";
    EXPECT_TRUE(std::filesystem::is_symlink(m_Folder / "link"));
    EXPECT_NE(Files::Read(m_Folder / "a"), kFile);
    EXPECT_EQ(std::filesystem::status(m_Folder / "a").permissions(), std::filesystem::perms{0640});
}

TEST_F(ResourceFile, AFullDiskLeavesFileAndMemoryAsTheyWere) {
    const short reference = Open("a", kFile, true);
    Set(GetResource(Code("TEXT"), 128), std::string(5000, 'x'));
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{4000, old.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const bool isUpdated = UpdateResourceFile(reference), isClosed = CloseResourceFile(reference);
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(isUpdated || isClosed);
    EXPECT_EQ(Files::Read(m_Folder / "a"), kFile);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_Folder.Path()), {}), 1) << "no other file is left";
    EXPECT_TRUE(CloseResourceFile(reference)) << "there is room again";
    EXPECT_GT(Files::Read(m_Folder / "a").size(), 5000U);
}

TEST_F(ResourceFile, RefusesWhatTheLayoutHasNoRoomFor) {
    const short reference = Open("a", true);
    constexpr int kMost = (0x7FFF - 28 - 2 - 8) / 12;
    const auto fill = [](int count, const unsigned char* name) {
        for (int i = 0; i <= count; ++i) {
            AddResource(HandleWith("x"), Code("TEXT"), static_cast<ResID>(i), name);
            EXPECT_EQ(ResError(), i < count ? 0 : addResFailed) << i;
        }
    };
    fill(kMost, nullptr);
    ASSERT_TRUE(UpdateResourceFile(reference));
    const std::string before = Files::Read(m_Folder / "a");

    const Handle big = GetResource(Code("TEXT"), 7);
    Set(big, std::string(0x1000000, 'x'));
    EXPECT_FALSE(UpdateResourceFile(reference));
    EXPECT_EQ(Files::Read(m_Folder / "a"), before);
    SetHandleSize(big, 0x1000000 - 4 * kMost - (kMost - 1));
    EXPECT_TRUE(CloseResourceFile(reference));
    EXPECT_EQ(ListResources(Open("a")).at(7).bytes.size(), 0x1000000U - 5 * kMost + 1);

    // Names begin at 0xFFFE at most: 434 * 151. The next one would begin at 257 * 255 there.
    for (const auto& [size, count] : {std::pair(150, 435), {254, 257}}) {
        const std::string name = Pascal(std::string(static_cast<std::size_t>(size), 'n'));
        const short names = Open("names" + std::to_string(size), true);
        fill(count, Name(name));
        EXPECT_TRUE(CloseResourceFile(names));
    }
}

}  // namespace
