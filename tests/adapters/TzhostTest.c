/* libtzhost.so as a C program has it: what goes in comes out, what is wrong is refused by name, nothing of a
 * refusal stays. Usage: TzhostTest MODULE DRAWING FOLDER. */
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "tzhost.h"

static int failures = 0;

static void expect(int holds, const char* what, int line) {
    if (holds) return;
    printf("line %d: %s\n", line, what);
    ++failures;
}
#define EXPECT(holds) expect((holds), #holds, __LINE__)

static const char* lastText(void) {
    static TzhError error;
    memset(&error, 0, sizeof error);
    error.size = sizeof error;
    tzh_last_error(&error);
    return error.message;
}

/* The status is that one, and the text of the failure has this in it. */
static void expectFailure(TzhStatus status, TzhStatus expected, const char* text, int line) {
    if (status == expected && strstr(lastText(), text)) return;
    printf("line %d: %d instead of %d, \"%s\" without \"%s\"\n", line, status, expected, lastText(), text);
    ++failures;
}
#define EXPECT_FAILURE(status, expected, text) expectFailure((status), (expected), (text), __LINE__)

typedef struct Mesh {
    TzhMeshCounts counts;
    TzhMeshArrays arrays;
} Mesh;

static void* zeros(uint64_t count, size_t size) {
    void* made = calloc((size_t)count + 1, size);
    if (!made) abort();
    return made;
}

static Mesh readMesh(const TzhScene* scene) {
    Mesh mesh;
    memset(&mesh, 0, sizeof mesh);
    mesh.counts.size = sizeof mesh.counts;
    mesh.arrays.size = sizeof mesh.arrays;
    EXPECT(tzh_mesh_counts(scene, 0, &mesh.counts) == TZH_OK);
    mesh.arrays.points = zeros((uint64_t)mesh.counts.points * 3, sizeof(double));
    mesh.arrays.polygon_types = zeros(mesh.counts.polygons, sizeof(uint32_t));
    mesh.arrays.vertex_starts = zeros((uint64_t)mesh.counts.polygons + 1, sizeof(uint64_t));
    mesh.arrays.vertices = zeros(mesh.counts.vertices, sizeof(uint32_t));
    mesh.arrays.tag_starts = zeros((uint64_t)mesh.counts.polygons + 1, sizeof(uint64_t));
    mesh.arrays.tag_ids = zeros(mesh.counts.tags, sizeof(uint32_t));
    mesh.arrays.text_starts = zeros(mesh.counts.tags + 1, sizeof(uint64_t));
    mesh.arrays.text = zeros(mesh.counts.text_bytes, 1);
    EXPECT(tzh_mesh_read(scene, 0, &mesh.arrays) == TZH_OK);
    return mesh;
}

static void freeMesh(Mesh* mesh) {
    free(mesh->arrays.points);
    free(mesh->arrays.polygon_types);
    free(mesh->arrays.vertex_starts);
    free(mesh->arrays.vertices);
    free(mesh->arrays.tag_starts);
    free(mesh->arrays.tag_ids);
    free(mesh->arrays.text_starts);
    free(mesh->arrays.text);
}

/* A new scene with what the other one's first item has. */
static TzhScene* copyOf(TzhSession* session, const TzhScene* scene, const Mesh* mesh) {
    TzhScene* copy = NULL;
    TzhItem item;
    uint32_t i;
    memset(&item, 0, sizeof item);
    item.size = sizeof item;
    EXPECT(tzh_scene_new(&copy, session) == TZH_OK);
    EXPECT(tzh_item_get(scene, 0, &item) == TZH_OK);
    EXPECT(tzh_item_add(copy, item.type, item.name, NULL) == TZH_OK);
    for (i = 0; i < item.tag_count; ++i) {
        uint32_t tag = 0;
        const char* text = NULL;
        EXPECT(tzh_item_tag(scene, 0, i, &tag, &text) == TZH_OK);
        EXPECT(tzh_item_set_tag(copy, 0, tag, text) == TZH_OK);
    }
    for (i = 0; i < item.package_count; ++i) {
        const char* name = NULL;
        EXPECT(tzh_item_package(scene, 0, i, &name) == TZH_OK);
        EXPECT(tzh_item_add_package(copy, 0, name) == TZH_OK);
    }
    for (i = 0; i < item.channel_count; ++i) {
        const char* name = NULL;
        const char* text = NULL;
        EXPECT(tzh_item_channel(scene, 0, i, &name, &text) == TZH_OK);
        EXPECT(tzh_item_set_channel(copy, 0, name, text) == TZH_OK);
    }
    EXPECT(tzh_mesh_write(copy, 0, &mesh->counts, &mesh->arrays) == TZH_OK);
    return copy;
}

