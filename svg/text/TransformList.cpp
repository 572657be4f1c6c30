// Tested by tests/text/ListsTest.cpp.
#include "svg/text/TransformList.h"

#include <array>
#include <cmath>

#include "svg/text/NumberReader.h"

namespace tzsvg {
namespace {

using Values = std::vector<double>;

// The tangent of an angle in degrees, in single precision from the angle in radians on.
double skewFactor(double degrees) {
    return static_cast<double>(std::tan(static_cast<float>(degrees * 0.017453292519943295)));
}

struct Function {
    QStringView keyword;
    int required;
    int optional;
    QTransform (*build)(const Values& values);
};

// In the order in which the keywords are tested; no word boundary is required behind them.
const std::array<Function, 6> kFunctions = {{
    {u"skewX", 1, 0, [](const Values& v) { return QTransform().shear(skewFactor(v[0]), 0); }},
    {u"skewY", 1, 0, [](const Values& v) { return QTransform().shear(0, skewFactor(v[0])); }},
    {u"scale", 1, 1, [](const Values& v) { return QTransform().scale(v[0], v.back()); }},
    // translate(5) moves by (5, 5), not by (5, 0) as usual. Meant so, for drawings that were made to it;
    // TransformList/translateOne pins it.
    {u"translate", 1, 1, [](const Values& v) { return QTransform().translate(v[0], v.back()); }},
    {u"rotate", 1, 2,
     [](const Values& v) {
         if (v.size() == 1) return QTransform().rotate(v[0], Qt::ZAxis);
         return QTransform().translate(v[1], v[2]).rotate(v[0], Qt::ZAxis).translate(-v[1], -v[2]);
     }},
    {u"matrix", 6, 0, [](const Values& v) { return QTransform(v[0], v[1], v[2], v[3], v[4], v[5]); }},
}};

const Function* functionAt(QStringView text, qsizetype position) {
    const QStringView rest = text.mid(position);
    for (const Function& function : kFunctions) {
        if (rest.startsWith(function.keyword)) return &function;
    }
    return nullptr;
}

bool parseFunctions(QStringView text, std::vector<QTransform>& functions) {
    if (text.isEmpty()) return false;
    Values values;
    for (qsizetype position = 0; position < text.size();) {
        skipWhiteSpace(text, position);
        const Function* const function = functionAt(text, position);
        if (!function) return false;
        position += function->keyword.size();
        if (!parseArgumentList(text, position, function->required, function->optional, values)) return false;
        // A centre of rotation has two coordinates or is absent.
        if (function->optional == 2 && values.size() == 2) return false;
        functions.push_back(function->build(values));
    }
    return true;
}

}  // namespace

bool parseArgumentList(QStringView text, qsizetype& position, int required, int optional, Values& values) {
    values.clear();
    const auto isNext = [&](QChar c) { return position < text.size() && text.at(position) == c; };
    const auto readOne = [&] {
        double value = 0.0;
        if (!scanNumber(text, position, value)) return false;
        values.push_back(value);
        return true;
    };
    const auto fail = [&] {
        values.clear();
        return false;
    };

    skipWhiteSpace(text, position);
    if (!isNext(u'(')) return fail();
    ++position;
    for (int i = 0; i < required; ++i) {
        if (!readOne()) return fail();
    }
    skipWhiteSpace(text, position);
    if (position >= text.size()) return fail();
    // Without optional numbers one character is consumed, whatever it is: matrix(1 0 0 1 0 0 7) takes the 7
    // for the end and then fails on ")". Meant so: what was refused stays refused, it would move drawings
    // otherwise. TransformList/refused pins it.
    if (isNext(u')') || optional == 0) {
        ++position;
        return true;
    }
    for (int i = 0; i < optional; ++i) {
        if (!readOne()) return fail();
        skipWhiteSpace(text, position);
        if (isNext(u')')) {
            ++position;
            return true;
        }
    }
    return fail();
}

bool parseTransformList(QStringView text, QTransform& transform) {
    transform.reset();
    QString blanks = text.toString();
    blanks.replace(u',', u' ');  // commas act exactly like white space, anywhere
    std::vector<QTransform> functions;
    if (!parseFunctions(blanks, functions)) return false;
    for (auto function = functions.rbegin(); function != functions.rend(); ++function)
        transform = transform * *function;
    return true;
}

}  // namespace tzsvg
