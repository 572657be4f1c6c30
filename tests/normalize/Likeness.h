// Pictures before and after: what the normalizer promises is that a drawing looks the same, which only a
// renderer can tell. librsvg draws both (rsvg-convert).
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

namespace tznormalize {

// What of a drawing does not look as it did after it was normalized, after the round trip of that through
// the module, or written for an image, or what is not the same text after normalizing once more; empty when
// all is well.
QString whatDiffers(const QByteArray& drawing);

// The same for the content of an svg element of 100 by 100 units, written with the XLink namespace declared.
QString whatDiffersInPage(const QByteArray& content);

// Fails for each content that differs.
struct AlikeRow {
    const char* name;
    const char* content;
};
void expectAlike(const std::vector<AlikeRow>& rows);

// The same with definitions, which the content uses.
struct DefinedRow {
    const char* name;
    const char* definition;
    const char* content;
};
void expectDefinedAlike(const std::vector<DefinedRow>& rows);

}  // namespace tznormalize
