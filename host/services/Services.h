// The services of the host, a source each: every function makes one service object. Host lists them.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "host/core/HostCore.h"
#include "hostsdk/CTzPtr.h"
#include "hostsdk/ITzObject.h"

namespace tzhost {

// Two that share the entries of one log: ITzLogService opens them, ITzLogWriter writes into them.
struct LogServices {
    CTzPtr<ITzObject> service;
    CTzPtr<ITzObject> writer;
};

CTzPtr<ITzObject> makeServerRegistry(const std::shared_ptr<HostCore>& core);
LogServices makeLogServices(const std::shared_ptr<HostCore>& core);
CTzPtr<ITzObject> makeMessageService(const std::shared_ptr<HostCore>& core);
CTzPtr<ITzObject> makeImageService(const std::shared_ptr<HostCore>& core);
CTzPtr<ITzObject> makeTypeService(const std::shared_ptr<HostCore>& core);
CTzPtr<ITzObject> makeThreadService(const std::shared_ptr<HostCore>& core);

// The name of a type that the type service knows; empty for another code.
std::string_view typeName(uint32_t code);

}  // namespace tzhost
