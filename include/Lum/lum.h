/*
 * Lum for C, and for every language that can call C: URIs, conversions between encodings, time stamps and
 * strings by number. The C++ headers beside this one say in full what each operation does; here is how it is
 * called. Compiles as C99 and as C++.
 *
 * Status. Most functions answer a lum_status, LUM_OK or why not, and lum_status_text() says it in words.
 * Nothing is thrown and nothing ends the program; where memory runs out, the answer is LUM_NO_MEMORY.
 *
 * Text in. A text is a pointer and its size in bytes, or LUM_NUL_TERMINATED for one that ends with a NUL. A null
 * pointer is the empty text. Any bytes may come in, NUL included; they are UTF-8 where they are not ASCII.
 *
 * Text out. As with snprintf, a text goes to the caller's buffer of `capacity` bytes: as much of it as fits, and
 * always a NUL behind it. `*size` becomes the size of the whole text without that NUL. A text that is cut answers
 * LUM_TRUNCATED; then ask again with `size` + 1 bytes. `buffer` may be null, with the capacity 0, to learn the
 * size, and `size` may be null. After any failure for which nothing else is said, the text is empty.
 * An output may overlap an input.
 *
 * Ownership. What a function named create or copy hands out belongs to the caller, who gives it to the free
 * function of its type. Free functions ignore null; every other function answers a null object with
 * LUM_BAD_ARGUMENT, also a null pointer for a result that is not a text. Texts are copied, never kept.
 *
 * Threads. One object is used by one thread at a time, different objects by any threads. Functions without an object
 * may be called from any thread, except for those about strings by number and the host's set-up; see there.
 */
#pragma once

/* NOLINTBEGIN: C's own ways */
#include <stddef.h>
#include <stdint.h>

#include <Lum/Export.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Version and status ---------------------------------------------------------------------- */

/** The version of this header: 10000 for each major, 100 for each minor number, 1 for each patch. */
#define LUM_C_VERSION 10000

/** The version of the library that runs. A program needs lum_version() >= LUM_C_VERSION, and the same major number. */
LUM_API int lum_version(void);

/** How an operation ended. Numbers keep their meaning; new ones may be added. */
typedef enum lum_status {
    LUM_OK = 0,       /**< All is done. */
    LUM_TRUNCATED,    /**< The text does not fit the buffer. */
    LUM_NOT_FOUND,    /**< There is nothing of that name or number. */
    LUM_UNRELATED,    /**< The two URIs have nothing in common that could answer. */
    LUM_BAD_ARGUMENT, /**< A null pointer, or a code that no operation knows. */
    LUM_NO_MEMORY,    /**< Out of memory; an object that was to change is as the C++ header says. */
    LUM_FAILED,       /**< An application's own C++ code, such as a resolver, failed. */
    LUM_NOT_OPENED,   /**< The file cannot be opened, made, or written. */

    /* Why a text is not a valid URI; as Lum::URIProblemCode. */
    LUM_SCHEME_TOO_SHORT = 16,         /**< Fewer than two characters before the ":". */
    LUM_SCHEME_NOT_LETTERS,            /**< A scheme character that is no ASCII letter. */
    LUM_BACKSLASH_IN_PATH,             /**< A backslash in a path. */
    LUM_BACKSLASH_IN_NON_HIERARCHICAL, /**< A backslash in the part of a non-hierarchical URI. */
    LUM_SCHEME_UNKNOWN,                /**< The scheme "unknown" of a hierarchical URI. */
    LUM_NOT_VALID,                     /**< What an operation made is not a valid URI. */

    /* Why a conversion stopped; as Lum::ConversionStatus. */
    LUM_OUTPUT_FULL = 32, /**< Go on with more space. */
    LUM_MALFORMED,        /**< The next bytes are no text of the source encoding. */
    LUM_INCOMPLETE,       /**< The input ends within a character. */
    LUM_UNMAPPABLE,       /**< The target encoding does not have the next character. */
    LUM_NO_SUCH_ENCODING  /**< No converter for one of the two encodings. */
} lum_status;

/** What a status says, in English, "malformed text", say; "unknown status" for another number. Never null. */
LUM_API const char* lum_status_text(int status);

/** The size of a text that ends with a NUL. */
#define LUM_NUL_TERMINATED ((size_t)-1)

/* ---- URIs ---------------------------------------------------------------------------------------
 * As Lum::URI of <Lum/URI.h>. Cost: linear in the texts, unless said otherwise. */

/** A URI. */
typedef struct lum_uri lum_uri;

