// The reference host as image tests use it, in one program with the module's object code.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/Host.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/CTzUser_Image.h"
#include "tests/common/Recorder.h"

struct ImageHost {
    CTzPtr<ITzHost> object() const { return CTzPtr<ITzHost>::share(host.object()); }

    template <class Service>
    CTzPtr<Service> service() const {
        return CTzUser_Host(object()).service<Service>();
    }

    int imagesAlive() const {
        const auto alive = host.gate().objectsAlive();
        const auto at = alive.find("image");
        return at == alive.end() ? 0 : static_cast<int>(at->second);
    }

    // The lines of the log, each as "subsystem|heading|text".
    std::vector<std::string> lines() const {
        std::vector<std::string> lines;
        for (size_t i = 0; i < recorder->lines.size(); ++i)
            lines.push_back(recorder->entries[i].subsystem + "|" + recorder->headings[i] + "|" +
                            recorder->lines[i]);
        return lines;
    }

    std::shared_ptr<tzhost::Recorder> recorder = std::make_shared<tzhost::Recorder>();
    tzhost::Host host{recorder};
};
