#pragma once

#include <csignal>
#include <string>

#include <gtest/gtest.h>

/** Expects that a statement aborts the process with exactly this line, less its end, on the error output. */
#define QUORVANE_EXPECT_ABORT(statement, message)                                                                      \
    EXPECT_EXIT(statement, testing::KilledBySignal(SIGABRT), testing::Eq(std::string{message} + "\n"))