/** The components of a URI. */
enum lum_component {
    LUM_SCHEME,          /**< "http", lower case */
    LUM_USER,            /**< the user name */
    LUM_PASSWORD,        /**< the password */
    LUM_HOST,            /**< "example.com", lower case */
    LUM_PORT,            /**< "8080", as written */
    LUM_PATH,            /**< "/a/b.txt" */
    LUM_QUERY,           /**< "x=1", without its "?" */
    LUM_FRAGMENT,        /**< "top", without its "#" */
    LUM_NON_HIERARCHICAL /**< "someone@example.com" in "mailto:someone@example.com" */
};

/** The forms of a text. */
enum lum_form {
    LUM_STORED,      /**< with escapes as they are stored */
    LUM_UNESCAPED,   /**< with escapes decoded */
    LUM_UTF8,        /**< only escapes of bytes from 0x80 decoded; for whole URIs */
    LUM_UTF8_ESCAPED /**< bytes from 0x80 escaped too; for whole URIs */
};

/** What a URI is; bits of lum_uri_flags(). */
enum lum_flag {
    LUM_VALID = 1,        /**< URI::IsValidURI */
    LUM_RELATIVE = 2,     /**< URI::IsRelative */
    LUM_HIERARCHICAL = 4, /**< URI::IsHierarchical */
    LUM_DIRECTORY = 8     /**< URI::IsDirectory */
};

/** What lum_uri_relation() answers: what the first URI is to the second one. */
enum lum_relation {
    LUM_RELATION_NONE,  /**< unrelated, or not comparable */
    LUM_RELATION_CHILD, /**< strictly below the other */
    LUM_RELATION_SAME,  /**< the same location */
    LUM_RELATION_PARENT /**< strictly above the other */
};

/** The styles of local paths. */
enum lum_path_style {
    LUM_PATH_NATIVE, /**< the one that the library was built for */
    LUM_PATH_MAC,    /**< "Disk:Folder:File" */
    LUM_PATH_UNIX,   /**< "/folder/file" */
    LUM_PATH_WIN     /**< "C:\folder\file" */
};

/** Makes the URI of a text. If that is not valid: the reason, as lum_uri_explain(), and null in `*uri`. */
LUM_API lum_status lum_uri_create(const char* text, size_t size, lum_uri** uri);
/** Makes an independent copy; null in `*copy` if that fails. */
LUM_API lum_status lum_uri_copy(const lum_uri* uri, lum_uri** copy);
/** Frees a URI. */
LUM_API void lum_uri_free(lum_uri* uri);
/** Replaces the content by the parse of another text, in the storage that the object has. If the text is not valid:
 *  the reason, and the empty state of Lum::URI, with the scheme "unknown". */
LUM_API lum_status lum_uri_parse(lum_uri* uri, const char* text, size_t size);
/** Why a text is not a valid URI, or LUM_OK, and which bytes are at fault: `*length` bytes from `*offset`, both 0 where
 *  there is no fault. Either pointer may be null. Allocates nothing. */
LUM_API lum_status lum_uri_explain(const char* text, size_t size, size_t* offset, size_t* length);

/** The bits of enum lum_flag; 0 for null. At once. */
LUM_API int lum_uri_flags(const lum_uri* uri);
/** One component, of enum lum_component, as LUM_STORED or LUM_UNESCAPED. A host in LUM_UNESCAPED form has no brackets.
 *  The empty text, with LUM_OK, for a component that the URI does not have. */
LUM_API lum_status lum_uri_get(const lum_uri* uri, int component, int form, char* buffer, size_t capacity,
                               size_t* size);
/** Sets one component. A text in LUM_UNESCAPED form is escaped for its place; only a query may be given as LUM_STORED.
 *  No text is refused. To build a URI from nothing, begin with the one of "" and set scheme, host and path in
 *  this order. */
LUM_API lum_status lum_uri_set(lum_uri* uri, int component, int form, const char* text, size_t size);
/** The whole URI, in any form of enum lum_form. */
LUM_API lum_status lum_uri_text(const lum_uri* uri, int form, char* buffer, size_t capacity, size_t* size);
/** The well-known port of the scheme: "80" for "http", "" if there is none. */
LUM_API lum_status lum_uri_default_port(const lum_uri* uri, char* buffer, size_t capacity, size_t* size);
/** Writes -1, 0 or 1 as the text of `a` is before, the same as or after that of `b`. */
LUM_API lum_status lum_uri_compare(const lum_uri* a, const lum_uri* b, int* order);

/** Applies a reference as "cd" applies its argument: "../c" at "http://h/a/b/" gives "http://h/a/c". If the result is
 * not valid: the reason, and the empty state in the URI. */
LUM_API lum_status lum_uri_resolve(lum_uri* uri, const char* reference, size_t size);
/** Makes the URI the shortest reference that leads to it from `base`. LUM_UNRELATED, without a change, if scheme, host
 * or port differ or `base` is relative. `match_case`, 0 or 1, is about path segments. */
