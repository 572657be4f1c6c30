// The module object: what the exported entry makes, and what registers the servers.
#pragma once

#include "hostsdk/ITzModule.h"

namespace tzsvg {

class CTzThisModule : public ITzModule {
  public:
    TzResult initialise(ITzHost* host) noexcept override;
    TzResult shutdown() noexcept override;
};

}  // namespace tzsvg
