#include "control/Control.h"
#include "files/FileStore.h"
#include "files/ObjectStorage.h"
#include "files/UploadService.h"
#include "http/Certificate.h"
#include "http/HttpFront.h"
#include "http/Options.h"
#include "operations/Catalogue.h"
#include "portal/Site.h"
#include "push/PushCommand.h"
#include "push/PushService.h"

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string_view>
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
    Broker broker(certificate);
    PushService push(broker);
    HttpFront front(options.port, certificate);
    Platform platform(size_t(options.schools), front.addresses());
    FileStore store(options.storageDir);
    Control control(platform, store, push, trace, faults, overrides, certificate);
    const Catalogue catalogue(platform, overrides);
    const Site site(platform, push);
    const UploadService uploadService(store, platform.addresses);
    const ObjectStorage objectStorage(store);

    const auto carryOut = [&](const Request &request) {
        if (Catalogue::isCall(request))
            return catalogue.answer(request);
        if (request.host == Host::Upload)
            return uploadService.answer(request);
        if (request.host == Host::Storage)
            return objectStorage.answer(request);
        return site.answer(request);
    };
    front.serve([&](Request &request, const HttpFront::ReadBody &readBody) {
        if (Control::owns(request)) {
            readBody(HttpFront::Share::Whole);
            return control.answer(request);
        }
        const Fault fault = faults.take(request);
        const bool whole
            = readBody(fault.halvesBody() ? HttpFront::Share::Half : HttpFront::Share::Whole);
        Reply reply;
        if (!fault.replacesHandling())
            reply = whole ? carryOut(request) : lostReply();
        reply.delay += options.latency;
        fault.spoil(reply);
        trace.record(request, platform.addresses, reply);
        std::this_thread::sleep_for(reply.delay);
        return reply;
    });
    std::cout << "http://" << platform.addresses.authority(Host::Rb) << std::endl;

    int signal = 0;
    sigwait(&endingSignals, &signal);
    store.removeTemporary();
    broker.end();
    // Connections may be idle or in the middle of a slow answer; nobody waits for them.
    std::quick_exit(EXIT_SUCCESS);
}

} // namespace

int main(int argc, char **argv)
{
    try {
        if (argc > 1 && std::string_view(argv[1]) == "push") {
            pushCommand(argc - 2, argv + 2);
            return EXIT_SUCCESS;
        }
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
