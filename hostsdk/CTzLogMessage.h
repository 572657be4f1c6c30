// The base of a module's log messages: one entry in the host's log, and the lines added to it.
#pragma once

#include <string_view>

#include "hostsdk/CTzUser.h"

// Thread-safe as far as the host's log is: one object is used by one thread at a time.
class CTzLogMessage {
  public:
    // What the message writes, for the heading of its entry. The virtual operations keep this order.
    virtual const char* formatName() const = 0;
    virtual const char* version() const = 0;
    virtual const char* description() const { return nullptr; }
    virtual ~CTzLogMessage() = default;

    CTzLogMessage(const CTzLogMessage&) = delete;
    CTzLogMessage& operator=(const CTzLogMessage&) = delete;

    // Adds a line under the heading "load/save", or "load/save error". The two host services that the
    // message writes through are looked up by the first line and kept. Throws CTzError.
    void addLine(std::string_view text);
    void addErrorLine(std::string_view text);

  protected:
    // `subsystem` is the log subsystem of the entry, static storage; empty for the host's default.
    explicit CTzLogMessage(CTzUser_Host host, std::string_view subsystem = {});

  private:
    void append(std::string_view heading, std::string_view text);

    CTzUser_Host host_;
    std::string_view subsystem_;
    CTzPtr<ITzLogService> log_;
    CTzPtr<ITzLogWriter> writer_;
    uint32_t entry_ = 0;
};
