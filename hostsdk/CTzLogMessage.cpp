#include "hostsdk/CTzLogMessage.h"

CTzLogMessage::CTzLogMessage(CTzUser_Host host, std::string_view subsystem)
    : host_(std::move(host)), subsystem_(subsystem) {}

void CTzLogMessage::addLine(std::string_view text) {
    append("load/save", text);
}

void CTzLogMessage::addErrorLine(std::string_view text) {
    append("load/save error", text);
}

void CTzLogMessage::append(std::string_view heading, std::string_view text) {
    if (!writer_) {
        const char* const about = description();
        log_ = host_.service<ITzLogService>();
        auto writer = host_.service<ITzLogWriter>();
        tzCheck(log_->openEntry(tzText(formatName()), tzText(version()), tzText(about ? about : ""),
                                tzText(subsystem_), &entry_));
        writer_ = std::move(writer);  // from here on there is an entry
    }
    tzCheck(writer_->append(entry_, tzText(heading), tzText(text)));
}
