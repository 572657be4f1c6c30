// How much call stack an import needs.
#include <pthread.h>

#include <functional>

#include "tests/loader/LoaderFixture.h"

namespace tzhost {
namespace {

using CallStack = LoaderTest;

// A walk that recursed would need a deep call stack for as many siblings; a host's thread may have little.
TEST_F(CallStack, manySiblings) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr int kSiblings = 20000;
#else
    constexpr int kSiblings = 200000;
#endif
    std::string document = "<svg>";
    for (int i = 0; i < kSiblings; ++i) document += "<line/>";
    document += "</svg>";
    uint32_t polygons = 0;
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, size_t{512} * 1024);
    const auto run = [&] {
        Session session{TZSVG_MODULE};  // its thread is this one
        const ScenePtr scene = session.host.makeScene();
        polygons = static_cast<uint32_t>(
            importFile(session.host, *scene, folder_.write("many.svg", document)).polygons);
    };
    pthread_t thread{};
    auto work = std::function<void()>(run);
    const auto start = [](void* context) -> void* {
        (*static_cast<std::function<void()>*>(context))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, start, &work), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    EXPECT_EQ(polygons, static_cast<uint32_t>(kSiblings));
}

}  // namespace
}  // namespace tzhost
