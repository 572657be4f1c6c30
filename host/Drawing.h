// A drawing that is to be loaded: the file that the user named, and what loaders are given to read. Every
// import and every image begins with one; a path is one that is loaded as it is.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <type_traits>

#include "host/Normalizer.h"

namespace tzhost {

class Drawing {
  public:
    Drawing() = default;  // of no file

    // The file as it is. Implicit: a path converts to a drawing.
    template <class Name, class = std::enable_if_t<std::is_convertible_v<const Name&, std::filesystem::path>>>
    Drawing(const Name& file) : file_(file) {}

    // Normalized first. Loaders read a private file in memory, which lives as long as the last copy of this
    // object. Throws what normalizeFile() does. The notes are those of the first time.
    static Drawing normalized(const std::filesystem::path& file);

    // As the user named it; for messages, too.
    const std::filesystem::path& file() const { return file_; }
    const std::string& name() const { return file_.native(); }

    // What loaders open.
    const std::string& readName() const;

    // Null when it is not normalized.
    const NormalizedText* normalization() const;

    // Normalizes it anew when the file has changed since; an image then shows the new drawing, as it does of
    // a file that is loaded as it is. A changed file that is refused, half written say, leaves the former
    // drawing. Costs a look at the file's state; called before tiles are fetched. [any thread]
    void refresh() const;

  private:
    class NormalizedCopy;

    std::filesystem::path file_;
    std::shared_ptr<NormalizedCopy> copy_;
};

}  // namespace tzhost
