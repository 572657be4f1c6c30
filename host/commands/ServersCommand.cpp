// tzhost servers: what the module has registered.
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/commands/Commands.h"
#include "host/commands/LogFile.h"
#include "host/core/OperationError.h"
#include "host/core/Utf8.h"

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
    nlohmann::ordered_json servers = nlohmann::ordered_json::array();
    for (const Server& server : host.servers().servers()) {
        const ServerDescription description = describeInStep(server);
        nlohmann::ordered_json tags = nlohmann::ordered_json::array();
        for (const auto& [name, value] : description.tags) tags.push_back({toUtf8(name), toUtf8(value)});
        nlohmann::ordered_json interfaces = nlohmann::ordered_json::array();
        for (const std::string& id : description.interfaces) interfaces.push_back(toUtf8(id));
        servers.push_back({{"name", server.name}, {"interfaces", interfaces}, {"tags", tags}});
    }
    nlohmann::ordered_json document;
    document["servers"] = servers;
    std::printf("%s\n", document.dump(2).c_str());
}

}  // namespace

void addServersCommand(CLI::App& app, CommandRun& run) {
    auto json = std::make_shared<bool>(false);
    auto logFile = std::make_shared<std::string>();
    CLI::App* const command = app.add_subcommand("servers", "List the servers that the module registers");
    command->add_flag("--json", *json, "As JSON");
    LogFile::addOption(*command, *logFile);
    command->callback([json, logFile, &run] {
        run = {{}, [json, logFile](const CommandContext& context) {
                   LogFile log(context.terminal, *logFile, {});
                   *json ? printJson(context.host) : printPlain(context.host);
                   log.commit();
               }};
    });
}

}  // namespace tzhost
