/*
 * Lum in PostgreSQL: CREATE EXTENSION lum, over <Lum/lum.h>.
 *
 * All functions are strict (NULL in is NULL out), immutable and safe in parallel workers. A text that is no valid URI
 * gives NULL, and so does an answer that is no text of the database: one with a NUL, or bytes that its encoding does
 * not have.
 */
#include <postgres.h>

#include <fmgr.h>
#include <funcapi.h>
#include <mb/pg_wchar.h>
#include <utils/builtins.h>

#include <Lum/lum.h>

PG_MODULE_MAGIC;

void _PG_init(void);

/* ---- Texts in and out ------------------------------------------------------------------------
 * The server leaves a function by longjmp where memory runs out: no object of the library may be alive then. So a
 * result is written to a block of malloc first, and becomes a datum when the objects are gone. */

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
        free(out->data);
    }
    out->data = out->first;
}

static bool output_grow(output* out) {
    char* grown = malloc(out->size + 1);
    if (grown == NULL) {
        return false;
    }
    output_end(out);
    out->data = grown;
    out->capacity = out->size + 1;
    return true;
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
#define TEXT(datum) VARDATA_ANY(datum), VARSIZE_ANY_EXHDR(datum)

/* Ends the statement where the fault is not one of the text. No object may be alive. */
static void check(lum_status status) {
    if (status == LUM_NO_MEMORY) {
        ereport(ERROR, (errcode(ERRCODE_OUT_OF_MEMORY), errmsg("%s", lum_status_text(status))));
    }
    if (status == LUM_BAD_ARGUMENT || status == LUM_FAILED || status == LUM_NO_SUCH_ENCODING) {
        ereport(ERROR, (errcode(ERRCODE_INVALID_PARAMETER_VALUE), errmsg("%s", lum_status_text(status))));
    }
}

/* Whether bytes are a text of the database, which holds no NUL. */
static bool is_text(const output* out) {
    return out->size <= MaxAllocSize - VARHDRSZ - 1 && memchr(out->data, 0, out->size) == NULL &&
           pg_verifymbstr(out->data, (int)out->size, true);
}

/* Returns the text as the function's result, or NULL. */
static Datum answer(FunctionCallInfo fcinfo, lum_status status, output* out) {
    text* copy = NULL;
    if (status == LUM_OK && is_text(out)) {
        /* Like palloc, but null instead of an error while `out` is still to be freed. */
        copy = palloc_extended(out->size + VARHDRSZ, MCXT_ALLOC_NO_OOM);
        if (copy == NULL) {
            status = LUM_NO_MEMORY;
        } else {
            SET_VARSIZE(copy, out->size + VARHDRSZ);
            memcpy(VARDATA(copy), out->data, out->size);
        }
    }
    output_end(out);
    check(status);
    if (copy == NULL) {
        PG_RETURN_NULL();
    }
    PG_RETURN_TEXT_P(copy);
}

/* ---- Scalar functions ------------------------------------------------------------------------ */

static Datum component(FunctionCallInfo fcinfo, int code) {
    const text* url = PG_GETARG_TEXT_PP(0);
    lum_uri* uri = NULL;
    lum_status status = lum_uri_create(TEXT(url), &uri);
    output out;
    output_begin(&out);
    if (status == LUM_OK) {
        WRITE(status, out, lum_uri_get(uri, code, LUM_UNESCAPED, INTO(out)));
    }
    lum_uri_free(uri);
    return answer(fcinfo, status, &out);
}

#define COMPONENT(name, code)  \
    PG_FUNCTION_INFO_V1(name); \
    Datum name(PG_FUNCTION_ARGS) { return component(fcinfo, code); }

COMPONENT(lum_pg_scheme, LUM_SCHEME)
COMPONENT(lum_pg_host, LUM_HOST)
COMPONENT(lum_pg_port, LUM_PORT)
COMPONENT(lum_pg_path, LUM_PATH)
COMPONENT(lum_pg_query, LUM_QUERY)
COMPONENT(lum_pg_fragment, LUM_FRAGMENT)

PG_FUNCTION_INFO_V1(lum_pg_query_value);
Datum lum_pg_query_value(PG_FUNCTION_ARGS) {
    const text *url = PG_GETARG_TEXT_PP(0), *key = PG_GETARG_TEXT_PP(1);
    lum_uri* uri = NULL;
    lum_status status = lum_uri_create(TEXT(url), &uri);
    output out;
    output_begin(&out);
    if (status == LUM_OK) {
        WRITE(status, out, lum_uri_query_value(uri, TEXT(key), INTO(out)));
    }
    lum_uri_free(uri);
    return answer(fcinfo, status, &out);
}

PG_FUNCTION_INFO_V1(lum_pg_resolve);
Datum lum_pg_resolve(PG_FUNCTION_ARGS) {
    const text *base = PG_GETARG_TEXT_PP(0), *reference = PG_GETARG_TEXT_PP(1);
    lum_uri* uri = NULL;
    lum_status status = lum_uri_create(TEXT(base), &uri);
    output out;
    output_begin(&out);
    if (status == LUM_OK) {
        status = lum_uri_resolve(uri, TEXT(reference));
    }
    if (status == LUM_OK) {
        WRITE(status, out, lum_uri_text(uri, LUM_STORED, INTO(out)));
    }
    lum_uri_free(uri);
    return answer(fcinfo, status, &out);
}

/* The URIs of both arguments; *b is null where one is not valid. */
static lum_status two(FunctionCallInfo fcinfo, lum_uri** a, lum_uri** b) {
    const text *first = PG_GETARG_TEXT_PP(0), *second = PG_GETARG_TEXT_PP(1);
    const lum_status status = lum_uri_create(TEXT(first), a);
    *b = NULL;
    return status == LUM_OK ? lum_uri_create(TEXT(second), b) : status;
}

PG_FUNCTION_INFO_V1(lum_pg_relative);
Datum lum_pg_relative(PG_FUNCTION_ARGS) {
    lum_uri *uri, *base;
    lum_status status = two(fcinfo, &uri, &base);
    output out;
    output_begin(&out);
    if (status == LUM_OK) {
        status = lum_uri_make_relative(uri, base, 1);
    }
    if (status == LUM_OK) {
        WRITE(status, out, lum_uri_text(uri, LUM_STORED, INTO(out)));
    }
    lum_uri_free(uri);
    lum_uri_free(base);
    return answer(fcinfo, status, &out);
}

PG_FUNCTION_INFO_V1(lum_pg_relation);
Datum lum_pg_relation(PG_FUNCTION_ARGS) {
    lum_uri *a, *b;
    int relation = 0;
    lum_status status = two(fcinfo, &a, &b);
    if (status == LUM_OK) {
        status = lum_uri_relation(a, b, 1, &relation);
    }
    lum_uri_free(a);
    lum_uri_free(b);
    check(status);
    if (status != LUM_OK) {
        PG_RETURN_NULL();
    }
    PG_RETURN_INT32(relation);
}

PG_FUNCTION_INFO_V1(lum_pg_parent);
Datum lum_pg_parent(PG_FUNCTION_ARGS) {
    lum_uri *a, *b, *parent = NULL;
    lum_status status = two(fcinfo, &a, &b);
    output out;
    output_begin(&out);
    if (status == LUM_OK) {
        status = lum_uri_common_parent(a, b, 1, &parent);
    }
    if (status == LUM_OK) {
        WRITE(status, out, lum_uri_text(parent, LUM_STORED, INTO(out)));
    }
    lum_uri_free(a);
    lum_uri_free(b);
    lum_uri_free(parent);
    return answer(fcinfo, status, &out);
}

PG_FUNCTION_INFO_V1(lum_pg_valid);
Datum lum_pg_valid(PG_FUNCTION_ARGS) {
    const text* url = PG_GETARG_TEXT_PP(0);
    PG_RETURN_BOOL(lum_uri_explain(TEXT(url), NULL, NULL) == LUM_OK);
}

PG_FUNCTION_INFO_V1(lum_pg_explain);
Datum lum_pg_explain(PG_FUNCTION_ARGS) {
    const text* url = PG_GETARG_TEXT_PP(0);
    size_t offset;
    const lum_status status = lum_uri_explain(TEXT(url), &offset, NULL);
    if (status == LUM_OK) {
        PG_RETURN_NULL();
    }
    PG_RETURN_TEXT_P(cstring_to_text(psprintf("%s at %zu", lum_status_text(status), offset)));
}

/* lum_convert(bytea, from, to): NULL where a part of the bytes cannot be converted. */
PG_FUNCTION_INFO_V1(lum_pg_convert);
Datum lum_pg_convert(PG_FUNCTION_ARGS) {
    const bytea* bytes = PG_GETARG_BYTEA_PP(0);
    const char* from = text_to_cstring(PG_GETARG_TEXT_PP(1));
    const char* to = text_to_cstring(PG_GETARG_TEXT_PP(2));
    bytea* copy = NULL;
    lum_status status;
    output out;
    output_begin(&out);
    WRITE(status, out, lum_convert(TEXT(bytes), from, to, INTO(out), NULL));
    if (status == LUM_OK) {
        copy = out.size <= MaxAllocSize - VARHDRSZ ? palloc_extended(out.size + VARHDRSZ, MCXT_ALLOC_NO_OOM) : NULL;
        if (copy == NULL) {
            status = LUM_NO_MEMORY;
        } else {
            SET_VARSIZE(copy, out.size + VARHDRSZ);
            memcpy(VARDATA(copy), out.data, out.size);
        }
    }
    output_end(&out);
    check(status);
    if (copy == NULL) {
        PG_RETURN_NULL();
    }
    PG_RETURN_BYTEA_P(copy);
}

/* ---- The pairs of a query --------------------------------------------------------------------- */

/* A key or value; NULL in the row if it is no text of the database. */
static bool pair_text(const output* out, Datum* value) {
    if (!is_text(out)) {
        return true;
    }
    *value = PointerGetDatum(cstring_to_text_with_len(out->data, (int)out->size));
    return false;
}

/* lum_query_pairs(url): a row for each pair. All rows are made at once, and the object is freed in every case. */
PG_FUNCTION_INFO_V1(lum_pg_query_pairs);
Datum lum_pg_query_pairs(PG_FUNCTION_ARGS) {
    const text* url = PG_GETARG_TEXT_PP(0);
    ReturnSetInfo* result = (ReturnSetInfo*)fcinfo->resultinfo;
    /* Not on the stack, where a longjmp may leave old values. */
    struct {
        lum_uri* uri;
        lum_status status;
        output key, value;
    }* at = palloc(sizeof *at);
    InitMaterializedSRF(fcinfo, 0);
    at->uri = NULL;
    output_begin(&at->key);
    output_begin(&at->value);
    PG_TRY();
    {
        size_t cursor = 0;
        at->status = lum_uri_create(TEXT(url), &at->uri);
        while (at->status == LUM_OK) {
            at->status = lum_uri_next_pair(at->uri, &cursor, INTO(at->key), INTO(at->value));
            if (at->status == LUM_TRUNCATED) {
                const bool has_room = (at->key.size < at->key.capacity || output_grow(&at->key)) &&
                                      (at->value.size < at->value.capacity || output_grow(&at->value));
                at->status = has_room ? LUM_OK : LUM_NO_MEMORY;
            } else if (at->status == LUM_OK) {
                Datum row[2] = {0, 0};
                bool is_null[2];
                is_null[0] = pair_text(&at->key, &row[0]);
                is_null[1] = pair_text(&at->value, &row[1]);
                tuplestore_putvalues(result->setResult, result->setDesc, row, is_null);
            }
        }
    }
    PG_FINALLY();
    {
        output_end(&at->key);
        output_end(&at->value);
        lum_uri_free(at->uri);
    }
    PG_END_TRY();
    check(at->status);
    return (Datum)0;
}

void _PG_init(void) {
    if (lum_version() < LUM_C_VERSION) {
        ereport(ERROR, (errmsg("the Lum library is older than this extension")));
    }
}
