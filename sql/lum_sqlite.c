/*
 * Lum in SQLite: a loadable extension over <Lum/lum.h>.
 *
 * Scalar functions are deterministic, so that an index may be made of them. NULL in is NULL out; a text that is no
 * valid URI gives NULL, too. Arguments may be texts or blobs of any bytes. Results are texts; lum_convert gives a blob.
 */
#include <stdlib.h>
#include <string.h>

#include <Lum/lum.h>
#include <sqlite3ext.h>

SQLITE_EXTENSION_INIT1

/* ---- Texts in and out ------------------------------------------------------------------------ */

typedef struct text {
    const char* data;
    size_t size;
} text;

/* The bytes of an argument, which live until the function returns. */
static text text_of(sqlite3_value* value) {
    text result;
    result.data =
        sqlite3_value_type(value) == SQLITE_BLOB ? sqlite3_value_blob(value) : (const char*)sqlite3_value_text(value);
    result.size = (size_t)sqlite3_value_bytes(value);
    return result;
}

/* A text that grows on the heap when the first buffer is too small. */
typedef struct output {
    char* data;
    size_t capacity, size;
    char first[512];
} output;

static void output_begin(output* out) {
    out->data = out->first;
    out->capacity = sizeof out->first;
    out->size = 0;
}

static void output_end(output* out) {
    if (out->data != out->first) {
        sqlite3_free(out->data);
    }
}

/* Makes room for what did not fit; whether there is memory for it. */
static int output_grow(output* out) {
    char* grown = sqlite3_malloc64((sqlite3_uint64)out->size + 1);
    if (grown == NULL) {
        return 0;
    }
    output_end(out);
    out->data = grown;
    out->capacity = out->size + 1;
    return 1;
}

/* Calls CALL, which writes to `out`, and once more with more room where it has to be cut. */
#define WRITE(status, out, CALL)                                     \
    do {                                                             \
        (status) = (CALL);                                           \
        if ((status) == LUM_TRUNCATED) {                             \
            (status) = output_grow(&(out)) ? (CALL) : LUM_NO_MEMORY; \
        }                                                            \
    } while (0)
#define INTO(out) (out).data, (out).capacity, &(out).size

/* Gives a text as the result. A fault of the text is NULL, any other one the statement's error. */
static void result_text(sqlite3_context* context, lum_status status, const output* out) {
    if (status == LUM_OK) {
        sqlite3_result_text64(context, out->data, out->size, SQLITE_TRANSIENT, SQLITE_UTF8);
    } else if (status == LUM_NO_MEMORY) {
        sqlite3_result_error_nomem(context);
    } else if (status == LUM_BAD_ARGUMENT || status == LUM_FAILED) {
        sqlite3_result_error(context, lum_status_text(status), -1);
    }
}

/* The URI of an argument; null, with NULL or an error as the result, if there is none. */
static lum_uri* uri_of(sqlite3_context* context, sqlite3_value* value) {
    const text in = text_of(value);
    lum_uri* uri = NULL;
    const lum_status status = lum_uri_create(in.data, in.size, &uri);
    if (status == LUM_NO_MEMORY) {
        sqlite3_result_error_nomem(context);
    }
    return uri;
}

static int is_null(int count, sqlite3_value** values) {
    int i;
    for (i = 0; i < count; ++i) {
        if (sqlite3_value_type(values[i]) == SQLITE_NULL) {
            return 1;
        }
    }
    return 0;
}

/* ---- Scalar functions ------------------------------------------------------------------------ */

/* lum_host(url), lum_path(url) and so on: the component that is the function's user data. */
static void sql_component(sqlite3_context* context, int count, sqlite3_value** values) {
    const int component = *(const int*)sqlite3_user_data(context);
    lum_uri* uri = is_null(count, values) ? NULL : uri_of(context, values[0]);
    if (uri != NULL) {
        output out;
        lum_status status;
        output_begin(&out);
        WRITE(status, out, lum_uri_get(uri, component, LUM_UNESCAPED, INTO(out)));
        result_text(context, status, &out);
        output_end(&out);
        lum_uri_free(uri);
    }
}

