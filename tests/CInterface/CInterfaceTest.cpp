// The C functions give what the C++ operations give, over the same table of URIs, into buffers of every size.
#include <Lum/lum.h>

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <Lum/Lum.h>

#include "tests/Resources/Files.h"
#include "tests/URI/Exposed.h"
#include "tests/URI/Table.h"

namespace {

using Lum::URI;

/// A URI that is freed; "" where there is none.
struct Object {
    Object() = default;
    explicit Object(const std::string& text) { lum_uri_create(text.data(), text.size(), &uri); }
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    ~Object() { lum_uri_free(uri); }
    lum_uri* uri = nullptr;
};

/// What `function` writes, with a status before it that is not LUM_OK. Sees to it that every smaller buffer, a block of
/// its own, holds what fits and a NUL.
template <class Function, class... Arguments>
std::string Written(const Function& function, Arguments... arguments) {
    const auto write = [&](auto... buffer) { return function(arguments..., buffer...); };
    std::size_t size = 99;
    lum_status status = write(nullptr, std::size_t{0}, &size);
    std::string text;
    for (const std::size_t capacity : std::set<std::size_t>{0, 1, 2, size / 2, size, size + 1}) {
        const auto buffer = std::make_unique<char[]>(capacity);
        std::memset(buffer.get(), '?', capacity);
        std::size_t again = 99;
        status = write(buffer.get(), capacity, &again);
        EXPECT_EQ(again, size);
        if (capacity > 0) {
            EXPECT_EQ(buffer[std::min(size, capacity - 1)], '\0');
            EXPECT_EQ(status == LUM_TRUNCATED, capacity <= size);
            text.assign(buffer.get(), std::min(size, capacity - 1));
        }
        if (capacity > size) {
            EXPECT_EQ(status, write(buffer.get(), capacity, nullptr));
            break;
        }
    }
    return status == LUM_OK ? text : std::string(lum_status_text(status)) + ": " + text;
}

std::string Text(const lum_uri* uri, int form = LUM_STORED) { return Written(lum_uri_text, uri, form); }

std::string Component(const lum_uri* uri, int component, int form) {
    return Written(lum_uri_get, uri, component, form);
}

/// As Exposed::Record.
std::string Record(const lum_uri* uri) {
    std::string record;
    for (int component = LUM_SCHEME; component <= LUM_NON_HIERARCHICAL; ++component) {
        record += Component(uri, component, LUM_STORED) + '|';
    }
    const int flags = lum_uri_flags(uri);
    EXPECT_EQ((flags & LUM_DIRECTORY) != 0, Component(uri, LUM_PATH, LUM_STORED).ends_with('/'));
    return record + ((flags & LUM_VALID) != 0 ? "v" : "") + ((flags & LUM_RELATIVE) != 0 ? "r" : "") +
           ((flags & LUM_HIERARCHICAL) != 0 ? "h" : "");
}

TEST(CInterface, ReadsAndPrintsTheTableOfUris) {
    for (const auto& [text, reason, record, printed] : TableOfUris()) {
        const std::vector<char> exact(text.begin(), text.end());
        const Object object(text), copy, reused("ftp://u:p@h:1/p?q#f");
        std::size_t offset = 99, length = 99;
        const int explained = lum_uri_explain(exact.data(), exact.size(), &offset, &length);
        const Lum::URIProblem problem = Lum::ExplainURI(text);
        EXPECT_EQ(explained == LUM_OK ? 0 : explained - LUM_SCHEME_TOO_SHORT + 1, static_cast<int>(problem.code));
        EXPECT_EQ(std::pair(offset, length), std::pair(problem.offset, problem.length)) << text;
        EXPECT_EQ(object.uri != nullptr, reason == "valid") << text;
        EXPECT_EQ(lum_uri_parse(reused.uri, exact.data(), exact.size()), explained) << text;
        EXPECT_EQ(Record(reused.uri), record) << text;
        EXPECT_EQ(Text(reused.uri), printed) << text;
        const URI uri(text);
        const std::string read[] = {uri.GetScheme(),    uri.GetUsername(),   uri.GetPassword(),
                                    uri.GetAuthority(), uri.GetServerPort(), uri.GetPath(),
                                    uri.GetQuery(true), uri.GetFragment(),   uri.GetNonHierarchical()};
        for (int component = LUM_SCHEME; component <= LUM_NON_HIERARCHICAL; ++component) {
            EXPECT_EQ(Component(reused.uri, component, LUM_UNESCAPED), read[component]) << text;
        }
        EXPECT_EQ(Text(reused.uri, LUM_UNESCAPED), uri.ToString(true));
        EXPECT_EQ(Text(reused.uri, LUM_UTF8), uri.ToStringUTF8());
        EXPECT_EQ(Text(reused.uri, LUM_UTF8_ESCAPED), uri.ToStringUTF8Escaped());
        EXPECT_EQ(Written(lum_uri_default_port, reused.uri), uri.GetDefaultPort());
        EXPECT_EQ(Written(lum_uri_file_name, reused.uri), uri.GetFilename(false));
        EXPECT_EQ(Written(lum_uri_extension, reused.uri), uri.GetExtension(true));
    }
}

TEST(CInterface, ChangesAndRelatesUrisAsCppDoes) {
    constexpr void (URI::*setters[])(URI::StringProxy) = {
        &URI::SetScheme, &URI::SetUsername, &URI::SetPassword, &URI::SetAuthority,      &URI::SetServerPort,
        &URI::SetPath,   nullptr,           &URI::SetFragment, &URI::SetNonHierarchical};
    constexpr URI::StringProxy (URI::*toPath[])()
        const = {&URI::ToLocalPath, &URI::ToLocalPathMac, &URI::ToLocalPathUnix, &URI::ToLocalPathWin};
    constexpr void (URI::*fromPath[])(URI::StringProxy) = {&URI::LocalPathToURI, &URI::LocalPathToURIMac,
                                                           &URI::LocalPathToURIUnix, &URI::LocalPathToURIWin};
    std::vector<std::string> valid;
    for (const TableRow& row : TableOfUris()) {
        if (row.reason == "valid") {
            valid.push_back(row.text);
        }
    }
    for (const char* text : {"http://h/a/b/c.x?k=v&k=w+x%26", "http://h/a/D/", "HTTP://h:80/a/d/", "file:///C|/x"}) {
        valid.emplace_back(text);
    }
    for (const std::string& first : valid) {
        const Object object(first);
        std::map<std::string, std::string> pairs, expectedPairs;
        std::size_t cursor = 0;
        char key[200], value[200], small[1];
        // One that is cut stays in its place.
        EXPECT_NE(lum_uri_next_pair(object.uri, &cursor, key, 200, nullptr, small, 0, nullptr), LUM_OK);
        while (lum_uri_next_pair(object.uri, &cursor, key, 200, nullptr, value, 200, nullptr) == LUM_OK) {
            pairs[key] = value;
            EXPECT_EQ(Written(lum_uri_query_value, object.uri, key, LUM_NUL_TERMINATED).find(": "), std::string::npos);
        }
        URI(first).GetQueryByMap(expectedPairs);
        EXPECT_EQ(pairs, expectedPairs) << first;
        for (std::size_t i = 0; i < valid.size(); i += 1 + first.size() % 3) {
            const std::string& second = valid[i];
            const Object a(first), b(second);
            const URI uriA(first), uriB(second);
            int order = 99, relation = 99;
            EXPECT_EQ(lum_uri_compare(a.uri, b.uri, &order), LUM_OK);
            EXPECT_EQ(order, uriA < uriB ? -1 : uriB < uriA ? 1 : 0);
            const int matchCase = static_cast<int>(i % 2);
            EXPECT_EQ(lum_uri_relation(a.uri, b.uri, matchCase, &relation), LUM_OK);
            EXPECT_EQ(relation, uriA.GetRelation(uriB, matchCase != 0)) << first << ' ' << second;
            Object parent;
            const bool hasParent = lum_uri_common_parent(a.uri, b.uri, matchCase, &parent.uri) == LUM_OK;
            const URI expected = uriA.GetCommonParent(uriB, matchCase != 0);
            EXPECT_EQ(hasParent ? Text(parent.uri) : "", expected.IsValidURI() ? expected.ToString(false) : "");

            Object changed;
            lum_uri_copy(a.uri, &changed.uri);
            URI same = uriA;
            EXPECT_EQ(lum_uri_make_relative(changed.uri, b.uri, matchCase) == LUM_OK,
                      same.MakeRelativeURI(uriB, matchCase != 0));
            EXPECT_EQ(Text(changed.uri), same.ToString(false));
            lum_uri_resolve(changed.uri, second.data(), second.size());
            same.ChDir(second, false);
            EXPECT_EQ(Text(changed.uri), same.ToString(false));
            const int component = static_cast<int>(i % 9);
            lum_uri_set(changed.uri, component, LUM_UNESCAPED, first.data(), first.size());
            component == LUM_QUERY ? same.SetQuery(first, true) : (same.*setters[component])(first);
            lum_uri_set_query_value(changed.uri, second.data(), second.size(), first.c_str(), LUM_NUL_TERMINATED);
            same.SetQueryValue(second, first.c_str());
            EXPECT_EQ(Text(changed.uri), same.ToString(false));
            lum_uri_go_up(changed.uri);
            same.RemoveLastPathComponent();
            lum_uri_set(changed.uri, LUM_QUERY, LUM_STORED, "a b", 2);
            same.SetQuery("a ", false);
            EXPECT_EQ(Text(changed.uri), same.ToString(false));

            const int style = static_cast<int>(i % 4);
            EXPECT_EQ(Written(lum_uri_to_path, b.uri, style), (uriB.*toPath[style])());
            Object local;
            EXPECT_EQ(lum_uri_from_path(second.data(), second.size(), style, &local.uri), LUM_OK);
            URI expectedLocal;
            (expectedLocal.*fromPath[style])(second);
            EXPECT_EQ(Text(local.uri), expectedLocal.ToString(false));
        }
        for (const int forQuery : {0, 1}) {
            EXPECT_EQ(Written(lum_escape, first.data(), first.size(), forQuery),
                      forQuery != 0 ? URI::QueryEscape(first) : URI::Escape(first));
            EXPECT_EQ(Written(lum_unescape, first.data(), first.size(), forQuery),
                      forQuery != 0 ? URI::QueryUnescape(first) : URI::Unescape(first, false));
        }
    }
    Object bad("http://h/");
    EXPECT_EQ(lum_uri_resolve(bad.uri, "c:/x\\y", LUM_NUL_TERMINATED), LUM_SCHEME_TOO_SHORT);
    EXPECT_EQ(Record(bad.uri), kEmptyState);
}

TEST(CInterface, ConvertsAsCppDoesWholeAndInBlocks) {
    const std::vector<std::string> texts{"", "plain", "caf\xC3\xA9 \xE3\x81\x82\xE6\xBC\xA2", "a\xFFz", "a\xE2\x82"};
    for (const std::string& text : texts) {
        for (const char* to : {"utf-8", "utf-16", "iso-8859-1", "shift_jis", "iso-2022-jp", "no such"}) {
            const auto expected = Lum::ConvertText(text, "utf-8", to);
            std::size_t offset = 99;
            const auto convert = [&](auto... buffer) {
                return lum_convert(text.data(), text.size(), "utf-8", to, buffer..., &offset);
            };
            std::vector<char> whole(100);
            std::size_t size = 0;
            const lum_status status = convert(whole.data(), whole.size(), &size);
            EXPECT_EQ(std::string(whole.data(), size), expected.text) << text << ' ' << to;
            EXPECT_EQ(offset, expected.offset);
            EXPECT_EQ(status == LUM_OK ? 0 : status - LUM_OUTPUT_FULL + 1, static_cast<int>(expected.status));
            static_cast<void>(Written(convert));

            lum_converter* converter = nullptr;
            const lum_status created = lum_converter_create("utf-8", to, &converter);
            EXPECT_EQ(created == LUM_OK, converter != nullptr);
            EXPECT_EQ(converter != nullptr, std::string(to) != "no such");
            std::string streamed;
            std::size_t at = 0, read = 0, written = 0;
            lum_status answer = converter == nullptr ? LUM_BAD_ARGUMENT : LUM_OUTPUT_FULL;
            while (answer == LUM_OUTPUT_FULL) {
                char block[16];
                answer =
                    lum_converter_convert(converter, text.data() + at, text.size() - at, &read, block, 16, &written);
                at += read;
                streamed.append(block, written);
                if (answer == LUM_OK) {
                    EXPECT_EQ(lum_converter_finish(converter, block, 16, &written), LUM_OK);
                    streamed.append(block, written);
                }
            }
            EXPECT_EQ(streamed, expected.text) << to;
            EXPECT_TRUE(converter == nullptr || answer == status);
            EXPECT_TRUE(converter == nullptr || lum_converter_clear(converter) == LUM_OK);
            lum_converter_free(converter);
        }
        const auto wide = Lum::ConvertTextToUTF16(text, "utf-8");
        const auto units = std::make_unique<std::uint16_t[]>(wide.text.size() + 1);
        std::size_t size = 99, offset = 99;
        lum_to_utf16(text.data(), text.size(), "utf-8", units.get(), wide.text.size() + 1, &size, &offset);
        EXPECT_EQ(std::u16string(Lum::AsChar16(units.get())), wide.text);
        EXPECT_EQ(offset, wide.offset);
        EXPECT_EQ(Written([&](auto... buffer) {
                      return lum_from_utf16(units.get(), LUM_NUL_TERMINATED, "utf-8", buffer..., nullptr);
                  }),
                  text.substr(0, wide.offset));
    }
    const auto known = Lum::KnownEncodings();
    EXPECT_EQ(Written(lum_encoding_name, known.size() - 1), known.back().name);
    EXPECT_NE(Written(lum_encoding_name, known.size()).find("nothing of that"), std::string::npos);
}

TEST(CInterface, TimesGoToFieldsAndBack) {
    std::mt19937_64 random(1);
    for (int round = 0; round < 2000; ++round) {
        const auto ticks = static_cast<std::int64_t>(random() >> random() % 64);
        lum_time_fields fields{};
        std::int64_t again = 0;
        EXPECT_EQ(lum_time_to_fields(ticks, &fields), LUM_OK);
        EXPECT_EQ(lum_time_from_fields(&fields, &again), LUM_OK);
        EXPECT_TRUE(again == ticks || fields.year < -4800) << ticks;
        EXPECT_EQ(Written(lum_time_text, ticks), Lum::TimeStamp::FromTicks(ticks).ToW3DTF());
    }
    const lum_time_fields first{-30000, 1, 1, 0, 0, 0, -1}, last{30828, 9, 14, 2, 48, 5, 4'775'808};
    std::int64_t ticks = 0;
    lum_time_from_fields(&last, &ticks);
    EXPECT_EQ(ticks, std::numeric_limits<std::int64_t>::max());
    lum_time_from_fields(&first, &ticks);
    EXPECT_EQ(ticks, std::numeric_limits<std::int64_t>::min());
    EXPECT_GT(lum_time_now(), LUM_TICKS_TO_1970);
}

TEST(CInterface, StringsComeFromResourceFiles) {
    const std::string path = (kTests / "../examples/strings.rsrc").string();
    int file = 0;
    EXPECT_EQ(lum_resource_open("/nowhere", &file), LUM_NOT_OPENED);
    EXPECT_EQ(file, -1);
    EXPECT_EQ(lum_set_application_encoding("no such"), LUM_NO_SUCH_ENCODING);
    EXPECT_EQ(Written(lum_string_load, 128U), "128");
    ASSERT_EQ(lum_resource_open(path.c_str(), &file), LUM_OK);
    EXPECT_EQ(Written(lum_string_load, 128U), "Hello, world");
    for (const unsigned number : {0U, 1U, 9U, 128U, 129U, 200U, 4'000'000'000U}) {
        CString expected;
        const bool isThere = expected.LoadString(number);
        EXPECT_EQ(Written(lum_string_load, number),
                  (isThere ? "" : "nothing of that name or number: ") + expected.ToUTF8());
    }
    EXPECT_EQ(lum_resource_close(file - 65536), LUM_NOT_FOUND);
    EXPECT_EQ(lum_resource_close(file), LUM_OK);
    EXPECT_EQ(lum_resource_close(file), LUM_NOT_FOUND);
    EXPECT_EQ(Written(lum_resource_explain, "/nowhere"), Lum::Platform::ExplainResourceFile("/nowhere"));
}

TEST(CInterface, SetsUpTheHost) {
    const Files::Folder folder;
    Files::Write(folder / "C.strings", "7 = seven;");
    EXPECT_EQ(lum_string_set_folder(folder.Path().c_str()), LUM_OK);
    EXPECT_EQ(lum_string_add_table("C"), LUM_OK);
    EXPECT_EQ(Written(lum_string_load, 7U), "seven");
    const std::string before = Lum::Transcoder::PlatformEncoding();
    EXPECT_EQ(lum_set_locale("ja_JP"), LUM_OK);
    EXPECT_NE(Lum::Transcoder::PlatformEncoding(), before);
    EXPECT_EQ(lum_set_locale("C"), LUM_OK);
    EXPECT_EQ(lum_set_application_encoding("iso-8859-1"), LUM_OK);
    EXPECT_EQ(CString("\xE9"), u"\u00E9");
    Lum::Platform::SetApplicationTextEncoding(0xFFFF);
    EXPECT_EQ(lum_set_startup_volume("Disk"), LUM_OK);
    EXPECT_EQ(URI("file:///Disk/a").ToLocalPathUnix(), "/a");
    Lum::Platform::SetStartupVolumeName("Macintosh HD");
}

TEST(CInterface, NullAndUnknownCodesAreAnsweredAndEveryStatusHasAText) {
    Object object("http://h/");
    char text[8];
    std::size_t size = 99;
    EXPECT_EQ(lum_uri_create("a", 1, nullptr), LUM_BAD_ARGUMENT);
    lum_uri* copy = object.uri;
    EXPECT_EQ(lum_uri_copy(nullptr, &copy), LUM_BAD_ARGUMENT);
    EXPECT_EQ(copy, nullptr);
    for (const int code : {-1, 9, 1000}) {
        const Object uri("http://h/");
        EXPECT_EQ(lum_uri_get(uri.uri, code, LUM_STORED, text, 8, &size), LUM_BAD_ARGUMENT);
        EXPECT_EQ(lum_uri_get(uri.uri, LUM_PATH, code, text, 8, &size), LUM_BAD_ARGUMENT);
        EXPECT_EQ(lum_uri_set(uri.uri, code, LUM_UNESCAPED, "", 0), LUM_BAD_ARGUMENT);
        EXPECT_EQ(lum_uri_text(uri.uri, code, text, 8, &size), LUM_BAD_ARGUMENT);
        EXPECT_EQ(lum_uri_to_path(uri.uri, code, text, 8, &size), LUM_BAD_ARGUMENT);
        EXPECT_EQ(lum_uri_make_relative(uri.uri, nullptr, 1), LUM_BAD_ARGUMENT);
    }
    EXPECT_EQ(std::string(text) + std::to_string(size), "0");
    EXPECT_EQ(lum_uri_parse(nullptr, "a", 1), LUM_BAD_ARGUMENT);
    EXPECT_EQ(lum_uri_flags(nullptr), 0);
    EXPECT_EQ(lum_converter_create(nullptr, nullptr, nullptr), LUM_BAD_ARGUMENT);
    EXPECT_EQ(lum_converter_finish(nullptr, text, 8, &size), LUM_BAD_ARGUMENT);
    int relation = 0;
    std::int64_t ticks = 0;
    for (const lum_status status :
         {lum_converter_convert(nullptr, "a", 1, &size, text, 8, &size), lum_converter_clear(nullptr),
          lum_uri_query_value(nullptr, "a", 1, text, 8, &size), lum_uri_set_query_value(nullptr, "a", 1, "b", 1),
          lum_uri_resolve(nullptr, "a", 1), lum_uri_relation(object.uri, nullptr, 1, &relation),
          lum_uri_common_parent(object.uri, nullptr, 1, &copy), lum_time_to_fields(0, nullptr),
          lum_time_from_fields(nullptr, &ticks), lum_uri_compare(object.uri, nullptr, &relation),
          lum_uri_go_up(nullptr), lum_uri_file_name(nullptr, text, 8, &size),
          lum_uri_from_path("a", 1, LUM_PATH_WIN + 1, &copy),
          lum_uri_get(nullptr, LUM_PATH, LUM_STORED, text, 8, &size),
          lum_uri_next_pair(object.uri, nullptr, text, 8, &size, text, 8, &size)}) {
        EXPECT_EQ(status, LUM_BAD_ARGUMENT);
    }
    EXPECT_EQ(lum_resource_open(nullptr, nullptr), LUM_BAD_ARGUMENT);
    const Object empty(std::string{}), null;
    EXPECT_EQ(Text(empty.uri), "");
    lum_uri_free(nullptr);
    lum_converter_free(nullptr);

    std::set<std::string> texts;
    for (int status = -1; status <= 100; ++status) {
        texts.insert(lum_status_text(status));
    }
    EXPECT_EQ(texts.size(), 20U);
    EXPECT_EQ(lum_version(), LUM_C_VERSION);
}

}  // namespace
