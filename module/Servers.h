// The module's servers: one table, a row each.
#pragma once

#include "hostsdk/CTzPtr.h"
#include "hostsdk/ITzHost.h"

namespace tzsvg {

// Registers the four servers with the host, in table order. Throws CTzError when the host refuses one.
void registerServers(const CTzPtr<ITzHost>& host);

}  // namespace tzsvg