/* lum_query_value(url, key): the last value of the key, NULL if there is none. */
static void sql_query_value(sqlite3_context* context, int count, sqlite3_value** values) {
    lum_uri* uri = is_null(count, values) ? NULL : uri_of(context, values[0]);
    if (uri != NULL) {
        const text key = text_of(values[1]);
        output out;
        lum_status status;
        output_begin(&out);
        WRITE(status, out, lum_uri_query_value(uri, key.data, key.size, INTO(out)));
        result_text(context, status, &out);
        output_end(&out);
        lum_uri_free(uri);
    }
}

/* Gives the whole text of a URI as the result. */
static void result_uri(sqlite3_context* context, const lum_uri* uri) {
    output out;
    lum_status status;
    output_begin(&out);
    WRITE(status, out, lum_uri_text(uri, LUM_STORED, INTO(out)));
    result_text(context, status, &out);
    output_end(&out);
}

/* lum_resolve(base, reference) */
static void sql_resolve(sqlite3_context* context, int count, sqlite3_value** values) {
    lum_uri* uri = is_null(count, values) ? NULL : uri_of(context, values[0]);
    if (uri != NULL) {
        const text reference = text_of(values[1]);
        const lum_status status = lum_uri_resolve(uri, reference.data, reference.size);
        if (status == LUM_OK) {
            result_uri(context, uri);
        } else {
            result_text(context, status, NULL);
        }
        lum_uri_free(uri);
    }
}

/* lum_relative(url, base), lum_relation(a, b) and lum_parent(a, b), by the function's user data. */
enum { RELATIVE, RELATION, PARENT };

static void sql_two(sqlite3_context* context, int count, sqlite3_value** values) {
    lum_uri* a = is_null(count, values) ? NULL : uri_of(context, values[0]);
    lum_uri* b = a == NULL ? NULL : uri_of(context, values[1]);
    if (b != NULL) {
        lum_status status = LUM_OK;
        int relation = 0;
        lum_uri* parent = NULL;
        switch (*(const int*)sqlite3_user_data(context)) {
            case RELATIVE:
                status = lum_uri_make_relative(a, b, 1);
                break;
            case RELATION:
                status = lum_uri_relation(a, b, 1, &relation);
                break;
            default:
                status = lum_uri_common_parent(a, b, 1, &parent);
        }
        if (status != LUM_OK) {
            result_text(context, status, NULL);
        } else if (*(const int*)sqlite3_user_data(context) == RELATION) {
            sqlite3_result_int(context, relation);
        } else {
            result_uri(context, parent != NULL ? parent : a);
        }
        lum_uri_free(parent);
    }
    lum_uri_free(b);
    lum_uri_free(a);
}

/* lum_valid(url): 1 or 0 */
static void sql_valid(sqlite3_context* context, int count, sqlite3_value** values) {
    if (!is_null(count, values)) {
        const text in = text_of(values[0]);
        sqlite3_result_int(context, lum_uri_explain(in.data, in.size, NULL, NULL) == LUM_OK);
    }
}

/* lum_explain(url): why it is not valid, with the byte from 0 on; NULL if it is. */
static void sql_explain(sqlite3_context* context, int count, sqlite3_value** values) {
    if (!is_null(count, values)) {
        const text in = text_of(values[0]);
        size_t offset;
        const lum_status status = lum_uri_explain(in.data, in.size, &offset, NULL);
        if (status != LUM_OK) {
            char* said = sqlite3_mprintf("%s at %llu", lum_status_text(status), (sqlite3_uint64)offset);
            if (said == NULL) {
                sqlite3_result_error_nomem(context);
            } else {
                sqlite3_result_text(context, said, -1, sqlite3_free);
            }
        }
    }
}

