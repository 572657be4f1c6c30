// What the definitions of a drawing hold: the elements of the texts that a scene keeps of them, by id. Used
// by PreviewGradients and PreviewPictures.
#pragma once

#include <QHash>
#include <QString>
#include <QXmlStreamAttributes>
#include <string_view>
#include <vector>

namespace tzhost {

class PreviewDefinitions {
  public:
    // An element; those within it follow it in elements(), up to `end`.
    struct Element {
        QString name;
        QXmlStreamAttributes attributes;
        int end = 0;

        QString attribute(const char* attributeName) const;
    };

    // Fragments of SVG, the texts of the channels "svgdefs" and "clipdefs"; of one that does not parse what
    // stands before the fault. Of two elements with one id the first counts.
    PreviewDefinitions(std::string_view definitions, std::string_view clipPaths);

    const std::vector<Element>& elements() const { return elements_; }

    // The element of that id and one of these names, as its index; -1 when there is none.
    int find(const QString& id, std::initializer_list<const char*> names) const;

    // The element that this one takes what it lacks from (its "href"), -1 when there is none.
    int origin(int element) const;

    // An attribute of an element, or of the nearest of its origins that has it.
    QString inherited(int element, const char* attributeName) const;

  private:
    void read(std::string_view fragment);

    std::vector<Element> elements_;
    QHash<QString, int> byId_;
};

}  // namespace tzhost