LUM_API lum_status lum_uri_make_relative(lum_uri* uri, const lum_uri* base, int match_case);
/** Writes what `a` is to `b`, of enum lum_relation. `match_case` is about paths. */
LUM_API lum_status lum_uri_relation(const lum_uri* a, const lum_uri* b, int match_case, int* relation);
/** Makes the nearest directory at or above both, or the root of `a`. LUM_UNRELATED, and null in `*parent`, if one of
 * them is relative or there is no valid answer. */
LUM_API lum_status lum_uri_common_parent(const lum_uri* a, const lum_uri* b, int match_case, lum_uri** parent);

/** The path's last component without what follows it: "c.txt" for "/b/c.txt"; "" for a directory. Unescaped, as all
 * names. */
LUM_API lum_status lum_uri_file_name(const lum_uri* uri, char* buffer, size_t capacity, size_t* size);
/** The file name's extension without its dot. */
LUM_API lum_status lum_uri_extension(const lum_uri* uri, char* buffer, size_t capacity, size_t* size);
/** Goes up to the directory that holds the last component. Query and fragment are cleared. */
LUM_API lum_status lum_uri_go_up(lum_uri* uri);

/** The unescaped value of a key of the query, the last one if there are several. LUM_NOT_FOUND if there is none. */
LUM_API lum_status lum_uri_query_value(const lum_uri* uri, const char* key, size_t key_size, char* buffer,
                                       size_t capacity, size_t* size);
/** Sets the value of a key. The whole query is written anew, sorted by key, each key once. */
LUM_API lum_status lum_uri_set_query_value(lum_uri* uri, const char* key, size_t key_size, const char* value,
                                           size_t value_size);
/** The pairs of the query one by one, unescaped, in their order, repeated keys too. Begin with 0 in `*cursor`, which
 * each LUM_OK moves on; LUM_NOT_FOUND behind the last pair. If one of the two texts is cut, `*cursor` stays. The URI
 * must not change meanwhile; with any number in `*cursor`, what is read stays within the query. */
LUM_API lum_status lum_uri_next_pair(const lum_uri* uri, size_t* cursor, char* key, size_t key_capacity,
                                     size_t* key_size, char* value, size_t value_capacity, size_t* value_size);

/** The local path in a style of enum lum_path_style; "" if the URI names none. */
LUM_API lum_status lum_uri_to_path(const lum_uri* uri, int style, char* buffer, size_t capacity, size_t* size);
/** Makes the "file" URI of a local path; null in `*uri` if that fails. */
LUM_API lum_status lum_uri_from_path(const char* path, size_t size, int style, lum_uri** uri);

/** Escapes a text for a URI, as URI::Escape, or with `for_query` for a key or value, as URI::QueryEscape. */
LUM_API lum_status lum_escape(const char* text, size_t text_size, int for_query, char* buffer, size_t capacity,
                              size_t* size);
/** Decodes escapes; with `for_query`, "+" is a space. */
LUM_API lum_status lum_unescape(const char* text, size_t text_size, int for_query, char* buffer, size_t capacity,
                                size_t* size);

/* ---- Encodings ----------------------------------------------------------------------------------
 * As <Lum/Transcoder.h>. Encodings have Internet names, NUL-terminated: "utf-8", "shift_jis". Nothing is ever
 * substituted: a conversion stops at the first element that is bad, and what precedes it is kept. */

/** The preferred name of the encoding number `index`, from 0 on; LUM_NOT_FOUND behind the last one. */
LUM_API lum_status lum_encoding_name(size_t index, char* buffer, size_t capacity, size_t* size);

/** Converts a whole text. If it stops, the status says why, `*offset` is the byte of the input at which, and the text
 * is what precedes it; otherwise `*offset` is the input's size. LUM_TRUNCATED goes before the reason. `offset` may be
 * null. One NUL byte ends the output in every encoding. */
LUM_API lum_status lum_convert(const char* text, size_t text_size, const char* from, const char* to, char* buffer,
                               size_t capacity, size_t* size, size_t* offset);
/** The same to UTF-16: `capacity` and `*size` count units, and a 0 unit ends the text. */
LUM_API lum_status lum_to_utf16(const char* text, size_t text_size, const char* from, uint16_t* buffer, size_t capacity,
                                size_t* size, size_t* offset);
/** The same from UTF-16: `text_size` and `*offset` count units. */
LUM_API lum_status lum_from_utf16(const uint16_t* text, size_t text_size, const char* to, char* buffer, size_t capacity,
                                  size_t* size, size_t* offset);

