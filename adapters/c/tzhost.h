/* tzhost.h: drawings as meshes, and as tiles, for programs in any language.
 *
 * The library libtzhost.so loads the module tzsvg.so as a 3D application does, gives it what a host has to
 * give, and shows what it makes as flat arrays. It links no Qt, prints nothing, and installs no signal
 * handler.
 *
 * Conventions, which hold for every function unless it says otherwise:
 *
 *  1. Objects are opaque: TzhSession (a host with its module), TzhScene, TzhImage. What a function gives
 * through an out parameter belongs to the caller, who ends it with the tzh_..._free of its type; freeing NULL
 * does nothing. A pointer that a function returns, or puts into a struct, is borrowed: it lives until the
 * object it was asked of is changed or freed.
 *  2. A function that can fail returns a TzhStatus: TZH_OK (0), one of the negative codes below, or what a
 * callback of the caller returned (positive). After a failure, out parameters are NULL or zero, the scene is
 * as it was, and tzh_last_error() says on that thread what happened. The text is of no use after a success.
 *  3. Text is UTF-8 and ends with a zero; where a length stands beside it, it may hold zeros and needs no
 * end. File names are UTF-8. NULL stands for empty text where nothing else is said.
 *  4. Structs start with `size`, which the caller sets to sizeof of the struct: a later version of the
 * library, which knows more members, treats those that are not there as zero.
 *  5. A session, its scenes and all functions on them are for the thread that opened the session ("session
 * thread"); on another they return TZH_WRONG_THREAD. Images may be opened, asked and freed on any thread,
 * many at once. Several sessions, on threads of their own, may live side by side. A session may be freed
 * before its scenes and images: it goes when the last of them does.
 *  6. Coordinates are doubles in the scene's units, which are the drawing's user units; x to the right, y
 * upwards, z towards the viewer. An imported drawing lies in z = 0, its lowest shape about y = 0.
 *  7. A tag name is four ASCII characters packed into 32 bits, the first one highest:
 * TZH_TAG('F','I','L','L').
 *  8. No exception leaves a function, whatever happens; when memory runs out it returns TZH_NO_MEMORY.
 */
#ifndef TZHOST_H
#define TZHOST_H

// NOLINTBEGIN(modernize-deprecated-headers): for C too
#include <stddef.h>
#include <stdint.h>
// NOLINTEND(modernize-deprecated-headers)

