/* from-c MODULE: opens a module from C. An object is a pointer to a pointer to the table of its operations: those of
   ITzObject, then those of its interface, in the order of the header. */
#include <dlfcn.h>
#include <stdint.h>
#include <stdio.h>

typedef struct Module Module;
typedef struct {
    uint32_t (*query)(Module* self, const char* interfaceId, void** out); /* slots 0 to 2: ITzObject */
    uint32_t (*retain)(Module* self);
    uint32_t (*release)(Module* self);
    uint32_t (*initialise)(Module* self, void* host); /* from slot 3 on: ITzModule */
    uint32_t (*shutdown)(Module* self);
} ModuleTable;
struct Module {
    const ModuleTable* table;
};

int main(int argc, char** argv) {
    void* const library = argc == 2 ? dlopen(argv[1], RTLD_NOW | RTLD_LOCAL) : NULL;
    Module* (*entry)(uint32_t, uint32_t*, uint32_t*) = NULL;
    if (library) *(void**)&entry = dlsym(library, "_ITzModule_Create");
    if (!entry) return 2;

    uint32_t version = 0, result = 0x80000000u;
    Module* const module = entry(0x00010000u, &version, &result);
    if (!module) return 1;
    void* same = NULL;
    printf("SDK %u.%u\n", version >> 16, version & 0xFFFFu);
    printf("query: %08x\n", module->table->query(module, "tz.module/1", &same));
    printf("without a host: %08x\n", module->table->initialise(module, NULL));
    printf("references left: %u", module->table->release(module));
    printf(", then %u\n", module->table->release(module));
    return 0;
}
