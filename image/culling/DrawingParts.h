// The text of a drawing cut into parts, so that a smaller drawing can be put together from some of them: the
// root's tag, the groups around what is taken, and what it refers to come along as they were written. Made
// once per drawing by CellRenderers; pure.
#pragma once

#include <QByteArray>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tzsvg {

struct DrawingPart {
    enum class Kind : uint8_t {
        kGroup,  // `g`: there when something in it is
        kDefs,   // `defs`: the same
        kShape,  // an element that may be left out where it paints nothing
        kEmpty,  // a shape that paints nothing, wherever it is: never there
        kPaint,  // a gradient with an ID: there when something refers to it
        kKept,   // anything else, with all that is in it: always there
    };
    static constexpr uint32_t kRoot = UINT32_MAX;  // the parent of the outermost parts

    Kind kind = Kind::kKept;
    uint32_t parent = kRoot;
    uint32_t next = 0;  // the first part that is not inside this one
    // Where it stands in the text. A group's content is from `inside` to `outside`.
    uint32_t begin = 0;
    uint32_t inside = 0;
    uint32_t outside = 0;
    uint32_t end = 0;
    // The paints that it refers to, in DrawingParts::references().
    uint32_t firstReference = 0;
    uint32_t pastReferences = 0;
};

class DrawingParts {
  public:
    // Nothing when leaving out a shape of this drawing might change what the others look like
    // (CullingRules.h). `xml` is a document that DocumentGuard has accepted.
    static std::optional<DrawingParts> of(const QByteArray& xml);

    // In the order of the document: a group stands before what is in it.
    const std::vector<DrawingPart>& parts() const { return parts_; }
    const std::vector<uint32_t>& references() const { return references_; }

    // The indices of the parts of a kind.
    const std::vector<uint32_t>& shapes() const { return shapes_; }

    // Whether nothing is painted but shapes(), each of them, if it is displayed, begun with one fill, seen or
    // not; and no group moves them.
    bool isFilledInOrder() const { return isFilledInOrder_; }

    // The parts that every smaller drawing has, in order: what is kept, what it refers to, and the groups
    // around them.
    const std::vector<uint32_t>& always() const { return always_; }

    // Those, the shapes given, and whatever these refer to and stand in, in order.
    std::vector<uint32_t> with(const std::vector<uint32_t>& shapes) const;

    // The text of the drawing that has just these parts; `parts` is in order and has the groups around them.
    // With `marked`, every group and every shape comes after a marker (marker(), the part's index), and so
    // does what is kept (kNoPart).
    QByteArray text(const std::vector<uint32_t>& parts, bool marked = false) const;

    // A marker is a path that no drawing has: it goes from (index, kMarkerY) to (index, kMarkerY + 1).
    static constexpr double kMarkerY = -9876543.0;
    static constexpr std::string_view kMarkerDigits = "9876543";
    static constexpr uint32_t kNoPart = (1U << 24U) - 1;

  private:
    friend class PartScanner;
    DrawingParts() = default;

    void addAround(uint32_t part, std::vector<uint32_t>& parts) const;

    QByteArray xml_;
    uint32_t rootInside_ = 0;  // past the root's tag
    uint32_t rootOutside_ = 0;
    uint32_t rootEnd_ = 0;
    std::vector<DrawingPart> parts_;
    std::vector<uint32_t> references_;
    std::vector<uint32_t> shapes_;
    std::vector<uint32_t> always_;
    bool isFilledInOrder_ = false;
};

}  // namespace tzsvg
