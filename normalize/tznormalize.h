/* The normalizer as a shared library, libtznormalize.so, for programs that link no Qt and load it when they
 * need it: dlopen() it, ask dlsym() for the functions below by name. Plain C.
 *
 * 1. Texts are UTF-8 and end with a NUL that their size does not count.
 * 2. What a result holds belongs to the caller, who gives it back with tzNormalizeFree().
 * 3. Any thread may call, several at once. The first call for a drawing with text makes Qt's application
 * object, if the program has none; it lives as long as the process, and the library stays loaded.
 * 4. No exception leaves the library.
 */
#ifndef TZNORMALIZE_H
#define TZNORMALIZE_H

#include <stddef.h>  // NOLINT(modernize-deprecated-headers): for C too

#ifdef __cplusplus
extern "C" {
#endif

enum {
    TZNORMALIZE_OK = 0,
    TZNORMALIZE_REFUSED = 1, /* the drawing: "refused" in the notes says why */
    TZNORMALIZE_FAILED = 2   /* out of memory, or arguments that make no sense; the result is empty */
};

typedef struct TzNormalizeResult {
    char* document; /* the drawing rewritten, one line; NULL when refused */
    size_t documentSize;
    char* notes; /* JSON, see normalize/NotesJson.h: what was changed or left out, or why it was refused */
    size_t notesSize;
} TzNormalizeResult;

/* Rewrites a drawing, plain or gzip-compressed, into the form that survives an import and an export. The
 * drawing is the `size` bytes at `bytes`; when `bytes` is NULL, the file `fileName`. Linked pictures are
 * looked for beside `fileName`; when that is NULL, none is carried. With `asImage` not 0 it is written to
 * be shown, not imported: it is shorter, without what the import and the export alone need (invisible
 * strokes, an outline of the page, ids and labels of what is drawn), and since an image shows whole units of
 * a page, the page of one that is no whole number of units wide and high is enlarged by a power of ten. The
 * result is written in any case. */
typedef int (*TzNormalizeFunction)(const char* fileName, const void* bytes, size_t size, int asImage,
                                   TzNormalizeResult* result);
int tzNormalize(const char* fileName, const void* bytes, size_t size, int asImage, TzNormalizeResult* result);

/* Says of a drawing, named as for tzNormalize(), without changing anything, whether the module takes it as it
 * is, and what of it is refused, dropped or changed. With `asImage` not 0 it is a drawing that was refused as
 * an image, and the reason is looked for. The answer is in the result's notes, JSON, see
 * normalize/check/CheckJson.h; there is no document. */
typedef int (*TzCheckFunction)(const char* fileName, const void* bytes, size_t size, int asImage,
                               TzNormalizeResult* result);
int tzCheckDrawing(const char* fileName, const void* bytes, size_t size, int asImage,
                   TzNormalizeResult* result);

/* Frees what a result holds, and empties it. An empty result is allowed. */
typedef void (*TzNormalizeFreeFunction)(TzNormalizeResult* result);
void tzNormalizeFree(TzNormalizeResult* result);

#ifdef __cplusplus
}
#endif

#endif
