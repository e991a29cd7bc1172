/* All of it from C: links, conversions, times and texts by number. */
#include <stdio.h>
#include <string.h>

#include <Lum/lum.h>

static const size_t all = LUM_NUL_TERMINATED; /* of a text that ends with a NUL */
static char text[256];
static size_t size;

/* Ends the program where a call fails that has no reason to. */
static int check(lum_status status) {
    if (status != LUM_OK) {
        printf("failed: %s\n", lum_status_text(status));
    }
    return status == LUM_OK;
}

/* What is wrong with a text that somebody typed. */
static void explain(const char* typed) {
    size_t offset, length;
    const lum_status status = lum_uri_explain(typed, all, &offset, &length);
    const char* advice = "";
    switch (status) {
        case LUM_OK:
            advice = "fine";
            break;
        case LUM_SCHEME_TOO_SHORT:
            advice = "a drive? write file:///C|/dir";
            break;
        case LUM_SCHEME_NOT_LETTERS:
            advice = "letters only before the colon";
            break;
        case LUM_BACKSLASH_IN_PATH:
        case LUM_BACKSLASH_IN_NON_HIERARCHICAL:
            advice = "write / or %5C";
            break;
        case LUM_SCHEME_UNKNOWN:
            advice = "this word marks no URI";
            break;
        default:
            break;
    }
    printf("%s: %s, %d at %d\n", typed, advice, (int)length, (int)offset);
}

static void components(void) {
    lum_uri *uri, *copy;
    lum_uri_create("http://me:pw@Example.org:81/a%20b/c.txt?x=1&y=2#top", all, &uri);
    static const int parts[] = {LUM_SCHEME, LUM_USER, LUM_PASSWORD, LUM_HOST,
                                LUM_PORT,   LUM_PATH, LUM_QUERY,    LUM_FRAGMENT};
    for (size_t i = 0; i < sizeof parts / sizeof *parts; ++i) {
        check(lum_uri_get(uri, parts[i], LUM_UNESCAPED, text, sizeof text, &size));
        printf("%s ", text);
    }
    const int flags = lum_uri_flags(uri);
    printf("\n%d%d%d%d\n", (flags & LUM_VALID) != 0, (flags & LUM_RELATIVE) != 0, (flags & LUM_HIERARCHICAL) != 0,
           (flags & LUM_DIRECTORY) != 0);

    lum_uri_copy(uri, &copy);
    lum_uri_set(copy, LUM_PATH, LUM_UNESCAPED, "/caf\xC3\xA9", all);
    static const int forms[] = {LUM_STORED, LUM_UNESCAPED, LUM_UTF8, LUM_UTF8_ESCAPED};
    for (size_t i = 0; i < sizeof forms / sizeof *forms; ++i) {
        lum_uri_text(copy, forms[i], text, sizeof text, &size);
        printf("%s\n", text);
    }
    int order;
    lum_uri_compare(uri, copy, &order);
    lum_uri_default_port(uri, text, sizeof text, &size);
    printf("%d %s\n", order, text);

    /* A buffer that is too small says how large it has to be. */
    char small[8];
    if (lum_uri_text(uri, LUM_STORED, small, sizeof small, &size) == LUM_TRUNCATED) {
        printf("%s... of %d bytes\n", small, (int)size);
    }
    /* A text that is no URI empties the object. */
    const lum_status bad = lum_uri_parse(uri, "http://h/a\\b", all);
    lum_uri_parse(copy, "mailto:me@h", all);
    lum_uri_get(copy, LUM_NON_HIERARCHICAL, LUM_STORED, text, sizeof text, NULL);
    printf("%s, %s\n", lum_status_text(bad), text);
    lum_uri_free(uri);
    lum_uri_free(copy);
}

static void places(void) {
    static const char* const words[] = {"unrelated", "below", "the same", "above"};
    lum_uri *page, *link, *parent;
    lum_uri_create("http://h/docs/guide/index.html", all, &page);
    lum_uri_copy(page, &link);
    lum_uri_resolve(link, "../img/logo.png", all);
    int relation;
    lum_uri_relation(link, page, 1, &relation);
    lum_uri_common_parent(link, page, 1, &parent);
    lum_uri_text(parent, LUM_STORED, text, sizeof text, NULL);
    printf("%s; both in %s\n", words[relation], text);
    lum_uri_relation(parent, page, 1, &relation);
    printf("%d%d%d%d\n", relation == LUM_RELATION_PARENT, relation == LUM_RELATION_CHILD, relation == LUM_RELATION_SAME,
           relation == LUM_RELATION_NONE);

    lum_uri_file_name(link, text, sizeof text, NULL);
    printf("%s ", text);
    lum_uri_extension(link, text, sizeof text, NULL);
    printf("%s ", text);
    lum_uri_make_relative(link, page, 1);
    lum_uri_text(link, LUM_STORED, text, sizeof text, NULL);
    printf("%s ", text);
    printf("%s ", lum_uri_make_relative(page, link, 1) == LUM_UNRELATED ? "unrelated" : "related");
    lum_uri_go_up(page);
    lum_uri_text(page, LUM_STORED, text, sizeof text, NULL);
    printf("%s\n", text);
    lum_uri_free(page);
    lum_uri_free(link);
    lum_uri_free(parent);
}

