// The page of a check: every drawing as it is, as it comes back, and as it comes back normalized, with what
// was found. One file that loads nothing; for a phone as for a large screen, light or dark as the reader has
// it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/Checker.h"
#include "host/Normalizer.h"
#include "host/io/Files.h"

namespace tzhost {

// A drawing to look at, or why there is none.
struct PagePicture {
    std::string svg;
    std::string failure;
};

struct CheckedDrawing {
    std::string name;
    DrawingCheck check;
    PagePicture asItIs;
    PagePicture back;
    PagePicture normalized;  // after the same way
    std::vector<NormalizerNote> notes;
};

// Writes the page drawing by drawing, so that no more than one is held.
class CheckPage {
  public:
    // `checks` of all drawings that will be added, for the summary.
    CheckPage(OutputFile& out, const std::string& title, const std::vector<DrawingCheck>& checks);
    void add(const CheckedDrawing& drawing);
    void end();

  private:
    void addPicture(const char* caption, const PagePicture& picture);
    void addFindings(const DrawingCheck& check);
    void addNotes(const std::vector<NormalizerNote>& notes);

    OutputFile& out_;
    std::string_view rest_;  // of the page, behind the drawings
};

}  // namespace tzhost
