// Writing a scene to a file: the interface of scene saver servers.
#pragma once

#include "hostsdk/ITzScene.h"

// Flags of ITzSceneSaver::save().
constexpr uint32_t kTzSavePreparatoryPass = 1;  // walk the scene once with writing switched off, then save

// A scene saver. One object serves one save: verify, then save.
class ITzSceneSaver : public ITzObject {
  public:
    static constexpr char kId[] = "tz.sceneSaver/1";

    // Lets the saver tell the user, through ITzMessages, what the save of this scene will lose. Nothing is
    // written. A failure means that the scene should not be saved. The scene is not kept. [host thread]
    virtual TzResult verify(ITzScene* scene) noexcept = 0;

    // Writes the scene to a file, which is created or, when it exists, emptied first. `flags` is a sum of the
    // flags above; kTzInvalidArgument for others. A failure may leave a file with part of the output behind:
    // a host that wants to keep an existing file lets the saver write beside it. Output that does not reach
    // the file (a full disk) is a failure. The scene is not kept. [host thread]
    virtual TzResult save(TzText fileName, ITzScene* scene, uint32_t flags) noexcept = 0;

  protected:
    ~ITzSceneSaver() = default;
};
