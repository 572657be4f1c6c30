// A module in a shared library: loads it, checks its SDK version, initialises it with the host, and unloads
// it in the order objects, module, library. A session is a host with its modules.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "host/Host.h"
#include "hostsdk/ITzModule.h"

namespace tzhost {

class ModuleLibrary {
  public:
    // Loads and initialises. Throws OperationError: file, step and code of what went wrong. The host must
    // outlive this object.
    ModuleLibrary(Host& host, const std::filesystem::path& file);
    // Unloads, if unload() has not.
    ~ModuleLibrary();
    ModuleLibrary(const ModuleLibrary&) = delete;
    ModuleLibrary& operator=(const ModuleLibrary&) = delete;

    // Unloads the module and returns what it, or somebody else, failed to release, a text each; empty when
    // all is well. Objects of the module's servers, scenes and monitors must be gone by then. A library whose
    // code may still be called stays loaded.
    std::vector<std::string> unload();

    // The two halves of it, where a host has several modules: all are shut down before the first is closed.
    void shutDown(std::vector<std::string>& reports);
    void close(bool mayStillBeCalled);

  private:
    struct CloseLibrary {
        void operator()(void* library) const;
    };

    void create(const std::string& fileName);

    Host& host_;
    std::unique_ptr<void, CloseLibrary> library_;
    CTzPtr<ITzModule> module_;
};

// A host with its modules, loaded and unloaded together. Their servers are asked in the order of the files.
class Session {
  public:
    // Throws OperationError when a module cannot be loaded.
    explicit Session(const std::vector<std::filesystem::path>& moduleFiles,
                     std::shared_ptr<Observer> observer = nullptr);
    explicit Session(const std::filesystem::path& moduleFile, std::shared_ptr<Observer> observer = nullptr)
        : Session(std::vector<std::filesystem::path>{moduleFile}, std::move(observer)) {}
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // As ModuleLibrary::unload(), of all of them.
    std::vector<std::string> unload();

    Host host;

  private:
    std::vector<std::unique_ptr<ModuleLibrary>> modules_;
};

}  // namespace tzhost
