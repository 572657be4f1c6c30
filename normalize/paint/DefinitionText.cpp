#include "normalize/paint/DefinitionText.h"

#include "normalize/write/Grid.h"

namespace tznormalize {
namespace {

constexpr int kMatrixDigits = 10;
constexpr int kKeyDigits = 8;

}  // namespace

std::string matrixText(const Matrix& matrix) {
    std::string out = "matrix(";
    for (const double value : {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f}) {
        if (out.back() != '(') out += ' ';
        appendShortNumber(out, value, kMatrixDigits);
    }
    return out += ')';
}

std::string lowering(double lift) {
    return "translate(0 " + shortNumber(lift, kMatrixDigits) + ')';
}

std::string urlTo(const std::string& id) {
    return "url(#" + id + ')';
}

DefinitionKey::DefinitionKey(const char* kind, const SourceElement& element)
    : text_(kind + std::to_string(element.index())) {}

DefinitionKey& DefinitionKey::add(double value) {
    text_ += ' ';
    appendShortNumber(text_, value, kKeyDigits);
    return *this;
}

DefinitionKey& DefinitionKey::add(const Matrix& matrix) {
    return add(matrix.a).add(matrix.b).add(matrix.c).add(matrix.d).add(matrix.e).add(matrix.f);
}

}  // namespace tznormalize
