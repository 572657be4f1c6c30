// Rewrites any drawing into the form that survives an import and an export. This is the one entry of the
// library; the stages behind it are the folders, in the order of the data:
//
//     document   bytes to a tree with lines and columns
//     style      style sheets, attributes and inheritance to the values that hold for an element
//     text       readers of attribute text: numbers, lengths, path data, transforms
//     geometry   matrices, paths, outlines of shapes and strokes
//     convert    the walk: groups, shapes, use, nested svg, switch, the page
//     paint      gradients, patterns, clip paths, masks, filters, markers
//     content    text as outlines, images
//     write      the elements that are written, and their text
//
// The same input gives the same bytes. What comes out, fed in again, comes out equal.
#pragma once

#include <QByteArray>
#include <QString>

#include "normalize/Notes.h"
#include "normalize/Refusal.h"
#include "normalize/convert/WrittenFor.h"

namespace tznormalize {

struct Normalized {
    QByteArray document;  // UTF-8, one line; empty when refused
    Notes notes;
    Reason refused;
};

// Normalizes a drawing, plain or gzip-compressed. Linked pictures are looked for beside `fileName`, which may
// be empty: then none is carried. [any thread]; makes a QGuiApplication when there is text and no application
// yet.
Normalized normalize(const QByteArray& bytes, const QString& fileName,
                     WrittenFor writtenFor = WrittenFor::kRoundTrip);
Normalized normalizeFile(const QString& fileName, WrittenFor writtenFor);

}  // namespace tznormalize
