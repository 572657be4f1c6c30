#include "host/check/CheckPage.h"

#include <QByteArray>
#include <QString>
#include <algorithm>
#include <string_view>

#include "CheckPageTemplate.h"

namespace tzhost {
namespace {

constexpr size_t kLargestPicture = size_t{4} << 20U;  // more would only slow the page down

std::string escaped(const std::string& text) {
    return QString::fromStdString(text).toHtmlEscaped().toStdString();
}

void replaceMarks(std::string& text, std::string_view mark, const std::string& by) {
    for (size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + by.size())) {
        text.replace(at, mark.size(), by);
    }
}

const char* statusOf(const DrawingCheck& check) {
    if (check.isRefused()) return "refused";
    return check.findings.empty() ? "clean" : "losses";
}

std::string countOf(size_t count, const char* thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

// Things alike, told once.
struct Alike {
    std::string text;  // HTML
    int64_t line;      // of the first
    size_t count;
};

void addAlike(std::vector<Alike>& list, const std::string& text, int64_t line) {
    const auto same =
        std::find_if(list.begin(), list.end(), [&](const Alike& one) { return one.text == text; });
    if (same != list.end()) {
        ++same->count;
    } else {
        list.push_back({text, line, 1});
    }
}

std::string listOf(const std::vector<Alike>& list) {
    std::string html = "<ul>\n";
    for (const Alike& one : list) {
        html += "<li>" + one.text;
        if (one.line > 0) {
            html += " <span class=\"place\">line " + std::to_string(one.line);
            if (one.count > 1) html += " and " + std::to_string(one.count - 1) + " more";
            html += "</span>";
        }
        html += "</li>\n";
    }
    return html + "</ul>\n";
}

std::string details(const std::string& title, const std::vector<Alike>& list, bool isOpen) {
    if (list.empty()) return {};
    return std::string("<details") + (isOpen ? " open" : "") + "><summary>" + title + "</summary>\n" +
           listOf(list) + "</details>\n";
}

}  // namespace

CheckPage::CheckPage(OutputFile& out, const std::string& title, const std::vector<DrawingCheck>& checks)
    : out_(out) {
    std::string counts;
    for (const char* const status : {"refused", "losses", "clean"}) {
        const auto count = std::count_if(checks.begin(), checks.end(), [status](const DrawingCheck& check) {
            return statusOf(check) == std::string_view(status);
        });
        counts += std::string("<label class=\"") + status + "\"><input type=\"checkbox\" checked value=\"" +
                  status + "\"> " + std::to_string(count) + " " + status + "</label>\n";
    }
    constexpr std::string_view kTemplate = kCheckPageTemplate;
    constexpr size_t kDrawings = kTemplate.find("{{drawings}}");
    std::string head(kTemplate.substr(0, kDrawings));
    replaceMarks(head, "{{counts}}", counts);
    replaceMarks(head, "{{title}}", escaped(title));  // the last: it may look like a mark
    out_.write(head);
    rest_ = kTemplate.substr(kDrawings + std::string_view("{{drawings}}").size());
}

void CheckPage::add(const CheckedDrawing& drawing) {
    const std::string status = statusOf(drawing.check);
    out_.write("<article data-status=\"" + status + "\">\n<h2>" + escaped(drawing.name) +
               "<span class=\"badge " + status + "\">" + status + "</span></h2>\n<div class=\"pictures\">\n");
    addPicture("As it is", drawing.asItIs);
    addPicture("As it comes back", drawing.back);
    addPicture("As it comes back normalized", drawing.normalized);
    out_.write("</div>\n");
    addFindings(drawing.check);
    addNotes(drawing.notes);
    out_.write("</article>\n");
}

void CheckPage::end() {
    out_.write(rest_);
}

void CheckPage::addPicture(const char* caption, const PagePicture& picture) {
    out_.write(std::string("<figure><figcaption>") + caption + "</figcaption><div class=\"picture\">");
    if (picture.svg.empty()) {
        out_.write(escaped(picture.failure));
    } else if (picture.svg.size() > kLargestPicture) {
        out_.write("too large for this page");
    } else {
        const QByteArray bytes =
            QByteArray::fromRawData(picture.svg.data(), static_cast<int>(picture.svg.size()));
        out_.write(std::string("<img alt=\"") + caption +
                   "\" loading=\"lazy\" src=\"data:image/svg+xml;base64," + bytes.toBase64().toStdString() +
                   "\">");
    }
    out_.write("</div></figure>\n");
}

void CheckPage::addFindings(const DrawingCheck& check) {
    std::vector<Alike> list;
    bool isRefused = false;
    for (const CheckFinding& finding : check.findings) {
        isRefused = isRefused || finding.isRefusal();
        const std::string kind =
            finding.isRefusal() ? "<span class=\"refused\">refused</span>" : escaped(finding.kind);
        std::string text =
            kind + ": " + (finding.element.empty() ? "" : "&lt;" + escaped(finding.element) + "&gt; ") +
            escaped(finding.attribute) + (finding.attribute.empty() ? "" : ": ") + escaped(finding.text);
        if (!finding.remedy.empty())
            text += " <span class=\"remedy\">&rarr; " + escaped(finding.remedy) + "</span>";
        addAlike(list, text, finding.line);
    }
    out_.write(details(
        "What an import and an export make of it: " + countOf(check.findings.size() + check.more, "finding"),
        list, isRefused));
}

void CheckPage::addNotes(const std::vector<NormalizerNote>& notes) {
    std::vector<Alike> list;
    for (const NormalizerNote& note : notes) {
        addAlike(list,
                 escaped(note.code) + ": &lt;" + escaped(note.element) + "&gt; " + escaped(note.attribute) +
                     (note.attribute.empty() ? "" : ": ") + escaped(note.text),
                 note.line);
    }
    out_.write(details("What a normalization does: " + countOf(notes.size(), "note"), list, false));
}

}  // namespace tzhost
