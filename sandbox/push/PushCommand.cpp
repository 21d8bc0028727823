#include "push/PushCommand.h"

#include "http/Envelope.h"
#include "http/Options.h"

#include <httplib.h>

#include <stdexcept>

namespace sandbox {

void pushCommand(int argc, char **argv)
{
    std::string address;
    Json message = Json::object();
    for (int i = 0; i < argc; ++i) {
        const std::string option = argv[i];
        if (option != "--at" && option != "--to" && option != "--payload" && option != "--title"
            && option != "--body" && option != "--id")
            throw BadArgument("unknown argument \"" + option + "\", see --help");
        if (++i >= argc || *argv[i] == '\0')
            throw BadArgument(option + " needs a value");
        if (option == "--at")
            address = argv[i];
        else
            message[option.substr(2)] = argv[i];
    }
    const bool saysSomething
        = message.contains("payload") || message.contains("title") || message.contains("body");
    if (address.empty() || !message.contains("to") || !saysSomething)
        throw BadArgument("push needs --at, --to and a --payload or a text, see --help");
    if (!address.starts_with("http://"))
        throw BadArgument("--at: \"" + address + "\" is no address of a sandbox");
    const httplib::Result answer
        = httplib::Client(address).Post("/_control/push", message.dump(), "application/json");
    if (!answer)
        throw std::runtime_error("no sandbox answers at " + address);
    if (answer->status != 200)
        throw std::runtime_error(answer->body.substr(0, answer->body.find('\n')));
}

} // namespace sandbox
