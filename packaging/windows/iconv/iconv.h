/* The part of iconv that reading QR codes wants, by Windows' own tables: to UTF-8 from a named coding. */
#ifndef CORVANTA_ICONV_H
#define CORVANTA_ICONV_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef void* iconv_t;

/* (iconv_t)-1 and EINVAL for a coding that is not known, and for every other target than UTF-8. */
iconv_t iconv_open(const char* to, const char* from);
/* Converts all of the input or nothing: EILSEQ for bytes that are none of the coding, E2BIG where room is missing. With
   a null input nothing is done: no coding here has states. */
size_t iconv(iconv_t converter, char** in, size_t* inLeft, char** out, size_t* outLeft);
int iconv_close(iconv_t converter);

#ifdef __cplusplus
}
#endif

#endif
