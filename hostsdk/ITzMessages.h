// Messages to the user: texts of the host's message tables, with places that the caller fills.
#pragma once

#include "hostsdk/ITzObject.h"

// What every host has a text for: a warning in a module's own words, which are argument 1.
constexpr char kTzMessagesCommon[] = "common";
constexpr uint32_t kTzMessageWarning = 2020;

// Service: shows messages. The texts are the host's, so that they speak the user's language.
class ITzMessages : public ITzObject {
  public:
    static constexpr char kId[] = "tz.messages/1";

    // Shows the message `code` of a message table ("common"). Its text may refer to arguments by number:
    // argument 1 is arguments[0]; the host leaves out what a text refers to beyond `count`. The texts are
    // borrowed for the length of the call. Returns when the message is on its way: it never waits for an
    // answer. kTzNotFound when there is no such table or code, kTzInvalidArgument for null `arguments` with
    // a `count`, or text that is not UTF-8. [host thread]
    virtual TzResult post(TzText table, uint32_t code, const TzText* arguments, uint32_t count) noexcept = 0;

  protected:
    ~ITzMessages() = default;
};
