// Documents made up at random, for comparing the import's reading with Qt's.
#pragma once

#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace tzsvg {

inline const char* const kProlog =
    "<?xml version='1.0' encoding='UTF-8'?><!-- first \xF0\x9F\x98\x80 \xC3\xA9 --><?one two?>"
    "<!DOCTYPE svg PUBLIC 'p' 's' [<!ENTITY in 'a&lt;b'><!ENTITY out SYSTEM 'u'><!ENTITY deep '<g "
    "id=\"e\">x</g>'>"
    "<!NOTATION n SYSTEM 'v'><!ENTITY % more '<!NOTATION m SYSTEM \"w\">'>%more;<!ATTLIST rect class CDATA "
    "'by default'>]>";

// Elements, texts and everything else that may stand among them.
inline void appendContent(std::string& xml, std::mt19937& random, int depth) {
    static const char* const kPieces[] = {
        "text",
        " \n\t ",
        " a &amp; b &#x1F600; &in; c ",
        "&out;",
        "&deep;",
        "&#xA;",
        "<![CDATA[<raw> & ]]>",
        "<![CDATA[ ]]>",
        "<!-- note -->",
        "<!---->",
        "<?target data here?>",
        "<?bare?>",
        "before<![CDATA[within]]>after",
        "\xC3\xA9\xE2\x82\xAC",
    };
    static const char* const kElements[] = {"g", "rect", "a:b", "defs", "switch", "Path", "text", "i:pgf"};
    static const char* const kAttributes[] = {
        " id='1 &lt; \"2\"'", " style=\"a:'b'\"", " width=''", " xmlns:a='u'",
        " a:c='&#10;&#9;x'",  " class='own'",     " d='M0 0'", " transform='&in;'",
    };
    for (auto pieces = random() % 6; pieces > 0; --pieces) {
        if (random() % 2 == 0 || depth == 0) {
            xml += kPieces[random() % std::size(kPieces)];
            continue;
        }
        const std::string name = kElements[random() % std::size(kElements)];
        xml += '<' + name;
        const auto first = random() % std::size(kAttributes);
        for (size_t i = random() % 4; i > 0; --i) xml += kAttributes[(first + i) % std::size(kAttributes)];
        xml += '>';
        appendContent(xml, random, depth - 1);
        xml += "</" + name + '>';
    }
}

inline std::string randomDocument(unsigned seed) {
    std::mt19937 random(seed);  // the same every time
    std::string xml = kProlog;
    xml += "<svg>";
    appendContent(xml, random, 5);
    return xml + "</svg><!--last--><?really last?>";
}

// A document of nothing that needs Qt's reader.
inline std::string plainDocument(std::mt19937& random) {
    static const char* const kPrologs[] = {
        "",
        "<?xml version='1.0'?>",
        "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"no\"?> <!-- \xC3\xA9 -->",
        "<!DOCTYPE svg>",
        "<?xml version='1.0' standalone='yes'?>",
        "<?xml version='1.0' ?><!DOCTYPE svg PUBLIC \"-//W3C//DTD SVG 1.1//EN\" 'http://w3.org/svg11.dtd' >",
    };
    static const char* const kPieces[] = {
        "text",         " \t ",       " a &amp;&lt; b\tc ]] > ", "<![CDATA[<raw> & ]]>",
        "<![CDATA[]]>", "<!-- - -->", "\xC3\xA9\xE2\x82\xAC",
    };
    static const char* const kAttributes[] = {
        " id='1 &gt; \"2\"'", " style = \"a:'b'\tc\"",        "  width=''",
        " xmlns:a=\"u\"\t",   " a:c='&apos;x&quot;\xC3\xA9'", " d='M0,0>'"};
    std::string xml = kPrologs[random() % std::size(kPrologs)];
    xml += "<svg>";
    std::vector<std::string> open;
    for (auto left = random() % 20; left > 0; --left) {
        const auto kind = random() % 3;
        if (kind == 0) {
            xml += kPieces[random() % std::size(kPieces)];
        } else if (kind == 1 && !open.empty()) {
            xml += "</" + open.back() + ">";
            open.pop_back();
        } else {
            const std::string name = random() % 2 == 0 ? "g" : "i:pgf-1.x";
            xml += '<' + name;
            const auto first = random() % std::size(kAttributes);
            for (size_t i = random() % 4; i > 0; --i)
                xml += kAttributes[(first + i) % std::size(kAttributes)];
            const bool isEmpty = random() % 3 == 0;
            if (!isEmpty) open.push_back(name);
            xml += isEmpty ? " />" : ">";
        }
    }
    for (; !open.empty(); open.pop_back()) xml += "</" + open.back() + " >";
    return xml + "</svg> <!--last-->";
}

}  // namespace tzsvg
