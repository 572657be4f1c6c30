// Drawings made of a content, normalized, where not only the look matters but what they become and what is
// noted.
#pragma once

#include "normalize/Normalize.h"

namespace tznormalize {

inline Normalized normalizedPage(const QByteArray& content, const QString& fileName = QString()) {
    return normalize(
        "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
        "width='200' height='100'>" +
            content + "</svg>",
        fileName);
}

inline int notesWith(const Normalized& result, const char* text) {
    int count = 0;
    for (const Note& note : result.notes.list()) count += note.text.contains(QLatin1String(text));
    return count;
}

}  // namespace tznormalize