/* lum_convert(blob, from, to): the converted bytes; NULL if a part of them cannot be converted. */
static void sql_convert(sqlite3_context* context, int count, sqlite3_value** values) {
    output out;
    text in;
    const char *from, *to;
    lum_status status;
    if (is_null(count, values)) {
        return;
    }
    from = (const char*)sqlite3_value_text(values[1]);
    to = (const char*)sqlite3_value_text(values[2]);
    in = text_of(values[0]);
    output_begin(&out);
    WRITE(status, out, lum_convert(in.data, in.size, from, to, INTO(out), NULL));
    if (status == LUM_OK) {
        sqlite3_result_blob64(context, out.data, out.size, SQLITE_TRANSIENT);
    } else if (status == LUM_NO_SUCH_ENCODING) {
        sqlite3_result_error(context, lum_status_text(status), -1);
    } else {
        result_text(context, status, &out);
    }
    output_end(&out);
}

/* ---- The table lum_query_pairs(url) ----------------------------------------------------------- */

enum { COLUMN_KEY, COLUMN_VALUE, COLUMN_URL };

typedef struct pairs {
    sqlite3_vtab_cursor base;
    sqlite3_value* url;
    lum_uri* uri;
    size_t next;
    sqlite3_int64 row;
    int at_end;
    output key, value;
} pairs;

static int pairs_connect(sqlite3* database, void* user, int count, const char* const* arguments, sqlite3_vtab** table,
                         char** error) {
    /* Hidden columns take part when names are looked up: "url" would be ambiguous beside a table's own. */
    int status = sqlite3_declare_vtab(database, "CREATE TABLE x(key TEXT, value TEXT, lum_url HIDDEN)");
    (void)user, (void)count, (void)arguments, (void)error;
    if (status == SQLITE_OK) {
        *table = sqlite3_malloc(sizeof **table);
        if (*table == NULL) {
            return SQLITE_NOMEM;
        }
        memset(*table, 0, sizeof **table);
        sqlite3_vtab_config(database, SQLITE_VTAB_INNOCUOUS);
    }
    return status;
}

static int pairs_disconnect(sqlite3_vtab* table) {
    sqlite3_free(table);
    return SQLITE_OK;
}

static int pairs_best_index(sqlite3_vtab* table, sqlite3_index_info* info) {
    int i, is_asked = 0;
    (void)table;
    for (i = 0; i < info->nConstraint; ++i) {
        if (info->aConstraint[i].iColumn == COLUMN_URL && info->aConstraint[i].op == SQLITE_INDEX_CONSTRAINT_EQ) {
            is_asked = 1;
            if (info->aConstraint[i].usable) {
                info->aConstraintUsage[i].argvIndex = 1;
                info->aConstraintUsage[i].omit = 1;
                info->idxNum = 1;
                info->estimatedCost = 10;
                info->estimatedRows = 5;
                return SQLITE_OK;
            }
        }
    }
    /* An argument that comes from a table which is not read yet: another order of the tables is needed. */
    return is_asked ? SQLITE_CONSTRAINT : SQLITE_OK;
}

static int pairs_open(sqlite3_vtab* table, sqlite3_vtab_cursor** cursor) {
    pairs* made = sqlite3_malloc(sizeof *made);
    (void)table;
    if (made == NULL) {
        return SQLITE_NOMEM;
    }
    memset(made, 0, sizeof *made);
    output_begin(&made->key);
    output_begin(&made->value);
    *cursor = &made->base;
    return SQLITE_OK;
}

static int pairs_close(sqlite3_vtab_cursor* cursor) {
    pairs* at = (pairs*)cursor;
    sqlite3_value_free(at->url);
    lum_uri_free(at->uri);
    output_end(&at->key);
    output_end(&at->value);
    sqlite3_free(at);
    return SQLITE_OK;
}

static int pairs_next(sqlite3_vtab_cursor* cursor) {
    pairs* at = (pairs*)cursor;
    lum_status status;
    while ((status = lum_uri_next_pair(at->uri, &at->next, INTO(at->key), INTO(at->value))) == LUM_TRUNCATED) {
        if ((at->key.size >= at->key.capacity && !output_grow(&at->key)) ||
            (at->value.size >= at->value.capacity && !output_grow(&at->value))) {
            return SQLITE_NOMEM;
        }
    }
    at->row += 1;
    at->at_end = status != LUM_OK;
    return status == LUM_NO_MEMORY ? SQLITE_NOMEM : SQLITE_OK;
}