#ifdef __cplusplus
extern "C" {
#endif

#define TZHOST_VERSION_MAJOR 1
#define TZHOST_VERSION_MINOR 0

#if defined(__GNUC__)
#define TZH_API __attribute__((visibility("default")))
#else
#define TZH_API
#endif

/* ---- Versions and errors
 * ------------------------------------------------------------------------------------- */

/* The version of the library that is loaded: major in the upper 16 bits, minor in the lower. Within a major
 * version functions and members are only added. [any thread] */
TZH_API uint32_t tzh_version(void);

typedef int32_t TzhStatus;
enum {
    TZH_OK = 0,
    TZH_FAILED = -1,    /* the module or the system failed; the error's code and text say more */
    TZH_INVALID = -2,   /* an argument is NULL, out of range, not UTF-8, not finite, or contradicts another */
    TZH_NO_MEMORY = -3, /* memory ran out */
    TZH_CANCELLED = -4, /* the module reported a cancel that no callback asked for */
    TZH_REFUSED =
        -5, /* the module does not take this file or scene; the error says why, as far as is known */
    TZH_NOT_FOUND = -6,    /* no such file, item, tag, channel or package */
    TZH_WRONG_THREAD = -7, /* called on another thread than the session's */
    TZH_UNAVAILABLE = -8   /* a part that is not installed: the normalizer */
};

/* What failed last on this thread. All texts live until the next call of any function of this library on the
 * thread; none is NULL. [any thread] */
typedef struct TzhError {
    size_t size;
    const char* message; /* one line for people: file, step, reason */
    const char* file;    /* the file at work, or "" */
    const char* step;    /* "open", "recognise", "load", "save", "tile", ... or "" */
    uint32_t code;       /* the host result code, 0x80000005 for instance */
} TzhError;
TZH_API void tzh_last_error(TzhError* error);

/* ---- Sessions
 * ------------------------------------------------------------------------------------------------ */

typedef struct TzhSession TzhSession;

/* Loads the module. `module` names its file; NULL takes the one that the environment variable TZSVG_MODULE
 * names, else the one beside this library, else tzsvg/tzsvg.so beside it. [any thread; it becomes the session
 * thread] */
TZH_API TzhStatus tzh_session_open(TzhSession** session, const char* module);
TZH_API void tzh_session_free(TzhSession* session);

/* What a caller may be told while work goes on. Every member may be NULL. Callbacks come on the thread that
 * called the function they were given to. A callback that returns a value above 0 stops the work; the
 * function then returns that value unchanged. Values below 0 are reserved. */
typedef struct TzhCallbacks {
    size_t size;
    /* `done` of `total` steps; `total` is 0 while nobody can tell. Called often: keep it short. */
    int32_t (*progress)(uint64_t done, uint64_t total, void* payload);
    /* A message to the user, and a line of the module's log, without its line end. */
    int32_t (*message)(const char* text, void* payload);
    int32_t (*log)(const char* line, void* payload);
    void* payload;
} TzhCallbacks;

/* ---- Scenes
 * -------------------------------------------------------------------------------------------------- */

typedef struct TzhScene TzhScene;

enum {
    /* Rewrites a drawing, before it is read, into the form that survives the round trip: style sheets,
     * transforms, text, use, gradients and much more are resolved. tzh_scene_notes() then tells what was
     * changed. */
    TZH_NORMALIZE = 1,
    /* Asks the saver for its preparatory pass before it writes. */
    TZH_PREPARE = 2
};

/* A new scene without items. [session thread] */
TZH_API TzhStatus tzh_scene_new(TzhScene** scene, TzhSession* session);

/* A new scene with the items of a drawing, plain or packed (.svgz).
 * `callbacks` may be NULL. [session thread] */
TZH_API TzhStatus tzh_scene_import(TzhScene** scene, TzhSession* session, const char* file, uint32_t flags,
                                   const TzhCallbacks* callbacks);

/* Writes the scene as a drawing. The file appears, or is replaced, only when all went well. [session thread]
 */
TZH_API TzhStatus tzh_scene_export(TzhScene* scene, const char* file, uint32_t flags,
                                   const TzhCallbacks* callbacks);

/* What normalizing changed or left out, as a JSON object whose member "notes" is an array of objects with the
 * members code
 * ("left-out", "approximated", "carried" in another shape, "resolved"), line, column, element, id, attribute
 * and text; "more" counts notes beyond those. "{}" for other scenes. [session thread] */
TZH_API const char* tzh_scene_notes(const TzhScene* scene);

TZH_API void tzh_scene_free(TzhScene* scene);

/* ---- Items
 * --------------------------------------------------------------------------------------------------- */

/* Items count from 0 in the order of their creation; so do an item's tags, packages and channels. */
TZH_API uint32_t tzh_item_count(const TzhScene* scene);

typedef struct TzhItem {
    size_t size;
    const char* type; /* "mesh", or any other type of the host's */
    const char* name;
    uint32_t tag_count;
    uint32_t package_count;
    uint32_t channel_count;
} TzhItem;
TZH_API TzhStatus tzh_item_get(const TzhScene* scene, uint32_t item, TzhItem* out);

/* One tag, package or channel of an item. [session thread] */
TZH_API TzhStatus tzh_item_tag(const TzhScene* scene, uint32_t item, uint32_t index, uint32_t* tag,
                               const char** text);
TZH_API TzhStatus tzh_item_package(const TzhScene* scene, uint32_t item, uint32_t index, const char** name);
TZH_API TzhStatus tzh_item_channel(const TzhScene* scene, uint32_t item, uint32_t index, const char** name,
                                   const char** text);

/* Adds an item at the end; `type` is not empty, `item` may be NULL. Then its tags, packages and channels: a
 * tag or channel that is there is replaced; a channel must come from a package that was added. [session
 * thread] */
TZH_API TzhStatus tzh_item_add(TzhScene* scene, const char* type, const char* name, uint32_t* item);
TZH_API TzhStatus tzh_item_set_tag(TzhScene* scene, uint32_t item, uint32_t tag, const char* text);
TZH_API TzhStatus tzh_item_add_package(TzhScene* scene, uint32_t item, const char* name);
TZH_API TzhStatus tzh_item_set_channel(TzhScene* scene, uint32_t item, const char* name, const char* text);

/* ---- Meshes
 * -------------------------------------------------------------------------------------------------- */

#define TZH_TAG(a, b, c, d) \
    (((uint32_t)(a) << 24) | ((uint32_t)(b) << 16) | ((uint32_t)(c) << 8) | (uint32_t)(d))
#define TZH_BEZIER TZH_TAG('B', 'E', 'Z', 'R') /* anchor, control, control, anchor, ... */
#define TZH_LINES \
    TZH_TAG('L', 'I', 'N', 'E') /* straight from vertex to vertex, two vertices an edge for shapes */

/* How long the arrays of a mesh are. */
typedef struct TzhMeshCounts {
    size_t size;
    uint32_t points;
    uint32_t polygons;
    uint64_t vertices;   /* of all polygons */
    uint64_t tags;       /* of all polygons */
    uint64_t text_bytes; /* of all tags' texts */
} TzhMeshCounts;

/* A mesh as flat arrays, the same for reading and writing. All memory is the caller's. */
typedef struct TzhMeshArrays {
    size_t size;
    double* points;          /* 3 * points: x, y, z of each */
    uint32_t* polygon_types; /* polygons: TZH_BEZIER, TZH_LINES or any other four letters */
    uint64_t* vertex_starts; /* polygons + 1: polygon i has the vertices [i] to [i + 1]; the first is 0, the
                                last `vertices` */
    uint32_t* vertices;      /* vertices: indices of points */
    uint64_t* tag_starts;    /* polygons + 1: as vertex_starts, of tags */
    uint32_t* tag_ids;       /* tags: TZH_TAG names */
    uint64_t* text_starts;   /* tags + 1: as vertex_starts, of bytes */
    char* text;              /* text_bytes: UTF-8, one text after another, no zeros between */
} TzhMeshArrays;

/* The lengths, then the content, of a mesh item. In `arrays` a NULL member is passed over; the others have
 * the lengths that tzh_mesh_counts() answered. TZH_INVALID for an item of another type. [session thread] */
TZH_API TzhStatus tzh_mesh_counts(const TzhScene* scene, uint32_t item, TzhMeshCounts* counts);
TZH_API TzhStatus tzh_mesh_read(const TzhScene* scene, uint32_t item, const TzhMeshArrays* arrays);

/* Adds points and polygons to a mesh item; indices in `vertices` count from the first point given here.
 * Everything is looked at first: coordinates are finite, starts ascend from 0 to their count, vertices name
 * points, names are four ASCII characters, no polygon has a tag twice, texts are UTF-8. TZH_INVALID
 * otherwise, the error names array and index, and nothing is added. Arrays of length 0 may be NULL. [session
 * thread] */
TZH_API TzhStatus tzh_mesh_write(TzhScene* scene, uint32_t item, const TzhMeshCounts* counts,
                                 const TzhMeshArrays* arrays);

/* ---- Images
 * -------------------------------------------------------------------------------------------------- */

typedef struct TzhImage TzhImage;

typedef struct TzhImageInfo {
    size_t size;
    uint32_t width; /* of the finest level, in pixels */
    uint32_t height;
    uint32_t level_count; /* 17 */
} TzhImageInfo;

typedef struct TzhLevelInfo {
    size_t size;
    uint32_t width; /* in pixels */
    uint32_t height;
    uint32_t tile_width; /* of a whole tile, in pixels; those at the right and lower edge may be smaller */
    uint32_t tile_height;
} TzhLevelInfo;

/* Opens a drawing as a tiled image; with TZH_NORMALIZE the picture is that of the normalized drawing, made
 * anew when the file changes. [any thread] */
TZH_API TzhStatus tzh_image_open(TzhImage** image, TzhSession* session, const char* file, uint32_t flags);
TZH_API TzhStatus tzh_image_info(const TzhImage* image, TzhImageInfo* info);

/* Level 0 is the finest. [any thread] */
TZH_API TzhStatus tzh_image_level(const TzhImage* image, uint32_t level, TzhLevelInfo* info);

/* The pixels of one tile, drawn now or taken from the cache: floats, red, green, blue, alpha, 0 to 1, sRGB
 * values, not multiplied by alpha; rows from the top. `width` and `height` tell the tile's own size; `pixels`
 * has room for `capacity` floats, or TZH_INVALID is returned and nothing is written. tzh_image_tile_bytes()
 * gives the same as bytes, 0 to 255. [any thread] */
TZH_API TzhStatus tzh_image_tile(const TzhImage* image, uint32_t level, uint32_t column, uint32_t row,
                                 float* pixels, size_t capacity, uint32_t* width, uint32_t* height);
TZH_API TzhStatus tzh_image_tile_bytes(const TzhImage* image, uint32_t level, uint32_t column, uint32_t row,
                                       uint8_t* pixels, size_t capacity, uint32_t* width, uint32_t* height);
TZH_API void tzh_image_free(TzhImage* image);

#ifdef __cplusplus
}
#endif

#endif
