// The C entry of libtznormalize.so: see tznormalize.h.
#include <QFile>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string_view>

#include "normalize/NotesJson.h"
#include "normalize/check/Check.h"
#include "normalize/check/CheckJson.h"
#include "normalize/tznormalize.h"
#include "svg/tree/DocumentText.h"

namespace tznormalize {
namespace {

// A copy that free() takes; false when there is no memory.
bool copyText(std::string_view text, char*& copy, size_t& size) {
    copy = static_cast<char*>(std::malloc(text.size() + 1));
    if (!copy) return false;
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    size = text.size();
    return true;
}

constexpr size_t kMostBytes = size_t{1} << 30;

int run(const char* fileName, const void* bytes, size_t size, WrittenFor writtenFor,
        TzNormalizeResult& result) {
    if ((!fileName && !bytes) || (bytes && size > kMostBytes)) return TZNORMALIZE_FAILED;
    const QString name = QString::fromUtf8(fileName);
    const Normalized normalized =
        bytes ? normalize(QByteArray(static_cast<const char*>(bytes), int(size)), name, writtenFor)
              : normalizeFile(name, writtenFor);
    if (!copyText(notesJson(normalized, name), result.notes, result.notesSize)) return TZNORMALIZE_FAILED;
    if (normalized.refused) return TZNORMALIZE_REFUSED;
    const std::string_view document(normalized.document.constData(), size_t(normalized.document.size()));
    return copyText(document, result.document, result.documentSize) ? TZNORMALIZE_OK : TZNORMALIZE_FAILED;
}

int check(const char* fileName, const void* bytes, size_t size, bool asImage, TzNormalizeResult& result) {
    if ((!fileName && !bytes) || (bytes && size > kMostBytes)) return TZNORMALIZE_FAILED;
    const QString name = QString::fromUtf8(fileName);
    QByteArray content;
    CheckReport report;
    if (bytes) content = QByteArray(static_cast<const char*>(bytes), int(size));
    if (!bytes && !tzsvg::readFileBytes(name, content)) {
        report = unreadableFile();
    } else {
        report = asImage ? checkImage(content, name) : checkDrawing(content);
    }
    return copyText(checkJson(report, name), result.notes, result.notesSize) ? TZNORMALIZE_OK
                                                                             : TZNORMALIZE_FAILED;
}

// The frame of every entry: what fails leaves an empty result.
template <class Work>
int guarded(TzNormalizeResult* result, Work work) {
    if (!result) return TZNORMALIZE_FAILED;
    *result = {};
    int code = TZNORMALIZE_FAILED;
    try {
        code = work(*result);
    } catch (...) {
        // There is no more to say than that it failed.
    }
    if (code == TZNORMALIZE_FAILED) tzNormalizeFree(result);
    return code;
}

}  // namespace
}  // namespace tznormalize

#define TZNORMALIZE_EXPORT extern "C" __attribute__((visibility("default")))

TZNORMALIZE_EXPORT int tzNormalize(const char* fileName, const void* bytes, size_t size, int asImage,
                                   TzNormalizeResult* result) {
    const auto writtenFor =
        asImage != 0 ? tznormalize::WrittenFor::kImage : tznormalize::WrittenFor::kRoundTrip;
    return tznormalize::guarded(result, [&](TzNormalizeResult& out) {
        return tznormalize::run(fileName, bytes, size, writtenFor, out);
    });
}

TZNORMALIZE_EXPORT int tzCheckDrawing(const char* fileName, const void* bytes, size_t size, int asImage,
                                      TzNormalizeResult* result) {
    return tznormalize::guarded(result, [&](TzNormalizeResult& out) {
        return tznormalize::check(fileName, bytes, size, asImage != 0, out);
    });
}

TZNORMALIZE_EXPORT void tzNormalizeFree(TzNormalizeResult* result) {
    if (!result) return;
    std::free(result->document);
    std::free(result->notes);
    *result = {};
}