static int pairs_filter(sqlite3_vtab_cursor* cursor, int index, const char* name, int count, sqlite3_value** values) {
    pairs* at = (pairs*)cursor;
    text in;
    (void)name;
    sqlite3_value_free(at->url);
    lum_uri_free(at->uri);
    at->url = NULL;
    at->uri = NULL;
    at->next = 0;
    at->row = 0;
    at->at_end = 1;
    if (index == 0 || count == 0 || is_null(1, values)) {
        return SQLITE_OK;
    }
    at->url = sqlite3_value_dup(values[0]);
    in = text_of(values[0]);
    if (at->url == NULL || lum_uri_create(in.data, in.size, &at->uri) == LUM_NO_MEMORY) {
        return SQLITE_NOMEM;
    }
    return at->uri == NULL ? SQLITE_OK : pairs_next(cursor);
}

static int pairs_eof(sqlite3_vtab_cursor* cursor) { return ((pairs*)cursor)->at_end; }

static int pairs_column(sqlite3_vtab_cursor* cursor, sqlite3_context* context, int column) {
    const pairs* at = (const pairs*)cursor;
    if (column == COLUMN_URL) {
        sqlite3_result_value(context, at->url);
    } else {
        result_text(context, LUM_OK, column == COLUMN_KEY ? &at->key : &at->value);
    }
    return SQLITE_OK;
}

static int pairs_rowid(sqlite3_vtab_cursor* cursor, sqlite3_int64* row) {
    *row = ((pairs*)cursor)->row;
    return SQLITE_OK;
}

/* Without a create function: the table is there by itself, and is only asked with an argument. */
static const sqlite3_module pairs_module = {
    .xConnect = pairs_connect,
    .xBestIndex = pairs_best_index,
    .xDisconnect = pairs_disconnect,
    .xOpen = pairs_open,
    .xClose = pairs_close,
    .xFilter = pairs_filter,
    .xNext = pairs_next,
    .xEof = pairs_eof,
    .xColumn = pairs_column,
    .xRowid = pairs_rowid,
};

/* ---- What SQLite calls ------------------------------------------------------------------------ */

static const struct {
    const char* name;
    int arguments;
    void (*function)(sqlite3_context*, int, sqlite3_value**);
    int code;
} functions[] = {
    {"lum_scheme", 1, sql_component, LUM_SCHEME}, {"lum_host", 1, sql_component, LUM_HOST},
    {"lum_port", 1, sql_component, LUM_PORT},     {"lum_path", 1, sql_component, LUM_PATH},
    {"lum_query", 1, sql_component, LUM_QUERY},   {"lum_fragment", 1, sql_component, LUM_FRAGMENT},
    {"lum_query_value", 2, sql_query_value, 0},   {"lum_resolve", 2, sql_resolve, 0},
    {"lum_relative", 2, sql_two, RELATIVE},       {"lum_relation", 2, sql_two, RELATION},
    {"lum_parent", 2, sql_two, PARENT},           {"lum_valid", 1, sql_valid, 0},
    {"lum_explain", 1, sql_explain, 0},           {"lum_convert", 3, sql_convert, 0},
};

#ifdef __GNUC__
__attribute__((visibility("default")))
#endif
int sqlite3_lumsqlite_init(sqlite3* database, char** error, const sqlite3_api_routines* api) {
    size_t i;
    int status = SQLITE_OK;
    SQLITE_EXTENSION_INIT2(api)
    if (lum_version() < LUM_C_VERSION) {
        *error = sqlite3_mprintf("the Lum library is older than this extension");
        return SQLITE_ERROR;
    }
    for (i = 0; i < sizeof functions / sizeof *functions && status == SQLITE_OK; ++i) {
        status = sqlite3_create_function_v2(database, functions[i].name, functions[i].arguments,
                                            SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                                            (void*)&functions[i].code, functions[i].function, NULL, NULL, NULL);
    }
    return status != SQLITE_OK ? status : sqlite3_create_module(database, "lum_query_pairs", &pairs_module, NULL);
}
