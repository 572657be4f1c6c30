#include "bench/exact/FeatureDrawings.h"

#include <array>

#include "bench/exact/RandomGeometry.h"

namespace tzbench {
namespace {

class Drawing : RandomGeometry {
  public:
    explicit Drawing(uint32_t number) : RandomGeometry(number), isPlain_(number % 5 == 2) {}

    std::string make() {
        static constexpr std::array<double, 6> kSides = {16, 24, 100, 256, 1000, 12345};
        width_ = height_ = kSides[below(6)];
        if (chance(3)) height_ = width_ * (0.1 + unit());
        if (chance(3)) originX_ = width_ * (unit() - 0.5) * 10;
        if (chance(3)) originY_ = height_ * (unit() - 0.5) * 10;
        gradients_ = below(12);
        entities_ = chance(8);
        styles_ = chance(4);
        texts_ = chance(4);
        visibility_ = chance(8);
        dashes_ = chance(3);
        uses_ = chance(3);
        nested_ = chance(8);
        far_ = chance(12);
        if (isPlain_) texts_ = visibility_ = uses_ = nested_ = false;
        hides_ = !isPlain_ || chance(4);
        writeStart();
        if (styles_) writeStyles();
        writeDefinitions();
        const uint32_t groups = 1 + below(12);
        for (uint32_t i = 0; i < groups; ++i) writeGroup(0);
        return text_ + "</svg>\n";
    }

  private:
    void add(const std::string& text) { text_ += text; }
    void writeStart() {
        if (entities_)
            add("<?xml version=\"1.0\"?><!DOCTYPE svg [<!ENTITY c \"#c04080\"><!ENTITY ns \"urn:x\">]>\n");
        add("<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\"");
        if (entities_) add(" xmlns:n=\"&ns;\"");
        if (!chance(6)) {
            add(attribute("width", width_ * (chance(8) ? 0.7 : 1)) + attribute("height", height_));
        }
        add(" viewBox=\"" + number(originX_) + " " + number(originY_) + " " + number(width_) + " " +
            number(height_) + "\"");
        if (chance(4)) add(attribute("fill", color()));
        if (chance(8)) add(attribute("stroke-width", size() * 0.1));
        add(">\n");
        if (chance(3)) add("<title>a &lt;b&gt;</title><!-- <g> --><metadata><x/></metadata>\n");
    }

    void writeStyles() {
        add("<style type=\"text/css\">");
        const bool isData = chance(2);
        if (isData) add("<![CDATA[");
        add(" /* a */ .a { fill: " + color() + "; stroke-width: " + number(size() * 0.05) +
            " } .b, #g0s0 { stroke: " + color() + " } g.c rect { opacity: 0.5 } ");
        if (chance(4)) add(" rect + path { fill: red } ");
        if (chance(4)) add(" g > :first-child { fill: blue } ");
        if (chance(4)) add(" circle { fill: url(#p0) } ");
        if (isData) add("]]>");
        add("</style>\n");
    }

    void writeDefinitions() {
        if (gradients_ > 0) {
            add("<defs>\n");
            for (uint32_t i = 0; i < gradients_; ++i) writeGradient(i);
            add("</defs>\n");
        }
        if (uses_) {
            add("<defs><g id=\"u0\">" + shape("") + shape("") + "</g>" + shape(" id=\"u1\"") + "</defs>\n");
            if (chance(3)) add("<symbol id=\"u2\">" + shape("") + "</symbol>");
        }
        if (chance(6))
            add("<defs><clipPath id=\"k0\">" + shape("") + "</clipPath><mask id=\"m0\">" + shape("") +
                "</mask></defs>");
        if (chance(6))
            add("<defs><marker id=\"r0\" orient=\"auto\">" + shape("") +
                "</marker><pattern id=\"t0\" width=\"0.1\" height=\"0.1\">" + shape("") +
                "</pattern></defs>");
    }

