#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "localization/LocalizationChecks.h"

namespace QuorvaneEngine {
namespace {

std::string string(const Containers::StringView text) { return {text.data(), text.size()}; }

TEST(Documentation, ListsEveryCheckWithItsSeverity) {
    std::ifstream file{QUORVANE_SOURCE_DIR "/docs/exchange.md", std::ios::binary};
    const std::string text{std::istreambuf_iterator<char>{file}, {}};
    std::string table = "| check | severity | what it finds |\n|---|---|---|\n";
    for(const LocalizationCheck& check: localizationChecks())
        table += "| `" + string(check.name) + "` | " + string(findingSeverityName(check.severity)) + " | " +
            string(check.description) + " |\n";
    EXPECT_NE(text.find(table + '\n'), std::string::npos) << table;
}

}
}
