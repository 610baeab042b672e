#include "Callgrind.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <unistd.h>

double instructionsOf(const std::string& arguments) {
    std::string file = (std::filesystem::temp_directory_path() / "quorvane-callgrind-XXXXXX").string();
    const int handle = mkstemp(file.data());
    if(handle < 0) return 0.0;
    close(handle);
    const std::string program = std::filesystem::canonical("/proc/self/exe").string();
    const std::string command = "valgrind --tool=callgrind --instr-atstart=no --callgrind-out-file='" + file + "' '" +
        program + "' --instructions " + arguments + " >/dev/null 2>&1";
    double instructions = 0.0;
    if(std::system(command.c_str()) == 0) {
        std::ifstream output{file};
        for(std::string line; std::getline(output, line);)
            if(line.compare(0, 8, "totals: ") == 0) instructions = std::atof(line.c_str() + 8);
    }
    std::remove(file.c_str());
    return instructions;
}
