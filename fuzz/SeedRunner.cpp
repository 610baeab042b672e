#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "Fuzzer.h"

namespace {

using Bytes = std::string;

std::vector<Bytes> readSeeds(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> paths;
    for(const auto& entry: std::filesystem::directory_iterator{folder}) paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    std::vector<Bytes> seeds;
    for(const std::filesystem::path& path: paths) {
        std::ifstream file{path, std::ios::binary};
        seeds.emplace_back(std::istreambuf_iterator<char>{file}, std::istreambuf_iterator<char>{});
    }
    return seeds;
}

/** Changes, inserts or removes some bytes, or puts a part of another seed there. */
Bytes mutated(Bytes bytes, const Bytes& other, std::mt19937& random) {
    const auto below = [&random](const std::size_t limit) { return limit ? random() % limit : 0; };
    for(std::size_t i = below(4) + 1; i != 0; --i) {
        const std::size_t place = below(bytes.size() + 1);
        switch(below(5)) {
        case 0:
            if(place != bytes.size()) bytes[place] = char(bytes[place] ^ 1 << below(8));
            break;
        case 1:
            if(place != bytes.size()) bytes[place] = char(random());
            break;
        case 2: bytes.insert(place, 1, char(random())); break;
        case 3: bytes.erase(place, below(8)); break;
        default: bytes.insert(place, other.substr(below(other.size() + 1), below(32))); break;
        }
    }
    return bytes;
}

void run(const Bytes& bytes) {
    // In memory of just that size, so that a sanitizer sees what is read behind it.
    const std::vector<std::uint8_t> exact{bytes.begin(), bytes.end()};
    LLVMFuzzerTestOneInput(exact.data(), exact.size());
}

}

/** Where the compiler has no fuzzer: runs a fuzzer's seeds and some mutations of them, always the same ones.
    SeedRunner FOLDER MUTATIONS */
int main(const int count, char** const arguments) {
    if(count != 3) return 2;
    const std::vector<Bytes> seeds = readSeeds(arguments[1]);
    if(seeds.empty()) return 1;
    for(const Bytes& seed: seeds) run(seed);
    std::mt19937 random{1};
    const unsigned long mutations = std::strtoul(arguments[2], nullptr, 10);
    for(unsigned long i = 0; i != mutations; ++i)
        run(mutated(seeds[random() % seeds.size()], seeds[random() % seeds.size()], random));
    std::printf("%zu seeds and %lu mutations of them are as they should be\n", seeds.size(), mutations);
    return 0;
}