/** Converts a text that comes in blocks; see Lum::StreamConverter. */
typedef struct lum_converter lum_converter;
/** LUM_NO_SUCH_ENCODING, and null in `*converter`, if a name is not known. */
LUM_API lum_status lum_converter_create(const char* from, const char* to, lum_converter** converter);
/** Frees a converter. */
LUM_API void lum_converter_free(lum_converter* converter);
/** Converts what it can: `*read` bytes of the input became `*written` bytes of the output, which no NUL ends. Bytes
 * that are not read are given again in front of the next block. LUM_OUTPUT_FULL: go on with more space, 16 bytes or
 * more. LUM_INCOMPLETE: go on with more input. Otherwise the next element is bad. */
LUM_API lum_status lum_converter_convert(lum_converter* converter, const char* input, size_t input_size, size_t* read,
                                         char* output, size_t capacity, size_t* written);
/** Ends the text and makes the converter ready for another one. Same statuses. */
LUM_API lum_status lum_converter_finish(lum_converter* converter, char* output, size_t capacity, size_t* written);
/** Makes the converter ready for another text, whatever came before. */
LUM_API lum_status lum_converter_clear(lum_converter* converter);

/* ---- Time stamps --------------------------------------------------------------------------------
 * As Lum::TimeStamp: a count of ticks of 100 nanoseconds from 1601-01-01 00:00:00 UTC. They are plain numbers, which C
 * compares and adds. At once. */

/** The ticks of a second. */
#define LUM_TICKS_PER_SECOND INT64_C(10000000)
/** The ticks at 1970-01-01: a time_t is (ticks - LUM_TICKS_TO_1970) / LUM_TICKS_PER_SECOND. */
#define LUM_TICKS_TO_1970 INT64_C(116444736000000000)

/** The calendar fields of a time. */
typedef struct lum_time_fields {
    int year;   /**< 2008 */
    int month;  /**< 1 to 12 */
    int day;    /**< 1 to 31 */
    int hour;   /**< 0 to 23 */
    int minute; /**< 0 to 59 */
    int second; /**< 0 to 59 */
    int ticks;  /**< Behind the second, 0 to 9999999. */
} lum_time_fields;

/** The present time in whole seconds. */
LUM_API int64_t lum_time_now(void);
/** The time of some fields. Any values are taken: what is beyond a field's range rolls over, and a sum beyond 64 bits
 * is the nearest end. LUM_BAD_ARGUMENT for null. */
LUM_API lum_status lum_time_from_fields(const lum_time_fields* fields, int64_t* ticks);
/** The fields of a time. Before 1601 they are not those of a calendar, but lum_time_from_fields() leads back, from the
 *  year -4800 on. */
LUM_API lum_status lum_time_to_fields(int64_t ticks, lum_time_fields* fields);
/** "2008-02-29T12:30:45Z". */
LUM_API lum_status lum_time_text(int64_t ticks, char* buffer, size_t capacity, size_t* size);

/* ---- Strings by number, and the host's set-up ----------------------------------------------------
 * As <Lum/StringResources.h> and <Lum/Platform.h>. Threads: only one thread at a time calls functions of this section,
 * and none of the C++ operations on CString meanwhile. Paths and names are NUL-terminated. */

/** Opens a resource file in front of those that are open, for lum_string_load(); `*reference` is its number, -1 with
 *  LUM_NOT_OPENED. */
LUM_API lum_status lum_resource_open(const char* path, int* reference);
/** Closes it; LUM_NOT_FOUND if that number is not open. */
LUM_API lum_status lum_resource_close(int reference);
/** Why a file cannot be opened, in words; "" if it can. */
LUM_API lum_status lum_resource_explain(const char* path, char* buffer, size_t capacity, size_t* size);
/** Names the folder with the tables of localised strings. */
LUM_API lum_status lum_string_set_folder(const char* path);
/** Looks numbers up in one more table of that folder too; ASCII. */
LUM_API lum_status lum_string_add_table(const char* name);
/** The string of a number, in UTF-8. A number that nobody knows is its own decimal text. LUM_NOT_FOUND where the number
 *  leads to an empty entry. */
LUM_API lum_status lum_string_load(unsigned int number, char* buffer, size_t capacity, size_t* size);
/** Takes script and encoding from a POSIX locale name, "ja_JP.UTF-8"; as Lum::Platform::SetLocale. */
LUM_API lum_status lum_set_locale(const char* name);
/** Sets the encoding of texts in resource files, by name. LUM_NO_SUCH_ENCODING, without a change, for another. */
LUM_API lum_status lum_set_application_encoding(const char* name);
/** Names the volume that "/" is on in colon-separated paths. */
LUM_API lum_status lum_set_startup_volume(const char* name);

#ifdef __cplusplus
}
#endif
/* NOLINTEND */
