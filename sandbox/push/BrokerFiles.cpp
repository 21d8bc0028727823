#include "push/BrokerFiles.h"

#include "http/Addresses.h"

#include <openssl/evp.h>
#include <openssl/rand.h>

#include <array>
#include <fstream>

#include <unistd.h>

namespace fs = std::filesystem;

namespace sandbox {

namespace {

    using Bytes = std::basic_string<unsigned char>;

    std::string base64(const Bytes &bytes)
    {
        std::string text(4 * ((bytes.size() + 2) / 3) + 1, '\0');
        text.resize(size_t(EVP_EncodeBlock(
            reinterpret_cast<unsigned char *>(text.data()), bytes.data(), int(bytes.size()))));
        return text;
    }

    // The broker keeps no password in the clear.
    std::string passwordLine(const BrokerUser &user)
    {
        constexpr int iterations = 101;
        Bytes salt(12, 0);
        RAND_bytes(salt.data(), int(salt.size()));
        Bytes hash(64, 0);
        PKCS5_PBKDF2_HMAC(user.password.data(), int(user.password.size()), salt.data(),
            int(salt.size()), iterations, EVP_sha512(), int(hash.size()), hash.data());
        return user.name + ":$7$" + std::to_string(iterations) + "$" + base64(salt) + "$"
            + base64(hash) + "\n";
    }

    std::string write(const fs::path &path, const std::string &content)
    {
        std::ofstream file(path);
        file << content;
        if (!file.flush())
            throw std::runtime_error("cannot write " + path.string());
        return path.string();
    }

} // namespace

fs::path writeBrokerFiles(const fs::path &folder, const BrokerPorts &ports,
    const BrokerUser &device, const BrokerUser &school, const std::string &appId,
    const Certificate &certificate)
{
    const auto listener = [](int port, Host host) {
        return "listener " + std::to_string(port) + " " + addressOf(host) + "\n";
    };
    std::string text = listener(ports.plain, Host::Rb) + listener(ports.tls, Host::Tls)
        + "certfile " + write(folder / "certificate.pem", certificate.pem()) + "\nkeyfile "
        + write(folder / "key.pem", certificate.keyPem()) + "\nallow_anonymous false\n"
        + "password_file "
        + write(folder / "passwords", passwordLine(device) + passwordLine(school)) + "\nacl_file "
        + write(folder / "rights",
            "pattern read push/" + appId + "/%c\nuser " + school.name + "\ntopic write push/#\n")
        // What waits for a device outlives the broker's own restart.
        + "\npersistence true\npersistence_location " + folder.string()
        + "/\nlog_dest stderr\nlog_type error\n";
    // It would become another user, who cannot read these files.
    if (geteuid() == 0)
        text += "user root\n";
    return write(folder / "broker.conf", text);
}

} // namespace sandbox
