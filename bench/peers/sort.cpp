// peer_sort FILE: sorts and groups the names of the file by their Latin reading, each name
// converted as a whole.

#include "common/Clocks.h"

#include <unicode/translit.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

struct Name
{
    icu::UnicodeString reading;
    size_t position;
};

}

int main(int argc, char **argv)
{
    std::ifstream file(argc == 2 ? argv[1] : "");
    std::vector<icu::UnicodeString> names;
    for (std::string line; std::getline(file, line);)
        names.push_back(icu::UnicodeString::fromUTF8(line));
    const Clocks loading;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::Transliterator> latin(icu::Transliterator::createInstance(
        "Han-Latin; NFKD; [:Mn:] Remove", UTRANS_FORWARD, status));
    if (names.empty() || !latin) {
        std::fputs("usage: peer_sort FILE\n", stderr);
        return EXIT_FAILURE;
    }
    const double loaded = loading.wall();

    const Clocks clocks;
    std::vector<Name> order;
    order.reserve(names.size());
    for (const icu::UnicodeString &name : names) {
        icu::UnicodeString reading(name);
        latin->transliterate(reading);
        order.push_back({reading.toUpper(), order.size()});
    }
    std::sort(order.begin(), order.end(), [](const Name &a, const Name &b) {
        const int by = a.reading.compare(b.reading);
        return by != 0 ? by < 0 : a.position < b.position;
    });
    std::map<char16_t, std::vector<size_t>> sections;
    for (const Name &name : order)
        sections[name.reading.isEmpty() ? u'#' : name.reading[0]].push_back(name.position);
    std::printf(R"({"wall_ms": %f, "loading_ms": %f, "sections": %zu})", clocks.wall(), loaded,
        sections.size());
    return EXIT_SUCCESS;
}
