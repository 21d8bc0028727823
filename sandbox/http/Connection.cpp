#include "http/Connection.h"

#include <httplib.h>

#include <arpa/inet.h>
#include <charconv>
#include <filesystem>
#include <sys/socket.h>

namespace sandbox {

namespace {

    bool isEnd(int (*nameOf)(int, sockaddr *, socklen_t *), int socket, const std::string &address,
        int port)
    {
        sockaddr_in name {};
        socklen_t size = sizeof name;
        char text[INET_ADDRSTRLEN] = "";
        return nameOf(socket, reinterpret_cast<sockaddr *>(&name), &size) == 0
            && name.sin_family == AF_INET && ntohs(name.sin_port) == port
            && inet_ntop(AF_INET, &name.sin_addr, text, sizeof text) && address == text;
    }

} // namespace

// The library shows the socket to nobody, so it is looked for by the two ends of the connection.
void hangUp(const httplib::Request &request, Ending ending)
{
    std::error_code error;
    for (const auto &entry : std::filesystem::directory_iterator("/proc/self/fd", error)) {
        const std::string name = entry.path().filename();
        int descriptor = -1;
        std::from_chars(name.data(), name.data() + name.size(), descriptor);
        if (isEnd(getpeername, descriptor, request.remote_addr, request.remote_port)
            && isEnd(getsockname, descriptor, request.local_addr, request.local_port)) {
            // A connection that is let go of, and not shut down, is reset.
            const sockaddr nobody {.sa_family = AF_UNSPEC, .sa_data = {}};
            if (ending == Ending::Reset)
                connect(descriptor, &nobody, sizeof nobody);
            shutdown(descriptor, SHUT_RDWR);
        }
    }
}

} // namespace sandbox
