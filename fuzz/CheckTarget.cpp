// Fuzz target: a whole drawing through the check. What it says of the import is what the module does, and a
// drawing that is refused as an image is looked at for the reason.
#include <cstdio>
#include <cstdlib>

#include "fuzz/FuzzHost.h"
#include "host/ImageLoading.h"
#include "host/SceneLoading.h"
#include "normalize/check/Check.h"

namespace {

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace tzfuzz;
    FuzzHost& fuzz = FuzzHost::get();
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const auto in = fuzz.file("in.svg", asText(data, size));
    const tznormalize::CheckReport report = tznormalize::checkDrawing(bytes);
    const tzhost::ScenePtr scene = fuzz.host().makeScene();
    const bool isImported = FuzzHost::orRefused([&] { tzhost::importFile(fuzz.host(), *scene, in); });
    require(report.isImported || !isImported, "what is imported is said to be refused");
    require(isImported || !report.isImported, "what is refused is said to be imported");
    require(report.isRefused() == (report.reason() != nullptr), "a refusal without a reason");
    require(report.findings.size() <= tznormalize::CheckReport::kMostFindings, "findings without end");
    if (FuzzHost::orRefused([&] { tzhost::loadImage(fuzz.host(), in); })) return 0;
    tznormalize::checkImage(bytes, QString::fromStdString(in.native()));
    return 0;
}
