#include "app/MessageLog.h"

#include <sstream>
#include <string>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

using Corrade::Utility::Debug;
using Corrade::Utility::Error;
using Corrade::Utility::Warning;
using Severity = MessageLog::Severity;

/** All messages, with their severity as a digit. */
std::string all(const MessageLog& log) {
    std::string text;
    for(const MessageLog::Message& message: log.messages())
        text += std::to_string(int(message.severity)) + " " + std::string{message.text} + "\n";
    return text;
}

TEST(MessageLog, KeepsWhatIsPrintedWithItsSeverity) {
    MessageLog log;
    Debug{} << "opened" << 3 << "files";
    Warning{} << "one is odd";
    Error{} << "one is missing";
    log.note("Saved");
    EXPECT_EQ(all(log), "0 opened 3 files\n2 one is odd\n3 one is missing\n1 Saved\n");
    EXPECT_EQ(log.count(), 4u);
}

TEST(MessageLog, PassesEverythingOnToStandardOutputAndErrorOutput) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    {
        MessageLog log;
        Debug{} << "a detail";
        Warning{} << "a warning";
        Error{} << "an error";
        log.note("a note");
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "a detail\na note\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "a warning\nan error\n");
}

TEST(MessageLog, ATextOfSeveralLinesIsSeveralMessagesAndEmptyLinesAreNone) {
    MessageLog log;
    Warning{} << "first\n\nsecond";
    EXPECT_EQ(all(log), "2 first\n2 second\n");
}

TEST(MessageLog, TheLastMessageForTheUserIsNeverADetail) {
    MessageLog log;
    EXPECT_EQ(log.last(), nullptr);
    Debug{} << "a detail";
    EXPECT_EQ(log.last(), nullptr);
    Warning{} << "a warning";
    Debug{} << "a detail";
    ASSERT_TRUE(log.last());
    EXPECT_EQ(log.last()->text, "a warning");
    EXPECT_EQ(log.last()->severity, Severity::Warning);
    log.note("Saved");
    EXPECT_EQ(log.last()->text, "Saved");
    EXPECT_EQ(log.last()->severity, Severity::Note);
}

TEST(MessageLog, KeepsWhenAMessageCame) {
    static int seconds;
    seconds = 100;
    MessageLog log{10, [] { return std::chrono::system_clock::time_point{std::chrono::seconds{++seconds}}; }};
    Warning{} << "first";
    log.note("second");
    const auto at = [](int second) { return std::chrono::system_clock::time_point{std::chrono::seconds{second}}; };
    EXPECT_EQ(log.messages()[0].when, at(101));
    EXPECT_EQ(log.messages()[1].when, at(102));
    EXPECT_EQ(log.last()->when, at(102));
}

TEST(MessageLog, DropsTheOldestMessagesBeyondItsCapacity) {
    MessageLog log{3};
    for(int i = 0; i != 5; ++i) Debug{} << i;
    EXPECT_EQ(all(log), "0 2\n0 3\n0 4\n");
    EXPECT_EQ(log.count(), 5u);
}

TEST(MessageLog, ProblemsSinceAMessageAreItsWarningsAndErrors) {
    MessageLog log{4};
    Warning{} << "before";
    const std::size_t first = log.count();
    EXPECT_EQ(log.problemsSince(first), "");
    Debug{} << "a detail";
    Warning{} << "a warning";
    Error{} << "an error";
    EXPECT_EQ(log.problemsSince(first), "a warning\nan error");
    EXPECT_EQ(log.problemsSince(0), "before\na warning\nan error");
    log.note("a note");
    EXPECT_EQ(log.problemsSince(0), "a warning\nan error");
    EXPECT_EQ(log.problemsSince(100), "");
}

TEST(MessageLog, OutputGoesWhereItWentBeforeWhenTheLogEnds) {
    std::ostringstream out;
    Warning redirect{&out};
    {
        MessageLog log;
        Warning{} << "kept";
        {
            std::ostringstream inner;
            Warning innerRedirect{&inner};
            Warning{} << "neither";
        }
        EXPECT_EQ(all(log), "2 kept\n");
    }
    Warning{} << "passed";
    EXPECT_EQ(out.str(), "passed\n");
}

}
}
