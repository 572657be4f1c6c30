// What the package of one mesh keeps of a document. Read once for each mesh, before the document is built.
#pragma once

#include <QString>
#include <optional>
#include <string>

namespace tzsvg {

class SVGSaver;

struct StoredTexts {
    std::string doctype;  // goes to the file as it is
    QString root;
    QString definitions;
    QString clipPaths;
    QString groups;
    QString illustratorData;
};

// The texts of the saver's current item; nothing when it does not carry the package. A channel that does not
// exist reads as empty; one that cannot be read throws CTzError(kTzFailed), whatever the host's code is.
std::optional<StoredTexts> readStoredTexts(const SVGSaver& saver);

}  // namespace tzsvg