    void writeGradient(uint32_t index) {
        const bool isRadial = chance(2);
        std::string out = isRadial ? "<radialGradient" : "<linearGradient";
        out += attribute("id", chance(12) ? std::string("p0") : name("p", index));
        if (chance(3)) {
            out += attribute("gradientUnits", std::string("userSpaceOnUse"));
            out += isRadial ? attribute("cx", x()) + attribute("cy", y()) + attribute("r", size())
                            : attribute("x1", x()) + attribute("y1", y()) + attribute("x2", x());
        } else if (chance(2)) {
            out += isRadial ? " cx=\"30%\" fx=\"0.4\" r=\"70%\"" : " x1=\"10%\" x2=\"0.9\" y2=\"50%\"";
        }
        if (chance(3)) out += attribute("spreadMethod", pick({"pad", "reflect", "repeat"}));
        if (chance(4)) out += attribute("gradientTransform", "rotate(" + number(unit() * 90) + ")");
        if (chance(4) && index > 0) out += attribute("xlink:href", "#" + name("p", below(index)));
        out += ">";
        const uint32_t stops = below(4);
        for (uint32_t i = 0; i < stops; ++i) {
            out += "<stop" + attribute("offset", i / 3.0) + attribute("stop-color", color());
            if (chance(3)) out += attribute("stop-opacity", unit());
            out += "/>";
        }
        add(out + (isRadial ? "</radialGradient>\n" : "</linearGradient>\n"));
    }

    std::string paint() {
        if (gradients_ > 0 && chance(3)) {
            const std::string id = name("p", below(gradients_ + 1));
            return chance(8) ? "url( #" + id + " )" : "url(#" + id + ")";
        }
        if (entities_ && chance(20)) return "&c;";
        return chance(10)
                   ? pick({"none", "currentColor", "inherit", "rgb(10%, 20%, 30%)", "teal", "url(#t0)"})
                   : color();
    }

    // Dashes are of thin lines and not inherited: wide ones of large shapes take Qt minutes a tile.
    std::string dashes() {
        if (!dashes_ || !chance(4)) return {};
        const auto length = [&] { return number(size() + width_ * 0.02); };
        return attribute("stroke", color()) + attribute("stroke-width", width_ * 0.002) +
               attribute("stroke-dasharray", length() + "," + length()) +
               attribute("stroke-dashoffset", size());
    }

    std::string style() {
        std::string out;
        if (chance(2)) out += attribute("fill", paint());
        if (chance(3)) out += attribute("stroke", paint());
        if (chance(4)) out += attribute("stroke-width", size() * 0.06);
        if (chance(6)) out += attribute("opacity", unit());
        if (chance(8)) out += attribute("fill-opacity", unit()) + attribute("stroke-opacity", unit());
        if (chance(6))
            out += attribute("stroke-linejoin", pick({"miter", "round", "bevel"})) +
                   attribute("stroke-miterlimit", 1 + unit() * 30);
        if (chance(6)) out += attribute("stroke-linecap", pick({"butt", "round", "square"}));
        if (chance(12)) out += attribute("vector-effect", std::string("non-scaling-stroke"));
        if (chance(8)) out += attribute("fill-rule", pick({"evenodd", "nonzero"}));
        if (chance(12))
            out += attribute("style", "fill:" + paint() + ";stroke:" + color() + ";display:" +
                                          (hides_ ? pick({"inline", "none", "block"}) : "inline"));
        if (styles_ && chance(3)) out += attribute("class", pick({"a", "b", "a b", "c"}));
        if (visibility_ && chance(4)) out += attribute("visibility", pick({"hidden", "visible", "inherit"}));
        if (chance(15)) out += attribute("color", color());
        if (chance(15)) out += attribute("clip-path", std::string("url(#k0)"));
        if (chance(20))
            out +=
                attribute("mask", std::string("url(#m0)")) + attribute("marker-mid", std::string("url(#r0)"));
        return out;
    }

