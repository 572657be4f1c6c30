// The host's messages to the user: the message tables, and where messages go. Filled through the message
// service; read by the commands and by tests. Host thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tzhost {

class Messages {
  public:
    using Sink = std::function<void(const std::string& text)>;

    // Where the messages go, a line each, without a line end. Without a sink they are dropped.
    void setSink(Sink sink) { sink_ = std::move(sink); }

    // Sends the message of that code: %1 to %9 in its text stand for the arguments, argument 1 being the
    // first. Throws kTzNotFound when there is no such table or code.
    void post(std::string_view table, uint32_t code, const std::vector<std::string_view>& arguments) const;

  private:
    Sink sink_;
};

}  // namespace tzhost
