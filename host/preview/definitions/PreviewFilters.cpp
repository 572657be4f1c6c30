#include "host/preview/definitions/PreviewFilters.h"

#include <QColor>
#include <QHash>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

#include "host/preview/PreviewText.h"

namespace tzhost {
namespace {

using Element = PreviewDefinitions::Element;

constexpr int kMostSteps = 32;
constexpr int64_t kMostWork = int64_t{1} << 31;
constexpr int kFarthest = 4096;  // pixels

bool isNamed(const Element& element, const char* name) {
    return element.name == QLatin1String(name);
}

// A number or two of them, in pixels: the second is the first where it is missing.
QPointF inPixels(const QString& text, const QTransform& toPixels) {
    const std::vector<double> numbers = readNumbers(text, 2);
    const double x = numbers.empty() ? 0.0 : numbers.front() * std::abs(toPixels.m11());
    const double y = numbers.empty() ? 0.0 : numbers.back() * std::abs(toPixels.m22());
    const auto bounded = [](double value) {
        return std::isfinite(value) ? std::clamp(value, -1.0 * kFarthest, 1.0 * kFarthest) : 0.0;
    };
    return {bounded(x), bounded(y)};
}

QPointF offsetOf(const Element& step, const QTransform& toPixels) {
    return {inPixels(step.attribute("dx"), toPixels).x(), inPixels(step.attribute("dy"), toPixels).y()};
}

// How many pixels each of the three boxes has that together stand for a Gaussian curve.
int boxSide(double deviation) {
    constexpr double kTwoPi = 6.283185307179586;
    return static_cast<int>(std::lround(std::max(0.0, deviation) * 3.0 * std::sqrt(kTwoPi) / 4.0));
}

// Averages each pixel of a line with those around it: `side` of them, the first `before` pixels back.
void averageLine(const QRgb* from, QRgb* to, int count, qsizetype stride, int side, int before) {
    std::array<int64_t, 4> sum{};
    const auto add = [&](int i, int64_t sign) {
        if (i < 0 || i >= count) return;
        const QRgb pixel = from[i * stride];
        sum[0] += sign * qRed(pixel);
        sum[1] += sign * qGreen(pixel);
        sum[2] += sign * qBlue(pixel);
        sum[3] += sign * qAlpha(pixel);
    };
    for (int i = -before; i < side - before; ++i) add(i, 1);
    for (int i = 0; i < count; ++i) {
        const auto mean = [&](int64_t channel) { return static_cast<int>((channel + side / 2) / side); };
        to[i * stride] = qRgba(mean(sum[0]), mean(sum[1]), mean(sum[2]), mean(sum[3]));
        add(i - before, -1);
        add(i - before + side, 1);
    }
}

QImage blurred(QImage image, const QPointF& deviation) {
    const qsizetype stride = image.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb));
    for (const bool isAcross : {true, false}) {
        const int side = boxSide(isAcross ? deviation.x() : deviation.y());
        if (side < 2) continue;
        for (int box = 0; box < 3; ++box) {
            // Boxes of an even number of pixels lie once to the left, once to the right; the last is one
            // larger.
            const int wide = side % 2 == 0 && box == 2 ? side + 1 : side;
            const int before = side % 2 == 0 && box == 1 ? side / 2 - 1 : wide / 2;
            QImage next(image.size(), image.format());
            const auto* const from = reinterpret_cast<const QRgb*>(image.constBits());
            auto* const to = reinterpret_cast<QRgb*>(next.bits());
            const int lines = isAcross ? image.height() : image.width();
            for (int line = 0; line < lines; ++line) {
                const qsizetype first = isAcross ? line * stride : line;
                averageLine(from + first, to + first, isAcross ? image.width() : image.height(),
                            isAcross ? 1 : stride, wide, before);
            }
            image = next;
        }
    }
    return image;
}

// Four rows of five: red, green, blue, alpha, each of the former four and one.
using ColourMatrix = std::array<double, 20>;

constexpr ColourMatrix kSameColours = {1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0};

QImage recoloured(const QImage& image, const ColourMatrix& matrix) {
    QImage out = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < out.height(); ++y) {
        auto* const line = reinterpret_cast<QRgb*>(out.scanLine(y));
        for (int x = 0; x < out.width(); ++x) {
            const std::array<int, 4> old = {qRed(line[x]), qGreen(line[x]), qBlue(line[x]), qAlpha(line[x])};
            std::array<int, 4> made{};
            for (size_t row = 0; row < 4; ++row) {
                double sum = matrix[row * 5 + 4] * 255.0;
                for (size_t i = 0; i < 4; ++i) sum += matrix[row * 5 + i] * old[i];
                made[row] = static_cast<int>(std::lround(std::clamp(sum, 0.0, 255.0)));
            }
            line[x] = qRgba(made[0], made[1], made[2], made[3]);
        }
    }
    return out.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

