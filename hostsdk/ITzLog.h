// The host's log: entries, one for each log message object, and lines under headings within them.
#pragma once

#include "hostsdk/ITzObject.h"

// Service: opens log entries.
class ITzLogService : public ITzObject {
  public:
    static constexpr char kId[] = "tz.log/1";

    // Opens an entry for one source: the name of its format ("SVG IO"), its version, an optional description
    // (empty: none) and the log subsystem it belongs to (empty: the host's default). *entry names it for
    // ITzLogWriter. Entries live as long as the host. [any thread]
    virtual TzResult openEntry(TzText formatName, TzText version, TzText description, TzText subsystem,
                               uint32_t* entry) noexcept = 0;

  protected:
    ~ITzLogService() = default;
};

// Service: writes into log entries.
class ITzLogWriter : public ITzObject {
  public:
    static constexpr char kId[] = "tz.log.writer/1";

    // Appends one line under a heading ("load/save") of an entry. A line end at the end of the text is not
    // needed: each call is a line of its own. kTzOutOfBounds for an entry that does not exist. [any thread]
    virtual TzResult append(uint32_t entry, TzText heading, TzText text) noexcept = 0;

  protected:
    ~ITzLogWriter() = default;
};
