// The services of the host, one file each: every function makes one service object. Host lists them.
#pragma once

#include <memory>

#include "host/HostCore.h"
#include "hostsdk/CTzPtr.h"
#include "hostsdk/ITzObject.h"

namespace tzhost {

CTzPtr<ITzObject> makeServerRegistry(const std::shared_ptr<HostCore>& core);
CTzPtr<ITzObject> makeLogService(const std::shared_ptr<HostCore>& core);
CTzPtr<ITzObject> makeLogWriter(const std::shared_ptr<HostCore>& core);
CTzPtr<ITzObject> makeMessageService(const std::shared_ptr<HostCore>& core);
CTzPtr<ITzObject> makeImageService(const std::shared_ptr<HostCore>& core);
CTzPtr<ITzObject> makeTypeService(const std::shared_ptr<HostCore>& core);
CTzPtr<ITzObject> makeThreadService(const std::shared_ptr<HostCore>& core);

}  // namespace tzhost