// Nothing when it is not linear.
std::optional<ColourMatrix> colourMatrix(const PreviewDefinitions& definitions, int index) {
    const Element& step = definitions.elements()[static_cast<size_t>(index)];
    ColourMatrix matrix = kSameColours;
    if (isNamed(step, "feColorMatrix")) {
        const QString type = step.attribute("type");
        const std::vector<double> values = readNumbers(step.attribute("values"), matrix.size());
        if ((!type.isEmpty() && type != QLatin1String("matrix")) || values.size() != matrix.size())
            return std::nullopt;
        std::copy(values.begin(), values.end(), matrix.begin());
    }
    constexpr const char* kChannels[] = {"feFuncR", "feFuncG", "feFuncB", "feFuncA"};
    for (int child = index + 1; child < step.end; ++child) {
        const Element& function = definitions.elements()[static_cast<size_t>(child)];
        const QString type = function.attribute("type");
        for (size_t row = 0; row < 4; ++row) {
            if (!isNamed(function, kChannels[row]) || type == QLatin1String("identity")) continue;
            if (type != QLatin1String("linear")) return std::nullopt;
            matrix[row * 6] = leadingNumber(function.attribute("slope")).value_or(1.0);
            matrix[row * 5 + 4] = leadingNumber(function.attribute("intercept")).value_or(0.0);
        }
    }
    const bool isFinite =
        std::all_of(matrix.begin(), matrix.end(), [](double value) { return std::isfinite(value); });
    return isFinite ? std::optional<ColourMatrix>(matrix) : std::nullopt;
}

std::optional<QPainter::CompositionMode> compositionMode(const Element& step) {
    static const QHash<QString, QPainter::CompositionMode> kModes = {
        {QString(), QPainter::CompositionMode_SourceOver},
        {QStringLiteral("over"), QPainter::CompositionMode_SourceOver},
        {QStringLiteral("in"), QPainter::CompositionMode_SourceIn},
        {QStringLiteral("out"), QPainter::CompositionMode_SourceOut},
        {QStringLiteral("atop"), QPainter::CompositionMode_SourceAtop},
        {QStringLiteral("xor"), QPainter::CompositionMode_Xor},
        {QStringLiteral("normal"), QPainter::CompositionMode_SourceOver},
        {QStringLiteral("multiply"), QPainter::CompositionMode_Multiply},
        {QStringLiteral("screen"), QPainter::CompositionMode_Screen},
        {QStringLiteral("darken"), QPainter::CompositionMode_Darken},
        {QStringLiteral("lighten"), QPainter::CompositionMode_Lighten},
    };
    const auto found = kModes.constFind(step.attribute(isNamed(step, "feBlend") ? "mode" : "operator"));
    return found == kModes.constEnd() ? std::nullopt : std::optional<QPainter::CompositionMode>(*found);
}

// Runs the steps of a filter over a picture.
class FilterRun {
  public:
    FilterRun(const PreviewDefinitions& definitions, const QImage& source, const QTransform& toPixels)
        : definitions_(definitions), source_(source), last_(source), toPixels_(toPixels) {}

    void run(int index) {
        const Element& step = definitions_.elements()[static_cast<size_t>(index)];
        if (isNamed(step, "feGaussianBlur")) {
            last_ = blurred(input(step, "in"), inPixels(step.attribute("stdDeviation"), toPixels_));
        } else if (isNamed(step, "feOffset")) {
            last_ = painted({}, input(step, "in"), offsetOf(step, toPixels_));
        } else if (isNamed(step, "feFlood")) {
            QColor colour(step.attribute("flood-color"));
            if (!colour.isValid()) colour = Qt::black;
            colour.setAlphaF(colour.alphaF() * readOpacity(step.attribute("flood-opacity")));
            last_ = QImage(source_.size(), source_.format());
            last_.fill(colour);
        } else if (isNamed(step, "feMerge")) {
            QImage merged;
            for (int node = index + 1; node < step.end; ++node) {
                merged = painted(merged, input(definitions_.elements()[static_cast<size_t>(node)], "in"));
            }
            last_ = merged.isNull() ? painted({}, {}) : merged;
        } else if (const auto matrix = colourMatrix(definitions_, index);
                   matrix && (isNamed(step, "feColorMatrix") || isNamed(step, "feComponentTransfer"))) {
            last_ = recoloured(input(step, "in"), *matrix);
        } else if (const auto mode = compositionMode(step)) {
            last_ = painted(input(step, "in2"), input(step, "in"), {}, *mode);
        }
        results_.insert(step.attribute("result"), last_);
    }

