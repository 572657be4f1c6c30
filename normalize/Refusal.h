// Why a drawing cannot be normalized.
#pragma once

#include <QString>

namespace tznormalize {

enum class Refusal {
    kNone,
    kNotSvg,         // no svg element at the root
    kNotWellFormed,  // line, column and text say where and why
    kTooDeep,
    kTooManyElements,  // in the text, or after `use` was expanded
    kTooLarge,         // more text than any drawing has, or more than its bytes may expand to
    kUnreadable,       // the file cannot be read, or its compression is broken
};

struct Reason {
    Refusal refusal = Refusal::kNone;
    QString text;     // one line, without the file's name
    qint64 line = 0;  // 0: of the whole file
    qint64 column = 0;

    explicit operator bool() const { return refusal != Refusal::kNone; }
};

}  // namespace tznormalize
