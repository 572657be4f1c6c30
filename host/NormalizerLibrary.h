// libtznormalize.so, loaded when it is needed first: it uses Qt, which this library does not. Used by
// Normalizer and Checker.
#pragma once

#include <filesystem>
#include <string>

#include "host/io/Json.h"
#include "normalize/tznormalize.h"

namespace tzhost {

// A further folder to look for it in, first; the last one that was named. It is beside the module, as a rule;
// else beside this code, or among the system's libraries.
void lookForNormalizerIn(const std::filesystem::path& folder);

// Its functions. The library stays for as long as the process.
struct NormalizerLibrary {
    TzNormalizeFunction normalize = nullptr;
    TzCheckFunction check = nullptr;
    TzNormalizeFreeFunction free = nullptr;

    // Throws OperationError, step "load normalizer", when there is none. [any thread]
    static const NormalizerLibrary& loaded();
};

// What one of them answered.
class NormalizerResult {
  public:
    explicit NormalizerResult(const NormalizerLibrary& library) : library_(library) {}
    ~NormalizerResult() { library_.free(&result_); }
    NormalizerResult(const NormalizerResult&) = delete;
    NormalizerResult& operator=(const NormalizerResult&) = delete;

    TzNormalizeResult* get() { return &result_; }
    std::string document() const { return {result_.document, result_.documentSize}; }
    std::string notes() const { return {result_.notes, result_.notesSize}; }

  private:
    const NormalizerLibrary& library_;
    TzNormalizeResult result_ = {};
};

// A text of an object of its JSON.
std::string textOf(const rapidjson::Value& object, const char* key);

}  // namespace tzhost
