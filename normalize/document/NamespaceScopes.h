// Which namespaces prefixes stand for while a document is read.
#pragma once

#include <QStringView>
#include <vector>

namespace tznormalize {

constexpr QStringView kSvgNamespace = u"http://www.w3.org/2000/svg";
constexpr QStringView kXlinkNamespace = u"http://www.w3.org/1999/xlink";
constexpr QStringView kXmlNamespace = u"http://www.w3.org/XML/1998/namespace";

class NamespaceScopes {
  public:
    // The views must stay as long as the scopes.
    void declare(size_t depth, QStringView prefix, QStringView uri) {
        declarations_.push_back({depth, prefix, uri});
    }

    // Forgets what elements at that depth and below have declared; whether there was anything.
    bool close(size_t depth) {
        const size_t before = declarations_.size();
        while (!declarations_.empty() && declarations_.back().depth >= depth) declarations_.pop_back();
        return declarations_.size() != before;
    }

    // Empty for no namespace; null for a prefix that nobody has declared. The prefixes that every drawing
    // means the same by need no declaration.
    QStringView uriOf(QStringView prefix) const {
        for (auto one = declarations_.rbegin(); one != declarations_.rend(); ++one) {
            if (one->prefix == prefix) return one->uri;
        }
        if (prefix.isEmpty()) return u"";
        if (prefix == u"svg") return kSvgNamespace;
        if (prefix == u"xlink") return kXlinkNamespace;
        if (prefix == u"xml") return kXmlNamespace;
        return {};
    }

  private:
    struct Declaration {
        size_t depth;
        QStringView prefix;
        QStringView uri;
    };

    std::vector<Declaration> declarations_;
};

}  // namespace tznormalize
