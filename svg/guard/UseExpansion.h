// How far the `use` elements of a document multiply what is drawn. Filled by DocumentGuard, element by
// element; pure. The renderer follows every use anew each time it meets it, so a few lines can ask for
// billions of shapes.
#pragma once

#include <QHash>
#include <QString>
#include <cstdint>
#include <vector>

namespace tzsvg {

class UseExpansion {
  public:
    // An element begins, in document order; the innermost that has not ended ends.
    void begin();
    void end();

    // The element begun last has that ID; it is a use of the element of that ID.
    void claim(const QString& id);
    void use(const QString& id);

    // Whether all uses together add no more than kMaxUsedElements elements, nest no deeper than elements may,
    // and none leads back to itself. To be asked once, when all elements have ended.
    bool withinLimits();

    static constexpr int64_t kMaxUsedElements = int64_t{1} << 22;

  private:
    // An element, as the range of elements from itself to its last descendant.
    struct Range {
        int64_t first;
        int64_t past;
    };
    // Several elements may claim one ID: which of them the renderer takes is its own matter, so all count.
    struct Target {
        std::vector<Range> claims;
        int64_t cost;
    };
    struct Open {
        int64_t first;
        std::vector<int> targets;  // its IDs
    };
    struct Use {
        int64_t position;
        int target;
    };

    int targetOf(const QString& id);
    bool addCost(int target, int depth, int64_t& total);

    int64_t elements_ = 0;
    std::vector<Open> open_;
    QHash<QString, int> targetsById_;
    std::vector<Target> targets_;
    std::vector<Use> uses_;  // by position
};

}  // namespace tzsvg
