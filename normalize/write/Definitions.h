// The definitions and clip paths written so far: names for them, what is known already, and which of them are
// used in the end.
#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "normalize/document/SourceDocument.h"
#include "normalize/write/OutputElement.h"

namespace tznormalize {

class Definitions {
  public:
    explicit Definitions(const SourceDocument& source) : source_(source) {}

    // A name that nothing in the source or the result has. The definition that an element of the source
    // becomes first takes the element's own id: so normalized input keeps its names, and nothing else can
    // have them. Further ones of it (for another matrix, say) and those of no element get `stem` and a
    // number.
    std::string freshName(const char* stem, const SourceElement* origin = nullptr);

    // Goes into `defs`, in the order of these calls: what it refers to first. The element carries its id.
    void define(OutputElement element);

    // Goes beside `defs`, under the root. [trap: clip paths inside of `defs` double with each round trip]
    void defineClip(OutputElement clipPath);

    // What was made of something before: a key of the caller's to a value of the caller's ("url(#paint3)").
    const std::string* known(const std::string& key) const;
    void remember(std::string key, std::string value);

    // Moves `defs`, then clip paths into `root`: those that `drawn` refers to, directly or through others.
    void moveUsed(const OutputElement& drawn, OutputElement& root);

  private:
    const SourceDocument& source_;
    std::unordered_set<std::string> names_;
    int count_ = 0;
    std::vector<OutputElement> definitions_;
    std::vector<OutputElement> clips_;
    std::unordered_map<std::string, std::string> known_;
};

// An id that can be written and referred to: characters that end references or tags become "_".
std::string cleanId(QStringView id);

}  // namespace tznormalize
