// What the checks for losses share.
#pragma once

#include "normalize/check/CheckedDocument.h"
#include "normalize/check/ImportRules.h"
#include "normalize/style/Cascade.h"
#include "normalize/text/Length.h"

namespace tznormalize {

struct LossContext {
    const CheckedDocument& document;
    const ImportedGeometry& geometry;
    const Cascade& cascade;
    Viewport viewport;  // of the root
    CheckReport& report;

    void add(FindingKind kind, const FindingRule& rule, const SourceElement& element, QStringView attribute,
             const QString& text) const {
        document.add(report, kind, rule, element.index(), attribute, text);
    }
};

}  // namespace tznormalize
