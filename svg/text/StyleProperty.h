// Look-up of properties in the text of a "style" attribute.
#pragma once

#include <QString>
#include <QStringView>
#include <QVarLengthArray>

namespace tzsvg {

// The properties of a style text, which is read once and must outlive this. A property's value is the text
// behind "property:", without leading white space, up to the next ";". The name must stand at the very start
// of the text or directly after a ";", in any letter case: one behind a blank, or with a blank before its
// colon, is not found. That rule is exact and meant so: the presentation attribute is used instead.
// StyleProperty/lookUp pins it.
class StyleProperties {
  public:
    explicit StyleProperties(QStringView style);

    // The value of the first property of that name; empty when there is none.
    QStringView value(QStringView name) const;

  private:
    struct Property {
        QStringView name;
        QStringView value;
    };
    QVarLengthArray<Property, 16> properties_;
};

// One property, which may be given with its colon. False only for an empty style or property.
bool GetStyleProperty(const QString& style, const QString& property, QString& value);

}  // namespace tzsvg
