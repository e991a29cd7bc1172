/* Takes a URI apart, edits it, and prints it again, from C. */
#include <stdio.h>

#include <Lum/lum.h>

int main(void) {
    lum_uri* uri;
    char host[64], text[256];
    size_t offset;
    lum_status status;
    if (lum_uri_create("HTTP://Host/a%20b/c.txt?x=1", LUM_NUL_TERMINATED, &uri) != LUM_OK) {
        return 1;
    }
    lum_uri_get(uri, LUM_HOST, LUM_UNESCAPED, host, sizeof host, NULL);
    lum_uri_set(uri, LUM_PATH, LUM_UNESCAPED, "/new path/d.txt", LUM_NUL_TERMINATED);
    lum_uri_text(uri, LUM_STORED, text, sizeof text, NULL);
    lum_uri_free(uri);
    printf("%s  %s\n", host, text);
    status = lum_uri_explain("http://h/a\\b", LUM_NUL_TERMINATED, &offset, NULL);
    printf("%s at %d\n", lum_status_text(status), (int)offset);
    return 0;
}
