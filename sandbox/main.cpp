#include "Catalogue.h"
#include "Certificate.h"
#include "Control.h"
#include "HttpFront.h"
#include "Options.h"
#include "Site.h"

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <thread>

using namespace sandbox;

namespace {

sigset_t blockEndingSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

//! Serves until the process is told to end.
void run(const Options &options)
{
    const sigset_t endingSignals
        = blockEndingSignals(); // before any thread, for threads inherit it

    Trace trace;
    if (options.traceFile && !trace.openFile(*options.traceFile))
        throw BadArgument("--trace: cannot write to \"" + *options.traceFile + "\"");
    Faults faults;
    Overrides overrides;
    const Certificate certificate(addressOf(Host::Tls));
    HttpFront front(options.port, certificate);
    Platform platform(size_t(options.schools), front.addresses());
    Control control(platform, trace, faults, overrides, certificate);
    const Catalogue catalogue(platform, overrides);
    const Site site(platform);

    front.serve([&](const Request &request) {
        if (Control::owns(request))
            return control.answer(request);
        Reply reply = Catalogue::isCall(request) ? catalogue.answer(request) : site.answer(request);
        reply.delay += options.latency;
        faults.spoil(request, reply);
        trace.record(request, platform.addresses, reply.status);
        std::this_thread::sleep_for(reply.delay);
        return reply;
    });
    std::cout << "http://" << platform.addresses.authority(Host::Rb) << std::endl;

    int signal = 0;
    sigwait(&endingSignals, &signal);
    // Connections may be idle or in the middle of a slow answer; nobody waits for them.
    std::quick_exit(EXIT_SUCCESS);
}

} // namespace

int main(int argc, char **argv)
{
    try {
        const Options options = parseOptions(argc, argv);
        if (options.help)
            std::cout << usage;
        else if (options.version)
            std::cout << "vant-sandbox " SANDBOX_VERSION << '\n';
        else
            run(options);
        return EXIT_SUCCESS;
    } catch (const BadArgument &error) {
        std::cerr << "vant-sandbox: " << error.what() << std::endl;
        return 2;
    } catch (const std::exception &error) {
        std::cerr << "vant-sandbox: " << error.what() << std::endl;
        return EXIT_FAILURE;
    }
}