    // Any element that paints.
    std::string shape(const std::string& attributes) {
        const std::string dashed = dashes();
        std::string out = attributes + (dashed.empty() ? style() : dashed);
        if (chance(5)) out += attribute("transform", transform());
        if (chance(10)) out += attribute("id", name("s", below(20)));
        const char* const unitName = chance(12) ? "px" : "";
        const std::string end = chance(15) ? "><title>t</title></" : "";
        const auto close = [&](const char* tag) {
            return end.empty() ? std::string("/>\n") : end + tag + ">\n";
        };
        switch (below(8)) {
            case 0:
            case 1:
                if (chance(5)) out += attribute("rx", size()) + (chance(2) ? attribute("ry", size()) : "");
                return "<rect" + attribute("x", number(x()) + unitName) +
                       attribute("y", chance(20) ? std::string("20%") : number(y())) +
                       attribute("width", chance(30) ? 0.0 : size()) + attribute("height", size()) + out +
                       close("rect");
            case 2:
                return "<circle" + attribute("cx", x()) + attribute("cy", y()) + attribute("r", size()) +
                       out + close("circle");
            case 3:
                return "<ellipse" + attribute("cx", x()) + attribute("cy", y()) + attribute("rx", size()) +
                       attribute("ry", size()) + out + close("ellipse");
            case 4:
                if (isPlain_) return "<path" + out + close("path");
                return line(out) + close("line");
            case 5:
                // Drawings of dashes and polylines are always drawn whole.
                return (!isPlain_ && chance(dashes_ ? 200 : 2) ? "<polyline" : "<polygon") +
                       attribute("points", points()) + out + "/>\n";
            default:
                return "<path" + attribute("d", pathData()) + out + close("path");
        }
    }

    std::string line(const std::string& attributes) {
        const double left = x();
        const double top = y();
        const bool isLong = chance(10);
        const bool hasStroke = attributes.find(" stroke=") != std::string::npos;  // it may stand once
        return "<line" + attribute("x1", left) + attribute("y1", top) +
               attribute("x2", isLong ? x() : left + size()) + attribute("y2", isLong ? y() : top - size()) +
               (hasStroke ? "" : attribute("stroke", color())) + attributes;
    }

    void writeGroup(uint32_t depth) {
        add("<g" + style() + (!isPlain_ && chance(2) ? attribute("transform", transform()) : "") +
            (chance(8) ? attribute("id", name("u", below(4))) : "") + ">\n");
        const uint32_t count = below(16);
        for (uint32_t i = 0; i < count; ++i) writeContent(depth);
        add("</g>\n");
    }

    void writeContent(uint32_t depth) {
        if (depth < 4 && chance(7)) {
            writeGroup(depth + 1);
        } else if (uses_ && chance(6)) {
            add("<use" + attribute("xlink:href", "#" + name("u", below(4))) +
                (chance(2) ? attribute("x", size()) + attribute("y", size()) : "") +
                (chance(3) ? attribute("transform", transform()) : "") + style() + "/>\n");
        } else if (texts_ && chance(5)) {
            add("<text" + attribute("x", x()) + attribute("y", y()) + attribute("font-size", size()) +
                (chance(3) ? attribute("text-anchor", pick({"middle", "end"})) : "") + style() +
                ">Ag<tspan fill=\"red\">jy</tspan> &amp; W</text>\n");
        } else if (nested_ && chance(10)) {
            add("<svg" + attribute("viewBox", "0 0 10 10") + "><rect width=\"4\" height=\"3\" fill=\"" +
                color() + "\"/></svg>\n");
        } else if (!isPlain_ && chance(40)) {
            add("<switch>" + shape("") + shape("") + "</switch><a>" + shape("") + "</a><unknown>" +
                shape("") + "</unknown>\n");
        } else if (chance(40)) {
            add("<linearGradient id=\"p" + std::to_string(below(12)) +
                "\"><stop offset=\"0.3\" stop-color=\"" + color() + "\"/></linearGradient>\n");
        } else {
            add(shape(""));
        }
    }

    std::string text_;
    uint32_t gradients_ = 0;
    bool entities_ = false;
    bool styles_ = false;
    bool texts_ = false;
    bool visibility_ = false;
    bool dashes_ = false;
    bool uses_ = false;
    bool nested_ = false;
    bool hides_ = false;
    const bool isPlain_;  // nothing but shapes that are filled one after another, nor moved by groups
};

}  // namespace

std::string featureDrawing(uint32_t number) {
    return Drawing(number).make();
}

}  // namespace tzbench