    const QImage& last() const { return last_; }

  private:
    QImage input(const Element& step, const char* name) const {
        const QString from = step.attribute(name);
        if (from == QLatin1String("SourceGraphic")) return source_;
        if (from == QLatin1String("SourceAlpha")) {
            return recoloured(source_, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0});
        }
        return from.isEmpty() ? last_ : results_.value(from, last_);
    }

    // Paints one picture over another; those that are null are transparent.
    QImage painted(QImage below, const QImage& above, const QPointF& offset = {},
                   QPainter::CompositionMode mode = QPainter::CompositionMode_SourceOver) const {
        if (below.isNull()) {
            below = QImage(source_.size(), source_.format());
            below.fill(Qt::transparent);
        }
        QPainter painter(&below);
        painter.setCompositionMode(mode);
        painter.drawImage(offset, above);
        return below;
    }

    const PreviewDefinitions& definitions_;
    const QImage source_;
    QImage last_;
    const QTransform toPixels_;
    QHash<QString, QImage> results_;
};

// The steps of a filter, in order.
std::vector<int> stepsOf(const PreviewDefinitions& definitions, int filter) {
    std::vector<int> steps;
    const auto& elements = definitions.elements();
    for (int i = filter + 1; filter >= 0 && i < elements[static_cast<size_t>(filter)].end;
         i = elements[static_cast<size_t>(i)].end) {
        steps.push_back(i);
    }
    return steps;
}

}  // namespace

bool PreviewFilters::canDraw(const QString& id) const {
    if (id.isEmpty()) return false;
    const std::vector<int> steps = stepsOf(definitions_, definitions_.find(id, {"filter"}));
    if (steps.empty() || steps.size() > kMostSteps) return false;
    const auto& filter = definitions_.elements()[static_cast<size_t>(steps.front() - 1)];
    if (filter.attribute("primitiveUnits") == QLatin1String("objectBoundingBox")) return false;
    return std::all_of(steps.begin(), steps.end(), [&](int index) {
        const Element& step = definitions_.elements()[static_cast<size_t>(index)];
        if (isNamed(step, "feColorMatrix") || isNamed(step, "feComponentTransfer")) {
            return colourMatrix(definitions_, index).has_value();
        }
        if (isNamed(step, "feComposite") || isNamed(step, "feBlend"))
            return compositionMode(step).has_value();
        return isNamed(step, "feGaussianBlur") || isNamed(step, "feOffset") || isNamed(step, "feFlood") ||
               isNamed(step, "feMerge");
    });
}

int PreviewFilters::reach(const QString& id, const QTransform& toPixels) const {
    double pixels = 1.0;
    for (const int index : stepsOf(definitions_, definitions_.find(id, {"filter"}))) {
        const Element& step = definitions_.elements()[static_cast<size_t>(index)];
        const QPointF deviation = inPixels(step.attribute("stdDeviation"), toPixels);
        const QPointF offset = offsetOf(step, toPixels);
        pixels += 3.0 * std::max(deviation.x(), deviation.y()) +
                  std::max(std::abs(offset.x()), std::abs(offset.y()));
    }
    return static_cast<int>(std::min(pixels, 1.0 * kFarthest));
}

QImage PreviewFilters::filtered(const QString& id, const QImage& part, const QPoint& at,
                                const QTransform& toPixels) {
    const int filter = definitions_.find(id, {"filter"});
    const std::vector<int> steps = stepsOf(definitions_, filter);
    const int64_t work = int64_t{part.width()} * part.height() * static_cast<int64_t>(steps.size());
    if (work > kMostWork - worked_) return part;
    worked_ += work;
    FilterRun run(definitions_, part, toPixels);
    for (const int step : steps) run.run(step);
    const Element& element = definitions_.elements()[static_cast<size_t>(filter)];
    if (element.attribute("filterUnits") != QLatin1String("userSpaceOnUse")) return run.last();
    // Beyond its region nothing is left.
    const auto number = [&](const char* name) {
        return leadingNumber(element.attribute(name)).value_or(0.0);
    };
    const QRectF region =
        toPixels.mapRect(QRectF(number("x"), number("y"), number("width"), number("height")));
    QImage out(part.size(), part.format());
    out.fill(Qt::transparent);
    QPainter painter(&out);
    painter.setClipRect(region.translated(-at));
    painter.drawImage(0, 0, run.last());
    return out;
}

}  // namespace tzhost
