#include <sstream>
#include <string>
#include <utility>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/DebugStl.h>
#include <gtest/gtest.h>

#include "Print.h"

using namespace Corrade;
using namespace Corrade::Containers::Literals;
using Utility::Debug;
using Utility::Error;
using Utility::Warning;

TEST(Debug, SeparatesItemsByBlanksAndEndsTheLine) {
    std::ostringstream out;
    Debug{&out} << "a" << 1 << "b"_s;
    EXPECT_EQ(out.str(), "a 1 b\n");
}

TEST(Debug, WritesNothingAtAllWithoutItems) {
    std::ostringstream out;
    Debug{&out};
    EXPECT_EQ(out.str(), "");
}

TEST(Debug, LeavesOutTheNewlineAndTheBlanksWhenAsked) {
    std::ostringstream out;
    Debug{&out, Debug::Flag::NoNewlineAtTheEnd} << "a" << 1;
    Debug{&out, Debug::Flag::NoNewlineAtTheEnd | Debug::Flag::NoSpace} << "b" << 2;
    EXPECT_EQ(out.str(), "a 1b2");
}

TEST(Debug, ModifiersChangeTheNextItem) {
    std::ostringstream out;
    Debug{&out} << "a" << Debug::nospace << "b"
                << "c" << Debug::newline << "d" << Debug::space << "e" << Debug::hex << 255 << 255;
    EXPECT_EQ(out.str(), "ab c\nd e 0xff 255\n");
}

TEST(Debug, PrintsEveryBasicType) {
    EXPECT_EQ(printed(true), "true");
    EXPECT_EQ(printed('a'), "97");
    EXPECT_EQ(printed(static_cast<unsigned char>(200)), "200");
    EXPECT_EQ(printed(short{-3}), "-3");
    EXPECT_EQ(printed(-5l), "-5");
    EXPECT_EQ(printed(18446744073709551615ull), "18446744073709551615");
    EXPECT_EQ(printed(1.5f), "1.5");
    EXPECT_EQ(printed(0.1f + 0.2f), "0.3");
    EXPECT_EQ(printed(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(printed(1e20), "1e+20");
    EXPECT_EQ(printed(nullptr), "nullptr");
    EXPECT_EQ(printed(reinterpret_cast<const void*>(0xdeadbeef)), "0xdeadbeef");
    EXPECT_EQ(printed(static_cast<const char*>(nullptr)), "");
    EXPECT_EQ(printed(std::string{"standard"}), "standard");
    EXPECT_EQ(printed("zero\0byte"_s), std::string("zero\0byte", 9));
    EXPECT_EQ(printed(Containers::String{"string"}), "string");
}

TEST(Debug, PrintsListsInBracesAndListsOfListsOnLines) {
    const Containers::Array<int> list{InPlaceInit, {1, 2, 3}};
    EXPECT_EQ(printed(list), "{1, 2, 3}");
    EXPECT_EQ(printed(Containers::Array<int>{}), "{}");
    Containers::Array<Containers::Array<int>> nested{ValueInit, 2};
    nested[0] = Containers::Array<int>{InPlaceInit, {1, 2}};
    nested[1] = Containers::Array<int>{InPlaceInit, {3}};
    EXPECT_EQ(printed(nested), "{{1, 2},\n {3}}");

    std::ostringstream out;
    Debug{&out} << "list" << list << "packed" << Debug::packed << list;
    EXPECT_EQ(out.str(), "list {1, 2, 3} packed 123\n");
}

TEST(Debug, KeepsAListsFlagsForAllOfIt) {
    std::ostringstream out;
    Debug{&out} << Debug::hex << Containers::Array<int>{InPlaceInit, {16, 17}} << 16;
    EXPECT_EQ(out.str(), "{0x10, 0x11} 16\n");
}

TEST(Debug, RedirectsAllOutputOfItsKindUntilDestroyed) {
    std::ostringstream debug, warning, error;
    {
        const Debug redirectDebug{&debug};
        const Warning redirectWarning{&warning};
        const Error redirectError{&error};
        Debug{} << "debug";
        Warning{} << "warning";
        Error{} << "error";
        EXPECT_EQ(Debug::output(), &debug);
        EXPECT_EQ(Error::output(), &error);
    }
    EXPECT_EQ(debug.str(), "debug\n");
    EXPECT_EQ(warning.str(), "warning\n");
    EXPECT_EQ(error.str(), "error\n");
    EXPECT_EQ(Debug::output(), Debug::defaultOutput());
    EXPECT_EQ(Warning::output(), Warning::defaultOutput());
    EXPECT_EQ(Error::output(), Error::defaultOutput());
}

TEST(Debug, RedirectionsNestAndNullIsSilent) {
    std::ostringstream outer, inner;
    const Error redirect{&outer};
    {
        const Error again{&inner};
        Error{} << "inner";
        const Error silent{nullptr};
        Error{} << "never seen";
    }
    Error{} << "outer";
    EXPECT_EQ(inner.str(), "inner\n");
    EXPECT_EQ(outer.str(), "outer\n");
}

TEST(Debug, RedirectedToAStringAppends) {
    Containers::String out = "before ";
    {
        const Warning redirect{&out};
        Warning{} << "a" << 1;
        Warning{} << "a line that is long enough to leave the string's own storage";
    }
    EXPECT_EQ(out, "before a 1\na line that is long enough to leave the string's own storage\n");
}

TEST(Debug, MovedOutputEndsOnce) {
    std::ostringstream out;
    {
        Debug a{&out};
        a << "a";
        Debug b{std::move(a)};
        b << "b";
    }
    EXPECT_EQ(out.str(), "a b\n");
}

TEST(DebugDeath, FatalExitsWithItsCode) {
    EXPECT_EXIT(Utility::Fatal{3} << "no way on", testing::ExitedWithCode(3), "no way on\n");
}

TEST(DebugDeath, AssertionsAbortWithTheirMessageInSpiteOfARedirection) {
    const auto failing = [](int a) {
        Containers::String out;
        const Error redirect{&out};
        CORRADE_ASSERT(a == 3, "a must be three but is" << a, );
    };
    failing(3);
    EXPECT_DEATH(failing(4), "^a must be three but is 4\n");
    EXPECT_DEATH(CORRADE_INTERNAL_ASSERT(1 + 1 == 3), "^Assertion 1 \\+ 1 == 3 failed at .*DebugTest.cpp:[0-9]+\n");
    EXPECT_DEATH(CORRADE_INTERNAL_ASSERT_UNREACHABLE(), "^Reached unreachable code at .*DebugTest.cpp:[0-9]+\n");
    EXPECT_EQ(CORRADE_INTERNAL_ASSERT_EXPRESSION(2 + 3), 5);
    EXPECT_DEATH(CORRADE_INTERNAL_ASSERT_EXPRESSION(1 - 1), "^Assertion 1 - 1 failed at .*DebugTest.cpp:[0-9]+\n");
}
