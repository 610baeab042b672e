#include <cstdio>

#include <unistd.h>

#include "batch/BatchOutput.h"
#include "batch/BatchTool.h"
#include "batch/Terminal.h"

int main(int argc, char** argv) {
    using namespace QuorvaneEngine;
    BatchOutput output{stdout, Terminal::of(STDOUT_FILENO), stderr, Terminal::of(STDERR_FILENO)};
    return runBatchTool(argc, argv, output);
}
