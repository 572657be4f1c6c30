#include "host/pages/ManualPages.h"

#include <algorithm>
#include <sstream>

namespace tzhost {
namespace {

// Text for the formatter, which takes some characters for its own. What stands in backquotes is bold.
std::string escaped(const std::string& text) {
    std::string out;
    bool isBold = false;
    for (const char c : text) {
        if (c == '`') {
            out += isBold ? "\\fR" : "\\fB";
            isBold = !isBold;
        } else if (c == '\\') {
            out += "\\e";
        } else if (c == '-') {
            out += "\\-";
        } else {
            out += c;
        }
    }
    return !out.empty() && (out[0] == '.' || out[0] == '\'') ? "\\&" + out : out;
}

// A footer taken apart.
struct Footer {
    std::string prose;
    std::string exitStatus;
    std::vector<std::string> examples;
};

Footer parted(const std::string& footer) {
    Footer parts;
    std::string* prose = &parts.prose;
    std::istringstream lines(footer);
    for (std::string line; std::getline(lines, line);) {
        const std::string status = "Exit status: ";
        if (line.rfind("Example", 0) == 0) continue;
        if (line.rfind("  ", 0) == 0) {
            parts.examples.push_back(line.substr(2));
            continue;
        }
        if (line.rfind(status, 0) == 0) {
            prose = &parts.exitStatus;
            line.erase(0, status.size());
        }
        *prose += escaped(line) + "\n";
    }
    return parts;
}

class Page {
  public:
    Page(const std::string& name, const std::string& summary) {
        std::string upper = name;
        std::transform(upper.begin(), upper.end(), upper.begin(),
                       [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
        add(".TH " + escaped(upper) + " 1 \"\" \"tzhost " + programVersion() + "\" \"User Commands\"");
        section("NAME");
        add(escaped(name) + " \\- " + escaped(summary));
    }
    void add(const std::string& line) { text_ += line + "\n"; }
    void section(const char* title) { add(std::string(".SH ") + title); }

    // `term` is formatted already.
    void item(const std::string& term, const std::string& text) {
        add(".TP");
        add(term);
        add(escaped(text));
    }

    void options(const std::vector<OptionHelp>& options) {
        for (const OptionHelp& option : options) {
            std::string term;
            for (const std::string& name : option.names)
                term += (term.empty() ? "" : ", ") + std::string("\\fB") + escaped(name) + "\\fR";
            if (!option.value.empty())
                term += (term.empty() ? "" : " ") + std::string("\\fI") + escaped(option.value) + "\\fR";
            std::string text = option.text + ".";
            if (!option.byDefault.empty()) text += " The default is " + option.byDefault + ".";
            item(term, text);
        }
    }

    void end(const Footer& footer, const std::string& seeAlso) {
        if (!footer.exitStatus.empty()) {
            section("EXIT STATUS");
            text_ += footer.exitStatus;
        }
        if (!footer.examples.empty()) {
            section("EXAMPLES");
            add(".EX");
            for (const std::string& example : footer.examples) add(escaped(example));
            add(".EE");
        }
        section("SEE ALSO");
        add(seeAlso);
    }

    const std::string& text() const { return text_; }

  private:
    std::string text_;
};

// "\fIIN.svg\fR... [\fISCENE.json\fR]"
std::string synopsisOf(const CommandHelp& command) {
    std::string synopsis = ".B tzhost " + escaped(command.name) + "\n[\\fIOPTIONS\\fR]";
    for (const OptionHelp& option : command.options) {
        if (!option.names.empty()) continue;
        const std::string argument =
            "\\fI" + escaped(option.value) + "\\fR" + (option.isRepeated ? "..." : "");
        synopsis += option.isRequired ? " " + argument : " [" + argument + "]";
    }
    return synopsis;
}

ManualPage pageOf(const CommandHelp& command) {
    const std::string name = "tzhost-" + command.name;
    Page page(name, command.text);
    page.section("SYNOPSIS");
    page.add(synopsisOf(command));
    const Footer footer = parted(command.more);
    page.section("DESCRIPTION");
    page.add(escaped(command.text) + ".");
    if (!footer.prose.empty()) page.add(footer.prose + ".PP");
    page.add("\\fB\\-\\fR stands for standard input or output. The options of");
    page.add(".BR tzhost (1)");
    page.add("are taken as well.");
    page.section("OPTIONS");
    page.options(command.options);
    page.end(footer, ".BR tzhost (1)");
    return {name + ".1", page.text()};
}

}  // namespace

std::vector<ManualPage> manualPages(const std::vector<CommandHelp>& help) {
    const CommandHelp& program = help.front();
    Page page(program.name, "a host without a window for modules that read and write drawings");
    page.section("SYNOPSIS");
    page.add(".B tzhost\n[\\fIOPTIONS\\fR] \\fICOMMAND\\fR [\\fIARGUMENTS\\fR]");
    page.section("DESCRIPTION");
    page.add(escaped(program.text));
    const Footer footer = parted(program.more);
    page.add(".PP\n" + footer.prose + ".SH COMMANDS");
    std::vector<ManualPage> pages;
    std::string seeAlso;
    for (size_t i = 1; i < help.size(); ++i) {
        page.item("\\fB" + escaped(help[i].name) + "\\fR", help[i].text + ".");
        pages.push_back(pageOf(help[i]));
        seeAlso +=
            (seeAlso.empty() ? "" : " ,\n") + std::string(".BR tzhost\\-") + escaped(help[i].name) + " (1)";
    }
    page.section("OPTIONS");
    page.options(program.options);
    page.end(footer, seeAlso);
    pages.insert(pages.begin(), {program.name + ".1", page.text()});
    return pages;
}

}  // namespace tzhost
