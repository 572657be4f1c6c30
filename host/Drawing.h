// A drawing that is to be loaded: the file that the user named, and what loaders are given to read. Every
// import and every image begins with one; a path is one that is loaded as it is.
#pragma once

#include <memory>
#include <string>
#include <type_traits>

#include "host/Normalizer.h"
#include "host/io/InputFile.h"

namespace tzhost {

class Drawing {
  public:
    Drawing() = default;  // of no file

    // The file as it is. Implicit: a path converts to a drawing.
    template <class Name, class = std::enable_if_t<std::is_convertible_v<const Name&, InputFile>>>
    Drawing(const Name& file) : file_(file) {}

    // Normalized first. Loaders read a private file in memory, which lives as long as the last copy of this
    // object. Throws what normalizeFile() does. The notes are those of the first time.
    static Drawing normalized(const InputFile& file, Purpose purpose);

    const InputFile& file() const { return file_; }
    // For messages: as the user named it.
    const std::string& name() const { return file_.name(); }

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

    InputFile file_;
    std::shared_ptr<NormalizedCopy> copy_;
};

}  // namespace tzhost
