// tzhost servers.
#include <cstdio>

#include "host/commands/Commands.h"
#include "host/commands/LogFile.h"
#include "host/core/OperationError.h"
#include "host/core/Utf8.h"
#include "host/io/Json.h"

namespace tzhost {
namespace {

ServerDescription describeInStep(const Server& server) {
    return inStep("server " + server.name, "describe", [&] { return describe(server); });
}

void printPlain(const Host& host) {
    for (const Server& server : host.servers().servers()) {
        const ServerDescription description = describeInStep(server);
        std::printf("%s\n  interfaces:", toOneLine(server.name).c_str());
        for (const std::string& id : description.interfaces) std::printf(" %s", toOneLine(id).c_str());
        std::printf("\n");
        for (const auto& [name, value] : description.tags) {
            std::printf("  %s: %s\n", toOneLine(name).c_str(), toOneLine(value).c_str());
        }
    }
}

void printJson(const Host& host) {
    JsonBuffer text;
    PrettyJsonWriter json(text);
    json.StartObject();
    json.Key("servers");
    json.StartArray();
    for (const Server& server : host.servers().servers()) {
        const ServerDescription description = describeInStep(server);
        json.StartObject();
        json.Key("name");
        json.String(server.name);
        json.Key("interfaces");
        json.StartArray();
        for (const std::string& id : description.interfaces) json.String(toUtf8(id));
        json.EndArray();
        json.Key("tags");
        json.StartArray();
        for (const auto& [name, value] : description.tags) {
            json.StartArray();
            json.String(toUtf8(name));
            json.String(toUtf8(value));
            json.EndArray();
        }
        json.EndArray();
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    std::printf("%s\n", text.GetString());
}

}  // namespace

void runServers(CommandContext& context, const ServersArguments& arguments) {
    LogFile log(context.terminal(), arguments.log, {});
    arguments.json ? printJson(context.host()) : printPlain(context.host());
    log.commit();
}

}  // namespace tzhost
