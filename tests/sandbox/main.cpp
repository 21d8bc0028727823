#include "Case.h"
#include "Child.h"

#include <csignal>
#include <iostream>
#include <vector>

namespace {

struct Entry {
    std::string name;
    std::function<void()> body;
};

std::vector<Entry>& entries()
{
    static std::vector<Entry> all;
    return all;
}

int failures = 0;

} // namespace

Case::Case(std::string name, std::function<void()> body)
{
    entries().push_back({std::move(name), std::move(body)});
}

void fail(const char* file, int line, const std::string& message)
{
    ++failures;
    std::cout << "    " << file << ":" << line << ": " << message << std::endl;
}

//! Arguments: the program under test and, to run some only, a part of their names.
int main(int argc, char** argv)
{
    if (argc < 2) {
        std::cerr << "usage: sandbox-test PROGRAM [PART-OF-NAME]" << std::endl;
        return 2;
    }
    std::signal(SIGPIPE, SIG_IGN);
    Child::program = argv[1];
    const std::string part = argc > 2 ? argv[2] : "";
    int run = 0;
    for (const Entry& entry : entries()) {
        if (entry.name.find(part) == std::string::npos)
            continue;
        ++run;
        const int before = failures;
        try {
            entry.body();
        } catch (const std::exception& error) {
            fail(__FILE__, __LINE__, std::string("exception: ") + error.what());
        }
        std::cout << (failures == before ? "pass  " : "FAIL  ") << entry.name << std::endl;
    }
    std::cout << run << " cases, " << failures << " failures" << std::endl;
    return run == 0 || failures > 0 ? 1 : 0;
}
