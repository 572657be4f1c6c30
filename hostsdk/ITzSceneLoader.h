// Reading a file into a scene: the interface of scene loader servers, and the monitor they report to.
#pragma once

#include "hostsdk/ITzScene.h"

// The user's view of long work: a bar and a cancel button. Handed over by the host for one operation.
class ITzMonitor : public ITzObject {
  public:
    static constexpr char kId[] = "tz.monitor/1";

    // Tells how many steps the work has. Called once, before the first step. A worker may make fewer steps;
    // the host closes the bar when the operation ends. [host thread]
    virtual TzResult initialise(uint64_t stepCount) noexcept = 0;

    // `steps` more steps are done. kTzCancelled when the user wants the work to stop. [host thread]
    virtual TzResult step(uint32_t steps) noexcept = 0;

  protected:
    ~ITzMonitor() = default;
};

// A scene loader. One object reads one file at a time: recognise, start, load, in this order; reset makes it
// ready for another file at any point.
class ITzSceneLoader : public ITzObject {
  public:
    static constexpr char kId[] = "tz.sceneLoader/1";

    // Looks at a file and keeps what load() needs. kTzNotRecognised when the loader does not read it;
    // nothing is kept then. [host thread]
    virtual TzResult recognise(TzText fileName) noexcept = 0;

    // Starts the load of the recognised file into a scene: per-file state is reset and the items that receive
    // it are created. The scene is kept until reset() or the end of load(). kTzNotReady without a recognised
    // file. A failure leaves what was made so far in the scene, and the file recognised: the host discards
    // the items. [host thread]
    virtual TzResult start(ITzScene* target) noexcept = 0;

    // Loads. `monitor` may be null. A failure leaves what was made so far in the scene: the host discards
    // it. kTzNotReady when not started. [host thread]
    virtual TzResult load(ITzMonitor* monitor) noexcept = 0;

    // Forgets the file and everything that was kept for it. [host thread]
    virtual TzResult reset() noexcept = 0;

  protected:
    ~ITzSceneLoader() = default;
};
