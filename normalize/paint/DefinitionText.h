// Values of definitions as text, and the keys by which equal definitions are found again.
#pragma once

#include <string>

#include "normalize/document/SourceElement.h"
#include "normalize/geometry/Matrix.h"

namespace tznormalize {

// "matrix(1 0 0 1 5 0)".
std::string matrixText(const Matrix& matrix);

// "translate(0 12)": what moves lifted content down again.
std::string lowering(double lift);

// "url(#id)".
std::string urlTo(const std::string& id);

// Collects what a definition is made from; numbers count as equal when they differ by less than any eye sees.
class DefinitionKey {
  public:
    DefinitionKey(const char* kind, const SourceElement& element);
    DefinitionKey& add(double value);
    DefinitionKey& add(const Matrix& matrix);
    const std::string& text() const { return text_; }

  private:
    std::string text_;
};

}  // namespace tznormalize
