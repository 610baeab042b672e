#pragma once

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class BatchOutput;

/** Runs the batch tool with the arguments of its program.
    @return its exit code, see @ref BatchResult */
int runBatchTool(int argc, const char* const* argv, BatchOutput& output);

}