/* Each wrong value is refused by array and index, and nothing is added. */
static void testWrites(TzhScene* scene, Mesh* mesh) {
    TzhMeshCounts before;
    TzhMeshCounts after;
    const uint64_t start = mesh->arrays.vertex_starts[1];
    const uint32_t vertex = mesh->arrays.vertices[3];
    const uint32_t type = mesh->arrays.polygon_types[0];
    const double point = mesh->arrays.points[4];
    const char byte = mesh->arrays.text[0];
    memset(&before, 0, sizeof before);
    before.size = sizeof before;
    after = before;
    EXPECT(tzh_mesh_counts(scene, 0, &before) == TZH_OK);
#define EXPECT_REFUSED(text) \
    EXPECT_FAILURE(tzh_mesh_write(scene, 0, &mesh->counts, &mesh->arrays), TZH_INVALID, text)
    mesh->arrays.vertices[3] = mesh->counts.points;
    EXPECT_REFUSED("vertices[3]");
    mesh->arrays.vertices[3] = vertex;
    mesh->arrays.vertex_starts[1] = mesh->counts.vertices + 1;
    EXPECT_REFUSED("vertex_starts[1]");
    mesh->arrays.vertex_starts[1] = start;
    mesh->arrays.vertex_starts[0] = 1;
    EXPECT_REFUSED("vertex_starts[0]");
    mesh->arrays.vertex_starts[0] = 0;
    mesh->arrays.polygon_types[0] = 0xFF000000U;
    EXPECT_REFUSED("polygon_types[0]");
    mesh->arrays.polygon_types[0] = type;
    mesh->arrays.points[4] = 1e308 * 10;
    EXPECT_REFUSED("points[4]");
    mesh->arrays.points[4] = point;
    mesh->arrays.text[0] = '\xFF';
    EXPECT_REFUSED("not UTF-8");
    mesh->arrays.text[0] = byte;
    EXPECT(tzh_mesh_counts(scene, 0, &after) == TZH_OK);
    EXPECT(memcmp(&before, &after, sizeof before) == 0);
}

static int32_t stopAtOnce(uint64_t done, uint64_t total, void* payload) {
    (void)done;
    (void)total;
    return *(const int32_t*)payload;
}

static void testRefusals(TzhSession* session, const char* drawing, const char* folder) {
    TzhScene* scene = (TzhScene*)session;
    TzhSession* none = NULL;
    TzhImage* image = NULL;
    TzhCallbacks callbacks;
    int32_t stop = 7;
    char file[4096];
    FILE* page = NULL;
    snprintf(file, sizeof file, "%s/page.svg", folder);
    page = fopen(file, "w");
    if (!page) abort();
    fputs("<html/>", page);
    fclose(page);
    EXPECT_FAILURE(tzh_scene_import(&scene, session, file, 0, NULL), TZH_REFUSED, "outermost element is");
    EXPECT(scene == NULL);
    EXPECT_FAILURE(tzh_scene_import(&scene, session, "/no/such.svg", 0, NULL), TZH_NOT_FOUND, "/no/such.svg");
    EXPECT_FAILURE(tzh_scene_import(&scene, session, "\xFF", 0, NULL), TZH_INVALID, "UTF-8");
    EXPECT_FAILURE(tzh_scene_import(&scene, session, drawing, 1U << 31, NULL), TZH_INVALID, "flags");
    EXPECT_FAILURE(tzh_session_open(&none, "/no/such.so"), TZH_NOT_FOUND, "/no/such.so");
    EXPECT_FAILURE(tzh_image_open(&image, session, file, 0), TZH_REFUSED, "outermost element is");
    memset(&callbacks, 0, sizeof callbacks);
    callbacks.size = sizeof callbacks;
    callbacks.progress = stopAtOnce;
    callbacks.payload = &stop;
    EXPECT(tzh_scene_import(&scene, session, drawing, 0, &callbacks) == 7);
    EXPECT(scene == NULL);
}

