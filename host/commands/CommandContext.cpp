#include "host/commands/CommandContext.h"

namespace tzhost {

Host& CommandContext::host() {
    if (!session_) {
        failed_ = true;
        session_.emplace(modules_, terminal_);
        failed_ = false;
    }
    return session_->host;
}

void CommandContext::close() {
    if (!session_) return;
    for (const auto& [operation, times] : session_->host.gate().misuses()) {
        terminal_->warn("the module called " + operation + " off the host thread, " + std::to_string(times) +
                        " times");
    }
    for (const std::string& report : session_->unload()) terminal_->warn("at unload: " + report);
    session_.reset();
}

}  // namespace tzhost
