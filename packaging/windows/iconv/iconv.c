#include "iconv.h"

#include <errno.h>
#include <stdint.h>
#include <stdlib.h>
#include <string.h>
#include <windows.h>

/* Windows' number of a coding; 0 when it has none. */
static UINT codePageOf(const char* name) {
    static const struct {
        const char* name;
        UINT page;
    } pages[] = {{"UTF-8", 65001},   {"SJIS", 932},       {"SHIFT_JIS", 932}, {"BIG-5", 950},  {"BIG5", 950},
                 {"GB18030", 54936}, {"GBK", 936},        {"GB2312", 936},    {"EUC-KR", 949}, {"US-ASCII", 20127},
                 {"UTF-16BE", 1201}, {"UCS-2BE", 1201},   {"ISO8859-16", 0}};
    for (size_t i = 0; i < sizeof(pages) / sizeof(pages[0]); ++i) {
        if (_stricmp(name, pages[i].name) == 0)
            return pages[i].page;
    }
    if (_strnicmp(name, "ISO8859-", 8) == 0)
        return 28590 + (UINT)atoi(name + 8);
    if (_strnicmp(name, "CP", 2) == 0)
        return (UINT)atoi(name + 2);
    return 0;
}

iconv_t iconv_open(const char* to, const char* from) {
    const UINT page = codePageOf(from);
    if (strcmp(to, "UTF-8") != 0 || page == 0 || (page != 1201 && !IsValidCodePage(page))) {
        errno = EINVAL;
        return (iconv_t)-1;
    }
    return (iconv_t)(uintptr_t)page;
}

/* The input as UTF-16, at most one unit for each of its bytes; -1 when it is none of the coding. */
static int toWide(UINT page, const char* in, int count, wchar_t* wide) {
    if (page == 1201) {
        for (int i = 0; i + 1 < count; i += 2)
            wide[i / 2] = (wchar_t)((unsigned char)in[i] << 8 | (unsigned char)in[i + 1]);
        return count % 2 == 0 ? count / 2 : -1;
    }
    const int units = MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, in, count, wide, count);
    return units > 0 ? units : -1;
}

size_t iconv(iconv_t converter, char** in, size_t* inLeft, char** out, size_t* outLeft) {
    if (in == NULL || *in == NULL || *inLeft == 0)
        return 0;
    if (*inLeft > 65536 || *outLeft > INT32_MAX) {
        errno = E2BIG;
        return (size_t)-1;
    }
    wchar_t* const wide = malloc(*inLeft * sizeof(wchar_t));
    int result = -1;
    errno = ENOMEM;
    if (wide != NULL) {
        const int units = toWide((UINT)(uintptr_t)converter, *in, (int)*inLeft, wide);
        errno = EILSEQ;
        if (units > 0) {
            const int needed = WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, wide, units, NULL, 0, NULL, NULL);
            if (needed > 0 && (size_t)needed > *outLeft)
                errno = E2BIG;
            else if (needed > 0)
                result = WideCharToMultiByte(CP_UTF8, 0, wide, units, *out, (int)*outLeft, NULL, NULL);
        }
        free(wide);
    }
    if (result <= 0)
        return (size_t)-1;
    *in += *inLeft;
    *inLeft = 0;
    *out += result;
    *outLeft -= (size_t)result;
    return 0;
}

int iconv_close(iconv_t converter) {
    (void)converter;
    return 0;
}
