// See the header.
#include "svg/text/ScanText.h"

#include <locale.h>  // NOLINT(modernize-deprecated-headers): newlocale is POSIX
#include <clocale>
#include <cstdarg>
#include <cstdio>

namespace tzsvg {
namespace {

// Puts the calling thread into the "C" locale for its lifetime.
class CLocaleScope {
  public:
    CLocaleScope() : previous_(uselocale(cLocale())) {}
    ~CLocaleScope() { uselocale(previous_); }
    CLocaleScope(const CLocaleScope&) = delete;
    CLocaleScope& operator=(const CLocaleScope&) = delete;

  private:
    static locale_t cLocale() {
        static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);  // lives as long as the module
        return locale;
    }
    locale_t previous_;
};

}  // namespace

int scanText(const char* text, const char* format, ...) {
    const CLocaleScope scope;
    va_list arguments;
    va_start(arguments, format);
    const int read = std::vsscanf(text, format, arguments);
    va_end(arguments);
    return read;
}

}  // namespace tzsvg