static void* onAnotherThread(void* argument) {
    TzhScene* scene = NULL;
    EXPECT(tzh_scene_new(&scene, argument) == TZH_WRONG_THREAD);
    EXPECT(scene == NULL);
    return NULL;
}

typedef struct Tile {
    const TzhImage* image;
    float pixels[256 * 256 * 4];
} Tile;

static void* readTile(void* argument) {
    Tile* tile = argument;
    uint32_t width = 0;
    uint32_t height = 0;
    EXPECT(tzh_image_tile(tile->image, 8, 0, 0, tile->pixels, 256 * 256 * 4, &width, &height) == TZH_OK);
    return NULL;
}

static void testImage(TzhSession* session, const char* drawing) {
    TzhImage* image = NULL;
    TzhImageInfo info;
    Tile* tiles = zeros(4, sizeof(Tile));
    pthread_t threads[4];
    uint32_t width = 0;
    uint32_t height = 0;
    int i;
    memset(&info, 0, sizeof info);
    info.size = sizeof info;
    EXPECT(tzh_image_open(&image, session, drawing, 0) == TZH_OK);
    EXPECT(tzh_image_info(image, &info) == TZH_OK);
    EXPECT(info.level_count == 17 && (info.width == 65536 || info.height == 65536));
    EXPECT_FAILURE(tzh_image_tile(image, 17, 0, 0, tiles->pixels, 256 * 256 * 4, &width, &height), TZH_FAILED,
                   "tile");
    EXPECT_FAILURE(tzh_image_tile(image, 8, 0, 0, tiles->pixels, 16, &width, &height), TZH_INVALID, "room");
    for (i = 0; i < 4; ++i) {
        tiles[i].image = image;
        if (pthread_create(&threads[i], NULL, readTile, &tiles[i]) != 0) abort();
    }
    for (i = 0; i < 4; ++i) pthread_join(threads[i], NULL);
    for (i = 1; i < 4; ++i) EXPECT(memcmp(tiles[i].pixels, tiles[0].pixels, sizeof tiles[0].pixels) == 0);
    for (i = 0; i < 256 * 256 * 4 && tiles->pixels[i] == 0; ++i) {
    }
    EXPECT(i < 256 * 256 * 4);
    tzh_image_free(image);
    free(tiles);
}

static int sameFiles(const char* first, const char* second) {
    FILE* one = fopen(first, "rb");
    FILE* other = fopen(second, "rb");
    int a = one ? 0 : EOF;
    int b = other ? 0 : EOF;
    const int opened = one && other;
    while (opened && a != EOF && a == b) {
        a = getc(one);
        b = getc(other);
    }
    if (one) fclose(one);
    if (other) fclose(other);
    return opened && a == b;
}

int main(int argc, char** argv) {
    TzhSession* session = NULL;
    TzhScene* scene = NULL;
    TzhScene* copy = NULL;
    Mesh mesh;
    pthread_t thread;
    char first[4096];
    char second[4096];
    if (argc != 4) return 2;
    EXPECT(tzh_version() >> 16 == TZHOST_VERSION_MAJOR);
    EXPECT(tzh_session_open(&session, argv[1]) == TZH_OK);
    EXPECT(tzh_scene_import(&scene, session, argv[2], 0, NULL) == TZH_OK);
    if (!scene) {
        printf("%s\n", lastText());
        return 1;
    }
    mesh = readMesh(scene);
    copy = copyOf(session, scene, &mesh);
    snprintf(first, sizeof first, "%s/first.svg", argv[3]);
    snprintf(second, sizeof second, "%s/second.svg", argv[3]);
    EXPECT(tzh_scene_export(scene, first, 0, NULL) == TZH_OK);
    EXPECT(tzh_scene_export(copy, second, TZH_PREPARE, NULL) == TZH_OK);
    EXPECT(sameFiles(first, second));
    testWrites(copy, &mesh);
    testRefusals(session, argv[2], argv[3]);
    if (pthread_create(&thread, NULL, onAnotherThread, session) != 0) abort();
    pthread_join(thread, NULL);
    testImage(session, argv[2]);
    freeMesh(&mesh);
    /* A session lives as long as what was made with it. */
    tzh_session_free(session);
    EXPECT(tzh_item_count(scene) == 1);
    tzh_scene_free(scene);
    tzh_scene_free(copy);
    if (failures == 0) printf("all as expected\n");
    return failures == 0 ? 0 : 1;
}
