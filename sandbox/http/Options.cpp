#include "http/Options.h"

#include <charconv>
#include <string_view>

namespace sandbox {

const char *const usage
    = "Usage: vant-sandbox [options]\n"
      "       vant-sandbox push --at ADDRESS --to CID [--payload URL] [--title T] [--body B] [--id "
      "N]\n"
      "A school platform on loopback. The first line it prints is its base address.\n"
      "\n"
      "  --port N       port of all addresses, 0 for a free one (default 0)\n"
      "  --trace FILE   append one JSON object for each request to FILE\n"
      "  --schools N    number of schools (default 3200)\n"
      "  --latency MS   delay of every answer in milliseconds (default 0)\n"
      "  --storage DIR  keep uploaded files in DIR, also for the next start (default: a\n"
      "                 temporary folder, removed at the end)\n"
      "\n"
      "push sends one message to the client CID, through the sandbox at the base ADDRESS.\n"
      "\n"
      "  --help         print this text\n"
      "  --version      print the version\n";

namespace {

    int number(std::string_view option, std::string_view text, int most)
    {
        int value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error != std::errc() || end != text.data() + text.size() || value < 0 || value > most)
            throw BadArgument(std::string(option) + ": \"" + std::string(text)
                + "\" is no number from 0 to " + std::to_string(most));
        return value;
    }

} // namespace

Options parseOptions(int argc, char **argv)
{
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string_view option = argv[i];
        const auto value = [&]() -> std::string_view {
            if (i + 1 >= argc || *argv[i + 1] == '\0')
                throw BadArgument(std::string(option) + " needs a value");
            return argv[++i];
        };
        if (option == "--port")
            options.port = number(option, value(), 65535);
        else if (option == "--schools")
            options.schools = number(option, value(), 1'000'000);
        else if (option == "--latency")
            options.latency = std::chrono::milliseconds(number(option, value(), 600'000));
        else if (option == "--trace")
            options.traceFile = value();
        else if (option == "--storage")
            options.storageDir = value();
        else if (option == "--help")
            options.help = true;
        else if (option == "--version")
            options.version = true;
        else
            throw BadArgument("unknown argument \"" + std::string(option) + "\", see --help");
    }
    return options;
}

} // namespace sandbox
