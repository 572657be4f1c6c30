// The reference host as image tests use it, in one program with the module's object code.
#pragma once

#include <string>
#include <vector>

#include "host/Host.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/CTzUser_Image.h"

struct ImageHost {
    ImageHost() { host.log().keepLines(); }

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
        const auto entries = host.log().entries();
        for (const tzhost::LogLine& line : host.log().lines())
            lines.push_back(entries.at(line.entry).subsystem + "|" + line.heading + "|" + line.text);
        return lines;
    }

    tzhost::Host host;
};
