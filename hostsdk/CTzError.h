// Exceptions inside, codes outside: CTzError carries a result code within one side of the boundary, and
// tzGate() is the one place where exceptions become codes. Every operation that can throw goes through it.
#pragma once

#include <exception>
#include <new>

#include "hostsdk/TzTypes.h"

// A failed host or module call, as an exception. Allocates nothing.
class CTzError : public std::exception {
  public:
    explicit CTzError(TzResult result) : result_(result) {}

    TzResult result() const { return result_; }
    const char* what() const noexcept override { return tzResultText(result_); }

  private:
    TzResult result_;
};

// Codes become exceptions: throws CTzError when the code is a failure.
inline void tzCheck(TzResult result) {
    if (tzFailed(result)) throw CTzError(result);
}

// Exceptions become codes: runs `work`, which returns a TzResult or nothing, and turns CTzError into its
// code, std::bad_alloc into kTzOutOfMemory and everything else into kTzFailed.
template <class Work>
TzResult tzGate(Work&& work) noexcept {
    try {
        if constexpr (std::is_void_v<decltype(work())>) {
            work();
            return kTzOk;
        } else {
            return work();
        }
    } catch (const CTzError& error) {
        return error.result();
    } catch (const std::bad_alloc&) {
        return kTzOutOfMemory;
    } catch (...) {
        return kTzFailed;
    }
}