static void queries(void) {
    lum_uri* uri;
    lum_uri_create("http://h/?b=1&a=x%20y&b=2", all, &uri);
    char value[64];
    size_t cursor = 0;
    while (lum_uri_next_pair(uri, &cursor, text, sizeof text, NULL, value, sizeof value, NULL) == LUM_OK) {
        printf("%s=%s ", text, value);
    }
    const lum_status none = lum_uri_query_value(uri, "c", all, value, sizeof value, NULL);
    lum_uri_set_query_value(uri, "a", all, "50%", all);
    lum_uri_text(uri, LUM_STORED, text, sizeof text, NULL);
    printf("%d %s\n", none == LUM_NOT_FOUND, text);
    lum_uri_free(uri);

    lum_escape("a b&c", all, 1, text, sizeof text, NULL);
    lum_unescape("a+b%26c", all, 1, value, sizeof value, NULL);
    printf("%s %s\n", text, value);
}

static void paths(void) {
    static const int styles[] = {LUM_PATH_MAC, LUM_PATH_UNIX, LUM_PATH_WIN, LUM_PATH_NATIVE};
    lum_uri* uri;
    lum_set_startup_volume("Disk");
    lum_uri_from_path("Disk:Folder:a b", all, LUM_PATH_MAC, &uri);
    for (size_t i = 0; i < sizeof styles / sizeof *styles; ++i) {
        lum_uri_to_path(uri, styles[i], text, sizeof text, NULL);
        printf("%s ", text);
    }
    printf("\n");
    lum_uri_free(uri);
}

static void encodings(void) {
    size_t offset, count = 0;
    while (lum_encoding_name(count, text, sizeof text, NULL) == LUM_OK) {
        ++count;
    }
    printf("more than 80 encodings: %d\n", count > 80);
    const lum_status status = lum_convert("3 \xE2\x82\xAC", all, "utf-8", "latin1", text, sizeof text, &size, &offset);
    printf("%s at %d\n", status == LUM_UNMAPPABLE ? "unmappable" : "?", (int)offset);
    uint16_t units[16];
    lum_to_utf16("caf\xC3\xA9", all, "utf-8", units, 16, &size, NULL);
    lum_from_utf16(units, size, "utf-8", text, sizeof text, NULL, NULL);
    printf("%d units, %s\n", (int)size, text);

    lum_converter* converter;
    if (lum_converter_create("klingon", "utf-8", &converter) == LUM_NO_SUCH_ENCODING) {
        printf("no such encoding\n");
    }
    lum_converter_create("shift_jis", "utf-8", &converter);
    static const char bytes[] = "\x83\x5C\x83\xFF";
    size_t read, written;
    char output[16];
    printf("%d", lum_converter_convert(converter, bytes, 3, &read, output, sizeof output, &written) == LUM_INCOMPLETE);
    printf("%d",
           lum_converter_convert(converter, bytes + read, 2, &read, output, sizeof output, &written) == LUM_MALFORMED);
    printf("%d\n", lum_converter_convert(converter, bytes, 2, &read, output, 2, &written) == LUM_OUTPUT_FULL);
    lum_converter_clear(converter);
    check(lum_converter_finish(converter, output, sizeof output, &written));
    lum_converter_free(converter);
}

static void times(void) {
    lum_time_fields fields = {2008, 2, 29, 12, 30, 45, 0};
    int64_t ticks;
    lum_time_from_fields(&fields, &ticks);
    lum_time_to_fields(ticks + 24 * 3600 * LUM_TICKS_PER_SECOND, &fields);
    lum_time_text(ticks, text, sizeof text, NULL);
    printf("%s, a day later %d.%d.%d %d:%d:%d %d, time_t %lld, past %d\n", text, fields.day, fields.month, fields.year,
           fields.hour, fields.minute, fields.second, fields.ticks,
           (long long)((ticks - LUM_TICKS_TO_1970) / LUM_TICKS_PER_SECOND), lum_time_now() > ticks);
}

static void numbers(void) {
    int file;
    check(lum_set_locale("de_DE.UTF-8"));
    check(lum_set_application_encoding("utf-8"));
    lum_string_set_folder(LUM_EXAMPLES "/bundle");
    lum_string_add_table("Errors");
    if (lum_resource_open(LUM_EXAMPLES "/uris.txt", &file) == LUM_NOT_OPENED) {
        lum_resource_explain(LUM_EXAMPLES "/uris.txt", text, sizeof text, NULL);
        printf("%s\n", text);
    }
    lum_resource_open(LUM_EXAMPLES "/strings.rsrc", &file);
    static const unsigned ids[] = {1003, 2001, 7777};
    for (size_t i = 0; i < sizeof ids / sizeof *ids; ++i) {
        lum_string_load(ids[i], text, sizeof text, NULL);
        printf("%s ", text);
    }
    lum_resource_close(file);
    printf("\n");
}

int main(void) {
    printf("%d %s\n", lum_version() >= LUM_C_VERSION, lum_status_text(LUM_BAD_ARGUMENT));
    printf("%d %s\n", lum_uri_create("h2:x", all, NULL) == LUM_BAD_ARGUMENT, lum_status_text(LUM_NO_MEMORY));
    printf("%s, %s\n", lum_status_text(LUM_FAILED), lum_status_text(LUM_NOT_VALID));
    explain("http://h/");
    explain("c:/dir");
    explain("h2:x");
    explain("http://h/a\\b");
    explain("unknown://h");
    components();
    places();
    queries();
    paths();
    encodings();
    times();
    numbers();
}
