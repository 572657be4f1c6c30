// A scene of the C library: the host's scene with the session it belongs to.
#pragma once

#include <memory>
#include <string>

#include "adapters/c/Session.h"
#include "host/scene/Scene.h"

struct TzhScene {
    std::shared_ptr<tzh::SessionState> state;
    tzhost::ScenePtr scene;
    std::string notes = "{}";
};

namespace tzh {

// An item of a scene; throws when there is none, or on another thread than the session's.
tzhost::Item& itemOf(const TzhScene* scene, uint32_t item);

}  // namespace tzh
